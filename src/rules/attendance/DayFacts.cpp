#include "rules/attendance/DayFacts.h"

#include "rules/attendance/PunchClasses.h"
#include "store/StatementText.h"
#include "store/StoreText.h"

namespace pontrel {

DayFacts::DayFacts(Database& database, QDate date, std::int64_t mostAtOnce)
    : database_(database), day_(dateLiteral(date)), mostAtOnce_(mostAtOnce) {
    const QString byEmployee = QStringLiteral(" Order by EmpNo");
    // Punches of the same second are counted, so that a reader gone wild fills no memory.
    punches_ = {QStringLiteral("AtteTemp"), QStringLiteral("UseTime,count(*) as cnt"),
                OrdinaryPunches + QStringLiteral(" And UseDate =") + day_,
                QStringLiteral(" Group By EmpNo,UseTime")};
    leave_ = {QStringLiteral("Holi04"), QStringLiteral("HoliNo,BegTime,EndTime,HoliHours"),
              QStringLiteral("HoliDate =") + day_, byEmployee};
    writeOffs_ = {QStringLiteral("Canc02"), QStringLiteral("CnlNo1,CnlNo2,CnlNo3,CnlNo4"),
                  QStringLiteral("CnlDate =") + day_, byEmployee};
    staged_ = {QStringLiteral("AtteTemp1"), QStringLiteral("UseDate"), QStringLiteral("UseDate =") + day_,
               byEmployee};
}

bool DayFacts::tooManyPunches() {
    if (!tooMany_) {
        const Rows count =
            database_.select(QStringLiteral("Select count(*) as cnt From AtteTemp Where UseDate =") + day_);
        tooMany_ = count.at(0, std::size_t{0}).toInteger() > mostAtOnce_;
    }
    return *tooMany_;
}

void DayFacts::readAtOnce(Fact& fact) {
    fact.read = true;
    fact.rows = database_.select(QStringLiteral("Select EmpNo,%1 From %2 Where %3%4")
                                     .arg(fact.columns, fact.table, fact.condition, fact.ending));
    // The rows come by employee, so that each has one run of them.
    QString code;
    std::pair<std::size_t, std::size_t>* place = nullptr;
    for (std::size_t row = 0; row < fact.rows.count(); ++row) {
        if (fact.rows.at(row, std::size_t{0}).isNull())
            continue;
        const QString next = fact.rows.at(row, std::size_t{0}).toText();
        if (place == nullptr || next != code) {
            code = next;
            place = &fact.places[foldedCode(code)];
            if (place->second == 0)
                place->first = row;
        }
        ++place->second;
    }
}

DayFacts::FactRows DayFacts::rowsOf(Fact& fact, const QString& EmpNo) {
    // Also where no statement is run: a code that breaks the one of its own must do so here as well.
    const QString employee = textLiteral(EmpNo);
    if (&fact == &punches_ && tooManyPunches()) {
        single_ = database_.select(QStringLiteral("Select EmpNo,%1 From %2 Where EmpNo = %3 And %4%5")
                                       .arg(fact.columns, fact.table, employee, fact.condition, fact.ending));
        return {single_.begin(), single_.end()};
    }
    if (!fact.read)
        readAtOnce(fact);
    const auto place = fact.places.constFind(foldedCode(EmpNo));
    if (place == fact.places.constEnd())
        return {};
    return {fact.rows.begin() + static_cast<std::ptrdiff_t>(place->first), place->second};
}

DayFacts::FactRows DayFacts::punchesOf(const QString& EmpNo) {
    return rowsOf(punches_, EmpNo);
}

DayFacts::FactRows DayFacts::leaveOf(const QString& EmpNo) {
    return rowsOf(leave_, EmpNo);
}

DayFacts::FactRows DayFacts::writeOffsOf(const QString& EmpNo) {
    return rowsOf(writeOffs_, EmpNo);
}

bool DayFacts::hasStagedRows(const QString& EmpNo) {
    return !rowsOf(staged_, EmpNo).empty();
}

} // namespace pontrel
