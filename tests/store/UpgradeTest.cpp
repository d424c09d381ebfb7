#include "store/Database.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/FirstVersion.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QTest>

#include <algorithm>
#include <string>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

/// What describes the store's tables, indexes and triggers, and what the engine is told of its keys.
QStringList layoutOf(const QString& store) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY);
    QStringList layout;
    for (const char* selection : {"SELECT type || ' ' || name || ' ' || coalesce(sql, '') FROM sqlite_schema",
                                  "SELECT tbl || ' ' || idx || ' ' || stat FROM sqlite_stat1"}) {
        if (std::string(selection).ends_with("stat1") && !engine.tableExists("sqlite_stat1"))
            continue;
        SQLite::Statement all(engine, selection);
        while (all.executeStep())
            layout += QString::fromStdString(all.getColumn(0).getString());
    }
    layout += QString::number(engine.execAndGet("PRAGMA user_version").getInt());
    layout.sort();
    return layout;
}

QStringList rowsOfAllTables(Database& database) {
    QStringList all;
    for (const Table& table : tables())
        for (const QString& row : rowsOf(database, table.name))
            all += table.name + u": "_s + row;
    return all;
}

} // namespace

/// A store of version 1 is brought to the present version when it is opened.
class UpgradeTest : public QObject {
    Q_OBJECT

  private:
    /// A store with rows in every daily table, of version 1 from there on.
    static void fill(Database& database) {
        addSlot(database, u"A"_s);
        for (const QString& EmpNo : {u"b0002"_s, u"A0001"_s}) {
            addEmployee(database, EmpNo);
            for (int day = 1; day >= 0; --day) {
                addRoster(database, EmpNo, Day.addDays(day), u"A"_s);
                addReadPunch(database, EmpNo, Day.addDays(day), QTime(8, 0));
                for (const QString& table : {u"Atte02"_s, u"Atte03"_s})
                    insertRow(database, table,
                              {{u"EmpNo", EmpNo}, {u"UseDate", Day.addDays(day)}, {u"TimeNo", u"A"_s}});
                insertRow(database, u"View02"_s, {{u"EmpNo", EmpNo}, {u"UseDate", Day.addDays(day)}});
            }
        }
        insertRow(database, u"Over01"_s, {{u"EmpNo", u"A0001"_s}, {u"OverDate", Day}});
    }

  private Q_SLOTS:
    void everyRowStaysAndTheLayoutIsThatOfANewStore() {
        TestStore store;
        const TestStore fresh;
        fill(store.database());
        const QStringList rows = rowsOfAllTables(store.database());
        layOutAsFirstVersion(store.path());
        QVERIFY(layoutOf(store.path()) != layoutOf(fresh.path()));
        const auto opened = store.connect();
        QCOMPARE(rowsOfAllTables(*opened), rows);
        QCOMPARE(layoutOf(store.path()), layoutOf(fresh.path()));
        QCOMPARE(
            SQLite::Database(store.path().toStdString()).execAndGet("PRAGMA integrity_check").getString(),
            std::string("ok"));
    }

    void stagedRowsThatVersion1PassedOverArrive() {
        TestStore store;
        addPunch(store.database(), u"00001"_s, Day, QTime(8, 0));
        insertRow(store.database(), u"AtteTemp1"_s,
                  {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"TimeNo", u"A"}});
        layOutAsFirstVersion(store.path());
        SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE)
            .exec("UPDATE CopyMark SET UpTo = 9");
        const auto opened = store.connect();
        QCOMPARE(rowsOf(*opened, u"Atte01"_s), QStringList{u"00001|2001-03-05|08:00:00|255|001"_s});
        QCOMPARE(rowsOf(*opened, u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s)});
    }

    void anEmployeeInUseIsStillKept() {
        TestStore store;
        fill(store.database());
        layOutAsFirstVersion(store.path());
        const auto opened = store.connect();
        QVERIFY_EXCEPTION_THROWN(opened->execute(u"delete * from Base06 where EmpNo = 'A0001'"_s),
                                 RunTimeError);
        opened->execute(u"delete * from Base06 where EmpNo = 'b0002'"_s);
        QCOMPARE(rowsOfSelection(*opened, u"select EmpNo from Base06"_s), QStringList{u"A0001"_s});
    }

    void whatAnotherProgramHasAddedToTheTablesIsKept() {
        TestStore store;
        fill(store.database());
        layOutAsFirstVersion(store.path());
        {
            SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
            other.exec("CREATE VIEW Today AS SELECT EmpNo FROM Atte02 WHERE Expt = 0");
            other.exec("CREATE INDEX ByReader ON Atte01 (ReaderID)");
            other.exec("CREATE TRIGGER Noted AFTER DELETE ON Rule03 BEGIN UPDATE Syst01 SET HoliMin = "
                       "HoliMin + 1; END");
        }
        (void)store.connect();
        SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
        QCOMPARE(other.execAndGet("PRAGMA user_version").getInt(), StoreVersion);
        QCOMPARE(other.execAndGet("SELECT count(*) FROM Today").getInt(), 4);
        QCOMPARE(other.execAndGet("SELECT tbl_name FROM sqlite_schema WHERE name = 'ByReader'").getString(),
                 std::string("Atte01"));
        other.exec("DELETE FROM Rule03 WHERE EmpNo = 'b0002'");
        QCOMPARE(other.execAndGet("SELECT HoliMin FROM Syst01").getInt(), 62);
    }

    void whereItFailsVersion1Stands() {
        TestStore store;
        fill(store.database());
        layOutAsFirstVersion(store.path());
        {
            // What stands in the way of the last table, when all the others have been laid out.
            SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
            other.exec("CREATE TABLE View02_2 (x)");
        }
        const QStringList layout = [&] {
            SQLite::Database other(store.path().toStdString());
            SQLite::Statement all(other, "SELECT coalesce(sql, name) FROM sqlite_schema ORDER BY 1");
            QStringList found;
            while (all.executeStep())
                found += QString::fromStdString(all.getColumn(0).getString());
            return found;
        }();
        QVERIFY_EXCEPTION_THROWN((void)store.connect(), RunTimeError);
        SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
        QCOMPARE(other.execAndGet("PRAGMA user_version").getInt(), 1);
        SQLite::Statement all(other, "SELECT coalesce(sql, name) FROM sqlite_schema ORDER BY 1");
        QStringList found;
        while (all.executeStep())
            found += QString::fromStdString(all.getColumn(0).getString());
        QCOMPARE(found, layout);
        QCOMPARE(other.execAndGet("SELECT count(*) FROM Atte01").getInt(), 4);
    }

    void aLaterVersionIsRefused() {
        TestStore store;
        {
            SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
            other.exec("PRAGMA user_version = " + std::to_string(StoreVersion + 1));
        }
        QCOMPARE(errorOf([&] { return store.connect(); }), error::UnrecognizedStore);
    }

    /// Questions about one employee, and about one day, read his rows or its rows and no others.
    void noDailyTableIsReadThrough_data() {
        QTest::addColumn<QByteArray>("question");
        for (const char* table : {"Atte01", "Atte02", "Atte03", "View02"}) {
            QTest::addRow("the employee in %s", table)
                << QByteArray("SELECT rowid FROM ") + table + " WHERE EmpNo = '00001' ORDER BY UseDate DESC";
            QTest::addRow("the day in %s", table)
                << QByteArray("SELECT rowid FROM ") + table + " WHERE UseDate = '2001-03-05' ORDER BY EmpNo";
        }
        QTest::addRow("the employee in the roster")
            << QByteArray("SELECT rowid FROM Rule03 WHERE EmpNo = '00001'");
        QTest::addRow("the day in the roster")
            << QByteArray("SELECT rowid FROM Rule03 WHERE YMD = '2001-03-05'");
        QTest::addRow("the counts of an employee's write-offs")
            << QByteArray("SELECT rowid FROM View01 WHERE EmpNo = '00001' AND CnlNo = '01'");
    }
    void noDailyTableIsReadThrough() {
        QFETCH(QByteArray, question);
        const TestStore store;
        SQLite::Database engine(store.path().toStdString());
        SQLite::Statement plan(engine, "EXPLAIN QUERY PLAN " + question.toStdString());
        QStringList steps;
        while (plan.executeStep())
            steps += QString::fromStdString(plan.getColumn(3).getString());
        QVERIFY2(!steps.isEmpty() && steps.first().startsWith(u"SEARCH"), qPrintable(steps.join(u'\n')));
    }
};

QTEST_GUILESS_MAIN(UpgradeTest)
#include "UpgradeTest.moc"
