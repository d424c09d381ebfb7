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
