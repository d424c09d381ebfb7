#include "store/MemoryStore.h"

#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// A store in memory, and rows of another store copied into one.
class MemoryStoreTest : public QObject {
    Q_OBJECT

    inline static const QDate First{2001, 3, 1};
    inline static const QDate Last{2001, 3, 31};

    static std::unique_ptr<Database> copy(const TestStore& store) {
        return copyIntoMemory(store.path(),
                              {{u"Base04"_s},
                               {u"AtteTemp"_s, u"EmpNo"_s, u"UseDate"_s, First, Last},
                               {u"Holi04"_s, u"EmpNo"_s, u"HoliDate"_s, First, First},
                               {u"Rule01"_s, {}, u"hymd"_s, First, Last}},
                              u"a1"_s);
    }

  private Q_SLOTS:
    void aStoreInMemoryTakesRowsOfItsOwn() {
        Database one(MemoryPath);
        Database other(MemoryPath);
        one.execute(u"Insert into Base01(TitleNo,Title) values('1','主任')"_s);
        QCOMPARE(rowsOf(one, u"Base01"_s), QStringList({u"1|主任"_s}));
        QCOMPARE(rowsOf(other, u"Base01"_s), QStringList());
        QCOMPARE(rowsOf(one, u"syst02"_s), QStringList());
    }

    void rowsOfTheEmployeeAndDaysComeInTheirOrder() {
        TestStore store;
        Database& from = store.database();
        addSlot(from, u"B"_s);
        addSlot(from, u"A"_s, {{u"TimeName", Value()}, {u"ElstMin", Value()}});
        for (const QDate day : {Last, First, First.addDays(-1), Last.addDays(1)})
            addPunch(from, u"A1"_s, day, QTime(8, 0));
        addPunch(from, u"a1"_s, First, QTime(7, 0));
        addPunch(from, u"A2"_s, First, QTime(8, 0));
        addLeaveDay(from, u"A1"_s, First, u"03"_s, QTime(8, 0), QTime(12, 0), {{u"HoliHours", Value()}});
        const QStringList leaveRows = rowsOf(from, u"Holi04"_s);
        addLeaveDay(from, u"A1"_s, First.addDays(1), u"03"_s, QTime(8, 0), QTime(12, 0));
        insertRow(from, u"Rule01"_s, {{u"hymd", First}});
        insertRow(from, u"Rule01"_s, {{u"hymd", Last.addDays(1)}});
        const QStringList slotRows = rowsOf(from, u"Base04"_s);
        const auto memory = copy(store);
        QCOMPARE(rowsOf(*memory, u"Base04"_s), slotRows);
        QCOMPARE(slotRows.size(), 2);
        QCOMPARE(rowsOf(*memory, u"AtteTemp"_s),
                 QStringList({u"A1|2001-03-31|08:00:00|255|001"_s, u"A1|2001-03-01|08:00:00|255|001"_s,
                              u"a1|2001-03-01|07:00:00|255|001"_s}));
        QCOMPARE(rowsOf(*memory, u"Holi04"_s), leaveRows);
        QCOMPARE(rowsOf(*memory, u"Rule01"_s), QStringList({u"2001-03-01"_s}));
        QCOMPARE(rowsOf(*memory, u"Base06"_s), QStringList());
    }

    void whatIsDoneToTheCopyStaysThere() {
        TestStore store;
        addSlot(store.database(), u"A"_s);
        const auto memory = copy(store);
        memory->execute(u"Delete * from Base04"_s);
        QCOMPARE(rowsOf(*memory, u"Base04"_s), QStringList());
        QCOMPARE(rowsOf(store.database(), u"Base04"_s).size(), 1);
    }

    /// A copy that stands keeps nobody from writing.
    void theStoreIsFreeWhileTheCopyStands() {
        TestStore store;
        const auto memory = copy(store);
        const auto other = store.connect();
        other->execute(u"Insert into Base01(TitleNo,Title) values('1','主任')"_s);
        QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList({u"1|主任"_s}));
    }

    void aStoreThatIsNotThereIsAnError() {
        QCOMPARE(errorOf([] { (void)copyIntoMemory(u"/nowhere/x.mdb"_s, {}, u"1"_s); }),
                 error::StoreNotFound);
    }
};

QTEST_GUILESS_MAIN(MemoryStoreTest)
#include "MemoryStoreTest.moc"
