#include "EntitlementDesk.h"

#include "store/Recordset.h"
#include "store/RunTimeError.h"

#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// What the calculation of the entitlement leaves where an error ends it.
class EntitlementFailureTest : public QObject {
    Q_OBJECT

    std::unique_ptr<EntitlementDesk> desk_;
    EntitlementDesk& it() { return *desk_; }

  private Q_SLOTS:
    void init() { desk_ = std::make_unique<EntitlementDesk>(); }

    void anErrorInAnEmployeeKeepsThoseBeforeIt_data() {
        QTest::addColumn<QString>("column");
        QTest::addColumn<Value>("value");
        QTest::addColumn<int>("number");
        QTest::newRow("no scheme") << u"SuitNo"_s << Value() << error::InvalidNull;
        QTest::newRow("no seniority") << u"HoliExper"_s << Value() << error::InvalidNull;
        QTest::newRow("a seniority over 16 bits") << u"HoliExper"_s << Value(32768) << error::Overflow;
        QTest::newRow("a seniority under 16 bits") << u"HoliExper"_s << Value(-32769) << error::Overflow;
        QTest::newRow("an apostrophe in the scheme") << u"SuitNo"_s << Value(u"'") << error::Syntax;
    }
    void anErrorInAnEmployeeKeepsThoseBeforeIt() {
        QFETCH(QString, column);
        QFETCH(Value, value);
        QFETCH(int, number);
        const Fields first = employee(u"00001"_s, 4);
        const Fields bad = with(employee(u"00002"_s, 4), {column, value});
        const Fields last = employee(u"00003"_s, 4);
        // What comes first is by the codes, not by entry.
        for (const Fields& each : {last, bad, first})
            it().add(each);
        it().grant(Annual, u"3~5:10"_s);
        it().store.commit();
        const int before = it().commits();
        QCOMPARE(it().computeAndTell(), number);
        QCOMPARE(it().employees(), (QStringList{rowOf(withAnnual(first, 10)), rowOf(bad), rowOf(last)}));
        QCOMPARE(it().commits(), before + 1);
        QVERIFY(!it().database().inStage());
        // The pointer stays an hourglass, and the bar is left alone.
        QCOMPARE(it().host.calls, QStringList{u"hourglass"_s});
    }

    void anErrorInAGrantKeepsWhatWasReadBeforeIt_data() {
        QTest::addColumn<QString>("HoliNo");
        QTest::addColumn<QString>("bands");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("annual"); // -1 where the old figures stay, as below.
        QTest::addColumn<int>("personal");
        QTest::addColumn<int>("sick");
        const QString good = u"0~99:21 "_s;
        QTest::newRow("no begin") << Annual << u"null~5:10"_s << error::InvalidNull << -1 << -1 << -1;
        QTest::newRow("no end") << Annual << u"3~null:10"_s << error::InvalidNull << -1 << -1 << -1;
        QTest::newRow("no days") << Annual << u"3~5:null"_s << error::InvalidNull << -1 << -1 << -1;
        QTest::newRow("no days in a band that does not match")
            << Annual << u"7~9:null"_s << error::InvalidNull << -1 << -1 << -1;
        QTest::newRow("a matching band before a null")
            << Annual << good + u"3~5:null"_s << error::InvalidNull << 21 << -1 << -1;
        QTest::newRow("and one behind it")
            << Annual << u"3~5:null "_s + good << error::InvalidNull << -1 << -1 << -1;
        QTest::newRow("in the second pass")
            << Personal << good + u"null~5:10"_s << error::InvalidNull << 20 << 21 << -1;
        QTest::newRow("in the third pass") << Sick << u"3~null:10"_s << error::InvalidNull << 20 << 5 << -1;
        QTest::newRow("in the third pass, behind a matching band")
            << Sick << good + u"3~null:10"_s << error::InvalidNull << 20 << 5 << 21;
        QTest::newRow("a begin over 16 bits")
            << Personal << u"32768~5:10"_s << error::Overflow << 20 << -1 << -1;
        QTest::newRow("an end over 16 bits")
            << Personal << u"3~32768:10"_s << error::Overflow << 20 << -1 << -1;
        QTest::newRow("a begin under 16 bits")
            << Personal << u"-32769~5:10"_s << error::Overflow << 20 << -1 << -1;
        QTest::newRow("days that round to more than 16 bits")
            << Personal << u"3~5:32767.5"_s << error::Overflow << 20 << -1 << -1;
        QTest::newRow("days that round to less than 16 bits")
            << Personal << u"3~5:-32768.6"_s << error::Overflow << 20 << -1 << -1;
    }
    void anErrorInAGrantKeepsWhatWasReadBeforeIt() {
        QFETCH(QString, HoliNo);
        QFETCH(QString, bands);
        QFETCH(int, number);
        QFETCH(int, annual);
        QFETCH(int, personal);
        QFETCH(int, sick);
        const Fields first = employee(u"00001"_s, 4, u"1"_s);
        const Fields bad = employee(u"00002"_s, 4, u"2"_s);
        const Fields last = employee(u"00003"_s, 4, u"1"_s);
        for (const Fields& each : {first, bad, last})
            it().add(each);
        it().grant(Annual, u"0~99:10"_s, u"1"_s);
        for (const auto& [code, usual] :
             {std::pair{Annual, u"0~99:20"_s}, {Personal, u"0~99:5"_s}, {Sick, u"0~99:28"_s}})
            it().grant(code, code == HoliNo ? bands : usual, u"2"_s);
        QCOMPARE(it().computeAndTell(), number);
        Fields kept = bad;
        if (annual >= 0)
            kept = withAnnual(kept, annual);
        if (personal >= 0)
            kept = withPersonal(kept, personal);
        if (sick >= 0)
            kept = withSick(kept, sick);
        QCOMPARE(it().employees(), (QStringList{rowOf(withAnnual(first, 10)), rowOf(kept), rowOf(last)}));
        QCOMPARE(it().host.calls, QStringList{u"hourglass"_s});
    }

    void aNullCodeInTheSettingsIsAnErrorBeforeAnyEmployee_data() {
        QTest::addColumn<QString>("column");
        for (const char* column : {"ThisYearRest", "Leave", "Sick"})
            QTest::addRow("%s", column) << QString::fromLatin1(column);
    }
    void aNullCodeInTheSettingsIsAnErrorBeforeAnyEmployee() {
        QFETCH(QString, column);
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"0~99:10"_s);
        it().database().execute(u"Update Syst01 Set %1=Null"_s.arg(column));
        QCOMPARE(it().computeAndTell(), error::InvalidNull);
        QCOMPARE(it().employees(), QStringList{rowOf(one)});
        QVERIFY(!it().host.calls.contains(u"normal pointer"_s));
        QVERIFY(!it().host.calls.contains(u"refreshRecordBar"_s));
    }

    void anApostropheInACodeBreaksTheFirstPassThatUsesIt() {
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"0~99:10"_s);
        Recordset settings = it().database().openRecordset(u"Syst01"_s);
        settings.Edit();
        settings.setField(u"Leave"_s, u"'"_s);
        settings.Update();
        settings.Close();
        QCOMPARE(it().computeAndTell(), error::Syntax);
        QCOMPARE(it().employees(), QStringList{rowOf(withAnnual(one, 10))});
        QCOMPARE(it().host.calls, QStringList{u"hourglass"_s});
    }

    void figuresThatCannotBeStoredAreAnError() {
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"0~99:10"_s);
        it().store.commit();
        {
            const ForeignReader reader(it().store.path());
            QCOMPARE(it().computeAndTell(), error::StoreLocked);
        }
        QCOMPARE(it().employees(), QStringList{rowOf(one)});
        QCOMPARE(it().host.calls, QStringList{u"hourglass"_s});
        QVERIFY(!it().database().inStage());
    }
};

QTEST_GUILESS_MAIN(EntitlementFailureTest)
#include "EntitlementFailureTest.moc"
