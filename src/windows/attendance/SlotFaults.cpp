#include "windows/attendance/SlotFaults.h"

#include "app/controls/TDBGrid.h"
#include "rules/attendance/HalfDay.h"
#include "rules/attendance/Minutes.h"

#include <QStringList>
#include <QTime>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MinuteSeconds = 60;

bool isSet(const GridRow& row, const QString& column, int position) {
    const Value value = row.value(column + QString::number(position));
    return !value.isNull() && value.toBoolean();
}

int minutes(const GridRow& row, const QString& column, int position) {
    const Value value = row.value(column + QString::number(position));
    return value.isNull() ? 0 : static_cast<int>(value.toInteger());
}

/// A day is an exception without a faulty position where its morning was too short, and only there.
QString shortMorning(const GridRow& row) {
    const Value exception = row.value(u"Expt");
    const Value in = row.value(u"Time1");
    const Value out = row.value(u"Time2");
    bool faulty = false;
    for (int each = 1; each <= Positions; ++each)
        faulty = faulty || isSet(row, u"F"_s, each);
    if (faulty || exception.isNull() || !exception.toBoolean() || in.isNull() || out.isNull())
        return {};
    DayRow morning;
    for (const int each : {1, 2}) {
        morning.Time(each) = secondOfDay((isWayIn(each) ? in : out).toTime());
        morning.FH(each) = isSet(row, u"FH"_s, each) ? 1 : 0;
        morning.FC(each) = isSet(row, u"FC"_s, each) ? 1 : 0;
    }
    const int worked =
        static_cast<int>(judgedMorning(morning).value_or(HalfDayMinutes * MinuteSeconds) / MinuteSeconds);
    if (worked >= HalfDayMinutes)
        return {};
    return u"上午上班到下班 %1 小時 %2 分鐘，未滿 4 小時，差 %3 分鐘"_s.arg(worked / 60)
        .arg(worked % 60)
        .arg(HalfDayMinutes - worked);
}

} // namespace

QString positionFault(const GridRow& row, int position) {
    const bool in = isWayIn(position);
    const int wrong = minutes(row, in ? u"Delay"_s : u"Earlier"_s, position);
    if (wrong > 0 && in)
        return u"%1遲到 %2 分鐘（自緩衝時間過後算起）"_s.arg(positionName(position)).arg(wrong);
    if (wrong > 0)
        return u"%1早退 %2 分鐘"_s.arg(positionName(position)).arg(wrong);
    if (isSet(row, u"F"_s, position)) {
        const bool punched = isSet(row, u"FT"_s, position);
        return positionName(position) + (punched ? u"異常"_s : u"沒有打卡，也沒有請假或註銷"_s);
    }
    return position <= 2 ? shortMorning(row) : QString();
}

QString lateEarlyFault(const GridRow& row) {
    const Value named = row.value(u"DelayF");
    const int number = named.isNull() ? 0 : static_cast<int>(named.toInteger());
    if (number < 1 || number > Positions)
        return {};
    return positionFault(row, number);
}

QString dayFault(const GridRow& row) {
    QStringList faults;
    for (int each = 1; each <= Positions; ++each)
        faults << positionFault(row, each);
    faults.removeAll(QString());
    faults.removeDuplicates(); // a short morning is one of both its positions
    return faults.join(u'\n');
}

} // namespace pontrel
