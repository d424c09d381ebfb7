#include "master/Entitlement.h"

#include "store/Format.h"
#include "store/Recordset.h"
#include "store/RunTimeError.h"

#include <QHash>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace pontrel {

namespace {

/// Annual, personal and sick leave.
constexpr std::size_t Leaves = 3;
/// Meant so: a pass more than there are leaves, which reads the grants of the last one again and writes
/// nothing.
constexpr std::size_t Passes = Leaves + 1;

using Codes = std::array<QString, Leaves>;
using Days = std::array<std::optional<std::int16_t>, Leaves>;

/// Whether the band holds the seniority: its end no longer does.
bool inBand(std::int16_t seniority, std::int16_t HoliYearBeg, std::int16_t HoliYearEnd) {
    return seniority >= HoliYearBeg && seniority < HoliYearEnd;
}

/// One press of the button.
class EntitlementRun {
  public:
    EntitlementRun(Database& database, SeniorityHost& host) : database_(database), host_(host) {}

    void run();

  private:
    using GrantKey = std::pair<QString, QString>; ///< Scheme and leave type, to the letter.

    [[nodiscard]] Codes readCodes();
    void grantEmployee(Recordset& employees, const Codes& codes);
    void collectDays(const QString& SuitNo, std::int16_t seniority, const Codes& codes, Days& days);
    void collectPass(const Rows& grants, std::int16_t seniority, std::optional<std::int16_t>* days);
    static void writeDays(Recordset& employees, const Days& days);
    [[nodiscard]] const Rows& grantsOf(const QString& SuitNo, const QString& HoliNo);

    Database& database_;
    SeniorityHost& host_;
    bool hourglass_ = false;
    QHash<GrantKey, Rows> grants_; ///< Nothing changes them while the stage is open.
};

void EntitlementRun::run() {
    Stage stage(database_);
    const Codes codes = readCodes();
    Recordset employees = database_.openRecordset(
        QStringLiteral("SELECT EmpNo,SuitNo,HoliExper,ThisYearHD,ThisYearLeft,LeaveHD,LeaveLeft,SickHD,"
                       "SickLeft FROM Base06 "));
    for (; !employees.AtEOF(); employees.MoveNext())
        grantEmployee(employees, codes);
    employees.Close();
    stage.finish();
    host_.setHourglass(false);
    host_.refreshRecordBar();
}

Codes EntitlementRun::readCodes() {
    Codes codes;
    for (const std::vector<Value>& row :
         database_.select(QStringLiteral("SELECT ThisYearRest,Leave,Sick FROM Syst01")))
        std::transform(row.begin(), row.end(), codes.begin(),
                       [](const Value& code) { return code.toText(); });
    return codes;
}

void EntitlementRun::grantEmployee(Recordset& employees, const Codes& codes) {
    const QString SuitNo = employees.field(QStringLiteral("SuitNo")).toText();
    const QString HoliExper = employees.field(QStringLiteral("HoliExper")).toText();
    const std::int16_t seniority = Value(leadingNumber(HoliExper)).toInt16();
    if (!std::exchange(hourglass_, true))
        host_.setHourglass(true);
    // The passes write once together. An error in one of them leaves what those before it have found.
    Days days;
    try {
        collectDays(SuitNo, seniority, codes, days);
    } catch (const RunTimeError&) {
        writeDays(employees, days);
        throw;
    }
    writeDays(employees, days);
}

void EntitlementRun::collectDays(const QString& SuitNo, std::int16_t seniority, const Codes& codes,
                                 Days& days) {
    for (std::size_t pass = 0; pass < Passes; ++pass) {
        const QString& code = codes[std::min(pass, Leaves - 1)];
        collectPass(grantsOf(SuitNo, code), seniority, pass < Leaves ? &days[pass] : nullptr);
    }
}

/// Of several bands that hold the seniority the last one stands.
void EntitlementRun::collectPass(const Rows& grants, std::int16_t seniority,
                                 std::optional<std::int16_t>* days) {
    for (const std::vector<Value>& grant : grants) {
        const std::int16_t HoliYearBeg = grant[0].toInt16();
        const std::int16_t HoliYearEnd = grant[1].toInt16();
        const std::int16_t HoliDays = grant[2].toInt16();
        if (days != nullptr && inBand(seniority, HoliYearBeg, HoliYearEnd))
            *days = HoliDays;
    }
}

void EntitlementRun::writeDays(Recordset& employees, const Days& days) {
    if (std::none_of(days.begin(), days.end(), [](const auto& granted) { return granted.has_value(); }))
        return;
    static const std::array<std::pair<QString, QString>, Leaves> columns{
        {{QStringLiteral("ThisYearHD"), QStringLiteral("ThisYearLeft")},
         {QStringLiteral("LeaveHD"), QStringLiteral("LeaveLeft")},
         {QStringLiteral("SickHD"), QStringLiteral("SickLeft")}}};
    employees.Edit();
    for (std::size_t leave = 0; leave < Leaves; ++leave) {
        if (!days[leave])
            continue;
        // Meant so: what is left equals what is granted, also where leave was taken already.
        const QString granted = QString::number(*days[leave]);
        employees.setField(columns[leave].first, granted);
        employees.setField(columns[leave].second, granted);
    }
    employees.Update();
}

const Rows& EntitlementRun::grantsOf(const QString& SuitNo, const QString& HoliNo) {
    const GrantKey key(SuitNo, HoliNo);
    if (const auto known = grants_.constFind(key); known != grants_.constEnd())
        return *known;
    return *grants_.insert(
        key,
        database_.select(QStringLiteral("SELECT HoliYearBeg,HoliYearEnd,HoliDays FROM Holi02 WHERE SuitNo "
                                        "= '%1'     AND HoliNo = '%2'")
                             .arg(SuitNo, HoliNo)));
}

} // namespace

void ComputeEntitlement(Database& database, SeniorityHost& host) {
    EntitlementRun(database, host).run();
}

} // namespace pontrel
