#include "store/Clock.h"
#include "windows/attendance/Form3Fixture.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate Day(2001, 3, 5);
const QString Grid = u"TDBG1"_s;
const QString ReadButton = u"CtrlCmd0(0)"_s;

/// Two employees in a day slot on the day, and the leaving date of a third, who has left.
void addOrganisation(Database& database) {
    addSlot(database, u"A"_s);
    for (const QString& code : {u"10001"_s, u"10002"_s}) {
        addEmployee(database, code);
        addRoster(database, code, Day, u"A"_s);
    }
    addEmployee(database, u"10009"_s, {{u"LeaveDate", QDate(2000, 12, 31)}});
}

/// The first employee's full day; the second one's morning alone.
QByteArray dayFile() {
    return punchLine("10001", Day, QTime(7, 55)) + punchLine("10001", Day, QTime(12, 5)) +
           punchLine("10001", Day, QTime(12, 50)) + punchLine("10001", Day, QTime(17, 3)) +
           punchLine("10002", Day, QTime(7, 58)) + punchLine("10002", Day, QTime(12, 1));
}

QString writeDayFile(const Form3Fixture& fixture) {
    return fixture.store.writePunchFile(u"20010305.txt"_s, dayFile());
}

QStringList leaveDates(Database& database) {
    return rowsOfSelection(database, u"Select EmpNo, LeaveDate from Base06"_s);
}

const QStringList LeaveDatesAtRest{u"10001|null"_s, u"10002|null"_s, u"10009|2000-12-31"_s};
const QStringList LeaveDatesHeld{u"10001|2038-01-01"_s, u"10002|2038-01-01"_s, u"10009|2000-12-31"_s};

QString goodRow() {
    return dailyRow(u"10001"_s, Day, u"A"_s,
                    {{u"Time1", QTime(7, 55)},
                     {u"FT1", true},
                     {u"Time2", QTime(12, 5)},
                     {u"FT2", true},
                     {u"Time3", QTime(12, 50)},
                     {u"FT3", true},
                     {u"Time4", QTime(17, 3)},
                     {u"FT4", true}});
}

QString faultyRow() {
    return dailyRow(u"10002"_s, Day, u"A"_s,
                    {{u"Time1", QTime(7, 58)},
                     {u"FT1", true},
                     {u"Time2", QTime(12, 1)},
                     {u"FT2", true},
                     {u"F3", true},
                     {u"F4", true},
                     {u"Expt", true}});
}

} // namespace

class Form3ImportTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void readButtonImportsTheDay();
    void theImportRunsUnderTheHourglass();
    void messageComesBeforeTheBarGoes();
    void theCounterIsBackOnceAnImportHasEndedWell();
    void fileDialogOpensInThePunchFolderWithItsFilter();
    void cancelInTheFileDialogChangesNothing();
    void anEmptyFileGivesEveryRosteredEmployeeARow();
    void readingTheDayTwiceWithYesGivesTheSameRows();
    void readingTheDayTwiceWithNoChangesNoPunch();
    void aBadFileNameEndsSilentlyAfterTheSentinel();
    void aBadLineEndsSilentlyWithBarAndHourglass();
    void theProgramStillWorksAfterASilentEnd();
    void theNextImportPutsTheSentinelBack();
    void anImportWhileExceptionsWereOpenRefreshesThem();
};

void Form3ImportTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void Form3ImportTest::cleanup() {
    clock::setSource({});
}

void Form3ImportTest::readButtonImportsTheDay() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    fixture.open();
    fixture.answers.expectFile(writeDayFile(fixture)).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& message = fixture.answers.seen().constLast();
    QCOMPARE(message.title, u"警告訊息"_s);
    QCOMPARE(message.text, u"2001/03/05資料已轉入成功!!"_s);
    QCOMPARE(message.buttons.size(), 1);
    QCOMPARE(rowsOf(database, u"Atte01"_s),
             QStringList({u"10001|2001-03-05|07:55:00|255|001"_s, u"10001|2001-03-05|12:05:00|255|001"_s,
                          u"10001|2001-03-05|12:50:00|255|001"_s, u"10001|2001-03-05|17:03:00|255|001"_s,
                          u"10002|2001-03-05|07:58:00|255|001"_s, u"10002|2001-03-05|12:01:00|255|001"_s}));
    QCOMPARE(rowsOf(database, u"Atte02"_s), QStringList({goodRow(), faultyRow()}));
    QCOMPARE(rowsOf(database, u"Atte03"_s), QStringList({faultyRow()}));
    QCOMPARE(leaveDates(database), LeaveDatesAtRest);
    QCOMPARE(fixture.shown(Grid),
             QStringList(
                 {u"10001|員工10001|2001/3/5|07:55|255|001"_s, u"10001|員工10001|2001/3/5|12:05|255|001"_s,
                  u"10001|員工10001|2001/3/5|12:50|255|001"_s, u"10001|員工10001|2001/3/5|17:03|255|001"_s,
                  u"10002|員工10002|2001/3/5|07:58|255|001"_s, u"10002|員工10002|2001/3/5|12:01|255|001"_s}));
    QVERIFY(fixture.at<QProgressBar>(u"ProgressBar1"_s).isHidden());
    QVERIFY(!hourglass());
}

void Form3ImportTest::theImportRunsUnderTheHourglass() {
    Form3Fixture fixture;
    addOrganisation(fixture.database());
    fixture.open();
    QMap<int, bool> pointers; // By the bar's values.
    QObject::connect(&fixture.at<QProgressBar>(u"ProgressBar1"_s), &QProgressBar::valueChanged,
                     &fixture.form(), [&](int value) { pointers[value] = hourglass(); });
    fixture.answers.expectFile(writeDayFile(fixture)).expectMsgBox();
    QVERIFY(!hourglass());
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    // The file, its copy, the overtime, two employees of a slot, the end.
    QCOMPARE(pointers,
             (QMap<int, bool>{{12, true}, {14, true}, {16, true}, {18, true}, {20, true}, {110, true}}));
    QVERIFY(!hourglass());
}

void Form3ImportTest::messageComesBeforeTheBarGoes() {
    Form3Fixture fixture;
    addOrganisation(fixture.database());
    fixture.open();
    int value = -1;
    bool shown = false;
    bool waiting = true;
    fixture.answers.expectFile(writeDayFile(fixture)).expect(u"MsgBox"_s, [&](QWidget& box) {
        const auto& bar = fixture.at<QProgressBar>(u"ProgressBar1"_s);
        value = bar.value();
        shown = bar.isVisible() && bar.maximum() == 110 && bar.minimum() == 0;
        waiting = hourglass();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(value, 110);
    QVERIFY(shown);
    QVERIFY(!waiting);
}

void Form3ImportTest::theCounterIsBackOnceAnImportHasEndedWell() {
    Form3Fixture fixture;
    addOrganisation(fixture.database());
    fixture.open();
    QString overTheMessage;
    fixture.answers.expectFile(writeDayFile(fixture)).expect(u"MsgBox"_s, [&](QWidget& box) {
        overTheMessage = fixture.panel(1);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(overTheMessage, u"執行狀況："_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/6"_s);
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/6"_s);
}

void Form3ImportTest::fileDialogOpensInThePunchFolderWithItsFilter() {
    Form3Fixture fixture;
    fixture.open();
    QString folder;
    QStringList filters;
    fixture.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        folder = files.directory().canonicalPath();
        filters = files.nameFilters();
        files.reject();
    });
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(folder, QDir(fixture.store.punchFolder()).canonicalPath());
    QCOMPARE(filters, QStringList{u"Text (*.txt)"_s});
}

void Form3ImportTest::cancelInTheFileDialogChangesNothing() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    addPunch(database, u"10001"_s, Day, QTime(8, 0));
    const QStringList before = dumpDailyTables(database);
    fixture.open();
    fixture.answers.expectFile(QString());
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(dumpDailyTables(database), before);
    QCOMPARE(leaveDates(database), LeaveDatesAtRest);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QVERIFY(!hourglass());
}

void Form3ImportTest::anEmptyFileGivesEveryRosteredEmployeeARow() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    fixture.open();
    fixture.answers.expectFile(fixture.store.writePunchFile(u"20010305.txt"_s, {})).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QStringList expected;
    for (const QString& code : {u"10001"_s, u"10002"_s})
        expected << dailyRow(code, Day, u"A"_s,
                             {{u"F1", true}, {u"F2", true}, {u"F3", true}, {u"F4", true}, {u"Expt", true}});
    QCOMPARE(rowsOf(database, u"Atte02"_s), expected);
    QCOMPARE(rowsOf(database, u"Atte03"_s), expected);
    QCOMPARE(rowsOf(database, u"Atte01"_s), QStringList());
}

void Form3ImportTest::readingTheDayTwiceWithYesGivesTheSameRows() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    fixture.open();
    const QString file = writeDayFile(fixture);
    fixture.answers.expectFile(file).expectMsgBox();
    fixture.press(ReadButton);
    const QStringList once = dumpDailyTables(database);
    fixture.answers.expectFile(file).expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& question = fixture.answers.seen().at(3);
    QCOMPARE(question.title, u"Pontrel"_s);
    QCOMPARE(question.text, u"這一天的資料已經轉入,是否要取代掉?"_s);
    QCOMPARE(question.buttons.size(), 2);
    QCOMPARE(dumpDailyTables(database), once);
    QCOMPARE(rowsOf(database, u"Atte02"_s), QStringList({goodRow(), faultyRow()}));
}

void Form3ImportTest::readingTheDayTwiceWithNoChangesNoPunch() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    fixture.open();
    const QString file = writeDayFile(fixture);
    fixture.answers.expectFile(file).expectMsgBox();
    fixture.press(ReadButton);
    const QStringList punches = rowsOf(database, u"Atte01"_s);
    fixture.answers.expectFile(file).expectMsgBox(MsgAnswer::No).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(rowsOf(database, u"Atte01"_s), punches);
    QCOMPARE(fixture.answers.seen().constLast().text, u"2001/03/05資料已轉入成功!!"_s);
    QCOMPARE(leaveDates(database), LeaveDatesAtRest);
}

void Form3ImportTest::aBadFileNameEndsSilentlyAfterTheSentinel() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    fixture.open();
    fixture.answers.expectFile(fixture.store.writePunchFile(u"20010230.txt"_s, dayFile()));
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().size(), 1);
    QCOMPARE(leaveDates(database), LeaveDatesHeld);
    for (const QString& table :
         {u"AtteTemp"_s, u"Atte01"_s, u"AtteTemp1"_s, u"Atte02"_s, u"Atte03"_s, u"View02"_s})
        QCOMPARE(rowsOf(database, table), QStringList());
    QVERIFY(fixture.at<QProgressBar>(u"ProgressBar1"_s).isHidden());
    QVERIFY(!hourglass());
}

void Form3ImportTest::aBadLineEndsSilentlyWithBarAndHourglass() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    fixture.open();
    const QByteArray bad = punchLine("10002", Day, QTime(8, 0)).replace("20010305", "20010230");
    fixture.answers.expectFile(
        fixture.store.writePunchFile(u"20010305.txt"_s, punchLine("10001", Day, QTime(7, 55)) + bad));
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().size(), 1);
    QCOMPARE(rowsOf(database, u"AtteTemp"_s), QStringList{u"10001|2001-03-05|07:55:00|255|001"_s});
    QCOMPARE(rowsOf(database, u"Atte01"_s), QStringList());
    QCOMPARE(leaveDates(database), LeaveDatesHeld);
    QVERIFY(fixture.at<QProgressBar>(u"ProgressBar1"_s).isVisible());
    QVERIFY(hourglass());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
}

void Form3ImportTest::theProgramStillWorksAfterASilentEnd() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    insertRow(database, u"Atte01"_s,
              {{u"EmpNo", u"10001"},
               {u"UseDate", QDate(2001, 3, 2)},
               {u"UseTime", QTime(8, 0)},
               {u"class", u"255"},
               {u"ReaderID", u"001"}});
    fixture.open();
    const QByteArray bad = punchLine("10001", QDate(2001, 3, 6), QTime(8, 0)).replace("080000", "250000");
    fixture.answers.expectFile(fixture.store.writePunchFile(u"20010306.txt"_s, bad));
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(hourglass());
    // The run counts as going on, and every button answers.
    fixture.press(u"CtrlCmd0(6)"_s);
    QCOMPARE(fixture.panel(1), u"執行狀況："_s);
    fixture.expectDate(u"900302"_s);
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.shown(Grid), QStringList{u"10001|員工10001|2001/3/2|08:00|255|001"_s});
    QCOMPARE(fixture.answers.trouble(), QString());
    fixture.press(u"CtrlCmd0(8)"_s);
    QVERIFY(!fixture.isOpen());
    QVERIFY(hourglass());
    // A new opening starts with the flags cleared.
    OpenToolWindow(3);
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
    QVERIFY(fixture.at<QProgressBar>(u"ProgressBar1"_s).isHidden());
}

void Form3ImportTest::theNextImportPutsTheSentinelBack() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addOrganisation(database);
    fixture.open();
    fixture.answers.expectFile(fixture.store.writePunchFile(u"2001030x.txt"_s, dayFile()));
    fixture.press(ReadButton);
    QCOMPARE(leaveDates(database), LeaveDatesHeld);
    fixture.answers.expectFile(writeDayFile(fixture)).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(leaveDates(database), LeaveDatesAtRest);
    QCOMPARE(rowsOf(database, u"Atte02"_s), QStringList({goodRow(), faultyRow()}));
}

void Form3ImportTest::anImportWhileExceptionsWereOpenRefreshesThem() {
    Form3Fixture fixture;
    addOrganisation(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    QCOMPARE(fixture.shown(u"TDBG3(0)"_s), QStringList());
    fixture.clickTab(0);
    fixture.answers.expectFile(writeDayFile(fixture)).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    fixture.tabs().setCurrentIndex(2);
    QCOMPARE(fixture.shown(u"TDBG3(0)"_s).size(), 1);
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
}

int main(int argc, char** argv) {
    return runTests<Form3ImportTest>(argc, argv);
}

#include "Form3ImportTest.moc"
