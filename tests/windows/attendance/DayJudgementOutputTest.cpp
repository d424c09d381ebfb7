#include "rules/attendance/DaySentences.h"
#include "support/Errors.h"
#include "support/SavedFiles.h"
#include "windows/attendance/DayJudgementFixture.h"
#include "windows/attendance/DayPage.h"

#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

/// What can be taken along of a day that is explained.
class DayJudgementOutputTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theTextIsCopied();
    void thePageIsSavedAsPdf();
    void aPdfThatCannotBeWrittenIsTold();
    void thePageIsPrintedIntoAFile_data();
    void thePageIsPrintedIntoAFile();
    void longAccountsGoOnOnAnotherPage();
};

void DayJudgementOutputTest::theTextIsCopied() {
    LateDay fixture;
    fixture.openExceptions();
    QString status;
    QString expected;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        QTest::keyClick(&dialog, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        status = control<QLabel>(dialog, u"DayStatus"_s).text();
        expected = plainText(dialog.account());
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(status, u"已複製判讀的文字"_s);
    QCOMPARE(QGuiApplication::clipboard()->text(), expected);
    QVERIFY(expected.startsWith(u"當日判讀　2001/3/5 10001 王小明\n\n【當日】\n"_s));
    QVERIFY(expected.contains(u"\n\n【重新計算】\n現在重新計算，結果不變\n"_s));
}

void DayJudgementOutputTest::thePageIsSavedAsPdf() {
    LateDay fixture;
    fixture.openExceptions();
    const QString path = fixture.store.folder() + u"/day.pdf"_s;
    QString status;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        click(control(dialog, u"CmdDay(2)"_s));
        status = control<QLabel>(dialog, u"DayStatus"_s).text();
    });
    fixture.answers.expectFile(path);
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(status, u"已存成 "_s + path);
    QVERIFY(contentOf(path).startsWith("%PDF-"));
    // Its text is found as it was written.
    const QStringList lines = pdfPages(path).join(u'\n').split(u'\n');
    for (const QString& line :
         {u"當日判讀 2001/3/5 10001 王小明"_s, u"時段 A 日班，4 卡，無彈性"_s,
          u"08:13 上班，超過 08:00＋緩衝 5 分，遲到 8 分"_s, u"現在重新計算，結果不變"_s})
        QVERIFY2(lines.contains(line), qPrintable(lines.join(u'\n')));
    // What the marks of the picture mean stands below it.
    QVERIFY2(lines.filter(u"斜線 遲到"_s).size() == 1 && lines.filter(u"點狀 請假"_s).size() == 1 &&
                 lines.filter(u"直欄 中間"_s).size() == 1,
             qPrintable(lines.join(u'\n')));
}

void DayJudgementOutputTest::aPdfThatCannotBeWrittenIsTold() {
    TestStore store;
    addLateDay(store.database());
    // A folder that is a file.
    const QString path = store.path() + u"/day.pdf"_s;
    const DayAccount account = explainDay(store.path(), u"10001"_s, Day);
    QCOMPARE(errorOf([&] { saveDayPdf(account, path, QPageSize(QPageSize::A4)); }), error::FileAccess);
    QVERIFY(!QFile::exists(path));
}

void DayJudgementOutputTest::thePageIsPrintedIntoAFile_data() {
    QTest::addColumn<QPageSize::PageSizeId>("paper");
    QTest::addColumn<QPageLayout::Orientation>("orientation");
    QTest::addColumn<QSize>("points");
    QTest::addRow("A4") << QPageSize::A4 << QPageLayout::Portrait << QSize(595, 842);
    QTest::addRow("A5") << QPageSize::A5 << QPageLayout::Portrait << QSize(420, 595);
    QTest::addRow("letter, landscape") << QPageSize::Letter << QPageLayout::Landscape << QSize(792, 612);
}

void DayJudgementOutputTest::thePageIsPrintedIntoAFile() {
    QFETCH(const QPageSize::PageSizeId, paper);
    QFETCH(const QPageLayout::Orientation, orientation);
    QFETCH(const QSize, points);
    LateDay fixture;
    fixture.openExceptions();
    const QString path = fixture.store.folder() + u"/printed.pdf"_s;
    QString status;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        click(control(dialog, u"CmdDay(1)"_s));
        status = control<QLabel>(dialog, u"DayStatus"_s).text();
    });
    if (QPrinterInfo::availablePrinters().isEmpty())
        fixture.answers.expectMsgBox();
    fixture.answers.expect(u"PrintDialog"_s, [&](QWidget& dialog) {
        auto& printers = control<QComboBox>(dialog, u"printers"_s);
        printers.setCurrentIndex(printers.count() - 1); // the files stand behind the printers
        control<QLineEdit>(dialog, u"filename"_s).setText(path);
        // What its properties set.
        QPrinter& printer = *static_cast<QPrintDialog&>(dialog).printer();
        printer.setPageSize(QPageSize(paper));
        printer.setPageOrientation(orientation);
        static_cast<QPrintDialog&>(dialog).accept();
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(status, u"已列印到 "_s + path);
    QVERIFY(QFile(path).size() > 5000);
    QProcess process;
    process.start(u"pdfinfo"_s, {path});
    QVERIFY(process.waitForFinished(-1));
    const QString told = QString::fromUtf8(process.readAllStandardOutput());
    const auto size = QRegularExpression(u"Page size: +([0-9.]+) x ([0-9.]+) pts"_s).match(told);
    QVERIFY2(size.hasMatch(), qPrintable(told));
    QCOMPARE(QSizeF(size.captured(1).toDouble(), size.captured(2).toDouble()).toSize(), points);
}

void DayJudgementOutputTest::longAccountsGoOnOnAnotherPage() {
    TestStore store;
    addLateDay(store.database());
    DayAccount account = explainDay(store.path(), u"10001"_s, Day);
    const auto pagesOf = [](const DayAccount& each) {
        QImage paper(794, 1123, QImage::Format_RGB32);
        QPainter painter(&paper);
        int further = 0;
        const int pages = paintDayPages(painter, paper.size(), each, [&further] { return ++further < 100; });
        return pages == further + 1 ? pages : -1;
    };
    QCOMPARE(pagesOf(account), 1);
    const std::vector<DayStep> steps = account.steps;
    for (int time = 0; time < 4; ++time)
        account.steps.insert(account.steps.end(), steps.begin(), steps.end());
    QCOMPARE(pagesOf(account), 3);
}

int main(int argc, char** argv) {
    return runTests<DayJudgementOutputTest>(argc, argv);
}

#include "DayJudgementOutputTest.moc"
