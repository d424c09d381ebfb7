#include "rules/attendance/Opening.h"
#include "rules/master/EntitlementDesk.h"
#include "rules/master/Seniority.h"
#include "rules/reports/Staging.h"
#include "rules/schedule/RosterDesk.h"
#include "store/JoinedEntries.h"
#include "store/Recordset.h"
#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

// The import
// ------------------------------------------------------------------------------------------------------------

/// Reads a file whose second swipe holds the texts.
Outcome import(const QByteArray& card, const QByteArray& classCode, const QByteArray& reader) {
    Opening it;
    it.database().execute(u"Update Syst01 Set LenEmpNo = 12"_s);
    addEmployee(it.database(), u"000000000001"_s);
    const QByteArray lines = punchLine("1", Day, QTime(8, 0)) +
                             punchLine(card, Day, QTime(8, 1), classCode, "07", reader) +
                             punchLine("1", Day, QTime(8, 2));
    const QString file = it.store.writePunchFile(u"20010305.txt"_s, lines);
    it.host.punchFile = file;
    Outcome outcome = outcomeOf(it.store, [&] { it.calculation.ReadPunchFile(); });
    // The action ends without a word, as from any error.
    outcome.number = it.errorNumber();
    return outcome;
}

/// An overtime swipe of the code, behind one of another employee.
Outcome overtime(const QString& EmpNo) {
    Opening it;
    addPunch(it.database(), u"00001"_s, Day, QTime(18, 0), u"081"_s);
    addPunch(it.database(), u"00001"_s, Day, QTime(20, 0), u"081"_s);
    addPunch(it.database(), EmpNo, Day, QTime(18, 0), u"081"_s);
    return outcomeOf(it.store, [&] { it.calculation.BuildPunchOvertime(Day); });
}

/// Rostered employees 00001 and that code, on slot A and on that slot.
Outcome slotLoop(const QString& EmpNo, const QString& TimeNo) {
    Opening it;
    addSlot(it.database(), u"A"_s, {{u"CardType", 0}});
    if (TimeNo != u"A"_s)
        addSlot(it.database(), TimeNo, {{u"CardType", 0}});
    it.addRostered(u"00001"_s);
    it.addRostered(EmpNo, TimeNo);
    return outcomeOf(it.store, [&] { it.calculation.CalcSlotLoop(Day, false); });
}

/// An exception of the code on the slot, to be worked out anew, and one of another employee.
Outcome recalculation(const QString& EmpNo, const QString& TimeNo) {
    Opening it;
    addSlot(it.database(), TimeNo, {{u"CardType", 0}});
    const Fields row{{u"EmpNo", EmpNo}, {u"UseDate", Day}, {u"TimeNo", TimeNo}, {u"Expt", true}};
    insertRow(it.database(), u"AtteTemp1"_s, row);
    insertRow(it.database(), u"Atte03"_s, row);
    insertRow(it.database(), u"Atte03"_s, with(row, {u"EmpNo", u"zz"}));
    insertRow(it.database(), u"Atte02"_s, with(row, {u"EmpNo", u"zz"}));
    return outcomeOf(it.store, [&] { it.calculation.CalcSlotLoop(Day, true); });
}

Outcome dailyView(const QString& EmpNo) {
    Opening it;
    it.addRostered(EmpNo);
    insertRow(it.database(), u"View02"_s, {{u"EmpNo", u"1"}, {u"UseDate", Day}, {u"T1", QTime(8, 0)}});
    addPunch(it.database(), u"1"_s, Day, QTime(9, 0));
    return outcomeOf(it.store, [&] { it.calculation.FillDailyView(Day); });
}

Outcome slotTime(const QString& EmpNo) {
    Opening it;
    insertRow(it.database(), u"AtteTemp1"_s, {{u"EmpNo", u"1"}, {u"UseDate", Day}});
    return outcomeOf(it.store, [&] { it.calculation.SetSlotTime(Day, EmpNo, QTime(8, 0), 1); });
}

std::vector<Place> attendancePlaces() {
    const QString sentinel = u"Base06 ~1 LeaveDate='2038-01-01'"_s;
    const QString firstPunch = u"AtteTemp +'000000000001'|'2001-03-05'|'08:00:00'|'255'|'001'"_s;
    const QString firstDay = u"+'00001'|'2001-03-05'|'A'|null*4|0*12|null*12|0*13"_s;
    const QStringList firstEmployee{u"Atte02 "_s + firstDay, u"AtteTemp1 "_s + firstDay,
                                    u"View02 +'00001'|'2001-03-05'|null*12"_s};
    const QStringList firstEmployeeNotCopied{u"AtteTemp1 "_s + firstDay,
                                             u"View02 +'00001'|'2001-03-05'|null*12"_s};
    return {
        {"the card of a swipe",
         [] { return import("00000a' & 'b", "255", "001"); },
         error::Syntax,
         {sentinel, firstPunch}},
        {"the class of a swipe",
         [] { return import("1", "'&'", "001"); },
         error::Syntax,
         {sentinel, firstPunch}},
        {"the reader of a swipe",
         [] { return import("1", "255", "'&'"); },
         error::Syntax,
         {sentinel, firstPunch}},
        {"an employee with overtime swipes",
         [] { return overtime(AnyRow); },
         error::Syntax,
         {u"Over01 +'00001'|'2001-03-05'|'18:00:00'|'20:00:00'|2|null|0|0|null|null"_s}},
        {"another value with overtime swipes", [] { return overtime(OtherValue); }, error::Syntax, {}},
        {"a slot of the slot loop", [] { return slotLoop(u"1"_s, AnyRow); }, error::Syntax, firstEmployee},
        {"another value of a slot of the slot loop", [] { return slotLoop(u"1"_s, u"X' & '1"_s); },
         error::Syntax, firstEmployee},
        {"an employee of the slot loop", [] { return slotLoop(AnyRow, u"A"_s); }, error::Syntax,
         firstEmployeeNotCopied},
        {"a slot of the recalculation", [] { return recalculation(u"1"_s, AnyRow); }, error::Syntax, {}},
        {"an employee of the recalculation", [] { return recalculation(AnyRow, u"A"_s); }, error::Syntax, {}},
        {"an employee of the raw view",
         [] { return dailyView(AnyRow); },
         error::Syntax,
         {u"View02 +'z' or '1'|'2001-03-05'|null*12"_s}},
        {"an employee of a single time", [] { return slotTime(AnyRow); }, error::Syntax, {}},
    };
}

// The master data
// -------------------------------------------------------------------------------------------------------

Outcome seniority(const QString& EmpNo) {
    EmployeeDesk desk;
    for (const QString& each : {u"00001"_s, EmpNo, u"zz"_s})
        insertRow(desk.database(), u"Base06"_s,
                  {{u"EmpNo", each}, {u"IniArrDate", QDate(1990, 3, 15)}, {u"BreakY", 0}, {u"SoldierY", 0}});
    Outcome outcome = outcomeOf(desk.store, [&] { ComputeSeniority(desk.database(), desk.host); });
    // The calculation tells the error itself.
    if (desk.host.calls.constLast().startsWith(u"openFailed "_s))
        outcome.number = desk.host.calls.constLast().section(u' ', 1).toInt();
    return outcome;
}

Outcome entitlement(const QString& EmpNo, const QString& SuitNo, const QString& code) {
    EntitlementDesk desk;
    desk.add(employee(u"00001"_s, 4));
    desk.add(employee(EmpNo, 4, SuitNo));
    desk.grant(Annual, u"3~5:10"_s);
    desk.database().execute(u"Update Syst01 Set ThisYearRest = '01',Leave = '03',Sick = '04'"_s);
    Recordset settings = desk.database().openRecordset(u"Syst01"_s);
    settings.Edit();
    settings.setField(u"Leave"_s, code);
    settings.Update();
    settings.Close();
    desk.store.commit();
    return outcomeOf(desk.store, [&] { ComputeEntitlement(desk.database(), desk.host); });
}

std::vector<Place> masterPlaces() {
    const QString granted = u" ThisYearHD=10.0 ThisYearLeft=10.0"_s;
    return {
        {"an employee of the seniority",
         [] { return seniority(AnyRow); },
         error::Syntax,
         {u"Base06 ~1 HoliExper=10"_s}},
        {"another value of an employee of the seniority",
         [] { return seniority(OtherValue); },
         error::Syntax,
         {}},
        {"a scheme of the entitlement",
         [] { return entitlement(u"00002"_s, AnyRow, Personal); },
         error::Syntax,
         {u"Base06 ~1"_s + granted}},
        // The first pass has found the days of the annual leave, which stay.
        {"a leave of the entitlement",
         [] { return entitlement(u"00002"_s, u"1"_s, AnyRow); },
         error::Syntax,
         {u"Base06 ~1"_s + granted}},
        // The entitlement joins no employee: it writes through the row that it has read.
        {"an employee of the entitlement",
         [] { return entitlement(AnyRow, u"1"_s, Personal); },
         0,
         {u"Base06 ~1"_s + granted, u"Base06 ~2"_s + granted}},
    };
}

// The roster
// ------------------------------------------------------------------------------------------------------------

/// Two members of a class with one step.
struct RosterOfTwo : RosterDesk {
    explicit RosterOfTwo(const QString& slot = u"A"_s, const QString& ClsNo = u"001"_s,
                         const QString& second = u"E2"_s) {
        addClass(ClsNo, {{slot, 1, 1}});
        addMember(u"E1"_s, ClsNo);
        addMember(second, ClsNo);
        addMember(u"X1"_s, u"ZZZZZ"_s); // no class of the run
        addRoster(database(), u"E1"_s, Day, u"Z"_s);
        addRoster(database(), u"X1"_s, Day, u"Z"_s);
    }
    Outcome run(const RosterRange& range) {
        return outcomeOf(store, [&] { generate(range); });
    }
};

Outcome rosterRange(QString RosterRange::*bound, const QString& text) {
    RosterOfTwo desk;
    RosterRange range = RosterDesk::range(Day, Day);
    range.*bound = text;
    Outcome outcome = desk.run(range);
    // What comes before the statement is done.
    if (desk.host.calls != QStringList{u"hourglass"_s})
        outcome.differences << desk.host.calls;
    return outcome;
}

/// A class whose only step has rest days alone is written for the employee of the run before.
Outcome rosterOfRest(const QString& gPickEmpNo) {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 0, 1}});
    desk.addMember(u"E1"_s, u"001"_s);
    addRoster(desk.database(), u"E1"_s, Day, u"Z"_s);
    desk.gPickEmpNo = gPickEmpNo;
    return outcomeOf(desk.store, [&] { desk.generate(RosterDesk::range(Day, Day)); });
}

/// A run that writes no day blanks the holidays of the employee of the run before.
Outcome rosterOfHolidays(const QString& gPickEmpNo) {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 0}}, true);
    desk.addMember(u"E1"_s, u"001"_s);
    addRoster(desk.database(), u"E1"_s, Day, u"Z"_s);
    desk.addDayOff(Day);
    desk.gPickEmpNo = gPickEmpNo;
    desk.gDate1 = Day;
    desk.gDate2 = Day;
    return outcomeOf(desk.store, [&] { desk.generate(RosterDesk::range(Day, Day.addDays(-1))); });
}

std::vector<Place> rosterPlaces() {
    const QString low = u"0' & '0"_s;
    const QString high = u"E1' or '1'='1"_s;
    const QString first = u"Rule03 ~1 TimeNo='A'"_s;
    return {
        {"the first employee of a roster",
         [=] { return rosterRange(&RosterRange::firstEmpNo, low); },
         error::Syntax,
         {}},
        {"the last employee of a roster",
         [=] { return rosterRange(&RosterRange::lastEmpNo, high); },
         error::Syntax,
         {}},
        {"the first class of a roster",
         [=] { return rosterRange(&RosterRange::firstClsNo, low); },
         error::Syntax,
         {}},
        {"the last class of a roster",
         [=] { return rosterRange(&RosterRange::lastClsNo, high); },
         error::Syntax,
         {}},
        {"a class of a roster",
         [] { return RosterOfTwo(u"A"_s, AnyRow).run(RosterDesk::range(Day, Day)); },
         error::Syntax,
         {}},
        {"a slot of a roster",
         [] { return RosterOfTwo(u"A',Rule03.EmpNo = 'E2"_s).run(RosterDesk::range(Day, Day)); },
         error::Syntax,
         {}},
        {"another value of a slot of a roster",
         [] { return RosterOfTwo(u"A' & 'B"_s).run(RosterDesk::range(Day, Day)); },
         error::Syntax,
         {}},
        {"an employee of a roster",
         [] { return RosterOfTwo(u"A"_s, u"001"_s, AnyRow).run(RosterDesk::range(Day, Day)); },
         error::Syntax,
         {first}},
        {"the employee of rest days", [] { return rosterOfRest(AnyRow); }, error::Syntax, {}},
        {"the employee of holidays", [] { return rosterOfHolidays(AnyRow); }, error::Syntax, {}},
    };
}

// The reports
// ------------------------------------------------------------------------------------------------------------

/// What a report prepares of two employees with a write-off each; the choice is spoilt by the routine.
Outcome preparation(QStringView code, const std::function<void(ReportChoice&)>& spoil,
                    const QString& second = u"E2"_s) {
    TestStore store;
    insertRow(store.database(), u"Canc01"_s, {{u"CnlNo", u"01"}, {u"CnlName", u"忘記"}});
    for (const QString& EmpNo : {u"E1"_s, second}) {
        addEmployee(store.database(), EmpNo, {{u"UnitNo", u"0100"}, {u"WorkNo", u"0001"}});
        addWriteOff(store.database(), EmpNo, Day, u"01"_s, QString(), QString(), QString());
    }
    const Report& report = *findReport(code);
    ReportChoice choice = defaultChoice(report.tab, report.option);
    choice.dates = {Day, Day};
    choice.list = {{u"01 忘記"_s, true}};
    spoil(choice);
    return outcomeOf(store, [&] { std::ignore = prepareReport(store.database(), choice, Day); });
}

Outcome reportRange(QStringView code, int combo, const QString& text) {
    return preparation(code, [&](ReportChoice& choice) { choice.combos[combo] = text; });
}

std::vector<Place> reportPlaces() {
    const QString high = u"ZZ' or '1'='1"_s;
    const auto spoiltReason = [](ReportChoice& choice) { choice.list[0].text = u"'' 忘記"_s; };
    const auto spoiltUnit = [=](ReportChoice& choice) { choice.writeOffUnits[1] = high; };
    const QString counted = u"View01 +'E1'|'2001-03-05'|'2001-03-05'|'01'|1|0"_s;
    std::vector<Place> places{
        {"the units of the write-offs in a headcount",
         [=] { return preparation(u"D05", spoiltUnit); },
         error::Syntax,
         {}},
        {"the employee of the sums of a card",
         [=] { return reportRange(u"D06", 0, high); },
         error::Syntax,
         {}},
        {"a reason of the counts", [=] { return preparation(u"E01", spoiltReason); }, error::Syntax, {}},
        {"a reason of the detail", [=] { return preparation(u"E02", spoiltReason); }, error::Syntax, {}},
        {"an employee of the counts",
         [] {
             return preparation(
                 u"E01", [](ReportChoice&) {}, AnyRow);
         },
         error::Syntax,
         {counted}},
    };
    const auto bound = [&](const char* title, QStringView code, int combo) {
        places.push_back({title, [=] { return reportRange(code, combo, high); }, error::Syntax, {}});
    };
    bound("the first unit of a headcount", u"D05", 2);
    bound("the last unit of a headcount", u"D05", 3);
    bound("the first employment type of a headcount", u"D05", 4);
    bound("the last employment type of a headcount", u"D05", 5);
    bound("the first employee of the counts", u"E01", 0);
    bound("the last employee of the counts", u"E01", 1);
    bound("the first unit of the counts", u"E01", 2);
    bound("the last unit of the counts", u"E01", 3);
    bound("the first employee of the detail", u"E02", 0);
    bound("the last employee of the detail", u"E02", 1);
    bound("the first unit of the detail", u"E02", 2);
    bound("the last unit of the detail", u"E02", 3);
    return places;
}

std::vector<Place> allPlaces() {
    std::vector<Place> all = attendancePlaces();
    for (const auto& part :
         {masterPlaces(), rosterPlaces(), leavePlaces(), writeOffPlaces(), overtimePlaces(), reportPlaces()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace

/// Every place of the logic where a text enters a statement: one with an apostrophe is an error there, also
/// where the statement would be whole, and what was done before stays. The windows' places stand in
/// JoinedTextsTest.
class JoinedValuesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anApostropheEndsTheActionAtItsStatement_data();
    void anApostropheEndsTheActionAtItsStatement();
};

void JoinedValuesTest::anApostropheEndsTheActionAtItsStatement_data() {
    QTest::addColumn<std::size_t>("index");
    const std::vector<Place> places = allPlaces();
    for (std::size_t index = 0; index < places.size(); ++index)
        QTest::newRow(places[index].title) << index;
}

void JoinedValuesTest::anApostropheEndsTheActionAtItsStatement() {
    static const std::vector<Place> places = allPlaces();
    QFETCH(std::size_t, index);
    const Place& place = places.at(index);
    const Outcome outcome = place.run();
    QCOMPARE(outcome.differences.join(u'\n'), place.differences.join(u'\n'));
    QCOMPARE(outcome.number, place.number);
}

QTEST_GUILESS_MAIN(JoinedValuesTest)
#include "JoinedValuesTest.moc"
