#include "rules/attendance/DayBackground.h"

#include "rules/NoDate.h"
#include "store/Format.h"
#include "store/Recordset.h"

namespace pontrel {

namespace {

/// A time of a slot: its column, its working value, its name.
struct SlotTime {
    const char16_t* column;
    int SlotTimes::*minute;
    const char16_t* name;
};
constexpr SlotTime SlotTimeNames[] = {
    {u"StrIn1", &SlotTimes::StrIn1, u"上午上班最早"}, {u"StdT1", &SlotTimes::StdT1, u"上午上班標準"},
    {u"StdT2", &SlotTimes::StdT2, u"上午下班標準"},   {u"EndOut2", &SlotTimes::EndOut2, u"上午下班最晚"},
    {u"StrIn3", &SlotTimes::StrIn3, u"下午上班最早"}, {u"StdT3", &SlotTimes::StdT3, u"下午上班標準"},
    {u"StdT4", &SlotTimes::StdT4, u"下午下班標準"},   {u"EndOut4", &SlotTimes::EndOut4, u"下午下班最晚"}};

/// A leaving date that an import has filled is none.
QString shortDateOf(const Value& date) {
    return date.isNull() || date.toDate() == NoDate ? QStringLiteral("無") : shortDate(date.toDate());
}

} // namespace

QString employmentText(Database& database) {
    const Rows employee = database.select(QStringLiteral("Select ArriveDate,LeaveDate from Base06"));
    if (employee.isEmpty())
        return QStringLiteral("員工資料沒有這一位");
    return QStringLiteral("到職日 %1，離職日 %2")
        .arg(shortDateOf(employee.at(0, std::size_t{0})), shortDateOf(employee.at(0, std::size_t{1})));
}

QString carriedTimes(Database& database, const SlotTimes& slot) {
    const Recordset settings = database.openRecordset(QStringLiteral("Select * from Base04"));
    QStringList carried;
    for (qint64 place = 0; place < settings.RecordCount(); ++place) {
        const std::vector<Value> row = settings.rowAt(place);
        const auto valueOf = [&](const QString& column) {
            return row.at(static_cast<std::size_t>(settings.columns().indexOf(column)));
        };
        if (valueOf(QStringLiteral("TimeNo")).joined() != slot.TimeNo)
            continue;
        for (const SlotTime& time : SlotTimeNames) {
            const int minute = slot.*time.minute;
            if (valueOf(QString::fromUtf16(time.column)).isNull())
                carried += QString::fromUtf16(time.name) + u' ' + shortTime(QTime(minute / 60, minute % 60));
        }
    }
    return carried.join(u'、');
}

} // namespace pontrel
