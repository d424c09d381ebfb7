#include "app/ListForm.h"
#include "faults/SmallDisk.h"
#include "support/SavedFiles.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 DiskSize = 4 * 1024 * 1024;
constexpr int Punches = 4000;

} // namespace

/// A list exported onto a disk without space.
class ListDiskTest : public QObject {
    Q_OBJECT

  public:
    explicit ListDiskTest(QString trouble) : trouble_(std::move(trouble)) {}

  private Q_SLOTS:
    void initTestCase() { QVERIFY2(trouble_.isEmpty(), qPrintable(trouble_)); }

    void aFullDiskIsTold_data() {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("name");
        QTest::addColumn<qint64>("left");
        // Nothing at all; a page; more than a page and less than the file.
        for (const qint64 left : {0, 4096, 32768}) {
            QTest::addRow("CSV, %lld bytes left", static_cast<long long>(left))
                << u"ActExportCsv"_s << u"a.csv"_s << left;
            QTest::addRow("spreadsheet, %lld bytes left", static_cast<long long>(left))
                << u"ActExportSheet"_s << u"a.xlsx"_s << left;
        }
    }
    void aFullDiskIsTold() {
        QFETCH(const QString, entry);
        QFETCH(const QString, name);
        QFETCH(const qint64, left);
        SmallDisk disk(DiskSize);
        ListForm form;
        form.addPunches(Punches);
        form.grid.setColumns({{u"員工碼"_s, u"EmpNo"_s, 60}, {u"打卡日期"_s, u"UseDate"_s, 60}});
        form.open();
        const QString path = disk.folder() + u'/' + name;
        QFile earlier(path);
        QVERIFY(earlier.open(QIODevice::WriteOnly) && earlier.write("earlier") == 7);
        earlier.close();
        disk.fillUpTo(left);
        const QStringList before = QDir(disk.folder()).entryList(QDir::AllEntries | QDir::Hidden);
        form.answers.expectFile(path).expectMsgBox(MsgAnswer::Yes).expectMsgBox();
        form.choose(entry);
        QCOMPARE(form.answers.trouble(), QString());
        const SeenPrompt told = form.answers.seen().constLast();
        QVERIFY2(told.text.startsWith(u"無法寫入檔案：%1（"_s.arg(path)), qUtf8Printable(told.text));
        QVERIFY2(!told.text.contains(u"未知"_s), qUtf8Printable(told.text));
        QCOMPARE(told.icon, MsgIcon::Exclamation);
        QCOMPARE(contentOf(path), QByteArray("earlier"));
        QCOMPARE(QDir(disk.folder()).entryList(QDir::AllEntries | QDir::Hidden), before);
        // With room again it is exported, from the same list.
        disk.freeSpace();
        form.answers.expectFile(path).expectMsgBox(MsgAnswer::Yes).expectMsgBox();
        form.choose(entry);
        QCOMPARE(form.answers.trouble(), QString());
        QCOMPARE(form.answers.seen().constLast().text, u"已匯出 4,000 列到「%1」。"_s.arg(path));
        QVERIFY(contentOf(path).size() > 32768);
    }

  private:
    QString trouble_; ///< Why there can be no small disk.
};

int main(int argc, char** argv) {
    const QString trouble = enterOwnMounts();
    PontrelApplication application(argv);
    ListDiskTest test(trouble);
    return QTest::qExec(&test, argc, argv);
}
#include "ListDiskTest.moc"
