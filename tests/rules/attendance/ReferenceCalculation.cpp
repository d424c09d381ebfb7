#include "ReferenceCalculation.h"

#include "store/Format.h"
#include "store/RunTimeError.h"

#include <QTime>

#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace pontrel::test {

namespace {

int minuteOf(QTime time) {
    return time.hour() * 60 + time.minute();
}

int secondOf(QTime time) {
    return minuteOf(time) * 60 + time.second();
}

/// A whole number of minutes through the text of a time, as the calculation reads it.
int allowance(const Value& value) {
    return minuteOf(Value(u"00:%1:00"_s.arg(value.joined())).toTime());
}

QString hms(int minutes) {
    return formatTime(QTime(minutes / 60, minutes % 60), u"hh:nn:ss"_s);
}

/// fmt(x): formatted by hours and minutes and read again.
int fmt(int minutes) {
    const QString text = formatDayFraction(minutes / 1440.0, u"hh:nn"_s);
    return minuteOf(Value(text).toTime());
}

/// Forward minutes between two times of day that are given in minutes.
int between(int from, int to) {
    return to >= from ? to - from : 1440 - (from - to);
}

} // namespace

QString ReferenceCalculation::where(const QString& EmpNo) const {
    return u" Where EmpNo = '"_s + EmpNo + u"'     and UseDate ="_s + day_;
}

void ReferenceCalculation::CalcSlotLoop(QDate date, bool recalculating) {
    day_ = u'#' + shortDate(date) + u'#';
    const Rows rows = database_.select(
        u"Select TimeNo,CardType,StrIn1,StdT1,StdT2,EndOut2,StrIn3,StdT3,StdT4,EndOut4 ,ElstMin,ElstType,"
        "Cushion,Delay,Earlier,Cushion1,Delay1,Earlier1 ,StdC1 ,StdC2,StdC3,StdC4   from Base04 "_s);
    Slot slot;
    for (std::size_t row = 0; row < rows.count(); ++row) {
        readSlot(rows, row, slot);
        if (recalculating)
            RecalcSlot(slot);
        else
            AssignSlotPunches(slot);
    }
}

void ReferenceCalculation::readSlot(const Rows& rows, std::size_t row, Slot& slot) {
    slot.TimeNo = rows.at(row, u"TimeNo").toText();
    slot.CardType = rows.at(row, u"CardType").toByte();
    const std::pair<QStringView, int*> times[] = {{u"StrIn1", &slot.StrIn1}, {u"StdT1", &slot.StdT1},
                                                  {u"StdT2", &slot.StdT2},   {u"EndOut2", &slot.EndOut2},
                                                  {u"StrIn3", &slot.StrIn3}, {u"StdT3", &slot.StdT3},
                                                  {u"StdT4", &slot.StdT4},   {u"EndOut4", &slot.EndOut4}};
    for (const auto& [name, value] : times)
        if (!rows.at(row, name).isNull())
            *value = minuteOf(rows.at(row, name).toTime());
    slot.ElstMin = allowance(rows.at(row, u"ElstMin"));
    slot.ElstType = rows.at(row, u"ElstType").toByte();
    const std::pair<QStringView, int*> allowances[] = {
        {u"Cushion", &slot.Cushion},   {u"Delay", &slot.Delay},   {u"Earlier", &slot.Earlier},
        {u"Cushion1", &slot.Cushion1}, {u"Delay1", &slot.Delay1}, {u"Earlier1", &slot.Earlier1}};
    for (const auto& [name, value] : allowances)
        *value = allowance(rows.at(row, name));
    for (int i = 1; i <= 4; ++i)
        slot.StdC.at(static_cast<std::size_t>(i)) = rows.at(row, u"StdC%1"_s.arg(i)).toBoolean();
}

void ReferenceCalculation::AssignSlotPunches(const Slot& slot) {
    const Rows employees = database_.select(
        u"Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     And Rule03.YMD ="_s +
        day_ + u"    And Rule03.TimeNo = '"_s + slot.TimeNo + u"'    And  Base06.ArriveDate <= "_s + day_ +
        u"    And Base06.LeaveDate >= "_s + day_);
    for (const auto& employee : employees) {
        const QString EmpNo = employee.at(0).toText();
        assign(EmpNo, slot);
        MarkLeaveCover(EmpNo, slot);
        MarkWriteOffCover(EmpNo);
        CalcLateEarly(EmpNo, slot);
        ClassifyExceptions(EmpNo, slot.CardType, RecalcDone);
    }
    run(u"Insert into Atte02  Select * from AtteTemp1"_s);
}

void ReferenceCalculation::assign(const QString& EmpNo, const Slot& slot) {
    run(u"Insert Into AtteTemp1(EmpNo,TimeNo,UseDate) Values('"_s + EmpNo + u"','"_s + slot.TimeNo + u"',"_s +
        day_ + u")"_s);
    run(u"Insert Into View02(EmpNo,UseDate) Values('"_s + EmpNo + u"',"_s + day_ + u")"_s);
    std::array<int, 13> unassigned{};
    std::array<int, 13> all{};
    std::array<int, 5> times{};
    std::array<bool, 5> FT{};
    int unassignedCount = 0;
    int allCount = 0;
    const Rows punches = database_.select(
        u"Select UseTime from AtteTemp Where (Class='255' or  Class = '000')     And UseDate ="_s + day_ +
        u"    And EmpNo = '"_s + EmpNo + u"' Order by UseTime "_s);
    for (const auto& punch : punches) {
        const int P = minuteOf(punch.at(0).toTime());
        const auto window = static_cast<std::size_t>(windowOf(P, slot));
        if (window != 0 && !FT.at(window)) {
            times.at(window) = P;
            FT.at(window) = true;
        } else if (++unassignedCount < 13) {
            unassigned.at(static_cast<std::size_t>(unassignedCount)) = P;
        }
        if (++allCount < 13)
            all.at(static_cast<std::size_t>(allCount)) = P;
    }
    QStringList row;
    QStringList view;
    for (std::size_t i = 1; i <= 4; ++i)
        row += u"Time%1 =#%2#"_s.arg(i).arg(hms(times.at(i)));
    for (std::size_t i = 1; i <= 4; ++i)
        row += u"FT%1 =%2"_s.arg(i).arg(FT.at(i) ? u"True"_s : u"False"_s);
    for (std::size_t i = 1; i <= 12; ++i) {
        row += u"T%1=#%2#"_s.arg(i).arg(hms(unassigned.at(i)));
        view += u"T%1=#%2#"_s.arg(i).arg(hms(all.at(i)));
    }
    const QString condition = u" Where UseDate ="_s + day_ + u"    And EmpNo = '"_s + EmpNo + u"'"_s;
    run(u"Update AtteTemp1 Set "_s + row.join(u',') + condition);
    run(u"Update View02 Set "_s + view.join(u',') + condition);
    nullPasses(EmpNo);
}

void ReferenceCalculation::nullPasses(const QString& EmpNo) {
    const QString tail =
        u",'hh:nn:ss')='00:00:00'      and UseDate ="_s + day_ + u"      And EmpNo = '"_s + EmpNo + u"'"_s;
    for (int i = 1; i <= 12; ++i)
        for (const QString& table : {u"AtteTemp1"_s, u"View02"_s})
            run(u"Update %1 Set T%2= Null Where format(T%2"_s.arg(table).arg(i) + tail);
    for (int i = 1; i <= 4; ++i)
        run(u"Update AtteTemp1 Set Time%1= Null Where format(Time%1"_s.arg(i) + tail);
}

int ReferenceCalculation::windowOf(int P, const Slot& s) {
    struct Line {
        int ElstType, leastCard, mostCard, slot, lower, upper;
    };
    const Line lines[] = {
        {0, 0, 255, 1, s.StrIn1, fmt(s.StdT1 + s.Cushion + s.Delay)},
        {0, 0, 255, 2, fmt(s.StdT2 - s.Cushion - s.Earlier), s.EndOut2},
        {0, 0, 255, 3, s.StrIn3, s.StdT3 + s.Cushion1 + s.Delay1},
        {0, 0, 255, 4, s.StdT4 - s.Cushion1 - s.Earlier1, s.EndOut4},
        {1, 1, 4, 1, s.StrIn1, s.StdT1 + s.ElstMin},
        {2, 4, 4, 1, s.StrIn1, fmt(s.StdT1 + s.ElstMin)},
        {2, 4, 4, 2, s.StdT2, s.EndOut2},
        {2, 4, 4, 3, s.StrIn3, fmt(s.StdT3 + s.Cushion1 + s.Delay1)},
        {2, 4, 4, 4, fmt(s.StdT4 - s.Earlier1), s.EndOut4},
        {3, 3, 3, 1, s.StrIn1, s.StdT1 + s.Cushion},
        {3, 3, 3, 3, s.StrIn3, s.StdT3 + s.ElstMin},
        {3, 3, 3, 4, s.StdT4 - s.ElstMin, s.EndOut4},
        {3, 4, 4, 1, s.StrIn1, s.StdT1 + s.Cushion},
        {3, 4, 4, 2, s.StdT2 - s.Cushion, s.EndOut2},
        {3, 4, 4, 3, s.StrIn3, s.StdT3 + s.ElstMin},
        {3, 4, 4, 4, s.StdT4 - s.ElstMin, s.EndOut4},
        {4, 4, 4, 1, s.StrIn1, s.StdT1 + s.ElstMin},
        {4, 4, 4, 2, s.StdT2 - s.ElstMin, s.EndOut2},
        {4, 4, 4, 3, s.StrIn3, s.StdT3 + s.ElstMin},
        {4, 4, 4, 4, s.StdT4 - s.ElstMin, s.EndOut4},
    };
    for (const Line& line : lines) {
        const bool concerned =
            line.ElstType == s.ElstType && line.leastCard <= s.CardType && s.CardType <= line.mostCard;
        if (concerned && line.lower <= P && P <= line.upper)
            return line.slot;
    }
    return 0;
}

void ReferenceCalculation::MarkLeaveCover(const QString& EmpNo, const Slot& slot) {
    const Rows rows =
        database_.select(u"Select HoliNo,BegTime,EndTime,HoliHours From Holi04 Where EmpNo = '"_s + EmpNo +
                         u"'     and HoliDate ="_s + day_);
    if (rows.isEmpty())
        return;
    const std::array<int, 6> B{
        0, slot.StdT1 * 60, slot.StdT2 * 60, slot.StdT3 * 60, slot.StdT4 * 60, secondOf(QTime(23, 59, 59))};
    std::array<std::size_t, 3> Pos{};
    std::array<std::size_t, 3> SavedPos{};
    QString LastHoliNo;
    for (std::size_t row = 0; row < rows.count(); ++row) {
        std::array<bool, 5> Hit{};
        LastHoliNo = rows.at(row, u"HoliNo").toText();
        int t = secondOf(rows.at(row, u"BegTime").toTime());
        const int EndTime = secondOf(rows.at(row, u"EndTime").toTime());
        (void)rows.at(row, u"HoliHours").toInt16();
        if (t < B[1])
            t = B[1];
        for (std::size_t which = 1; which <= 2; ++which) {
            const int time = which == 1 ? t : EndTime;
            for (std::size_t i = 1; i <= 4; ++i) {
                if (B[i] <= time && B[i + 1] > time) {
                    Hit[i] = true;
                    Pos[which] = i;
                    break;
                }
            }
        }
        SavedPos = Pos;
        if (Pos[1] != Pos[2])
            Pos[1] = 1;
        bool inside = false;
        for (std::size_t i = 1; i <= 4; ++i) {
            if (Hit[i])
                inside = !inside;
            else if (Pos[1] == 1 && inside)
                Hit[i] = true;
            if (Hit[i])
                run(u"Update AtteTemp1 set FH%1 = True"_s.arg(i) + where(EmpNo));
        }
    }
    if (LastHoliNo == u"14"_s)
        for (std::size_t k = 1; k <= 2; ++k)
            run(u"Update AtteTemp1 set FH%1 = False"_s.arg(SavedPos[k]) + where(EmpNo));
}

void ReferenceCalculation::MarkWriteOffCover(const QString& EmpNo) {
    for (int i = 1; i <= 4; ++i) {
        const Rows rows = database_.select(u"Select CnlNo%1 From Canc02 Where EmpNo = '"_s.arg(i) + EmpNo +
                                           u"'     and CnlDate ="_s + day_);
        if (rows.isEmpty())
            return;
        for (const auto& row : rows)
            if (!row.at(0).joined().isEmpty())
                run(u"Update AtteTemp1 set FC%1 = True"_s.arg(i) + where(EmpNo));
    }
}

void ReferenceCalculation::CalcLateEarly(const QString& EmpNo, const Slot& slot) {
    const Rows rows = database_.select(u"Select Time1,Time2,Time3,Time4 From AtteTemp1 "_s + where(EmpNo));
    const std::array<int, 5> Std{0, slot.StdT1, slot.StdT2, slot.StdT3, slot.StdT4};
    for (const auto& row : rows) {
        std::array<int, 5> Time{};
        for (std::size_t i = 1; i <= 4; ++i)
            Time[i] = row.at(i - 1).isNull() ? 0 : secondOf(row.at(i - 1).toTime());
        if (slot.ElstType == 1)
            return;
        int first = 0;
        int last = 0;
        if (slot.ElstType == 0 || (slot.ElstType == 4 && slot.CardType == 4)) {
            first = 1;
            last = 4;
        } else if (slot.ElstType == 2 && slot.CardType == 4) {
            first = 3;
            last = 4;
        } else if (slot.ElstType == 3 && slot.CardType == 3) {
            first = last = 1;
        } else if (slot.ElstType == 3 && slot.CardType == 4) {
            first = 1;
            last = 2;
        }
        for (int i = first; i <= last; ++i) {
            if (i == 0)
                throw runTimeError(error::SubscriptOutOfRange);
            const auto place = static_cast<std::size_t>(i);
            if (Time[place] != 0 && slot.StdC[place])
                judge(EmpNo, slot, i, Time[place], Std[place]);
        }
    }
}

void ReferenceCalculation::judge(const QString& EmpNo, const Slot& slot, int i, int Time, int Std) {
    const QString tail = where(EmpNo) + u"     and FT%1 = True and not(FH%1 = True Or FC%1 = True )"_s.arg(i);
    if (i == 2 || i == 4) {
        int e = 0;
        if ((slot.Earlier > 0 || slot.Earlier1 > 0) && Time < Std * 60)
            e = between(Time / 60, Std);
        if (e >= 1)
            run(u"Update AtteTemp1 Set Earlier%1 = %2"_s.arg(i).arg(e) + tail);
        return;
    }
    int c = 0;
    int d = 0;
    int X = slot.Cushion > 0 ? slot.Cushion : slot.Cushion1;
    if (X > 0 && Time > Std * 60 && (Std + X) * 60 >= Time)
        c = between(Std, Time / 60);
    int Y = slot.Delay;
    X = slot.Cushion;
    if (Y == 0) {
        Y = slot.Delay1;
        X = slot.Cushion1;
    }
    if (Y > 0 && Time > (Std + X) * 60 && (Std + X + Y) * 60 >= Time)
        d = between(Std + X, Time / 60);
    if (c >= 1)
        run(u"Update AtteTemp1 Set Cushion%1 = %2"_s.arg(i).arg(c) + tail);
    else if (d >= 1)
        run(u"Update AtteTemp1 Set Delay%1 = %2"_s.arg(i).arg(d) + tail);
}

void ReferenceCalculation::ClassifyExceptions(const QString& EmpNo, int CardType, bool rerun) {
    const QString here = where(EmpNo);
    run(u"Update AtteTemp1 Set DelayF = 1 "_s + here + u"     and Delay1> 0 "_s);
    run(u"Update AtteTemp1 Set DelayF = 2 "_s + here + u"     and Earlier2 >0"_s);
    run(u"Update AtteTemp1 Set DelayF = 3 "_s + here + u"     and delay3 > 0"_s);
    run(u"Update AtteTemp1 Set DelayF = 4 "_s + here + u"     and Earlier4 > 0"_s);
    const auto M = [](int i) {
        return u"     and (DelayF =%1  or Not(FT%1 = True Or FH%1 = True Or FC%1 = True))"_s.arg(i);
    };
    if (CardType == 1)
        run(u"Update AtteTemp1 Set Expt =True,F1 = True "_s + here + M(1));
    if (CardType == 2)
        for (int i = 1; i <= 4; i += 3)
            run(u"Update AtteTemp1 Set Expt =True ,F%1 = True "_s.arg(i) + here + M(i));
    if (CardType == 3) {
        for (const int i : {1, 3, 4})
            run(u"Update AtteTemp1 Set F%1 = True"_s.arg(i) + here + M(i));
        run(u"Update AtteTemp1 Set Expt = True "_s + here +
            u"      and (F1 = True or F3 = True or F4 = True) "_s);
    }
    if (CardType == 4) {
        for (int i = 1; i <= 4; ++i)
            run(u"Update AtteTemp1 Set F%1 = True"_s.arg(i) + here + M(i));
        run(u"Update AtteTemp1 Set Expt = True "_s + here +
            u"      and (F1 = True or F2 =True or F3 = True or F4 = True) "_s);
        run(u"UPDATE Attetemp1 SET Expt = true Where Format(Time2 - Time1, 'hh:mm:ss') < Format('04:00:00', "
            "'hh:mm:ss')     And IsNull(Time1) = False And IsNull(Time2) = False    and EmpNo = '"_s +
            EmpNo + u"'    and UseDate ="_s + day_ +
            u"    and Not(FH1 = True or FC1 = True or FH2 = true or FC2 = true)"_s);
    }
    if (rerun)
        run(u"Delete * from Atte03"_s + here);
    run(u"Insert into Atte03 Select * from AtteTemp1"_s + here + u"    and Expt =True "_s);
    if (rerun) {
        run(u"Delete Atte02.* from Atte02"_s + here);
        run(u" Insert into Atte02 Select * from AtteTemp1"_s + here);
    }
}

void ReferenceCalculation::RecalcSlot(const Slot& slot) {
    const Rows employees = database_.select(u"Select EmpNo from Atte03  where UseDate = "_s + day_ +
                                            u"     and TimeNo = '"_s + slot.TimeNo + u"' Order by EmpNo "_s);
    for (const auto& employee : employees) {
        const QString EmpNo = employee.at(0).toText();
        MarkLeaveCover(EmpNo, slot);
        MarkWriteOffCover(EmpNo);
        CalcLateEarly(EmpNo, slot);
        ClassifyExceptions(EmpNo, slot.CardType, true);
    }
}

void ReferenceCalculation::Recalculate(QDate date) {
    RecalcDone = true;
    day_ = u'#' + shortDate(date) + u'#';
    QStringList sets;
    for (const QString& table : {u"Atte03"_s, u"Atte02"_s}) {
        for (const QString& flag : {u"F1"_s, u"F2"_s, u"F3"_s, u"F4"_s, u"Expt"_s})
            sets += table + u'.' + flag + u" = False"_s;
        for (const QString& number : {u"DelayF"_s, u"Delay1"_s, u"Earlier2"_s, u"Delay3"_s, u"Earlier4"_s})
            sets += table + u'.' + number + u" = 0 "_s;
    }
    run(u"Update Atte03,Atte02 Set "_s + sets.join(u',') +
        u"  Where Atte03.EmpNo =Atte02.EmpNo       and Atte03.UseDate = Atte02.UseDate      and Atte03.UseDate ="_s +
        day_);
    run(u"Delete  * From AtteTemp1"_s);
    run(u"Insert into AtteTemp1 select * from Atte03  where UseDate = "_s + day_);
    CalcSlotLoop(date, true);
}

} // namespace pontrel::test
