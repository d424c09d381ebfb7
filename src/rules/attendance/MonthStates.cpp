#include "rules/attendance/MonthStates.h"

#include "rules/attendance/Employment.h"
#include "store/StatementText.h"

#include <QMap>
#include <QSet>

#include <array>

namespace pontrel {

namespace {

struct StateText {
    const char16_t* name;
    const char16_t* sign;
};

// In the order of DayState.
constexpr std::array<StateText, DayStateCount> StateTexts{{{u"異常", u"！"},
                                                           {u"遲到早退", u"△"},
                                                           {u"請假", u"假"},
                                                           {u"註銷", u"註"},
                                                           {u"正常", u"○"},
                                                           {u"尚無結果", u"？"},
                                                           {u"不計算", u"×"},
                                                           {u"放假", u"休"},
                                                           {u"無班表", u"－"}}};

bool anySet(DayRow& row, std::int64_t& (DayRow::*flag)(int)) {
    for (int position = 1; position <= Positions; ++position)
        if ((row.*flag)(position) != 0)
            return true;
    return false;
}

/// Whether the minutes of DelayF alone mark a position. A short morning, which marks none, may stand beside
/// them.
bool onlyByMinutes(DayRow& row) {
    for (int position = 1; position <= Positions; ++position)
        if (row.F(position) != 0 && row.DelayF() != position)
            return false;
    return row.DelayF() != 0;
}

/// The days of the roster, each with whether it is one of work.
QMap<QDate, bool> rosterOf(Database& database) {
    QMap<QDate, bool> days;
    for (const std::vector<Value>& row : database.select(QStringLiteral("Select YMD,TimeNo from Rule03")))
        if (!row.at(0).isNull())
            days[row.at(0).toDate()] = !row.at(1).joined().isEmpty();
    return days;
}

QSet<QDate> daysOf(Database& database, const QString& selection) {
    QSet<QDate> days;
    for (const std::vector<Value>& row : database.select(selection))
        if (!row.at(0).isNull())
            days.insert(row.at(0).toDate());
    return days;
}

} // namespace

DayState stateOf(DayRow row) {
    if (row.Expt() != 0 && !onlyByMinutes(row))
        return DayState::Exception;
    if (row.DelayF() != 0)
        return DayState::Late;
    if (anySet(row, &DayRow::FH))
        return DayState::Leave;
    return anySet(row, &DayRow::FC) ? DayState::WrittenOff : DayState::InOrder;
}

std::vector<MonthDay> statesOfMonth(Database& database, QDate day) {
    QMap<QDate, DayState> results;
    const Recordset rows = database.openRecordset(QStringLiteral("Select * from Atte02"));
    const auto UseDate = static_cast<std::size_t>(rows.columns().indexOf(QStringLiteral("UseDate")));
    for (qint64 place = 0; place < rows.RecordCount(); ++place) {
        const std::vector<Value> values = rows.rowAt(place);
        const QDate date = values.at(UseDate).toDate();
        const DayState state = stateOf(DayRow::of(values));
        results[date] = results.contains(date) ? qMin(results[date], state) : state;
    }
    const QMap<QDate, bool> roster = rosterOf(database);
    const QSet<QDate> calculated =
        daysOf(database, QStringLiteral("Select Rule03.YMD from Base04,Base06,Rule03 Where Rule03.EmpNo = "
                                        "Base06.EmpNo And Rule03.TimeNo = Base04.TimeNo And ") +
                             employedOn(QStringLiteral("Rule03.YMD")));
    const QSet<QDate> holidays = daysOf(database, QStringLiteral("Select hymd from Rule01"));
    std::vector<MonthDay> days;
    for (QDate date(day.year(), day.month(), 1); date.month() == day.month(); date = date.addDays(1)) {
        const bool rests = roster.contains(date) ? !roster.value(date) : holidays.contains(date);
        const DayState without = rests                       ? DayState::DayOff
                                 : !roster.contains(date)    ? DayState::NoRoster
                                 : calculated.contains(date) ? DayState::NoResult
                                                             : DayState::LeftOut;
        days.push_back({date, results.value(date, without)});
    }
    return days;
}

QString stateName(DayState state) {
    return QString::fromUtf16(StateTexts.at(static_cast<std::size_t>(state)).name);
}

QString stateSign(DayState state) {
    return QString::fromUtf16(StateTexts.at(static_cast<std::size_t>(state)).sign);
}

} // namespace pontrel
