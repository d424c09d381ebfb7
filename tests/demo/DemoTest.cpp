#include "demo/Demo.h"
#include "rules/attendance/DailyCalculation.h"
#include "store/Schema.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/TestStore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;

namespace {

qint64 countOf(Database& database, const QString& tableAndCondition) {
    return database.select(QStringLiteral("select count(*) as cnt from ") + tableAndCondition)
        .at(0, 0)
        .toInteger();
}

/// The rows of a selection, one a line, their values as they are joined.
QString told(Database& database, const QString& statement) {
    QStringList lines;
    for (const auto& row : database.select(statement)) {
        QStringList cells;
        for (const Value& value : row)
            cells += value.joined();
        lines += cells.join(u' ');
    }
    return lines.join(u'\n');
}

/// Every row of every table, apart from the settings row, which names the store's own folder.
QStringList wholeStore(Database& database) {
    QStringList rows;
    for (const Table& table : tables())
        if (table.name != QStringLiteral("Syst01"))
            for (const QString& row : rowsOf(database, table.name))
                rows += table.name + u'|' + row;
    return rows;
}

} // namespace

class DemoTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theStoreIsTheSameEveryTime() {
        TestStore first;
        TestStore second;
        createDemo(first.database(), first.folder());
        createDemo(second.database(), second.folder());
        QCOMPARE(wholeStore(first.database()), wholeStore(second.database()));
    }

    void aKilledRunLeavesNothingThatTheNextTakesForAPunchFile() {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("punch")));
        const QDir punches(folder.filePath(QStringLiteral("punch")));
        // The child is killed by the system as it writes the first file beyond its thousandth byte.
        const pid_t child = ::fork();
        if (child == 0) {
            const rlimit most{1000, 1000};
            const rlimit noCore{0, 0};
            ::setrlimit(RLIMIT_CORE, &noCore);
            ::setrlimit(RLIMIT_FSIZE, &most);
            ::signal(SIGXFSZ, SIG_DFL);
            writeDemoPunchFiles(folder.path());
            ::_exit(0);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(WTERMSIG(status), SIGXFSZ);
        QCOMPARE(punches.entryList({QStringLiteral("*.txt")}, QDir::Files | QDir::Hidden), QStringList());
        writeDemoPunchFiles(folder.path());
        QStringList names;
        for (const DemoPunchFile& file : demoPunchFiles()) {
            QFile written(punches.filePath(file.name));
            QVERIFY(written.open(QIODevice::ReadOnly));
            QCOMPARE(written.readAll(), file.content);
            names += file.name;
        }
        QCOMPARE(punches.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), names);
    }

    void theFilesAreThoseOfTenWorkingDays() {
        const std::vector<DemoPunchFile> files = demoPunchFiles();
        QStringList names;
        for (const DemoPunchFile& file : files)
            names += file.name;
        QCOMPARE(names.join(u' '),
                 QStringLiteral("20100301.txt 20100302.txt 20100303.txt 20100304.txt 20100305.txt "
                                "20100308.txt 20100309.txt 20100310.txt 20100311.txt 20100312.txt"));
    }

    void theFilesAreTheSameOnEveryMachine() {
        // A change of the example is accepted by writing its new lines here.
        const QByteArray content = demoPunchFiles().front().content;
        QCOMPARE(content.left(3 * 36), QByteArray("0000000000002010030105000000011001\r\n"
                                                  "0000000100342010030107371300007002\r\n"
                                                  "0000000100192010030107395000007002\r\n"));
        QCOMPARE(content.count('\n'), 136);
    }

    void theFilesHoldEveryKindOfLine() {
        QByteArray all;
        for (const DemoPunchFile& file : demoPunchFiles())
            all += file.content;
        int functionKeys = 0;
        int overtimeOfTheReader = 0;
        int otherKinds = 0;
        int shortLines = 0;
        int sameSecond = 0;
        QByteArray before;
        for (const QByteArray& text : all.split('\n')) {
            const QByteArray line = text.trimmed();
            shortLines += !line.isEmpty() && line.size() < 34;
            functionKeys += line.mid(29, 2) == "42";
            otherKinds += line.mid(29, 2) == "11";
            overtimeOfTheReader += line.mid(26, 5) == "08107";
            sameSecond += !line.isEmpty() && line == before;
            before = line;
        }
        QVERIFY(functionKeys > 10);
        QVERIFY(overtimeOfTheReader > 0);
        QVERIFY(otherKinds > 0);
        QVERIFY(shortLines > 0);
        QVERIFY(sameSecond > 0);
    }

    void slotsOfEveryKindAreInUse() {
        TestStore store;
        createDemo(store.database(), store.folder());
        const QString rostered = QStringLiteral("Base04,Rule03 where Rule03.TimeNo = Base04.TimeNo and ");
        for (int kind = 0; kind <= 4; ++kind) {
            QVERIFY2(countOf(store.database(), rostered + QStringLiteral("CardType = %1").arg(kind)) > 0,
                     qPrintable(QString::number(kind)));
            QVERIFY2(countOf(store.database(), rostered + QStringLiteral("ElstType = %1").arg(kind)) > 0,
                     qPrintable(QString::number(kind)));
        }
    }

    void leaveIsEnteredAsTheWindowsEnterIt() {
        TestStore store;
        createDemo(store.database(), store.folder());
        Database& database = store.database();
        // A note of its own has a substitute and a reason, one of a batch the moment of its batch.
        QCOMPARE(told(database,
                      QStringLiteral("select BusNo,EmpNo,RepEmpNo,HoliNo,HoliBegTime,HoliEndTime,HoliHours,"
                                     "TransDate from Holi03")),
                 QStringLiteral("201002220001 10027 10026 06 08:00:00 17:00:00 5 2010/2/22\n"
                                "201002240001 10005  01 08:30:00 17:30:00 1 2010/2/24 09:00:00\n"
                                "201002260001 10022 10021 02 08:00:00 17:00:00 2 2010/2/26\n"
                                "201003010001 10025  04 13:00:00 17:00:00 0.4 2010/3/1 09:00:00\n"
                                "201003010002 10032 10033 05 08:00:00 17:00:00 1 2010/3/1\n"
                                "201003020001 10016  01 13:30:00 17:30:00 0.4 2010/3/2 09:00:00\n"
                                "201003020002 10020 10021 14 08:00:00 17:00:00 1 2010/3/2\n"
                                "201003030001 10008 10009 03 08:30:00 12:30:00 0.4 2010/3/3\n"
                                "201003030002 10038 10036 04 08:30:00 17:30:00 2 2010/3/3\n"
                                "201003080001 10014 10015 10 08:30:00 17:30:00 2 2010/3/8\n"
                                "201003090001 10012 10011 04 09:00:00 18:00:00 1 2010/3/9\n"
                                "201003090002 10023  01 13:00:00 17:00:00 0.4 2010/3/9 09:00:00\n"
                                "201003090003 10024  01 13:00:00 17:00:00 0.4 2010/3/9 09:00:00\n"
                                "201003090004 10026  01 13:00:00 17:00:00 0.4 2010/3/9 09:00:00\n"
                                "201003090005 10028  01 13:00:00 17:00:00 0.4 2010/3/9 09:00:00\n"
                                "201003090006 10029  01 13:00:00 17:00:00 0.4 2010/3/9 09:00:00\n"
                                "201003100001 10034 10033 03 13:00:00 17:00:00 0.4 2010/3/10"));
        // A weekend in the middle keeps its rows without hours.
        QCOMPARE(told(database,
                      QStringLiteral("select BusNo,HoliNo,HoliDate,BegTime,EndTime,HoliHours,TimeNo from "
                                     "Holi04 where EmpNo='10022'")),
                 QStringLiteral("201002260001 02 2010/3/5 08:00:00 17:00:00 8 A\n"
                                "201002260001 02 2010/3/6 08:00:00 17:00:00 0 \n"
                                "201002260001 02 2010/3/7 08:00:00 17:00:00 0 \n"
                                "201002260001 02 2010/3/8 08:00:00 17:00:00 8 A"));
        QCOMPARE(countOf(database, QStringLiteral("Holi04")), 26);
    }

    void balancesAreThoseOfTheGrantsAndTheBatches() {
        TestStore store;
        createDemo(store.database(), store.folder());
        Database& database = store.database();
        QCOMPARE(told(database,
                      QStringLiteral("select EmpNo,ThisYearHD,ThisYearUse,ThisYearLeft from Base06 where "
                                     "ThisYearUse <> 0")),
                 QStringLiteral("10005 14 1 13\n10016 10 0.4 9.4\n10023 15 0.4 14.4\n10024 14 0.4 13.4\n"
                                "10026 10 0.4 9.4\n10028 7 0.4 6.4\n10029 7 0.4 6.4"));
        QCOMPARE(told(database,
                      QStringLiteral("select EmpNo,SickHD,SickUse,SickLeft from Base06 where SickUse <> 0")),
                 QStringLiteral("10025 30 0.4 29.4"));
        // A note of its own charges nothing.
        QCOMPARE(countOf(database, QStringLiteral("Base06 where LeaveUse <> 0 or LastYearUse <> 0")), 0);
        // Whoever has a year of seniority has annual leave, and everybody the other two.
        QCOMPARE(countOf(database, QStringLiteral("Base06 where HoliExper > 0 and ThisYearHD < 7")), 0);
        QCOMPARE(countOf(database, QStringLiteral("Base06 where HoliExper < 1 and ThisYearHD > 0")), 0);
        QCOMPARE(
            countOf(database, QStringLiteral("Base06 where LeaveHD = 14 and LeaveLeft = 14 and SickHD = 30")),
            countOf(database, QStringLiteral("Base06")));
    }

    void writeOffsAreEnteredAsTheWindowsEnterThem() {
        TestStore store;
        createDemo(store.database(), store.folder());
        // An entry of its own has nulls for want of reasons and the day alone, one of a batch empty texts and
        // the moment of its batch.
        const auto entriesOf = [&](const QString& EmpNo) {
            QStringList rows = rowsOf(store.database(), QStringLiteral("Canc02"));
            rows.removeIf([&](const QString& row) { return !row.startsWith(EmpNo); });
            return rows.join(u'\n');
        };
        QCOMPARE(rowsOf(store.database(), QStringLiteral("Canc02")).size(), 23);
        QCOMPARE(entriesOf(QStringLiteral("10021")),
                 QStringLiteral("10021|2010-02-02||03|03||demo|2010-02-02 17:30:00\n"
                                "10021|2010-03-11|null|03|03|null|demo|2010-03-11 00:00:00"));
        QCOMPARE(entriesOf(QStringLiteral("10040")),
                 QStringLiteral("10040|2010-03-01||||05|demo|2010-03-01 17:30:00\n"
                                "10040|2010-03-08||||05|demo|2010-03-08 17:30:00"));
    }

    void overtimeIsEnteredAsTheWindowsEnterIt() {
        TestStore store;
        createDemo(store.database(), store.folder());
        // Rows of their own have a reason and no moment, those of a batch the other way round.
        const QStringList rows = rowsOf(store.database(), QStringLiteral("Over01"));
        QCOMPARE(rows.size(), 29);
        QCOMPARE(rows.constFirst(),
                 QStringLiteral("10007|2010-01-28|18:00:00|21:00:00|3|年度結帳|False|True|demo|null"));
        QCOMPARE(
            rows.mid(23).join(u'\n'),
            QStringLiteral("10028|2010-02-10|17:30:00|19:40:00|2|null|False|False|demo|2010-02-11 09:00:00\n"
                           "10029|2010-02-10|17:30:00|19:40:00|2|null|False|False|demo|2010-02-11 09:00:00\n"
                           "10013|2010-02-24|22:00:00|01:30:00|3|null|False|False|demo|2010-02-25 09:00:00\n"
                           "10036|2010-03-06|08:00:00|12:30:00|4|null|False|False|demo|2010-03-08 09:00:00\n"
                           "10037|2010-03-06|08:00:00|12:30:00|4|null|False|False|demo|2010-03-08 09:00:00\n"
                           "10038|2010-03-06|08:00:00|12:30:00|4|null|False|False|demo|2010-03-08 09:00:00"));
    }

    void allDaysComeToTheirEndWithAFewExceptions() {
        TestStore store;
        createDemo(store.database(), store.folder());
        FakeHost host(&store.database());
        DailyCalculation calculation(store.database(), host);
        for (const DemoPunchFile& file : demoPunchFiles()) {
            host.punchFile = store.punchFolder() + u'/' + file.name;
            calculation.ReadPunchFile();
            QVERIFY2(calculation.finished(),
                     calculation.lastError() ? calculation.lastError()->what() : qUtf8Printable(file.name));
        }

        Database& database = store.database();
        const qint64 results = countOf(database, QStringLiteral("Atte02"));
        const qint64 exceptions = countOf(database, QStringLiteral("Atte03"));
        // 42 people on ten days; one leaves after the fifth, one comes with the sixth.
        QCOMPARE(results, 42 * 10 - 5 - 5);
        QVERIFY2(exceptions * 100 >= results * 5 && exceptions * 100 <= results * 20,
                 qPrintable(QStringLiteral("%1 of %2").arg(exceptions).arg(results)));
        for (const DemoPunchFile& file : demoPunchFiles()) {
            const QDate day = QDate::fromString(file.name.left(8), QStringLiteral("yyyyMMdd"));
            const QString onDay =
                QStringLiteral(" where UseDate = #%1#").arg(day.toString(QStringLiteral("yyyy/MM/dd")));
            const qint64 dayExceptions = countOf(database, QStringLiteral("Atte03") + onDay);
            QVERIFY2(dayExceptions > 0 && dayExceptions < 12, qPrintable(file.name));
        }
        QVERIFY(countOf(database, QStringLiteral("Over01 where OverHours > 0")) > 5);
        QVERIFY(countOf(database, QStringLiteral("Over01 where isnull(EndTime) = True")) > 0);
        QVERIFY(countOf(database, QStringLiteral("Atte02 where FH1 = True")) > 0);
        QVERIFY(countOf(database, QStringLiteral("Atte02 where FC4 = True")) > 0);
        QVERIFY(countOf(database, QStringLiteral("Atte02 where Delay1 > 0")) > 0);
        QVERIFY(countOf(database, QStringLiteral("Atte02 where Earlier4 > 0")) > 0);
        // Employees without a leaving date are without one again.
        QCOMPARE(countOf(database, QStringLiteral("Base06 where isnull(LeaveDate) = True")), 41);
    }
};

QTEST_GUILESS_MAIN(DemoTest)
#include "DemoTest.moc"
