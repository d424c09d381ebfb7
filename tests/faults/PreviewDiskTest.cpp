#include "faults/SmallDisk.h"
#include "support/Patience.h"
#include "windows/reports/PreviewFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 DiskSize = 4 * 1024 * 1024;

} // namespace

/// A report saved from its preview onto a disk without space.
class PreviewDiskTest : public QObject {
    Q_OBJECT

  public:
    explicit PreviewDiskTest(QString trouble) : trouble_(std::move(trouble)) {}

  private Q_SLOTS:
    void initTestCase() { QVERIFY2(trouble_.isEmpty(), qPrintable(trouble_)); }

    void aFullDiskIsTold_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<bool>("withShift");
        QTest::addColumn<QString>("name");
        QTest::newRow("PDF") << Qt::Key_S << false << u"a.pdf"_s;
        QTest::newRow("spreadsheet") << Qt::Key_E << false << u"a.xlsx"_s;
        QTest::newRow("CSV") << Qt::Key_E << true << u"a.csv"_s;
    }
    void aFullDiskIsTold() {
        QFETCH(const Qt::Key, key);
        QFETCH(const bool, withShift);
        QFETCH(const QString, name);
        SmallDisk disk(DiskSize);
        PreviewFixture fixture;
        fixture.open();
        disk.fillUpTo(4096);
        const QStringList before = QDir(disk.folder()).entryList(QDir::AllEntries | QDir::Hidden);
        const QString path = disk.folder() + u'/' + name;
        fixture.answers.expectFile(path).expectMsgBox();
        fixture.key(key, withShift ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
        QCOMPARE(fixture.answers.trouble(), QString());
        const SeenPrompt told = fixture.answers.seen().constLast();
        QVERIFY2(told.text.startsWith(u"無法寫入檔案：%1（"_s.arg(path)), qUtf8Printable(told.text));
        QCOMPARE(QDir(disk.folder()).entryList(QDir::AllEntries | QDir::Hidden), before);
        // With room again it is saved, from the same preview.
        disk.freeSpace();
        fixture.answers.expectFile(path);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.preview().isActiveWindow(), PatienceMs);
        fixture.key(key, withShift ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
        QCOMPARE(fixture.answers.trouble(), QString());
        QVERIFY(QFileInfo(path).size() > 1000);
        QCOMPARE(fixture.label(u"LblStatus"_s), u"已存成 %1"_s.arg(path));
    }

  private:
    QString trouble_;
};

int main(int argc, char** argv) {
    const QString trouble = enterOwnMounts();
    PontrelApplication application(argv);
    PreviewDiskTest test(trouble);
    return QTest::qExec(&test, argc, argv);
}
#include "PreviewDiskTest.moc"
