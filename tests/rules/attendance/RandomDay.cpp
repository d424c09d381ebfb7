#include "RandomDay.h"

#include "store/RunTimeError.h"
#include "support/Builders.h"

using namespace Qt::StringLiterals;

namespace pontrel::test {

void RandomDay::insert(const QString& table, const QList<std::pair<QString, Value>>& fields) {
    Fields row;
    for (const auto& [column, value] : fields)
        row.append(Field(column, value));
    for (Database* store : stores_) {
        try {
            insertRow(*store, table, row);
        } catch (const RunTimeError& failure) {
            // A key that is taken: all stores refuse the same row.
            if (failure.number() != error::DuplicateKey)
                throw;
        }
    }
}

QTime RandomDay::time(int hour) {
    if (oneIn(15))
        return QTime(0, 0, oneIn(2) ? 0 : 30);
    const bool atBound = !bounds_.isEmpty() && !oneIn(3);
    const int middle = atBound ? bounds_.at(number(0, static_cast<int>(bounds_.size()) - 1)) : hour * 60;
    const int reach = !atBound ? 45 : oneIn(2) ? 0 : 1;
    const int minutes = qBound(0, middle + number(-reach, reach), 1439);
    return QTime(minutes / 60, minutes % 60, oneIn(2) ? 0 : number(0, 59));
}

QString RandomDay::code() {
    QString code = codes_.at(number(0, static_cast<int>(codes_.size()) - 1));
    if (oneIn(3))
        code = code.toLower();
    return code;
}

void RandomDay::fill(const QList<Database*>& stores) {
    stores_ = stores;
    addSlots();
    addEmployees();
    addPunches();
    addLeave(4);
    addWriteOffs(3);
    addOldRows();
}

void RandomDay::enterMore(const QList<Database*>& stores) {
    stores_ = stores;
    addLeave(3);
    addWriteOffs(2);
}

void RandomDay::addSlots() {
    static constexpr std::pair<int, int> kinds[] = {{0, 4}, {0, 4}, {0, 3}, {0, 2}, {0, 1}, {0, 0}, {1, 4},
                                                    {1, 2}, {2, 4}, {3, 3}, {3, 4}, {4, 4}, {0, 5}};
    const int count = number(1, 4);
    for (int index = 0; index < count; ++index) {
        const QString TimeNo = QString(QChar(u'A' + index));
        slots_ += TimeNo;
        auto [ElstType, CardType] = kinds[number(0, std::size(kinds) - 1)];
        if (oneIn(12)) {
            ElstType = number(0, 6);
            CardType = number(0, 6);
        }
        // A slot that begins in the evening passes midnight.
        const int start = oneIn(4) ? number(14, 19) : number(6, 9);
        const auto at = [&](int hours, int minutes) -> Value {
            if (oneIn(25))
                return {};
            const int minute = ((start + hours) * 60 + minutes) % 1440;
            bounds_ += minute;
            return QTime(minute / 60, minute % 60, oneIn(6) ? 20 : 0);
        };
        const auto standard = [&](int hours) {
            // Most lies shortly after a standard time, where cushion and delay begin.
            for (const int after : {1, 2, 4, 7, 11, 16})
                bounds_ += ((start + hours) * 60 + after) % 1440;
            return at(hours, 0);
        };
        const auto minutes = [&](int most) -> Value {
            if (oneIn(400))
                return oneIn(2) ? Value() : Value(60);
            return oneIn(3) ? 0 : number(0, most);
        };
        insert(u"Base04"_s, {{u"TimeNo"_s, TimeNo},
                             {u"CardType"_s, oneIn(60) ? Value() : Value(CardType)},
                             {u"ElstType"_s, oneIn(60) ? Value() : Value(ElstType)},
                             {u"StdC1"_s, !oneIn(5)},
                             {u"StdC2"_s, !oneIn(5)},
                             {u"StdC3"_s, !oneIn(5)},
                             {u"StdC4"_s, !oneIn(5)},
                             {u"StrIn1"_s, at(-1, 0)},
                             {u"StdT1"_s, standard(0)},
                             {u"StdT2"_s, standard(4)},
                             {u"EndOut2"_s, at(4, 30)},
                             {u"StrIn3"_s, at(4, number(0, 31))},
                             {u"StdT3"_s, standard(5)},
                             {u"StdT4"_s, standard(9)},
                             {u"EndOut4"_s, at(10, number(0, 59))},
                             {u"ElstMin"_s, minutes(59)},
                             {u"Cushion"_s, minutes(15)},
                             {u"Delay"_s, minutes(59)},
                             {u"Earlier"_s, minutes(59)},
                             {u"Cushion1"_s, minutes(15)},
                             {u"Delay1"_s, minutes(59)},
                             {u"Earlier1"_s, minutes(59)}});
    }
}

void RandomDay::addEmployees() {
    const int count = number(2, 8);
    for (int index = 0; index < count; ++index) {
        QString EmpNo = u"A%1"_s.arg(number(1, 40), 3, 10, QChar(u'0'));
        if (oneIn(150))
            EmpNo[1] = u'\'';
        if (codes_.contains(EmpNo))
            continue;
        codes_ += EmpNo;
        const Value left = oneIn(8) ? Value(day().addDays(number(-2, 2))) : Value(QDate(2038, 1, 1));
        insert(u"Base06"_s, {{u"EmpNo"_s, EmpNo},
                             {u"ArriveDate"_s, oneIn(12) ? Value() : Value(day().addDays(number(-900, 1)))},
                             {u"LeaveDate"_s, oneIn(12) ? Value() : left}});
        if (!oneIn(10))
            insert(u"Rule03"_s,
                   {{u"EmpNo"_s, oneIn(3) ? EmpNo.toLower() : EmpNo},
                    {u"YMD"_s, day()},
                    {u"TimeNo"_s, oneIn(12)
                                      ? Value(u""_s)
                                      : Value(slots_.at(number(0, static_cast<int>(slots_.size()) - 1)))}});
    }
}

void RandomDay::addPunches() {
    static const QStringList classes{u"255"_s, u"255"_s, u"255"_s, u"255"_s, u"255"_s,
                                     u"000"_s, u"000"_s, u"081"_s, u"001"_s};
    for (const QString& EmpNo : codes_) {
        const int count = oneIn(6) ? number(10, 18) : number(0, 5);
        for (int index = 0; index < count; ++index) {
            const Value UseTime =
                oneIn(200) ? Value() : Value(time(QList{7, 8, 12, 13, 17, 18, 22, 2}.at(number(0, 7))));
            insert(u"AtteTemp"_s, {{u"EmpNo"_s, oneIn(4) ? EmpNo.toLower() : EmpNo},
                                   {u"UseDate"_s, oneIn(15) ? day().addDays(1) : day()},
                                   {u"UseTime"_s, UseTime},
                                   {u"class"_s, classes.at(number(0, static_cast<int>(classes.size()) - 1))},
                                   {u"ReaderID"_s, u"001"_s}});
        }
    }
}

void RandomDay::addLeave(int most) {
    static const QStringList types{u"01"_s, u"03"_s, u"14"_s};
    const int count = number(0, most);
    for (int index = 0; index < count; ++index) {
        const int start = number(6, 16);
        insert(u"Holi04"_s, {{u"BusNo"_s, u"90030001"_s},
                             {u"EmpNo"_s, code()},
                             {u"HoliNo"_s, oneIn(80) ? Value() : Value(types.at(number(0, 2)))},
                             {u"HoliDate"_s, oneIn(10) ? day().addDays(-1) : day()},
                             {u"BegTime"_s, oneIn(80) ? Value() : Value(time(start))},
                             {u"EndTime"_s, oneIn(80) ? Value() : Value(time(start + number(1, 7)))},
                             {u"HoliHours"_s, oneIn(80) ? Value() : Value(number(0, 8))}});
    }
}

void RandomDay::addWriteOffs(int chances) {
    for (const QString& EmpNo : codes_) {
        if (!oneIn(chances))
            continue;
        const auto reason = [&]() -> Value { return oneIn(3) ? Value() : Value(oneIn(2) ? u""_s : u"01"_s); };
        insert(u"Canc02"_s, {{u"EmpNo"_s, oneIn(3) ? EmpNo.toLower() : EmpNo},
                             {u"CnlDate"_s, day()},
                             {u"CnlNo1"_s, reason()},
                             {u"CnlNo2"_s, reason()},
                             {u"CnlNo3"_s, reason()},
                             {u"CnlNo4"_s, reason()}});
    }
}

void RandomDay::addOldRows() {
    const int count = oneIn(2) ? 0 : number(1, 5);
    for (int index = 0; index < count; ++index) {
        const QString table =
            QStringList{u"AtteTemp1"_s, u"AtteTemp1"_s, u"AtteTemp1"_s, u"Atte02"_s, u"Atte03"_s}.at(
                number(0, 4));
        QList<std::pair<QString, Value>> row{
            {u"EmpNo"_s, code()},
            {u"UseDate"_s, oneIn(6) ? day().addDays(-1) : day()},
            {u"TimeNo"_s, oneIn(8) ? u"Z"_s : slots_.at(number(0, static_cast<int>(slots_.size()) - 1))},
            {u"Time1"_s, oneIn(2) ? Value() : Value(time(8))},
            {u"Time2"_s, oneIn(2) ? Value() : Value(time(12))},
            {u"T1"_s, oneIn(2) ? Value() : Value(time(20))},
            {u"Expt"_s, table == u"Atte03"_s || oneIn(3)},
            {u"DelayF"_s, oneIn(3) ? number(0, 4) : 0},
            {u"Cushion1"_s, oneIn(4) ? number(0, 9) : 0},
            {u"Delay3"_s, oneIn(4) ? number(0, 9) : 0},
            {u"Earlier4"_s, oneIn(4) ? number(0, 9) : 0}};
        for (const QString& family : {u"FT"_s, u"FH"_s, u"FC"_s, u"F"_s})
            for (int position = 1; position <= 4; ++position)
                row.append({family + QString::number(position), oneIn(5)});
        insert(table, row);
        if (oneIn(3))
            insert(u"View02"_s, {{u"EmpNo"_s, code()}, {u"UseDate"_s, day()}, {u"T5"_s, time(9)}});
    }
}

} // namespace pontrel::test
