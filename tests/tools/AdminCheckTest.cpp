#include "MasterCheck.h"
#include "rules/attendance/DailyCalculation.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"
#include "tools/AdminProgram.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Today(2026, 11, 22);
const QDate December(2026, 12, 1);

/// Table, code and what is wrong, of each finding.
QStringList foundIn(const TestStore& store) {
    QStringList found;
    for (const tools::MasterFinding& finding : tools::checkMasterData(store.path(), Today)) {
        found += finding.table + u'|' + finding.code + u'|' + finding.what;
        if (!finding.remedy.endsWith(u'.'))
            found += u"no remedy"_s;
    }
    return found;
}

/// Two slots, a class of them, three employees and their roster of the coming month: nothing is wrong.
void addSoundData(TestStore& store) {
    Database& database = store.database();
    Stage stage(database);
    addSlot(database, u"A"_s);
    addSlot(database, u"B"_s);
    insertRow(database, u"Base05"_s,
              {{u"ClsNo", u"001"},
               {u"TimeNo1", u"A"},
               {u"TimeDay1", 5},
               {u"TimeRest1", 2},
               {u"TimeNo2", u"b"},
               {u"TimeDay2", 0},
               {u"TimeRest2", 0}});
    for (const QString& code : {u"10001"_s, u"10002"_s, u"10003"_s}) {
        addEmployee(database, code, {{u"ClsNo", u"001"}});
        for (QDate day = December; day.month() == December.month(); day = day.addDays(1))
            addRoster(database, code, day, day.dayOfWeek() > 5 ? QString() : u"A"_s);
    }
    stage.finish();
}

} // namespace

class AdminCheckTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void whatIsWrongIsFound_data();
    void whatIsWrongIsFound();
    void whatIsFoundEndsAnImport_data();
    void whatIsFoundEndsAnImport();
    void theProgramTellsASoundStore();
    void theProgramTellsWhatToDoAndChangesNothing();
    void theProgramTellsDamage();
};

void AdminCheckTest::whatIsWrongIsFound_data() {
    QTest::addColumn<QString>("change");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char* title, const QString& change, const QStringList& found) {
        QTest::newRow(title) << change << found;
    };
    row("nothing", u"DELETE FROM Atte01"_s, {});
    row("no data at all", u"DELETE FROM Rule03; DELETE FROM Base06; DELETE FROM Base05; DELETE FROM Base04"_s,
        {});
    for (const char* name :
         {"CardType", "ElstType", "ElstMin", "Cushion", "Delay", "Earlier", "Cushion1", "Delay1", "Earlier1"})
        row(name, u"UPDATE Base04 SET %1 = NULL WHERE TimeNo = 'B'"_s.arg(QLatin1String(name)),
            {u"Base04|B|%1 is null"_s.arg(QLatin1String(name))});
    row("minutes of an hour", u"UPDATE Base04 SET Delay = 60, Delay1 = 59, Earlier = -1"_s,
        {u"Base04|A|Delay is 60"_s, u"Base04|B|Delay is 60"_s, u"Base04|A|Earlier is -1"_s,
         u"Base04|B|Earlier is -1"_s});
    row("a count beyond a byte", u"UPDATE Base04 SET CardType = 256, ElstType = 255 WHERE TimeNo = 'A'"_s,
        {u"Base04|A|CardType is 256"_s, u"Base04|A|the elastic type does not go with the card type"_s});
    for (const auto& [ElstType, CardType] : {std::pair(2, 3), {4, 2}, {3, 2}, {5, 4}, {4, 5}})
        QTest::addRow("elastic type %d with card type %d", ElstType, CardType)
            << u"UPDATE Base04 SET ElstType = %1, CardType = %2 WHERE TimeNo = 'B'"_s.arg(ElstType).arg(
                   CardType)
            << QStringList{u"Base04|B|the elastic type does not go with the card type"_s};
    for (const auto& [ElstType, CardType] : {std::pair(0, 2), {0, 5}, {1, 2}, {2, 4}, {3, 3}, {3, 4}, {4, 4}})
        QTest::addRow("elastic type %d with card type %d, which go together", ElstType, CardType)
            << u"UPDATE Base04 SET ElstType = %1, CardType = %2"_s.arg(ElstType).arg(CardType)
            << QStringList();
    for (const char* name : {"StrIn1", "StdT1", "StdT2", "EndOut2", "StrIn3", "StdT3", "StdT4", "EndOut4"})
        row(name, u"UPDATE Base04 SET %1 = NULL"_s.arg(QLatin1String(name)),
            {u"Base04|A, B|%1 is null"_s.arg(QLatin1String(name))});
    row("codes with apostrophes",
        u"INSERT INTO Base05(ClsNo, TimeNo1, TimeDay1, TimeRest1) VALUES('0''2', 'A', 1, 0); UPDATE Base04 "
        "SET TimeNo = '''' WHERE TimeNo = 'B'; UPDATE Base05 SET TimeNo2 = NULL; INSERT INTO Base06(EmpNo, "
        "Sex, "
        "ClsNo, ArriveDate, LeaveDate) VALUES('O''Neil', 1, '001', '2000-01-01', '2026-11-30')"_s,
        {u"Base04|'|an apostrophe in the code"_s, u"Base05|0'2|an apostrophe in the code"_s,
         u"Base06|O'Neil|an apostrophe in the code"_s});
    row("a slot of a class that is unknown", u"UPDATE Base05 SET TimeNo2 = 'X'"_s,
        {u"Base05|001|TimeNo2 is \"X\", an unknown time slot"_s});
    row("a slot of a class that is empty", u"UPDATE Base05 SET TimeNo1 = ''"_s,
        {u"Base05|001|TimeNo1 is \"\", an unknown time slot"_s});
    row("null days of a step", u"UPDATE Base05 SET TimeRest2 = NULL"_s, {u"Base05|001|TimeRest2 is null"_s});
    row("null days of a step that is not in use", u"UPDATE Base05 SET TimeDay3 = NULL, TimeRest3 = NULL"_s,
        {});
    row("a rotation of no days", u"UPDATE Base05 SET TimeDay1 = 0, TimeRest1 = 0"_s,
        {u"Base05|001|the rotation has no days"_s});
    row("a rotation of less than none", u"UPDATE Base05 SET TimeDay1 = -5, TimeRest1 = -2"_s,
        {u"Base05|001|the rotation has no days"_s});
    row("a class without a step", u"INSERT INTO Base05(ClsNo, TimeDay1) VALUES('002', 5)"_s,
        {u"Base05|002|the rotation has no days"_s});
    row("employees without a class",
        u"UPDATE Base06 SET ClsNo = iif(EmpNo = '10001', NULL, '') "
        "WHERE EmpNo < '10003'"_s,
        {u"Base06|10001, 10002|no shift class"_s});
    row("one who has left without a class",
        u"UPDATE Base06 SET ClsNo = NULL, LeaveDate = '2026-11-21' WHERE EmpNo = '10001'"_s, {});
    row("an unknown class", u"UPDATE Base06 SET ClsNo = '009' WHERE EmpNo < '10003'"_s,
        {u"Base06|10001, 10002|the shift class \"009\" is unknown"_s});
    row("an unknown class of one who has left",
        u"UPDATE Base06 SET ClsNo = '009', LeaveDate = '2020-01-01' WHERE EmpNo = '10001'"_s,
        {u"Base06|10001|the shift class \"009\" is unknown"_s});
    row("no date of arrival", u"UPDATE Base06 SET ArriveDate = NULL WHERE EmpNo = '10002'"_s,
        {u"Base06|10002|no date of arrival"_s});
    row("a sentinel left standing", u"UPDATE Base06 SET LeaveDate = '2038-01-01'"_s,
        {u"Base06|10001, 10002, 10003|the leaving date is 2038-01-01"_s});
    row("many employees",
        u"WITH n(i) AS (SELECT 20001 UNION ALL SELECT i + 1 FROM n WHERE i < 20020) INSERT INTO "
        "Base06(EmpNo, Sex, ClsNo, ArriveDate, LeaveDate) SELECT i, 0, NULL, '2000-01-01', '2026-11-30' FROM n"_s,
        {u"Base06|20001, 20002, 20003, 20004, 20005 and 15 more|no shift class"_s});
    row("a day of leave without hours",
        u"INSERT INTO Holi04 VALUES('N1','10001','01','2026-11-20','08:00:00','17:00:00',8,'A'),"
        "('N2','10001','01','2026-11-21','08:00:00','17:00:00',NULL,'A'),"
        "('N3','10001',NULL,'2026-11-21','08:00:00','17:00:00',8,'A')"_s,
        {u"Holi04|N2, N3|a day of a leave note without its type, times or hours"_s});
    row("an unknown slot of the roster",
        u"UPDATE Rule03 SET TimeNo = 'Z' WHERE YMD > '2026-12-29' AND TimeNo = 'A'"_s,
        {u"Rule03|\"Z\"|an unknown time slot on 6 days of the roster from 2026-12-30 on"_s});
    row("an unknown slot of a day that is over",
        u"INSERT INTO Rule03(EmpNo, YMD, TimeNo) VALUES('10001','2026-11-21','Z')"_s, {});
    row("nobody's roster", u"DELETE FROM Rule03"_s, {u"Rule03|2026-12|nobody has a roster"_s});
    row("an employee's roster", u"DELETE FROM Rule03 WHERE EmpNo = '10002'"_s,
        {u"Rule03|10002|no roster on 2026-12-01, 2026-12-02, 2026-12-03, 2026-12-04, 2026-12-05 and 26 more"_s});
    row("single days of the roster",
        u"DELETE FROM Rule03 WHERE EmpNo = '10001' AND YMD IN ('2026-12-01', '2026-12-31') OR EmpNo = "
        u"'10003' "
        "AND YMD = '2026-12-24'"_s,
        {u"Rule03|10001|no roster on 2026-12-01, 2026-12-31"_s, u"Rule03|10003|no roster on 2026-12-24"_s});
    row("the roster of one who comes, and of one who leaves, within the month",
        u"DELETE FROM Rule03 WHERE EmpNo < '10003'; UPDATE Base06 SET ArriveDate = '2026-12-30' WHERE "
        "EmpNo = '10001'; UPDATE Base06 SET LeaveDate = '2026-12-02' WHERE EmpNo = '10002'"_s,
        {u"Rule03|10001|no roster on 2026-12-30, 2026-12-31"_s,
         u"Rule03|10002|no roster on 2026-12-01, 2026-12-02"_s});
    row("settings", u"UPDATE Syst01 SET LenEmpNo = NULL, IntervalSec = 256"_s,
        {u"Syst01||LenEmpNo is null"_s, u"Syst01||IntervalSec is 256"_s});
    row("lengths of codes", u"UPDATE Syst01 SET LenEmpNo = 0, IntervalSec = 0"_s, {});
    row("a length below none", u"UPDATE Syst01 SET LenEmpNo = -1"_s, {u"Syst01||LenEmpNo is -1"_s});
    row("no settings", u"DELETE FROM Syst01"_s, {u"Syst01||the row of the settings is missing"_s});
}

void AdminCheckTest::whatIsWrongIsFound() {
    QFETCH(const QString, change);
    QFETCH(const QStringList, found);
    TestStore store;
    addSoundData(store);
    SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE).exec(change.toStdString());
    QCOMPARE(foundIn(store), found);
}

void AdminCheckTest::whatIsFoundEndsAnImport_data() {
    QTest::addColumn<QString>("change");
    QTest::addColumn<bool>("finishes");
    const auto row = [](const char* title, const QString& change, bool finishes) {
        QTest::newRow(title) << change << finishes;
    };
    row("a sound slot", u"UPDATE Base04 SET Delay = 59"_s, true);
    for (const char* name :
         {"CardType", "ElstType", "ElstMin", "Cushion", "Delay", "Earlier", "Cushion1", "Delay1", "Earlier1"})
        row(name, u"UPDATE Base04 SET %1 = NULL"_s.arg(QLatin1String(name)), false);
    row("minutes of an hour", u"UPDATE Base04 SET Delay1 = 60"_s, false);
    row("a count beyond a byte", u"UPDATE Base04 SET CardType = 256"_s, false);
    row("an elastic type that does not go with the card type",
        u"UPDATE Base04 SET ElstType = 2, CardType = 2 WHERE TimeNo = 'A'"_s, false);
    row("an apostrophe in the code", u"UPDATE Base04 SET TimeNo = '''' WHERE TimeNo = 'B'"_s, false);
    row("an apostrophe in the code of an employee of the day",
        u"INSERT INTO Base06(EmpNo, Sex, ClsNo, ArriveDate) VALUES('O''Neil', 1, '001', '2000-01-01');"
        "INSERT INTO Rule03(EmpNo, YMD, TimeNo) VALUES('O''Neil', '2026-11-22', 'A')"_s,
        false);
    row("leave of the day without hours",
        u"INSERT INTO Holi04 VALUES('N1','10001','01','2026-11-22','08:00:00','17:00:00',NULL,'A')"_s, false);
}

/// What is told to end an import does.
void AdminCheckTest::whatIsFoundEndsAnImport() {
    QFETCH(const QString, change);
    QFETCH(const bool, finishes);
    TestStore store;
    addSoundData(store);
    addRoster(store.database(), u"10001"_s, Today, u"A"_s);
    SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE).exec(change.toStdString());
    FakeHost host;
    host.punchFile = store.writePunchFile(u"20261122.txt"_s, punchLine("10001", Today, QTime(8, 0)));
    DailyCalculation calculation(store.database(), host);
    calculation.ReadPunchFile();
    QCOMPARE(calculation.finished(), finishes);
    QCOMPARE(foundIn(store).filter(QRegularExpression(u"^(Base04|Holi04|Base06.*apostrophe)"_s)).isEmpty(),
             finishes);
}

void AdminCheckTest::theProgramTellsASoundStore() {
    const TestStore store;
    const AdminEnd end = admin(store.folder(), {u"check"_s});
    QCOMPARE(end.errors, QString());
    QCOMPARE(end.status, 0);
    QCOMPARE(end.output, store.path() +
                             u" is sound.\nIts data have nothing by which an action would end without "
                             "a word.\n"_s);
}

void AdminCheckTest::theProgramTellsWhatToDoAndChangesNothing() {
    TestStore store;
    addSlot(store.database(), u"A"_s, {{u"Cushion", Value()}});
    insertRow(store.database(), u"Base05"_s, {{u"ClsNo", u"001"}});
    SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE Syst01 SET LenEmpNo = NULL, IntervalSec = 256");
    const QByteArray before = contentOf(store.path());
    const AdminEnd end = admin(store.folder(), {u"check"_s});
    QCOMPARE(end.errors, QString());
    QCOMPARE(end.status, 1);
    QCOMPARE(
        end.output,
        store.path() +
            u" is sound.\n"
            "Syst01: LenEmpNo is null. Enter the length of a code, 12 at most, in the settings. Until then "
            "no "
            "punch file can be read.\n"
            "Syst01: IntervalSec is 256. Enter 0 to 255 in the settings. Until then no punch file can be "
            "read.\n"
            "Base04 A: Cushion is null. Enter 0 to 59 in the time slot. Until then reading a punch file and "
            "the recalculation end without a word.\n"
            "Base05 001: the rotation has no days. Enter days worked in one of its steps. Until then its "
            "roster runs for ever.\n"_s);
    QVERIFY(contentOf(store.path()) == before);
    QCOMPARE(
        QDir(store.folder() + u"/DB"_s).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{u"Pontrel.mdb"_s});
}

void AdminCheckTest::theProgramTellsDamage() {
    const TestStore store;
    QByteArray content = contentOf(store.path());
    content.replace(8192, 30'000, QByteArray(30'000, '\x5a'));
    QFile file(store.path());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    const AdminEnd end = admin(store.folder(), {u"check"_s});
    QCOMPARE(end.status, 1);
    QVERIFY2(end.output.startsWith(store.path() + u" is damaged: "_s), qPrintable(end.output + end.errors));
    QVERIFY(contentOf(store.path()) == content);
}

QTEST_GUILESS_MAIN(AdminCheckTest)
#include "AdminCheckTest.moc"
