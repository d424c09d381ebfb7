#include "rules/master/Entitlement.h"

#include "store/Recordset.h"
#include "store/RunTimeError.h"
#include "store/StatementText.h"

#include <QHash>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace pontrel {

namespace {

/// Annual, personal and sick leave.
constexpr std::size_t Leaves = 3;
/// Deliberate: a pass more than there are leaves, which reads the grants of the last one again and writes
/// nothing.
constexpr std::size_t Passes = Leaves + 1;

using Codes = std::array<QString, Leaves>;
using Days = std::array<std::optional<std::int16_t>, Leaves>;

/// What is written into an employee: the columns and their numbers, and the statement up to the employee's
/// code.
struct Entitlement {
    std::vector<std::pair<QString, QString>> figures;
    QString statement;
};

/// Whether the band holds the seniority: its end no longer does.
bool inBand(std::int16_t seniority, std::int16_t HoliYearBeg, std::int16_t HoliYearEnd) {
    return seniority >= HoliYearBeg && seniority < HoliYearEnd;
}

Entitlement entitlementOf(const Days& days) {
    static const std::array<std::array<QString, 2>, Leaves> columns{
        {{QStringLiteral("ThisYearHD"), QStringLiteral("ThisYearLeft")},
         {QStringLiteral("LeaveHD"), QStringLiteral("LeaveLeft")},
         {QStringLiteral("SickHD"), QStringLiteral("SickLeft")}}};
    Entitlement result;
    QStringList sets;
    for (std::size_t leave = 0; leave < Leaves; ++leave) {
        if (!days[leave])
            continue;
        // Deliberate: what is left equals what is granted, also where leave was taken already.
        for (const QString& column : columns[leave]) {
            const auto& [name, number] = result.figures.emplace_back(column, Value(*days[leave]).joined());
            sets += name + u'=' + number;
        }
    }
    result.statement = QStringLiteral("Update Base06 set %1 Where EmpNo = ").arg(sets.join(u','));
    return result;
}

QString employeesStatement() {
    return QStringLiteral("SELECT EmpNo,SuitNo,HoliExper,ThisYearHD,ThisYearLeft,LeaveHD,LeaveLeft,SickHD,"
                          "SickLeft FROM Base06 ");
}

/// One press of the button.
class EntitlementRun {
  public:
    EntitlementRun(Database& database, SeniorityHost& host) : database_(database), host_(host) {}

    void run();

  private:
    void readCodes();
    void grantEmployee(const std::vector<Value>& employee, std::size_t position);
    void collectDays(const QString& SuitNo, std::int16_t seniority, Days& days);
    void write(const Entitlement& entitlement, const QString& EmpNo, std::size_t position);
    void writeByPosition(const Entitlement& entitlement, std::size_t position);

    Database& database_;
    SeniorityHost& host_;
    Codes codes_;
    bool hourglass_ = false;
    /// By scheme and seniority. Nothing changes the grants while the stage is open.
    QHash<std::pair<QString, int>, Entitlement> entitlements_;
};

void EntitlementRun::run() {
    runStage(database_, [&] {
        readCodes();
        const Rows employees = database_.select(employeesStatement());
        for (std::size_t position = 0; position < employees.count(); ++position)
            grantEmployee(employees.row(position), position);
    });
    host_.setPointer(Pointer::Normal);
    host_.refreshRecordBar();
}

void EntitlementRun::readCodes() {
    const Rows settings = database_.select(QStringLiteral("SELECT ThisYearRest,Leave,Sick FROM Syst01"));
    for (const std::vector<Value>& row : settings)
        std::transform(row.begin(), row.end(), codes_.begin(),
                       [](const Value& code) { return code.toText(); });
}

void EntitlementRun::grantEmployee(const std::vector<Value>& employee, std::size_t position) {
    const QString EmpNo = employee[0].toText();
    const QString SuitNo = employee[1].toText();
    // The column holds whole numbers alone, so that the number at the start of its text is the number.
    const std::int16_t seniority = employee[2].toInt16();
    if (!std::exchange(hourglass_, true))
        host_.setPointer(Pointer::Hourglass);
    const std::pair<QString, int> key(SuitNo, seniority);
    auto known = entitlements_.constFind(key);
    if (known == entitlements_.constEnd()) {
        // The passes write once together. An error in one of them leaves what was found before it.
        Days days;
        try {
            collectDays(SuitNo, seniority, days);
        } catch (const RunTimeError&) {
            write(entitlementOf(days), EmpNo, position);
            throw;
        }
        known = entitlements_.insert(key, entitlementOf(days));
    }
    write(*known, EmpNo, position);
}

void EntitlementRun::collectDays(const QString& SuitNo, std::int16_t seniority, Days& days) {
    for (std::size_t pass = 0; pass < Passes; ++pass) {
        const QString& code = codes_[std::min(pass, Leaves - 1)];
        const Rows grants = database_.select(
            QStringLiteral("SELECT HoliYearBeg,HoliYearEnd,HoliDays FROM Holi02 WHERE SuitNo = "
                           "%1     AND HoliNo = %2")
                .arg(textLiteral(SuitNo), textLiteral(code)));
        // Of several bands that hold the seniority the last one stands.
        for (const std::vector<Value>& grant : grants) {
            const std::int16_t HoliYearBeg = grant[0].toInt16();
            const std::int16_t HoliYearEnd = grant[1].toInt16();
            const std::int16_t HoliDays = grant[2].toInt16();
            if (inBand(seniority, HoliYearBeg, HoliYearEnd) && pass < Leaves)
                days[pass] = HoliDays;
        }
    }
}

void EntitlementRun::write(const Entitlement& entitlement, const QString& EmpNo, std::size_t position) {
    if (entitlement.figures.empty())
        return;
    // An apostrophe in the code breaks the statement; the calculation itself joins no code and must not fail.
    if (breaksLiteral(EmpNo))
        writeByPosition(entitlement, position);
    else
        database_.execute(entitlement.statement + textLiteral(EmpNo));
}

/// The row's place among the employees is the same each time that they are opened in the stage.
void EntitlementRun::writeByPosition(const Entitlement& entitlement, std::size_t position) {
    Recordset employees = database_.openRecordset(employeesStatement());
    employees.moveTo(static_cast<qint64>(position));
    employees.Edit();
    for (const auto& [column, number] : entitlement.figures)
        employees.setField(column, number);
    employees.Update();
}

} // namespace

void ComputeEntitlement(Database& database, SeniorityHost& host) {
    EntitlementRun(database, host).run();
}

} // namespace pontrel
