#include "support/Builders.h"
#include "support/EngineSteps.h"
#include "support/TestStore.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The start of a key, which is searched for as a range.
class KeyRangeTest : public QObject {
    Q_OBJECT

    /// So many notes of the 4th, before the day asked for, and of the 6th, after it.
    static void addNotes(Database& database, int count) {
        const Stage stage(database);
        for (const QString& day : {u"20010304"_s, u"20010306"_s})
            for (int number = 1; number <= count; ++number)
                insertRow(
                    database, u"Holi03"_s,
                    {{u"BusNo", day + u"%1"_s.arg(number, 4, 10, QLatin1Char('0'))}, {u"EmpNo", u"00001"}});
    }

  private Q_SLOTS:
    void aStartOfAKeyCostsTheSameAmongFewAndMany_data() {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<Value>("result");
        const QString start = u" WHERE BusNo LIKE '20010305' & '*'"_s;
        QTest::newRow("counted") << u"SELECT COUNT(BusNo) as cnt FROM Holi03"_s + start << Value(2);
        QTest::newRow("the greatest")
            << u"SELECT max(BusNo) as max FROM Holi03"_s + start << Value(u"200103050007"_s);
        QTest::newRow("in one text") << u"SELECT max(BusNo) as max FROM Holi03 WHERE BusNo LIKE '20010305*'"_s
                                     << Value(u"200103050007"_s);
        QTest::newRow("with a wildcard behind")
            << u"SELECT max(BusNo) as max FROM Holi03 WHERE BusNo LIKE '200103050??1'"_s
            << Value(u"200103050001"_s);
    }

    void aStartOfAKeyCostsTheSameAmongFewAndMany() {
        QFETCH(const QString, statement);
        QFETCH(const Value, result);
        std::int64_t steps[2]{};
        const int counts[2]{1, 2000};
        for (std::size_t size = 0; size < 2; ++size) {
            TestStore store;
            addNotes(store.database(), counts[size]);
            for (const char16_t* number : {u"200103050001", u"200103050007"})
                insertRow(store.database(), u"Holi03"_s, {{u"BusNo", number}, {u"EmpNo", u"00001"}});
            QCOMPARE(store.database().select(statement).at(0, 0), result);
            const EngineSteps engine(store.database());
            QCOMPARE(store.database().select(statement).at(0, 0), result);
            steps[size] = engine.count();
        }
        QVERIFY(steps[0] > 0);
        QCOMPARE(steps[1], steps[0]);
    }

    void theGreatestKeyCostsTheSameAmongManyOfItsStart() {
        TestStore store;
        const QString statement = u"SELECT max(BusNo) as max FROM Holi03 WHERE BusNo LIKE '20010304' & '*'"_s;
        addNotes(store.database(), 2000);
        QCOMPARE(store.database().select(statement).at(0, 0), Value(u"200103042000"_s));
        const EngineSteps engine(store.database());
        QCOMPARE(store.database().select(statement).at(0, 0), Value(u"200103042000"_s));
        QVERIFY2(engine.count() < 100, qPrintable(QString::number(engine.count())));
    }
};

QTEST_GUILESS_MAIN(KeyRangeTest)
#include "KeyRangeTest.moc"
