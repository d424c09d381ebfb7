#include "rules/reports/StagingDesk.h"
#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFile>
#include <QTest>
#include <QtEndian>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// What is worked out ahead of a report, and what holds for all that is staged.
class StagingTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void headsAreCounted();
    void headsAreLimitedByTheUnitsOfTheWriteOffs();
    void anEmployeesMinutesAreSummed();
    void sumsOverNoRowsAreEmpty();
    void sumsNeedBothDates();
    void anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone_data();
    void anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone();
    void emptyDates_data();
    void emptyDates();
    void anApostropheLeavesWhatWasStaged();
    void otherReportsNeedNothing();
    void stagedInOneStage_data();
    void stagedInOneStage();
    void aLostStageIsTold_data();
    void aLostStageIsTold();
};

void StagingTest::headsAreCounted() {
    Desk desk;
    addEmployee(desk.database(), u"00005"_s, {{u"UnitNo", Value()}, {u"WorkNo", u"0001"}});
    // Neither who has left nor who has no unit; the range of employees plays no part.
    ReportChoice choice = choiceOf(u"D05");
    choice.combos[0] = choice.combos[1] = u"00001"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='3'"_s));
    choice.combos[2] = choice.combos[3] = u"0100"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='2'"_s));
    choice.combos[4] = u"0002"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='1'"_s));
    choice.combos[5] = u"0001"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='0'"_s));
}

void StagingTest::headsAreLimitedByTheUnitsOfTheWriteOffs() {
    Desk desk;
    ReportChoice choice = choiceOf(u"D05");
    choice.writeOffUnits = {u"0200"_s, u"ZZZZ"_s};
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='1'"_s));
    choice.writeOffUnits = {u"0'00"_s, u"ZZZZ"_s};
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
}

void StagingTest::anEmployeesMinutesAreSummed() {
    Desk desk;
    const auto day = [&](const char16_t* EmpNo, QDate date, int minutes) {
        insertRow(desk.database(), u"Atte02"_s,
                  {{u"EmpNo", QString::fromUtf16(EmpNo)},
                   {u"UseDate", date},
                   {u"TimeNo", u"A"},
                   {u"Cushion1", minutes},
                   {u"Cushion3", 1},
                   {u"Delay1", minutes * 10},
                   {u"Delay3", 2},
                   {u"Earlier2", minutes * 100},
                   {u"Earlier4", 3},
                   {u"Absent", 1}});
    };
    day(u"00004", First, 1); // who has left counts as well
    day(u"00004", Last, 2);
    day(u"00004", Last.addDays(1), 50);
    day(u"00001", First, 50);
    desk.database().execute(u"Update Base06 Set EmpName = '王小明' Where EmpNo = '00004'"_s);
    ReportChoice choice = choiceOf(u"D06");
    choice.combos[0] = u"00004"_s;
    QCOMPARE(texts(desk.prepare(choice)),
             QStringList({u"4 Cushion='5'"_s, u"5 Delay='34'"_s, u"6 Earlier='306'"_s, u"7 Absent='2'"_s,
                          u"8 Employee='00004 王小明'"_s}));
    // A null in one of two columns leaves its row out of that sum.
    desk.database().execute(u"Update Atte02 Set Delay3 = null Where UseDate = #2010/3/1#"_s);
    QCOMPARE(texts(desk.prepare(choice)),
             QStringList({u"4 Cushion='5'"_s, u"5 Delay='22'"_s, u"6 Earlier='306'"_s, u"7 Absent='2'"_s,
                          u"8 Employee='00004 王小明'"_s}));
}

void StagingTest::sumsOverNoRowsAreEmpty() {
    Desk desk;
    QCOMPARE(texts(desk.prepare(choiceOf(u"D06"))),
             QStringList({u"4 Cushion=''"_s, u"5 Delay=''"_s, u"6 Earlier=''"_s, u"7 Absent=''"_s,
                          u"8 Employee='000000'"_s}));
}

void StagingTest::sumsNeedBothDates() {
    Desk desk;
    for (const std::size_t index : {0U, 1U}) {
        ReportChoice choice = choiceOf(u"D06");
        choice.dates.at(index) = QDate();
        QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
    }
    ReportChoice choice = choiceOf(u"D06");
    choice.combos[0] = u"' or '1' = '1"_s;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
}

void StagingTest::anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("entries");
    for (const auto* code : {"E01", "E02", "E03", "E04"})
        QTest::newRow(code) << QString::fromLatin1(code) << 32;
    for (const auto* code : {"D05", "D06"})
        QTest::newRow(code) << QString::fromLatin1(code) << 52;
}

void StagingTest::anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone() {
    QFETCH(QString, code);
    QFETCH(int, entries);
    Desk desk;
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}});
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
    ReportChoice choice = choiceOf(code);
    choice.list.assign(static_cast<std::size_t>(entries), {u"01 忘記刷卡"_s, false});
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), 0);
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"later"}});
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"later"}});
    const QStringList before = desk.committed(u"View01"_s) + desk.committed(u"View03"_s);
    choice.list.back().selected = true;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::SubscriptOutOfRange);
    QCOMPARE(desk.committed(u"View01"_s) + desk.committed(u"View03"_s), before);
}

void StagingTest::emptyDates_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("found"); // a reason and an employee
    QTest::addColumn<int>("number");
    for (const auto* code : {"E01", "E03", "E04"}) {
        QTest::addRow("%s, with an employee", code) << QString::fromLatin1(code) << true << error::Syntax;
        QTest::addRow("%s, with none", code) << QString::fromLatin1(code) << false << 0;
    }
    QTest::newRow("E02, with an employee") << u"E02"_s << true << error::Syntax;
    QTest::newRow("E02, with none") << u"E02"_s << false << error::Syntax;
}

void StagingTest::emptyDates() {
    QFETCH(QString, code);
    QFETCH(bool, found);
    QFETCH(int, number);
    for (const std::size_t index : {0U, 1U}) {
        Desk desk;
        insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}});
        insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
        if (found)
            desk.writeOff(u"00001", First, u"01");
        ReportChoice choice = choiceOf(code);
        choice.dates.at(index) = QDate();
        QCOMPARE(errorOf([&] { return desk.prepare(choice); }), number);
        // What was there is gone: the table is emptied first.
        QCOMPARE(desk.committed(code == u"E02"_s ? u"View03"_s : u"View01"_s), QStringList());
    }
}

void StagingTest::anApostropheLeavesWhatWasStaged() {
    Desk desk;
    desk.writeOff(u"00001", First, u"01");
    desk.writeOff(u"00002", First, u"01");
    // A code of a row breaks its statement like a typed one, with those before it staged.
    addEmployee(desk.database(), u"00001'x"_s, {{u"UnitNo", u"0100"}});
    insertRow(desk.database(), u"Canc02"_s,
              {{u"EmpNo", u"00001'x"}, {u"CnlDate", First}, {u"CnlNo1", u"01"}});
    QCOMPARE(errorOf([&] { return desk.prepare(choiceOf(u"E01")); }), error::Syntax);
    QCOMPARE(desk.committed(u"View01"_s), QStringList(count(u"00001", u"01", 1)));
    ReportChoice choice = choiceOf(u"E01");
    choice.combos[1] = u"z' or '1"_s;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
    QCOMPARE(desk.committed(u"View01"_s), QStringList());
    choice = choiceOf(u"E02");
    choice.list[0].text = u"'1 事由"_s;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
}

void StagingTest::otherReportsNeedNothing() {
    Desk desk;
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}});
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
    const std::int64_t before = desk.database().statementCount();
    for (const Report& report : reports())
        if (report.preparation == Preparation::None)
            QVERIFY(desk.prepare(choiceOf(report.code)).empty());
    QCOMPARE(desk.database().statementCount(), before);
    QCOMPARE(desk.committed(u"View01"_s).size() + desk.committed(u"View03"_s).size(), 2);
}

/// The store's file counts its commits: a print is one.
void StagingTest::stagedInOneStage_data() {
    QTest::addColumn<QString>("code");
    for (const auto* code : {"E01", "E02", "E03", "E04"})
        QTest::newRow(code) << QString::fromLatin1(code);
}

void StagingTest::stagedInOneStage() {
    QFETCH(QString, code);
    Desk desk;
    desk.writeOff(u"00001", First, u"01");
    const auto commits = [&] {
        QFile file(desk.store().path());
        quint32 counter = 0;
        if (file.open(QIODevice::ReadOnly) && file.seek(24))
            counter = qFromBigEndian<quint32>(file.read(4).constData());
        return counter;
    };
    const quint32 before = commits();
    (void)desk.prepare(choiceOf(code));
    QCOMPARE(commits(), before + 1);
    QCOMPARE(desk.committed(code == u"E02"_s ? u"View03"_s : u"View01"_s).size(), 1);
    QVERIFY(!desk.database().inStage());
}

void StagingTest::aLostStageIsTold_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("times"); // the box with the least number
    QTest::addColumn<int>("number");
    QTest::newRow("at the end") << u"E02"_s << u"1"_s << error::StoreLocked;
    QTest::newRow("on the way of an error") << u"E03"_s << QString() << error::DiskOrStore;
}

/// Another program is reading, so that nothing can be committed. The loss is told rather than the error that
/// it came with, for what was staged did not stay.
void StagingTest::aLostStageIsTold() {
    QFETCH(QString, code);
    QFETCH(QString, times);
    QFETCH(int, number);
    Desk desk;
    desk.writeOff(u"00001", First, u"01");
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}});
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
    const QStringList before = desk.committed(u"View01"_s) + desk.committed(u"View03"_s);
    ReportChoice choice = choiceOf(code);
    choice.combos[4] = times;
    {
        SQLite::Database reader(desk.store().path().toStdString());
        reader.exec("BEGIN; SELECT count(*) FROM Base01");
        QCOMPARE(errorOf([&] { return desk.prepare(choice); }), number);
    }
    QCOMPARE(desk.committed(u"View01"_s) + desk.committed(u"View03"_s), before);
    QVERIFY(!desk.database().inStage());
}

QTEST_GUILESS_MAIN(StagingTest)
#include "StagingTest.moc"
