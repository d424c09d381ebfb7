#include "demo/Plan.h"
#include "demo/Rows.h"
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

QTime at(int hour, int minute) {
    return {hour, minute};
}

/// One step of a shift class: days worked in a slot, and rest days after them.
struct Step {
    char16_t slot;
    int days;
    int rests;
};

struct ShiftClass {
    const char16_t* code;
    const char16_t* name;
    std::vector<Step> steps;
    bool restOnHolidays;
};

const std::vector<ShiftClass>& shiftClasses() {
    static const std::vector<ShiftClass> all{
        {u"D01", u"日班四卡", {{u'A', 5, 2}}, true},
        {u"D02", u"日班兩卡", {{u'B', 5, 2}}, true},
        {u"E01", u"彈性上班", {{u'C', 5, 2}}, true},
        {u"E02", u"彈性四卡", {{u'F', 5, 2}}, true},
        {u"E03", u"上午彈性", {{u'G', 5, 2}}, true},
        {u"M01", u"主管", {{u'E', 5, 2}}, true},
        {u"N01", u"夜班", {{u'N', 5, 2}}, false},
        {u"R01", u"警衛輪班", {{u'B', 5, 2}, {u'N', 5, 2}}, false},
        {u"S01", u"業務三卡", {{u'D', 5, 2}}, true},
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
              {{u"TimeNo", QString(slot.code)},
               {u"TimeName", slot.name},
               {u"CardType", slot.cardType},
               {u"StdC1", slot.required[0]},
               {u"StdC2", slot.required[1]},
               {u"StdC3", slot.required[2]},
               {u"StdC4", slot.required[3]},
               {u"StrIn1", slot.earliestMorning},
               {u"StrIn3", slot.earliestAfternoon},
               {u"StdT1", slot.standard[0]},
               {u"StdT2", slot.standard[1]},
               {u"StdT3", slot.standard[2]},
               {u"StdT4", slot.standard[3]},
               {u"EndOut2", slot.latestMorning},
               {u"EndOut4", slot.latestAfternoon},
               {u"Rest", slot.rest},
               {u"ElstType", slot.elstType},
               {u"ElstMin", slot.elstMin},
               {u"Cushion", slot.cushion},
               {u"Delay", slot.delay},
               {u"Earlier", slot.earlier},
               {u"Cushion1", slot.cushion1},
               {u"Delay1", slot.delay1},
               {u"Earlier1", slot.earlier1}});
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
        {u'A',
         u"日班四卡",
         4,
         0,
         0,
         All,
         {at(8, 0), at(12, 0), at(13, 0), at(17, 0)},
         at(6, 30),
         at(12, 30),
         at(12, 31),
         at(23, 0),
         5,
         25,
         30,
         5,
         25,
         30,
         true},
        {u'B',
         u"日班兩卡",
         2,
         0,
         0,
         Ends,
         {at(8, 30), at(12, 0), at(13, 0), at(17, 30)},
         at(6, 30),
         at(12, 30),
         at(12, 31),
         at(23, 0),
         5,
         25,
         30,
         5,
         25,
         30,
         true},
        {u'C',
         u"彈性一卡",
         1,
         1,
         30,
         Arrival,
         {at(9, 0), at(12, 0), at(13, 0), at(18, 0)},
         at(7, 0),
         at(12, 30),
         at(12, 31),
         at(23, 0),
         0,
         0,
         0,
         0,
         0,
         0,
         true},
        {u'D',
         u"業務三卡",
         3,
         3,
         30,
         WithoutNoonOut,
         {at(8, 30), at(12, 0), at(13, 30), at(17, 30)},
         at(6, 30),
         at(12, 29),
         at(12, 30),
         at(23, 0),
         15,
         0,
         0,
         0,
         0,
         0,
         true},
        {u'E',
         u"免刷卡",
         0,
         0,
         0,
         None,
         {at(8, 30), at(12, 0), at(13, 0), at(17, 30)},
         at(6, 30),
         at(12, 30),
         at(12, 31),
         at(23, 0),
         0,
         0,
         0,
         0,
         0,
         0,
         true},
        {u'F',
         u"彈性四卡",
         4,
         4,
         30,
         All,
         {at(8, 30), at(12, 30), at(13, 30), at(17, 30)},
         at(7, 30),
         at(13, 5),
         at(13, 6),
         at(23, 0),
         0,
         0,
         0,
         0,
         0,
         0,
         true},
        {u'G',
         u"上午彈性四卡",
         4,
         2,
         30,
         All,
         {at(8, 0), at(12, 0), at(13, 0), at(17, 0)},
         at(7, 0),
         at(12, 40),
         at(12, 41),
         at(23, 0),
         0,
         0,
         0,
         5,
         25,
         30,
         true},
        {u'N',
         u"夜班兩卡",
         2,
         0,
         0,
         Ends,
         {at(22, 0), at(2, 0), at(2, 30), at(6, 0)},
         at(21, 0),
         at(2, 15),
         at(2, 16),
         at(7, 30),
         5,
         25,
         30,
         5,
         25,
         30,
         true},
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
