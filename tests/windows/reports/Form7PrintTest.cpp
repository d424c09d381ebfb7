#include "windows/reports/Form7Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate March1(2010, 3, 1);
const QDate March31(2010, 3, 31);

/// Two employees of a unit each.
void addPeople(Database& database) {
    database.execute(u"Update Syst01 Set CmpName = '範例機關'"_s);
    addEmployee(database, u"10001"_s, {{u"EmpName", u"王小明"}, {u"UnitNo", u"1000"}, {u"WorkNo", u"A"}});
    addEmployee(database, u"10002"_s, {{u"EmpName", u"陳美惠"}, {u"UnitNo", u"2000"}, {u"WorkNo", u"A"}});
}

void addResult(Database& database, const QString& EmpNo, QDate day, int cushion, int delay, int earlier) {
    insertRow(database, u"Atte02"_s,
              {{u"EmpNo", EmpNo},
               {u"UseDate", day},
               {u"TimeNo", u"A"},
               {u"Cushion1", cushion},
               {u"Delay3", delay},
               {u"Earlier4", earlier}});
}

} // namespace

/// What a print does around the formula: named values, the figures of six reports, and the shared
/// connection.
class Form7PrintTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void titleAndPeriod();
    void theTitleIsReadAtOpening();
    void noPeriodOnTheFirstTab();
    void namedValuesStay();
    void theConnectionIsClosedByEachPrint();
    void headsOfTheDay();
    void aDayWithoutItsDateTellsNoPeriod();
    void sumsOfAnEmployee();
    void countsOfReasons();
    void countsOfReasonsByTheLeastNumber();
    void detailOfReasons();
    void anEmptyReportTellsItsPeriod_data();
    void anEmptyReportTellsItsPeriod();
    void anEmptyCardTellsWhoseItIs();
    void thePeriodOfStagedRowsEndsWithItsTab();
    void nothingSelected_data();
    void nothingSelected();
};

void Form7PrintTest::titleAndPeriod() {
    Form7Fixture it;
    addPeople(it.database());
    it.open();
    for (int tab = 1; tab < 6; ++tab) {
        it.clickTab(tab);
        it.mask(tab, 0).setValue(u"990301"_s);
        it.mask(tab, 1).setValue(u"990331"_s);
        it.print(tab);
        QCOMPARE(it.named(u"Title"_s), u"範例機關"_s);
        QCOMPARE(it.named(u"Sdate"_s), u"99/03/01"_s);
        QCOMPARE(it.named(u"Edate"_s), u"99/03/31"_s);
        const QString page = it.preview().document().textOf(0);
        QVERIFY2(page.contains(u"範例機關"_s) && page.contains(u"99/03/01"_s) && page.contains(u"99/03/31"_s),
                 qPrintable(page));
        it.closePreviews();
        // The mask cannot hold the second date, which the formula has all the same.
        it.date(tab, 1).setDate({2026, 1, 31});
        it.print(tab);
        QCOMPARE(it.named(u"Sdate"_s), u"99/03/01"_s);
        QCOMPARE(it.named(u"Edate"_s), QString());
        QCOMPARE(it.formula().contains(u"date(2026,1,31)"_s), tab != 4);
        it.closePreviews();
    }
}

void Form7PrintTest::theTitleIsReadAtOpening() {
    Form7Fixture it;
    it.database().execute(u"delete * from Syst01"_s);
    insertRow(it.database(), u"Syst01"_s, {{u"CmpName", u"O'Neil's"}});
    it.open();
    it.database().execute(u"Update Syst01 Set CmpName = '後來的'"_s);
    it.print(0);
    QCOMPARE(it.named(u"Title"_s), u"O'Neil's"_s);
    it.closePreviews();
    it.form().unload();
    it.database().execute(u"Update Syst01 Set CmpName = null"_s);
    OpenToolWindow(7);
    it.print(0);
    QCOMPARE(it.named(u"Title"_s), QString());
}

void Form7PrintTest::noPeriodOnTheFirstTab() {
    Form7Fixture it;
    it.open();
    it.choose(0, 5);
    it.mask(0, 0).setValue(u"990301"_s);
    it.mask(0, 1).setValue(u"990331"_s);
    it.print(0);
    QCOMPARE(it.named(u"Sdate"_s), u"not given"_s);
    QCOMPARE(it.named(u"Edate"_s), u"not given"_s);
    it.closePreviews();
    it.clickTab(1);
    it.mask(1, 0).setValue(u"990401"_s);
    it.print(1);
    it.closePreviews();
    it.clickTab(0);
    it.print(0);
    QCOMPARE(it.named(u"Sdate"_s), u"99/04/01"_s); // that of the other tab stays
}

void Form7PrintTest::namedValuesStay() {
    Form7Fixture it;
    addPeople(it.database());
    it.open(3);
    it.setPeriod(3, March1, March31);
    it.choose(3, 4);
    it.print(3);
    QCOMPARE(it.named(u"Att"_s), u"2"_s);
    it.closePreviews();
    it.clickTab(2);
    it.setPeriod(2, March1, March31);
    it.print(2);
    QCOMPARE(it.file(), u"C01.rpt"_s);
    QCOMPARE(it.named(u"Att"_s), u"2"_s);
}

void Form7PrintTest::theConnectionIsClosedByEachPrint() {
    Form7Fixture it;
    addPeople(it.database());
    it.open();
    QVERIFY(gDbOpen);
    // Nothing but the prints of two tabs opens it again, and closes it.
    for (int tab = 0; tab < 6; ++tab) {
        it.clickTab(tab);
        it.setPeriod(tab, March1, March31);
        it.print(tab);
        QVERIFY(!gDbOpen);
    }
    QCOMPARE(previews().size(), 6);
    QCOMPARE(it.answers.trouble(), QString());
    // A row is saved while all the previews stay open, and while the window is.
    it.database().execute(u"Update Base06 Set EmpName = '王大明' Where EmpNo = '10001'"_s);
    QCOMPARE(rowsOfSelection(it.database(), u"select EmpName from Base06 where EmpNo = '10001'"_s),
             QStringList{u"王大明"_s});
    it.form().unload();
    QCOMPARE(previews().size(), 6);
}

void Form7PrintTest::headsOfTheDay() {
    Form7Fixture it;
    addPeople(it.database());
    addEmployee(it.database(), u"10003"_s,
                {{u"UnitNo", u"1000"}, {u"WorkNo", u"A"}, {u"LeaveDate", QDate(2009, 12, 31)}});
    addLeaveDay(it.database(), u"10001"_s, March1, u"03"_s, QTime(8, 0), QTime(12, 0));
    it.open(3);
    it.date(3, 0).setDate(March1);
    it.mask(3, 1).setValue(u"990331"_s);
    it.choose(3, 4);
    it.print(3);
    QCOMPARE(it.file(), u"D05.rpt"_s);
    QCOMPARE(it.named(u"Att"_s), u"2"_s);
    QCOMPARE(it.named(u"Sdate"_s), u"99/03/01"_s);
    QCOMPARE(it.named(u"Edate"_s), u"99/03/31"_s); // the mask is off and given all the same
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1));
    it.closePreviews();
    // The range of employees is none of the count's, the units of the other tab are.
    it.combo(3, 0).setEditText(u"10002"_s);
    it.print(3);
    QCOMPARE(it.named(u"Att"_s), u"2"_s);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(0));
    it.closePreviews();
    it.combo(3, 0).setEditText(u"000000"_s);
    it.combo(4, 2).setEditText(u"2000"_s);
    it.print(3);
    QCOMPARE(it.named(u"Att"_s), u"1"_s);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1));
    it.closePreviews();
    it.combo(3, 3).setEditText(u"1000"_s);
    it.print(3);
    QCOMPARE(it.named(u"Att"_s), u"0"_s);
}

/// Its second date is off and no end of a period, whatever it still holds.
void Form7PrintTest::aDayWithoutItsDateTellsNoPeriod() {
    Form7Fixture it;
    addPeople(it.database());
    it.open(3);
    it.date(3, 1).setDate({2026, 1, 31});
    it.choose(3, 4);
    it.print(3);
    QCOMPARE(it.file(), u"D05.rpt"_s);
    QCOMPARE(it.named(u"Period"_s), QString());
    it.closePreviews();
    it.choose(3, 0);
    it.print(3);
    QCOMPARE(it.named(u"Period"_s), u" ～ 115/01/31"_s);
}

void Form7PrintTest::sumsOfAnEmployee() {
    Form7Fixture it;
    addPeople(it.database());
    addResult(it.database(), u"10001"_s, March1, 3, 20, 5);
    addResult(it.database(), u"10001"_s, March31, 4, 1, 6);
    addResult(it.database(), u"10001"_s, March31.addDays(1), 50, 50, 50);
    addResult(it.database(), u"10002"_s, March1, 9, 9, 9);
    it.open(3);
    it.setPeriod(3, March1, March31);
    it.choose(3, 5);
    it.combo(3, 0).setEditText(u"10001"_s);
    it.print(3);
    const auto sums = [&] {
        return QStringList{it.named(u"Cushion"_s), it.named(u"Delay"_s), it.named(u"Earlier"_s),
                           it.named(u"Absent"_s)};
    };
    QCOMPARE(sums(), QStringList({u"7"_s, u"21"_s, u"11"_s, u"0"_s}));
    QCOMPARE(it.formula(), u"{Holi04.HoliDate} >= date(2010,3,1) and {Holi04.HoliDate} <= date(2010,3,31) "
                           "and {Holi04.EmpNo} = '10001'"_s);
    it.closePreviews();
    it.combo(3, 0).setEditText(u"99999"_s);
    it.print(3);
    QCOMPARE(sums(), QStringList({QString(), QString(), QString(), QString()}));
}

void Form7PrintTest::countsOfReasons() {
    Form7Fixture it;
    addPeople(it.database());
    addCodes(it.database(), u"Canc01"_s, 3);
    addWriteOff(it.database(), u"10001"_s, March1, u"01"_s, QString(), u"01"_s, u"02"_s);
    addWriteOff(it.database(), u"10002"_s, {2010, 2, 1}, u"01"_s, QString(), QString(), QString());
    it.open(4);
    it.mask(4, 0).setValue(u"990301"_s);
    it.mask(4, 1).setValue(u"990331"_s);
    it.selectOnly(4, {1});
    it.print(4);
    QCOMPARE(it.file(), u"E01.rpt"_s);
    QCOMPARE(rowsOf(*it.store.connect(), u"View01"_s),
             QStringList{expectedRow(u"View01"_s, {{u"EmpNo", u"10001"},
                                                   {u"BegDate", March1},
                                                   {u"EndDate", March31},
                                                   {u"CnlNo", u"01"},
                                                   {u"CnlTimes", 2}})});
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1));
    it.closePreviews();
    // From January of the clock's year on, and with those of whom the period itself knows nothing.
    it.choose(4, 3);
    it.print(4);
    QCOMPARE(it.file(), u"E04.rpt"_s);
    QCOMPARE(rowsOfSelection(*it.store.connect(), u"select EmpNo,CnlTimes,AddUpTimes from View01"_s),
             QStringList({u"10001|2|2"_s, u"10002|0|1"_s}));
    QCOMPARE(it.preview().document().rowCount(), std::size_t(2));
}

void Form7PrintTest::countsOfReasonsByTheLeastNumber() {
    Form7Fixture it;
    addPeople(it.database());
    addCodes(it.database(), u"Canc01"_s, 3);
    addWriteOff(it.database(), u"10001"_s, March1, u"01"_s, QString(), u"01"_s, u"02"_s);
    it.open(4);
    it.setPeriod(4, March1, March31);
    it.choose(4, 2);
    it.combo(4, 4).setEditText(u"2"_s);
    it.print(4);
    QCOMPARE(it.file(), u"E03.rpt"_s);
    QCOMPARE(rowsOfSelection(*it.store.connect(), u"select EmpNo,CnlNo,CnlTimes from View01"_s),
             QStringList{u"10001|01|2"_s});
    it.closePreviews();
    it.combo(4, 4).setEditText(u"1"_s);
    it.print(4);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(2));
}

void Form7PrintTest::detailOfReasons() {
    Form7Fixture it;
    addPeople(it.database());
    addCodes(it.database(), u"Canc01"_s, 3);
    addWriteOff(it.database(), u"10001"_s, March1, u"01"_s, QString(), u"02"_s, u"99"_s);
    addWriteOff(it.database(), u"10002"_s, March1, u"02"_s, QString(), QString(), QString());
    it.open(4);
    it.setPeriod(4, March1, March31);
    it.selectOnly(4, {1});
    it.choose(4, 1);
    it.print(4);
    QCOMPARE(it.file(), u"E02.rpt"_s);
    QCOMPARE(rowsOf(*it.store.connect(), u"View03"_s),
             QStringList{expectedRow(u"View03"_s, {{u"EmpNo", u"10001"},
                                                   {u"CnlDate", March1},
                                                   {u"CnlNo1", u"事由1"},
                                                   {u"CnlNo3", u"事由2"},
                                                   {u"CnlNo4", u"99"}})});
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1));
}

void Form7PrintTest::anEmptyReportTellsItsPeriod_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    for (int tab = 1; tab < 6; ++tab)
        for (int option = 0; option < OptionCounts.at(static_cast<std::size_t>(tab)); ++option)
            QTest::addRow("%c%02d", 'A' + tab, option + 1) << tab << option;
}

/// Also of days that the masks cannot hold.
void Form7PrintTest::anEmptyReportTellsItsPeriod() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    Form7Fixture it;
    addPeople(it.database());
    it.open(tab);
    it.setPeriod(tab, {2026, 1, 5}, {2026, 1, 31});
    it.choose(tab, option);
    it.print(tab);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(0));
    const bool isOneDay = tab == 3 && option == 4;
    const QString page = it.preview().document().textOf(0);
    QVERIFY2(page.contains(isOneDay ? u"期間：115/01/05　列印日期："_s
                                    : u"期間：115/01/05 ～ 115/01/31　列印日期："_s),
             qPrintable(page));
    QCOMPARE(it.answers.trouble(), QString());
}

void Form7PrintTest::anEmptyCardTellsWhoseItIs() {
    Form7Fixture it;
    addPeople(it.database());
    it.open(3);
    it.setPeriod(3, March1, March31);
    it.choose(3, 5);
    for (const auto& [typed, told] :
         {std::pair{u"10002"_s, u"員工：10002 陳美惠"_s}, std::pair{u"99999"_s, u"員工：99999"_s}}) {
        it.combo(3, 0).setEditText(typed);
        it.print(3);
        QCOMPARE(it.preview().document().rowCount(), std::size_t(0));
        const QStringList lines = it.preview().document().textOf(0).split(u'\n');
        QVERIFY2(lines.contains(told), qPrintable(lines.join(u'|')));
        it.closePreviews();
    }
}

/// A list of the first tab has no period.
void Form7PrintTest::thePeriodOfStagedRowsEndsWithItsTab() {
    Form7Fixture it;
    it.open(4);
    it.setPeriod(4, {2026, 1, 5}, {2026, 1, 31});
    it.print(4);
    QCOMPARE(it.named(u"Period"_s), u"115/01/05 ～ 115/01/31"_s);
    it.closePreviews();
    it.clickTab(0);
    it.print(0);
    QCOMPARE(it.file(), u"a01.rpt"_s);
    QCOMPARE(it.named(u"Period"_s), QString());
}

void Form7PrintTest::nothingSelected_data() {
    QTest::addColumn<int>("option");
    for (int option = 0; option < 4; ++option)
        QTest::addRow("E0%d", option + 1) << option;
}

void Form7PrintTest::nothingSelected() {
    QFETCH(const int, option);
    Form7Fixture it;
    addPeople(it.database());
    addCodes(it.database(), u"Canc01"_s, 3);
    addWriteOff(it.database(), u"10001"_s, March1, u"01"_s, u""_s, u""_s, u""_s);
    it.open(4);
    it.setPeriod(4, March1, March31);
    it.selectOnly(4, {});
    it.choose(4, option);
    it.print(4);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(0));
    QCOMPARE(it.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form7PrintTest>(argc, argv);
}

#include "Form7PrintTest.moc"
