#include "rules/attendance/SlotTimes.h"

#include "store/Format.h"
#include "store/RunTimeError.h"

#include <cstdlib>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MinutesOfDay = 1440;

void readTime(const Value& value, int& minutes) {
    // Deliberate: the one set of values is used for all rows, and a null keeps what stood there.
    if (value.isNull())
        return;
    const QTime time = value.toTime();
    minutes = time.hour() * 60 + time.minute();
}

/// An allowance goes through the text "00:<minutes>:00", which holds 0 to 59.
int readMinutes(const Value& value) {
    const QString text = QStringLiteral("00:") + value.joined() + QStringLiteral(":00");
    const auto parsed = parseDateTime(text);
    if (!parsed)
        throw runTimeError(error::TypeMismatch, text);
    return parsed->time.minute();
}

} // namespace

void SlotTimes::read(const Rows& rows, std::size_t row) {
    TimeNo = rows.at(row, u"TimeNo").toText();
    CardType = rows.at(row, u"CardType").toByte();
    readTime(rows.at(row, u"StrIn1"), StrIn1);
    readTime(rows.at(row, u"StdT1"), StdT1);
    readTime(rows.at(row, u"StdT2"), StdT2);
    readTime(rows.at(row, u"EndOut2"), EndOut2);
    readTime(rows.at(row, u"StrIn3"), StrIn3);
    readTime(rows.at(row, u"StdT3"), StdT3);
    readTime(rows.at(row, u"StdT4"), StdT4);
    readTime(rows.at(row, u"EndOut4"), EndOut4);
    ElstMin = readMinutes(rows.at(row, u"ElstMin"));
    ElstType = rows.at(row, u"ElstType").toByte();
    Cushion = readMinutes(rows.at(row, u"Cushion"));
    Delay = readMinutes(rows.at(row, u"Delay"));
    Earlier = readMinutes(rows.at(row, u"Earlier"));
    Cushion1 = readMinutes(rows.at(row, u"Cushion1"));
    Delay1 = readMinutes(rows.at(row, u"Delay1"));
    Earlier1 = readMinutes(rows.at(row, u"Earlier1"));
    StdC = {rows.at(row, u"StdC1").toBoolean(), rows.at(row, u"StdC2").toBoolean(),
            rows.at(row, u"StdC3").toBoolean(), rows.at(row, u"StdC4").toBoolean()};
}

const QStringList& elasticityNames() {
    static const QStringList names{u"無彈性"_s, u"至少8小時"_s, u"上午4小時"_s, u"下午4小時"_s,
                                   u"上午4 小時,下午4小時!"_s};
    return names;
}

int wrappedMinutes(int minutes) {
    return std::abs(minutes) % MinutesOfDay;
}

} // namespace pontrel
