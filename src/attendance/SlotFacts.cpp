#include "attendance/SlotFacts.h"

#include "attendance/StatementText.h"

namespace pontrel {

namespace {

/// Codes are the same in any case of A to Z, as they are to the store.
QString folded(QString code) {
    for (QChar& character : code)
        if (character >= u'a' && character <= u'z')
            character = QChar(character.unicode() - u'a' + u'A');
    return code;
}

} // namespace

SlotFacts::SlotFacts(Database& database, QDate date, const QString& TimeNo, const SlotList& list,
                     std::int64_t mostAtOnce)
    : database_(database)
    , list_(list)
    , day_(dateLiteral(date))
    , listCondition_(
          QStringLiteral("%1.%2 =%3 And %1.TimeNo = '%4'").arg(list.table, list.dateName, day_, TimeNo))
    , mostAtOnce_(mostAtOnce) {
    // Punches of the same second are counted, so that a reader gone wild fills no memory.
    punches_.table = QStringLiteral("AtteTemp");
    punches_.columns = QStringLiteral("UseTime,count(*) as cnt");
    punches_.condition = QStringLiteral("(Class='255' or  Class = '000') And AtteTemp.UseDate =") + day_;
    punches_.grouping = QStringLiteral(" Group By AtteTemp.EmpNo,UseTime");
    leave_.table = QStringLiteral("Holi04");
    leave_.columns = QStringLiteral("HoliNo,BegTime,EndTime,HoliHours");
    leave_.condition = QStringLiteral("HoliDate =") + day_;
    writeOffs_.table = QStringLiteral("Canc02");
    writeOffs_.columns = QStringLiteral("CnlNo1,CnlNo2,CnlNo3,CnlNo4");
    writeOffs_.condition = QStringLiteral("CnlDate =") + day_;
    staged_.table = QStringLiteral("AtteTemp1");
    staged_.columns = QStringLiteral("AtteTemp1.UseDate");
    staged_.condition = QStringLiteral("AtteTemp1.UseDate =") + day_;
}

bool SlotFacts::tooManyPunches() {
    if (!tooMany_) {
        const Rows count =
            database_.select(QStringLiteral("Select count(*) as cnt From AtteTemp Where UseDate =") + day_);
        tooMany_ = count.at(0, std::size_t{0}).toInteger() > mostAtOnce_;
    }
    return *tooMany_;
}

void SlotFacts::readAtOnce(Fact& fact) {
    fact.read = true;
    fact.rows = database_.select(
        QStringLiteral("Select %1.EmpNo,%2 From %3,%1 Where %4 And %1.EmpNo = %3.EmpNo And %5%6")
            .arg(fact.table, fact.columns, list_.table, listCondition_, fact.condition, fact.grouping));
    // The rows come by employee, so that each has one run of them.
    for (std::size_t row = 0; row < fact.rows.count(); ++row) {
        const QString code = folded(fact.rows.at(row, std::size_t{0}).toText());
        const auto place = fact.places.find(code);
        if (place == fact.places.end())
            fact.places.insert(code, {row, 1});
        else
            ++place->second;
    }
}

SlotFacts::FactRows SlotFacts::rowsOf(Fact& fact, const QString& EmpNo) {
    // A code with an apostrophe breaks every statement that quotes it, and must do so here as well.
    if (EmpNo.contains(u'\'') || (&fact == &punches_ && tooManyPunches())) {
        single_ = database_.select(QStringLiteral("Select EmpNo,%1 From %2 Where EmpNo = '%3' And %4%5")
                                       .arg(fact.columns, fact.table, EmpNo, fact.condition, fact.grouping));
        return {single_.begin(), single_.end()};
    }
    if (!fact.read)
        readAtOnce(fact);
    const auto place = fact.places.constFind(folded(EmpNo));
    if (place == fact.places.constEnd())
        return {};
    return {fact.rows.begin() + static_cast<std::ptrdiff_t>(place->first), place->second};
}

SlotFacts::FactRows SlotFacts::punchesOf(const QString& EmpNo) {
    return rowsOf(punches_, EmpNo);
}

SlotFacts::FactRows SlotFacts::leaveOf(const QString& EmpNo) {
    return rowsOf(leave_, EmpNo);
}

SlotFacts::FactRows SlotFacts::writeOffsOf(const QString& EmpNo) {
    return rowsOf(writeOffs_, EmpNo);
}

bool SlotFacts::hasStagedRows(const QString& EmpNo) {
    return !rowsOf(staged_, EmpNo).empty();
}

} // namespace pontrel
