#include "paper/DemoPrints.h"
#include "paper/PagePicture.h"
#include "paper/PdfFile.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Monday(2010, 3, 1);
const QDate Sunday(2010, 3, 14);
const QDate NewYear(2010, 1, 1);
const QDate EndOfMarch(2010, 3, 31);

/// A report of each kind: cards, days side by side, rows in groups, sums, one employee's, staged rows.
QList<DemoPrint> prints() {
    return {{u"a10"_s, {}, {}, {{2, u"6000"_s}, {3, u"6100"_s}}},
            {u"B02"_s, Monday, Sunday, {}},
            {u"C05"_s, Monday, Sunday, {}},
            {u"D02"_s, Monday, Sunday, {}},
            {u"D06"_s, Monday, Sunday, {{0, u"10022"_s}}},
            {u"E04"_s, NewYear, EndOfMarch, {}}};
}

/// Passes a page on to a painter, with one thing on it changed.
class ChangedPage : public PageSink {
  public:
    explicit ChangedPage(PageSink& painter) : painter_(painter) {}

    int movedFrom = -1; ///< Texts that begin at that place of the line, in 1/100 mm,
    int movedBy = 0;    ///< stand so much further to the right.
    int lostLine = -1;  ///< The line of that number is not drawn,
    int lostFill = -1;  ///< nor the shade of that number,
    QString lostText;   ///< nor a text that holds this one.

    void text(const TextItem& item) override {
        if (!lostText.isEmpty() && item.text.contains(lostText))
            return;
        TextItem moved = item;
        if (item.x == movedFrom)
            moved.x += movedBy;
        painter_.text(moved);
    }
    void line(const LineItem& item) override {
        if (lines_++ != lostLine)
            painter_.line(item);
    }
    void fill(const FillItem& item) override {
        if (fills_++ != lostFill)
            painter_.fill(item);
    }

  private:
    PageSink& painter_;
    int lines_ = 0;
    int fills_ = 0;
};

/// Notes where the texts of a page's lines begin, and one line and one shade of each size.
class NotedPage : public PageSink {
  public:
    QList<int> starts;
    QMap<std::pair<int, int>, int> lines; ///< By length and thickness, their numbers on the page.
    QMap<std::pair<int, int>, int> fills; ///< By width and height.

    void text(const TextItem& item) override {
        if (!starts.contains(item.x))
            starts += item.x;
    }
    void line(const LineItem& item) override { lines.insert({item.length, item.thickness}, lineCount_++); }
    void fill(const FillItem& item) override { fills.insert({item.width, item.height}, fillCount_++); }

  private:
    int lineCount_ = 0;
    int fillCount_ = 0;
};

} // namespace

/// The first pages of six reports over the example organisation, compared with pictures that have been looked
/// at. PONTREL_ACCEPT=pictures replaces these by what is painted now.
class ReportPicturesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void firstPages_data() { addPrints(); }
    void firstPages();
    void anotherProgramPaintsTheSame_data() { addPrints(); }
    void anotherProgramPaintsTheSame();
    void aMovedColumnIsFound_data() { addPrints(); }
    void aMovedColumnIsFound();
    void aMissingLineIsFound_data() { addPrints(); }
    void aMissingLineIsFound();
    void aMissingTextIsFound_data() { addPrints(); }
    void aMissingTextIsFound();
    void anotherPaperIsFound();

  private:
    static void addPrints();
    [[nodiscard]] std::shared_ptr<const ReportDocument> document(const QString& code);
    [[nodiscard]] QImage changed(const ReportDocument& document,
                                 const std::function<void(ChangedPage&)>& change);

    DemoPrints demo_;
};

void ReportPicturesTest::addPrints() {
    QTest::addColumn<QString>("code");
    for (const DemoPrint& print : prints())
        QTest::newRow(qPrintable(print.code)) << print.code;
}

std::shared_ptr<const ReportDocument> ReportPicturesTest::document(const QString& code) {
    for (const DemoPrint& print : prints())
        if (print.code == code)
            return demo_.print(print);
    qFatal("no such print");
}

QImage ReportPicturesTest::changed(const ReportDocument& document,
                                   const std::function<void(ChangedPage&)>& change) {
    return pictureOf(document, 0, [&](PageSink& painter) {
        ChangedPage page(painter);
        change(page);
        document.emitPage(0, page);
    });
}

void ReportPicturesTest::firstPages() {
    QFETCH(const QString, code);
    const QImage actual = pictureOf(*document(code), 0);
    const QString path = QStringLiteral(PONTREL_PICTURES "/") + code + u".png"_s;
    if (qEnvironmentVariable("PONTREL_ACCEPT") == u"pictures"_s) {
        QVERIFY(actual.save(path));
        QSKIP("the picture has been replaced; look at it");
    }
    const QString difference = differenceOf(QImage(path), actual);
    if (!difference.isEmpty()) {
        const QString painted = QDir::tempPath() + u"/pontrel-"_s + code + u".png"_s;
        QVERIFY(actual.save(painted));
        QFAIL(qPrintable(u"%1 against %2: %3"_s.arg(painted, path, difference)));
    }
}

/// What letters look like is another's affair: a program with its own way to draw passes.
void ReportPicturesTest::anotherProgramPaintsTheSame() {
    QFETCH(const QString, code);
    const auto report = document(code);
    const QTemporaryDir folder;
    const QString pdf = folder.filePath(u"report.pdf"_s);
    QVERIFY(savePdf(*report, pdf));
    QProcess painter;
    painter.start(u"pdftocairo"_s, {u"-r"_s, u"240"_s, u"-gray"_s, u"-png"_s, u"-singlefile"_s, pdf,
                                    folder.filePath(u"page"_s)});
    QVERIFY(painter.waitForFinished(-1));
    QCOMPARE(painter.exitCode(), 0);
    const QImage expected = pictureOf(*report, 0);
    const QImage other(folder.filePath(u"page.png"_s));
    // It rounds the size of the paper in its own way.
    QVERIFY(std::abs(other.width() / 4 - expected.width()) <= 1);
    QVERIFY(std::abs(other.height() / 4 - expected.height()) <= 1);
    QCOMPARE(differenceOf(expected, reduced(other.copy(0, 0, expected.width() * 4, expected.height() * 4))),
             QString());
}

/// Each by a millimetre.
void ReportPicturesTest::aMovedColumnIsFound() {
    QFETCH(const QString, code);
    const auto report = document(code);
    const QImage expected = pictureOf(*report, 0);
    NotedPage page;
    report->emitPage(0, page);
    QVERIFY(page.starts.size() > 3);
    for (const int start : page.starts) {
        const QImage moved = changed(*report, [=](ChangedPage& each) {
            each.movedFrom = start;
            each.movedBy = 100;
        });
        QVERIFY2(!differenceOf(expected, moved).isEmpty(), qPrintable(QString::number(start)));
    }
}

void ReportPicturesTest::aMissingLineIsFound() {
    QFETCH(const QString, code);
    const auto report = document(code);
    const QImage expected = pictureOf(*report, 0);
    NotedPage page;
    report->emitPage(0, page);
    const auto found = [&](const std::function<void(ChangedPage&)>& change) {
        return !differenceOf(expected, changed(*report, change)).isEmpty();
    };
    for (const int line : page.lines)
        QVERIFY2(found([=](ChangedPage& each) { each.lostLine = line; }), qPrintable(QString::number(line)));
    for (const int fill : page.fills)
        QVERIFY2(found([=](ChangedPage& each) { each.lostFill = fill; }), qPrintable(QString::number(fill)));
    // The days side by side have neither.
    QCOMPARE(page.lines.isEmpty() && page.fills.isEmpty(), code == u"B02"_s);
}

/// The code in the foot, the shortest there is on each.
void ReportPicturesTest::aMissingTextIsFound() {
    QFETCH(const QString, code);
    const auto report = document(code);
    QVERIFY(!differenceOf(pictureOf(*report, 0),
                          changed(*report, [&](ChangedPage& page) { page.lostText = code.toUpper(); }))
                 .isEmpty());
}

void ReportPicturesTest::anotherPaperIsFound() {
    QCOMPARE(differenceOf(pictureOf(*document(u"C05"_s), 0), pictureOf(*document(u"E04"_s), 0)),
             u"496 by 702 dots, expected 702 by 496"_s);
}

QTEST_MAIN(ReportPicturesTest)
#include "ReportPicturesTest.moc"
