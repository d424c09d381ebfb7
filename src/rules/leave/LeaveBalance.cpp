#include "rules/leave/LeaveBalance.h"

#include "store/RunTimeError.h"
#include "store/StatementForm.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::int32_t HoursOfDay = 8;
constexpr std::int32_t Tenths = 10;

/// A row of Base06 as the queries of a balance tell it.
enum Figure : std::size_t { MayBeTaken, Taken, Left };

/// The statements of one balance.
struct BalanceForms {
    BalanceForms(const QString& HD, const QString& Use, const QString& Left)
        : read(u"select "_s + HD + u',' + Use + u',' + Left + u" from Base06 WHERE EmpNo = '00001'"_s)
        , write(u"Update Base06 Set "_s + Use + u" = 1.4,"_s + Left + u" = 5.4 Where EmpNo = '00001'"_s) {}

    StatementForm read;
    StatementForm write;
};

/// In the order of the codes.
const BalanceForms& formsOf(std::size_t balance) {
    static const std::array<BalanceForms, 4> forms{{{u"ThisYearHD"_s, u"ThisYearUse"_s, u"ThisYearLeft"_s},
                                                    {u"LastYearHD"_s, u"LastYearUse"_s, u"LastYearLeft"_s},
                                                    {u"LeaveHD"_s, u"LeaveUse"_s, u"LeaveLeft"_s},
                                                    {u"SickHD"_s, u"SickUse"_s, u"SickLeft"_s}}};
    return forms.at(balance);
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
    : database_(database), EmpNo_(EmpNo), balance_(balance), figures_(readFigures()) {}

std::vector<Value> LeaveBalance::readFigures() const {
    const std::array<Value, 1> employee{EmpNo_};
    const Rows found = database_.select(formsOf(balance_).read, employee);
    if (found.isEmpty())
        throw runTimeError(error::NoCurrentRecord, EmpNo_);
    return found.row(0);
}

std::int32_t LeaveBalance::hoursLeft() const {
    return hoursOfNumber(figures_[Left].toReal());
}

void LeaveBalance::charge(std::int16_t hours) {
    const double taken =
        numberOfHours(checked32(std::int64_t{hoursOfNumber(figures_[Taken].toReal())} + hours));
    // Deliberate: what was left counts nothing, what a hand has written there is overwritten.
    const double left = numberOfHours(
        checked32(std::int64_t{hoursOfNumber(figures_[MayBeTaken].toReal())} - hoursOfNumber(taken)));
    const std::array<Value, 3> written{taken, left, EmpNo_};
    database_.execute(formsOf(balance_).write, written);
    figures_[Taken] = taken;
    figures_[Left] = left;
}

} // namespace pontrel
