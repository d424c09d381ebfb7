#include "store/StagedCopy.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QTest>

#include <random>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

/// The copy that passes over rows known to be there must have the outcome of the full copy, whatever was done
/// to the tables before.
class StagedCopyTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aPurgedPunchComesBackWithTheNextCopy() {
        TestStore store;
        addPunch(store.database(), u"00001"_s, QDate(2001, 3, 5), QTime(8, 0));
        copyStaged(store.database(), CopyTarget::Atte01);
        store.database().execute(u"delete * from Atte01"_s);
        copyStaged(store.database(), CopyTarget::Atte01);
        QCOMPARE(rowsOf(store.database(), u"Atte01"_s),
                 QStringList({u"00001|2001-03-05|08:00:00|255|001"_s}));
    }

    void aRowPurgedByAnotherConnectionComesBackToo() {
        TestStore store;
        addPunch(store.database(), u"00001"_s, QDate(2001, 3, 5), QTime(8, 0));
        copyStaged(store.database(), CopyTarget::Atte01);
        store.connect()->execute(u"delete * from Atte01"_s);
        copyStaged(store.database(), CopyTarget::Atte01);
        QCOMPARE(rowsOf(store.database(), u"Atte01"_s).size(), 1);
    }

    /// In that mode the file's change counter does not rise with each transaction.
    void aRowDeletedWhileAnotherJournalModeWasSetComesBack() {
        TestStore store;
        addPunch(store.database(), u"00001"_s, QDate(2001, 3, 5), QTime(8, 0));
        SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
        other.exec("PRAGMA journal_mode = WAL");
        for (int time = 0; time < 3; ++time) {
            copyStaged(store.database(), CopyTarget::Atte01);
            other.exec("PRAGMA wal_checkpoint(TRUNCATE)");
            other.exec("DELETE FROM Atte01");
        }
        copyStaged(store.database(), CopyTarget::Atte01);
        QCOMPARE(rowsOf(store.database(), u"Atte01"_s).size(), 1);
    }

    /// A trigger of another program's deletes within the program's own transaction.
    void aRowDeletedByAForeignTriggerComesBack() {
        TestStore store;
        SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE)
            .exec("CREATE TRIGGER Purge AFTER INSERT ON Base01 BEGIN DELETE FROM Atte01; END");
        const auto again = store.connect();
        addPunch(*again, u"00001"_s, QDate(2001, 3, 5), QTime(8, 0));
        copyStaged(*again, CopyTarget::Atte01);
        insertRow(*again, u"Base01"_s, {{u"TitleNo", u"0001"}});
        copyStaged(*again, CopyTarget::Atte01);
        QCOMPARE(rowsOf(*again, u"Atte01"_s).size(), 1);
    }

    /// Behind the largest rowid the engine gives new rows any that is free.
    void rowsBeforeTheLargestRowidAreCopiedToo() {
        TestStore store;
        SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE)
            .exec("INSERT INTO AtteTemp (rowid, EmpNo, UseDate, UseTime, class, ReaderId) "
                  "VALUES (9223372036854775807, '00001', '2001-03-05', '08:00:00', '255', '001')");
        copyStaged(store.database(), CopyTarget::Atte01);
        QCOMPARE(rowsOf(store.database(), u"Atte01"_s).size(), 1);
        for (int minute = 1; minute <= 20; ++minute) {
            addPunch(store.database(), u"00001"_s, QDate(2001, 3, 5), QTime(8, minute));
            copyStaged(store.database(), CopyTarget::Atte01);
            QCOMPARE(rowsOf(store.database(), u"Atte01"_s).size(), minute + 1);
        }
    }

    /// The store works all the same, at the price of full copies.
    void withoutItsMarksEveryRowIsOffered() {
        TestStore store;
        SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE).exec("DROP TABLE CopyMark");
        const auto again = store.connect();
        addPunch(*again, u"00001"_s, QDate(2001, 3, 5), QTime(8, 0));
        for (int time = 0; time < 2; ++time) {
            copyStaged(*again, CopyTarget::Atte01);
            QCOMPARE(rowsOf(*again, u"Atte01"_s).size(), 1);
            again->execute(u"delete * from Atte01"_s);
        }
    }

    void aResultOnceInIsNotReplacedByTheCopy() {
        TestStore store;
        insertRow(store.database(), u"AtteTemp1"_s,
                  {{u"EmpNo", u"00001"}, {u"UseDate", QDate(2001, 3, 5)}, {u"TimeNo", u"1"}});
        copyStaged(store.database(), CopyTarget::Atte02);
        store.database().execute(u"update AtteTemp1 set Expt = True"_s);
        copyStaged(store.database(), CopyTarget::Atte02);
        QCOMPARE(rowsOfSelection(store.database(), u"select EmpNo,Expt from Atte02"_s),
                 QStringList({u"00001|False"_s}));
    }

    void anyMixOfChangesHasTheOutcomeOfTheFullCopy_data() {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 20; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }
    void anyMixOfChangesHasTheOutcomeOfTheFullCopy() {
        QFETCH(unsigned, seed);
        TestStore quick;
        TestStore full;
        quick.holdOpen();
        full.holdOpen();
        std::mt19937 random(seed);
        for (int step = 0; step < 120; ++step) {
            const QStringList statements = change(random);
            for (const QString& statement : statements) {
                quick.database().execute(statement);
                full.database().execute(statement);
            }
            if (random() % 3 == 0) {
                copyStaged(quick.database(), CopyTarget::Atte01);
                copyStaged(quick.database(), CopyTarget::Atte02);
                full.database().execute(u" Insert into Atte01 Select * from AtteTemp"_s);
                full.database().execute(u"Insert into Atte02  Select * from AtteTemp1"_s);
                QCOMPARE(dumpDailyTables(quick.database()), dumpDailyTables(full.database()));
            }
        }
    }

  private:
    /// A statement of the kinds that the daily work and its windows run, over a handful of employees and
    /// days.
    static QStringList change(std::mt19937& random) {
        const QString employee = QString::number(random() % 4 + 1);
        const QString day = QStringLiteral("#2001/03/0%1#").arg(random() % 3 + 1);
        const QString slot = QString::number(random() % 2 + 1);
        switch (random() % 12) {
        case 0:
            return {u"delete * from AtteTemp "_s, u"delete * from AtteTemp1 "_s};
        case 1:
            return {u" delete * from Atte01   where UseDate <= "_s + day};
        case 2:
            return {u"delete * from Atte02 where UseDate ="_s + day};
        case 3:
            return {u"Delete Atte02.* from Atte02 Where EmpNo = '"_s + employee + u"' and UseDate ="_s + day,
                    u" Insert into Atte02 Select * from AtteTemp1 Where EmpNo = '"_s + employee +
                        u"' and UseDate ="_s + day};
        case 4:
            return {u"Update AtteTemp1 Set Expt = True Where EmpNo = '"_s + employee + u"'"_s};
        case 5:
            return {u"Update AtteTemp1 Set TimeNo = '"_s + slot + u"' Where EmpNo = '"_s + employee + u"'"_s};
        case 6:
            return {u"Update Atte02 Set EmpNo = '9' Where EmpNo = '"_s + employee + u"'"_s};
        case 7:
            return {u"Update AtteTemp Set ReaderID = '"_s + slot + u"' Where EmpNo = '"_s + employee + u"'"_s,
                    u"Update Atte01 Set class = '255' Where EmpNo = '"_s + employee + u"'"_s};
        default:
            return {u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)values('"_s + employee +
                        u"',"_s + day + u",#08:0"_s + slot + u":00#,'255','001')"_s,
                    u"Insert Into AtteTemp1(EmpNo,TimeNo,UseDate) Values('"_s + employee + u"','"_s + slot +
                        u"',"_s + day + u")"_s};
        }
    }
};

QTEST_GUILESS_MAIN(StagedCopyTest)
#include "StagedCopyTest.moc"
