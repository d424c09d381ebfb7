#include "rules/leave/LeaveBalance.h"

#include "store/RunTimeError.h"
#include "store/StatementText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::int32_t HoursOfDay = 8;
constexpr std::int32_t Tenths = 10;

enum Figure { MayBeTaken, Taken, Left };

/// The columns of Base06 in the order of the codes.
const std::array<QString, 3>& columnsOf(std::size_t balance) {
    static const std::array<std::array<QString, 3>, 4> columns{
        {{u"ThisYearHD"_s, u"ThisYearUse"_s, u"ThisYearLeft"_s},
         {u"LastYearHD"_s, u"LastYearUse"_s, u"LastYearLeft"_s},
         {u"LeaveHD"_s, u"LeaveUse"_s, u"LeaveLeft"_s},
         {u"SickHD"_s, u"SickUse"_s, u"SickLeft"_s}}};
    return columns.at(balance);
}

std::int32_t checked32(std::int64_t hours) {
    if (hours < std::numeric_limits<std::int32_t>::min() || hours > std::numeric_limits<std::int32_t>::max())
        throw runTimeError(error::Overflow, QString::number(hours));
    return static_cast<std::int32_t>(hours);
}

} // namespace

std::int32_t hoursOfNumber(double number) {
    // To the nearest whole number, an exact half to the even one.
    const double tenths = std::nearbyint(number * Tenths);
    if (!(std::fabs(tenths) <= std::numeric_limits<std::int32_t>::max()))
        throw runTimeError(error::Overflow, QString::number(number));
    const auto whole = static_cast<std::int32_t>(tenths);
    return whole / Tenths * HoursOfDay + whole % Tenths;
}

double numberOfHours(std::int32_t hours) {
    return hours / HoursOfDay + hours % HoursOfDay * 0.1;
}

BalanceCodes readBalanceCodes(Database& database) {
    const Rows settings = database.select(u"select ThisYearRest,LastYearRest,Leave,Sick from Syst01"_s);
    if (settings.isEmpty())
        throw runTimeError(error::NoCurrentRecord, u"Syst01"_s);
    BalanceCodes codes;
    for (std::size_t balance = 0; balance < codes.size(); ++balance)
        if (const Value& code = settings.at(0, balance); !code.isNull())
            codes[balance] = code.toText();
    return codes;
}

std::optional<std::size_t> balanceOf(const QString& HoliNo, const BalanceCodes& codes) {
    const auto equal = std::find(codes.begin(), codes.end(), HoliNo);
    if (equal == codes.end())
        return std::nullopt;
    return static_cast<std::size_t>(equal - codes.begin());
}

LeaveBalance::LeaveBalance(Database& database, const QString& EmpNo, std::size_t balance)
    : columns_(columnsOf(balance)) {
    const auto& [mayBeTaken, taken, left] = columns_;
    employee_ = database.openRecordset(u"select "_s + mayBeTaken + u',' + taken + u',' + left +
                                       u" from Base06 WHERE EmpNo = "_s + textLiteral(EmpNo));
}

std::int64_t LeaveBalance::hoursIn(int column) const {
    return hoursOfNumber(employee_.field(column).toReal());
}

std::int64_t LeaveBalance::hoursLeft() const {
    return hoursIn(Left);
}

void LeaveBalance::charge(std::int16_t hours) {
    employee_.Edit();
    employee_.setField(columns_[Taken], numberOfHours(checked32(hoursIn(Taken) + hours)));
    // Meant so: what was left counts nothing, what a hand has written there is overwritten.
    employee_.setField(columns_[Left], numberOfHours(checked32(hoursIn(MayBeTaken) - hoursIn(Taken))));
    employee_.Update();
}

} // namespace pontrel
