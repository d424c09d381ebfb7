#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable times() {
    return {
        selects(u"A time is written with hours, minutes and seconds",
                u"Select format(UseTime,'hh:nn:ss') as t From AtteTemp Where UseDate = #2001/3/4#",
                u"'08:00:00'")
            .named(u"t"),
        selects(u"Months after hours are minutes",
                u"Select format(UseTime,'hh:mm:ss') as t From AtteTemp Where class = '000'", u"'08:03:00'"),
        selects(u"Months after hours are minutes without seconds too",
                u"Select format(UseTime,'hh:mm') as t From AtteTemp Where class = '000'", u"'08:03'"),
        selects(u"Seconds are not rounded away",
                u"Select format(UseTime,'hh:nn') as t,format(UseTime,'ss') as s From Atte01 "
                u"Where EmpNo = '00001' and UseDate = #2001/3/5#",
                u"'08:00'|'59'"),
        selects(u"Minutes alone have their own letters",
                u"Select format(UseTime,'nn') as t From AtteTemp Where class = '000'", u"'03'"),
        selects(u"A pattern is read in capitals",
                u"Select FORMAT(UseTime,'HH:NN:SS') as t From AtteTemp Where class = '000'", u"'08:03:00'"),
        selects(u"A pattern needs no marks between its parts",
                u"Select format(UseTime,'hhmm') as t From AtteTemp Where class = '000'", u"'0803'"),
        selects(u"Quoted text is read as a time and written anew",
                u"Select Format('4:5', 'hh:mm:ss') as t From Syst01", u"'04:05:00'"),
        selects(u"A time literal is written", u"Select Format(#8:3#, 'hh:mm:ss') as t From Syst01",
                u"'08:03:00'"),
    };
}

StatementTable dates() {
    return {
        selects(u"A date is written with slashes",
                u"Select format(hymd,'yyyy/mm/dd') as d From Rule01 Where hymd = #2001/1/1#",
                u"'2001/01/01'"),
        selects(u"A date is written with its month in English letters",
                u"Select format(hymd,'yyyy-mmm-dd') as d From Rule01",
                u"'2001-Jan-01'\n'2001-Feb-28'\n"
                u"'2001-Oct-10'"),
        selects(u"A date is written without marks",
                u"Select format(hymd,'yyyymmdd') as d,format(hymd,'mmdd') as s From Rule01 "
                u"Where hymd = #2001/2/28#",
                u"'20010228'|'0228'"),
        selects(u"A moment is written with months before and minutes after the hours",
                u"Select format(TransDate,'yyyy-mmm-dd hh:mm:ss') as m,format(TransDate,'yyyy/mm/dd hh:mm') "
                u"as s From Holi03 Where BusNo = '200103050002'",
                u"'2001-Mar-05 09:10:11'|'2001/03/05 09:10'"),
        selects(u"A date has midnight as its time",
                u"Select format(hymd,'hh:nn:ss') as t From Rule01 Where hymd = #2001/2/28#", u"'00:00:00'"),
    };
}

StatementTable differences() {
    return {
        selects(u"A difference of times is a part of a day",
                u"Select Time2 - Time1 as d From AtteTemp1 Where IsNull(Time2) = False",
                u"0.165972222222\n0.166666666667\n-0.125")
            .named(u"d"),
        selects(u"A difference is written as a time, a negative one by its size",
                u"Select Format(Time2 - Time1, 'hh:mm:ss') as d From AtteTemp1 Where IsNull(Time2) = False",
                u"'03:59:00'\n'04:00:00'\n'03:00:00'"),
        selects(u"A difference of seconds is written to the second",
                u"Select Format(Time2 - Time1, 'hh:nn:ss') as d,Format(Time2 - Time1, 'ss') as s "
                u"From AtteTemp1 Where EmpNo = '00003'",
                u"'00:00:59'|'59'")
            .after(u"Update AtteTemp1 Set Time1 =#08:59:59# ,Time2 =#09:00:58# Where EmpNo = '00003'"),
        selects(u"A difference of one second less than four hours is less as a text",
                u"Select EmpNo From AtteTemp1 Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss') And EmpNo = '00003'",
                u"'00003'")
            .after(u"Update AtteTemp1 Set Time1 =#08:00:00# ,Time2 =#11:59:59# Where EmpNo = '00003'"),
        selects(u"A difference of four hours is not less at any time of day",
                u"Select EmpNo From AtteTemp1 Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss') And EmpNo = '00003'",
                u"")
            .after(u"Update AtteTemp1 Set Time1 =#09:07:00# ,Time2 =#13:07:00# Where EmpNo = '00003'"),
        selects(u"Equal times have no difference",
                u"Select Format(Time2 - Time1, 'hh:mm:ss') as d From AtteTemp1 Where EmpNo = '00003'",
                u"'00:00:00'")
            .after(u"Update AtteTemp1 Set Time1 =#09:07:00# ,Time2 =#09:07:00# Where EmpNo = '00003'"),
    };
}

} // namespace

StatementTable formatStatements() {
    StatementTable all = times();
    for (const StatementTable& part : {dates(), differences()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
