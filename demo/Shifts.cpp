#include "demo/Plan.h"
#include "demo/Rows.h"
#include "rules/Session.h"
#include "rules/schedule/RosterGeneration.h"

#include <algorithm>
#include <initializer_list>

namespace pontrel::demo {

namespace {

constexpr std::array All{true, true, true, true};
constexpr std::array Ends{true, false, false, true};
constexpr std::array Arrival{true, false, false, false};
constexpr std::array WithoutNoonOut{true, false, true, true};
constexpr std::array None{false, false, false, false};

constexpr HalfDay Usual{.cushion = 5, .delay = 25, .earlier = 30};

QTime at(int hour, int minute) {
    return {hour, minute};
}

/// One step of a shift class: days worked in a slot, and rest days after them.
struct Step {
    char16_t slot;
    int days = 5;
    int rests = 2;
};

struct ShiftClass {
    const char16_t* code;
    const char16_t* name;
    std::vector<Step> steps;
    bool restOnHolidays = true;
};

const std::vector<ShiftClass>& shiftClasses() {
    static const std::vector<ShiftClass> all{
        {.code = u"D01", .name = u"日班四卡", .steps = {{.slot = u'A'}}},
        {.code = u"D02", .name = u"日班兩卡", .steps = {{.slot = u'B'}}},
        {.code = u"E01", .name = u"彈性上班", .steps = {{.slot = u'C'}}},
        {.code = u"E02", .name = u"彈性四卡", .steps = {{.slot = u'F'}}},
        {.code = u"E03", .name = u"上午彈性", .steps = {{.slot = u'G'}}},
        {.code = u"M01", .name = u"主管", .steps = {{.slot = u'E'}}},
        {.code = u"N01", .name = u"夜班", .steps = {{.slot = u'N'}}, .restOnHolidays = false},
        {.code = u"R01",
         .name = u"警衛輪班",
         .steps = {{.slot = u'B'}, {.slot = u'N'}},
         .restOnHolidays = false},
        {.code = u"S01", .name = u"業務三卡", .steps = {{.slot = u'D'}}},
    };
    return all;
}

/// Nobody looks on while the roster is made.
class RosterAlone final : public QuietHost<RosterHost> {
  public:
    void showDay(QDate) override {}
    void refreshRoster() override {}
};

/// The national holidays of 2010 that are no weekend.
std::vector<QDate> holidays() {
    return {QDate(2010, 1, 1),  QDate(2010, 2, 15), QDate(2010, 2, 16),
            QDate(2010, 2, 17), QDate(2010, 2, 18), QDate(2010, 2, 19),
            QDate(2010, 4, 5),  QDate(2010, 6, 16), QDate(2010, 9, 22)};
}

void writeTimeSlot(Database& database, const TimeSlot& slot) {
    insertRow(database, QStringLiteral("Base04"),
              {{u"TimeNo", QString(slot.code)},     {u"TimeName", slot.name},
               {u"CardType", slot.cardType},        {u"StdC1", slot.required[0]},
               {u"StdC2", slot.required[1]},        {u"StdC3", slot.required[2]},
               {u"StdC4", slot.required[3]},        {u"StrIn1", slot.earliestMorning},
               {u"StrIn3", slot.earliestAfternoon}, {u"StdT1", slot.standard[0]},
               {u"StdT2", slot.standard[1]},        {u"StdT3", slot.standard[2]},
               {u"StdT4", slot.standard[3]},        {u"EndOut2", slot.latestMorning},
               {u"EndOut4", slot.latestAfternoon},  {u"Rest", slot.rest},
               {u"ElstType", slot.elstType},        {u"ElstMin", slot.elstMin},
               {u"Cushion", slot.morning.cushion},  {u"Delay", slot.morning.delay},
               {u"Earlier", slot.morning.earlier},  {u"Cushion1", slot.afternoon.cushion},
               {u"Delay1", slot.afternoon.delay},   {u"Earlier1", slot.afternoon.earlier}});
}

void writeShiftClass(Database& database, const ShiftClass& shiftClass) {
    const Step* second = shiftClass.steps.size() > 1 ? &shiftClass.steps[1] : nullptr;
    const Step& first = shiftClass.steps.front();
    insertRow(database, QStringLiteral("Base05"),
              {{u"ClsNo", shiftClass.code},
               {u"ClassName", shiftClass.name},
               {u"TimeNo1", QString(first.slot)},
               {u"TimeDay1", first.days},
               {u"TimeRest1", first.rests},
               {u"TimeNo2", second ? Value(QString(second->slot)) : Value()},
               {u"TimeDay2", second ? Value(second->days) : Value()},
               {u"TimeRest2", second ? Value(second->rests) : Value()},
               {u"ChkHoli", shiftClass.restOnHolidays}});
}

} // namespace

const std::vector<TimeSlot>& timeSlots() {
    static const std::vector<TimeSlot> all{
        {.code = u'A',
         .name = u"日班四卡",
         .cardType = 4,
         .required = All,
         .standard = {at(8, 0), at(12, 0), at(13, 0), at(17, 0)},
         .morning = Usual,
         .afternoon = Usual},
        {.code = u'B',
         .name = u"日班兩卡",
         .cardType = 2,
         .required = Ends,
         .standard = {at(8, 30), at(12, 0), at(13, 0), at(17, 30)},
         .morning = Usual,
         .afternoon = Usual},
        {.code = u'C',
         .name = u"彈性一卡",
         .cardType = 1,
         .elstType = 1,
         .elstMin = 30,
         .required = Arrival,
         .standard = {at(9, 0), at(12, 0), at(13, 0), at(18, 0)},
         .earliestMorning = at(7, 0)},
        {.code = u'D',
         .name = u"業務三卡",
         .cardType = 3,
         .elstType = 3,
         .elstMin = 30,
         .required = WithoutNoonOut,
         .standard = {at(8, 30), at(12, 0), at(13, 30), at(17, 30)},
         .latestMorning = at(12, 29),
         .earliestAfternoon = at(12, 30),
         .morning = {.cushion = 15}},
        {.code = u'E',
         .name = u"免刷卡",
         .cardType = 0,
         .required = None,
         .standard = {at(8, 30), at(12, 0), at(13, 0), at(17, 30)}},
        {.code = u'F',
         .name = u"彈性四卡",
         .cardType = 4,
         .elstType = 4,
         .elstMin = 30,
         .required = All,
         .standard = {at(8, 30), at(12, 30), at(13, 30), at(17, 30)},
         .earliestMorning = at(7, 30),
         .latestMorning = at(13, 5),
         .earliestAfternoon = at(13, 6)},
        {.code = u'G',
         .name = u"上午彈性四卡",
         .cardType = 4,
         .elstType = 2,
         .elstMin = 30,
         .required = All,
         .standard = {at(8, 0), at(12, 0), at(13, 0), at(17, 0)},
         .earliestMorning = at(7, 0),
         .latestMorning = at(12, 40),
         .earliestAfternoon = at(12, 41),
         .afternoon = Usual},
        {.code = u'N',
         .name = u"夜班兩卡",
         .cardType = 2,
         .required = Ends,
         .standard = {at(22, 0), at(2, 0), at(2, 30), at(6, 0)},
         .earliestMorning = at(21, 0),
         .latestMorning = at(2, 15),
         .earliestAfternoon = at(2, 16),
         .latestAfternoon = at(7, 30),
         .morning = Usual,
         .afternoon = Usual},
    };
    return all;
}

const TimeSlot& timeSlot(char16_t code) {
    return *std::ranges::find(timeSlots(), code, &TimeSlot::code);
}

const TimeSlot* rosteredSlot(const Employee& employee, QDate day) {
    const auto shiftClass = std::ranges::find(shiftClasses(), QStringView(employee.shiftClass),
                                              [](const ShiftClass& each) { return QStringView(each.code); });
    qint64 rotation = 0;
    for (const Step& step : shiftClass->steps)
        rotation += step.days + step.rests;
    qint64 place = FirstDay.daysTo(day) % rotation;
    for (const Step& step : shiftClass->steps) {
        if (place < step.days)
            return &timeSlot(step.slot);
        place -= step.days + step.rests;
        if (place < 0)
            return nullptr;
    }
    return nullptr;
}

void generateRoster(Database& database) {
    RosterAlone host;
    // The window was opened on the Friday before, whose date the run takes for its holidays.
    const QDate opened = FirstDay.addDays(-3);
    QString gPickClsNo;
    QString gPickEmpNo;
    for (const ShiftClass& shiftClass : shiftClasses()) {
        const QString code = QString::fromUtf16(shiftClass.code);
        RosterGeneration generation(database, host, {gPickClsNo, gPickEmpNo, opened, opened});
        generation.GenerateRoster({.firstEmpNo = QStringLiteral("000000"),
                                   .lastEmpNo = QStringLiteral("ZZZZZZ"),
                                   .start = FirstDay,
                                   .end = LastDay,
                                   .firstClsNo = code,
                                   .lastClsNo = code});
    }
}

void writeShifts(Database& database) {
    for (const TimeSlot& slot : timeSlots())
        writeTimeSlot(database, slot);
    for (const ShiftClass& shiftClass : shiftClasses())
        writeShiftClass(database, shiftClass);

    const std::vector<QDate> free = holidays();
    for (QDate day(2010, 1, 1); day.year() == 2010; day = day.addDays(1))
        if (isWeekend(day) || std::ranges::find(free, day) != free.end())
            insertRow(database, QStringLiteral("Rule01"), {{u"hymd", day}});
}

} // namespace pontrel::demo
