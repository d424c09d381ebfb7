#include "store/Clock.h"
#include "store/StatementText.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/attendance/Form3Fixture.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Exceptions = u"TDBG3(0)"_s;
const QString Query = u"CmdCtrl(3)"_s;

} // namespace

/// What is met only where several windows, or a failure and what follows it, come together.
class Form3CornersTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void aQueryWithoutAChoiceRepeatsTheLastKind();
    void aCancelledLookupQueriesTheEarlierPick_data();
    void aCancelledLookupQueriesTheEarlierPick();
    void aCancelledLookupWithoutAPickShowsNothing_data();
    void aCancelledLookupWithoutAPickShowsNothing();
    void aSearchCancelledBesideAnUntouchedBoxFails();
    void aTabClickShowsTheCounterWhileARunStands();
    void theFileDialogFindsItsFolder_data();
    void theFileDialogFindsItsFolder();
    void aFailedBindingOnAClickIsToldAlone();
    void namesAreReadAnewByRefreshQueryAndImport();
};

void Form3CornersTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
    gQueryKind = 0;
    clearPicks();
}

void Form3CornersTest::cleanup() {
    clock::setSource({});
    gQueryKind = 0;
    clearPicks();
    setHourglass(false);
}

void Form3CornersTest::aQueryWithoutAChoiceRepeatsTheLastKind() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    gQueryKind = 3;
    gPickEmpNo = u"10002"_s;
    fixture.answers.expectClick(u"IFrmQuery"_s, u"Command1(0)"_s);
    fixture.press(Query);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Exceptions).size(), 1);
    QVERIFY(fixture.shown(Exceptions).constFirst().startsWith(u"2001/3/5|10002|"_s));
}

void Form3CornersTest::aCancelledLookupQueriesTheEarlierPick_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("keys");
    const QString fifth = u"2001/3/5|10001"_s;
    const QString sixth = u"2001/3/6|10001"_s;
    QTest::addRow("day and employee") << 2 << QStringList{sixth};
    QTest::addRow("employee") << 3 << QStringList{fifth, sixth};
    QTest::addRow("day and unit") << 4 << QStringList{sixth};
}

void Form3CornersTest::aCancelledLookupQueriesTheEarlierPick() {
    QFETCH(const int, kind);
    QFETCH(const QStringList, keys);
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.database().execute(u"Update Base06 Set UnitNo = '10' Where EmpNo = '10001'"_s);
    fixture.open();
    fixture.clickTab(2);
    gPickEmpNo = u"10001"_s;
    gPickUnitNo = u"10"_s;
    fixture.expectKind(kind);
    if (kind != 3)
        fixture.expectDate(u"900306"_s);
    fixture.answers.expectClick(kind == 4 ? u"QFrmUnitNo"_s : u"QFrmEmpNO"_s, u"Command1(1)"_s);
    fixture.press(Query);
    QCOMPARE(fixture.answers.trouble(), QString());
    QStringList shown;
    for (const QString& row : fixture.shown(Exceptions))
        shown << row.section(u'|', 0, 1);
    QCOMPARE(shown, keys);
    QCOMPARE(fixture.panel(1), u"資料錄:1/%1"_s.arg(keys.size()));
}

void Form3CornersTest::aCancelledLookupWithoutAPickShowsNothing_data() {
    QTest::addColumn<int>("kind");
    for (const int kind : {2, 3, 4})
        QTest::addRow("kind %d", kind) << kind;
}

void Form3CornersTest::aCancelledLookupWithoutAPickShowsNothing() {
    QFETCH(const int, kind);
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    QCOMPARE(fixture.shown(Exceptions).size(), 3);
    fixture.expectKind(kind);
    if (kind != 3)
        fixture.expectDate(u"900305"_s);
    fixture.answers.expectClick(kind == 4 ? u"QFrmUnitNo"_s : u"QFrmEmpNO"_s, u"Command1(1)"_s);
    fixture.press(Query);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Exceptions), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
}

void Form3CornersTest::aSearchCancelledBesideAnUntouchedBoxFails() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    fixture.clickTab(1);
    // The empty text is no change, so no code has been looked up and none has failed; there is no employee to
    // show.
    fixture.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s).expectMsgBox();
    fixture.press(u"Search"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constLast().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QCOMPARE(fixture.shown(u"TDBG2"_s), QStringList());
}

void Form3CornersTest::aTabClickShowsTheCounterWhileARunStands() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    const QByteArray bad = punchLine("10001", QDate(2001, 3, 7), QTime(8, 0)).replace("080000", "250000");
    fixture.answers.expectFile(fixture.store.writePunchFile(u"20010307.txt"_s, bad));
    fixture.press(u"CtrlCmd0(0)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    fixture.press(u"CtrlCmd0(6)"_s);
    QCOMPARE(fixture.panel(1), u"執行狀況："_s);
    fixture.clickTab(1);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(fixture.panel(1), u"執行狀況："_s);
}

void Form3CornersTest::theFileDialogFindsItsFolder_data() {
    QTest::addColumn<QString>("HandPath");
    QTest::addColumn<QString>("opened"); // Below the program's folder.
    QTest::addRow("beside the program") << u"punch"_s << u"punch"_s;
    QTest::addRow("below such a one") << u"punch/2001"_s << u"punch/2001"_s;
    QTest::addRow("by a way round") << u"./DB/../punch"_s << u"punch"_s;
    QTest::addRow("none named") << QString() << QString();
    QTest::addRow("missing below one that is there") << u"punch/2002/03"_s << u"punch"_s;
    QTest::addRow("missing beside the program") << u"clock"_s << QString();
    QTest::addRow("a file") << u"DB/Pontrel.mdb"_s << u"DB"_s;
    QTest::addRow("in the words of another system") << u"C:\\Reader\\DataBase"_s << QString();
    QTest::addRow("missing below the program") << u"%1/clock/2002/03"_s << QString();
}

void Form3CornersTest::theFileDialogFindsItsFolder() {
    QFETCH(const QString, HandPath);
    QFETCH(const QString, opened);
    Form3Fixture fixture;
    const QDir program(fixture.store.folder());
    QVERIFY(program.mkdir(u"punch/2001"_s));
    const QString stored = HandPath.contains(u"%1") ? HandPath.arg(program.path()) : HandPath;
    fixture.database().execute(u"update Syst01 set HandPath = "_s + textLiteral(stored));
    fixture.open();
    QString folder;
    fixture.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        folder = files.directory().canonicalPath();
        files.reject();
    });
    fixture.press(u"CtrlCmd0(0)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(folder, QDir(program.filePath(opened)).canonicalPath());
    // The settings' folder dialog leaves it behind as it is stored.
    QCOMPARE(gHandPath, stored);
}

void Form3CornersTest::aFailedBindingOnAClickIsToldAlone() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    CloseDB();
    fixture.answers.expectMsgBox();
    fixture.clickTab(0);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constLast().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QVERIFY(!gOpenFailed);
    QVERIFY(fixture.isOpen());
    // Once the store can be reached again a further click binds the page.
    OpenDB();
    fixture.press(u"CtrlCmd0(4)"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    // The next window that is opened does not answer for it.
    fixture.form().unload();
    OpenToolWindow(3);
    QVERIFY(moduleWindow(3));
}

void Form3CornersTest::namesAreReadAnewByRefreshQueryAndImport() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    addReadPunch(fixture.database(), u"10001"_s, Day, QTime(8, 0));
    fixture.open();
    const auto rename = [&](const QString& name) {
        fixture.database().execute(u"update Base06 set EmpName = '%1' where EmpNo = '10001'"_s.arg(name));
    };
    const auto nameIn = [&](const QString& grid) { return fixture.shown(grid).constFirst().split(u'|'); };
    rename(u"甲"_s);
    QCOMPARE(nameIn(u"TDBG1"_s).at(1), u"王小明"_s);
    fixture.press(u"CtrlCmd0(6)"_s);
    QCOMPARE(nameIn(u"TDBG1"_s).at(1), u"甲"_s);
    rename(u"乙"_s);
    fixture.expectDate(u"900305"_s);
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(nameIn(u"TDBG1"_s).at(1), u"乙"_s);
    fixture.clickTab(2);
    rename(u"丙"_s);
    fixture.expectKind(0);
    fixture.press(Query);
    QCOMPARE(nameIn(Exceptions).at(2), u"丙"_s);
    rename(u"丁"_s);
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdCtrl(5)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(nameIn(Exceptions).at(2), u"丁"_s);
    fixture.tabs().setCurrentIndex(0);
    rename(u"戊"_s);
    const QDate later(2001, 3, 7);
    fixture.answers
        .expectFile(fixture.store.writePunchFile(u"20010307.txt"_s, punchLine("10001", later, QTime(8, 0))))
        .expectMsgBox();
    fixture.press(u"CtrlCmd0(0)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(u"TDBG1"_s), QStringList{u"10001|戊|2001/3/7|08:00|255|001"_s});
}

int main(int argc, char** argv) {
    return runTests<Form3CornersTest>(argc, argv);
}

#include "Form3CornersTest.moc"
