#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

#include <QStringList>

#include <deque>

using namespace Qt::StringLiterals;

namespace pontrel::test {

namespace {

/// Keeps a text that the tables have views of.
QStringView kept(const QString& text) {
    static std::deque<QString> texts;
    return texts.emplace_back(text);
}

StatementCase date(QStringView title, const QString& literal) {
    return selects(title, kept(u"select OverHours from Over01 where OverDate = "_s + literal), u"2\n0");
}

StatementCase time(QStringView title, const QString& literal) {
    return selects(title, kept(u"select class from AtteTemp where UseTime = "_s + literal), u"'000'");
}

StatementCase moment(QStringView title, const QString& literal) {
    return selects(title, kept(u"select BusNo from Holi03 where TransDate = "_s + literal),
                   u"'200103050002'");
}

StatementCase bad(QStringView title, const QString& literal) {
    return fails(title, kept(u"select OverHours from Over01 where OverDate = "_s + literal), error::Syntax);
}

StatementTable goodSpellings() {
    return {
        date(u"A date is read with slashes and one digit", u"#2001/3/5#"_s),
        date(u"A date is read with slashes and two digits", u"#2001/03/05#"_s),
        date(u"A date is read with dashes and one digit", u"#2001-3-5#"_s),
        date(u"A date is read with dashes and two digits", u"#2001-03-05#"_s),
        date(u"A date is read between blanks", u"# 2001/3/5 #"_s),
        date(u"A date is read with a blank behind it", u"#2001/03/05 #"_s),
        date(u"A date is read with a month in letters", u"#2001-Mar-05#"_s),
        date(u"A month in letters is read in small letters", u"#2001-mar-5#"_s),
        date(u"A month in letters is read in capitals", u"#2001-MAR-05#"_s),
        date(u"A month in letters is read between slashes", u"#2001/Mar/05#"_s),
        time(u"A time is read to the second", u"#08:03:00#"_s),
        time(u"A time is read to the minute", u"#08:03#"_s),
        time(u"A time is read with one digit each", u"#8:3:0#"_s),
        time(u"A time is read between blanks", u"# 08:03:00 #"_s),
        time(u"A time is read with the date that stands for none", u"#1899/12/30 08:03:00#"_s),
        time(u"A quoted time is read with the date that stands for none", u"'1899-12-30 8:03'"_s),
        selects(u"A time with another date equals no time of day",
                u"select class from AtteTemp where UseTime = #2001/3/5 08:03:00#", u""),
        selects(u"A quoted time with another date equals no time of day",
                u"select class from AtteTemp where UseTime = '2001/3/5 08:03:00'", u""),
        selects(u"The date that stands for none is midnight as a time",
                u"select EmpNo from View02 where T2 = #1899/12/30#", u"'00002'"),
        selects(u"Times lie in a range with the date that stands for none",
                u"select class from AtteTemp where UseTime between #1899/12/30 08:02# and #08:03#", u"'000'"),
        moment(u"A moment is read with a month in letters", u"#2001-Mar-05 09:10:11#"_s),
        moment(u"A moment is read with slashes and short times", u"#2001/3/5 9:10:11#"_s),
        moment(u"A moment is read between blanks", u"# 2001-03-05 09:10:11 #"_s),
        selects(u"The 29th of February of a leap year is a day",
                u"select count(*) as cnt from Rule01 where hymd = #2000/2/29#", u"0"),
        selects(u"The last second of the day is a time",
                u"select class from AtteTemp where UseTime = #23:59:59#", u""),
    };
}

StatementTable months() {
    static const QStringList names{u"Jan"_s, u"Feb"_s, u"Mar"_s, u"Apr"_s, u"May"_s, u"Jun"_s,
                                   u"Jul"_s, u"Aug"_s, u"Sep"_s, u"Oct"_s, u"Nov"_s, u"Dec"_s};
    StatementTable table;
    for (int month = 1; month <= 12; ++month) {
        const QString& name = names[month - 1];
        table.push_back(changes(kept(u"The month %1 is read in letters"_s.arg(name)),
                                kept(u"insert into Rule01(hymd)  values(#2002-%1-07#)"_s.arg(name)), 1,
                                kept(u"Rule01 +'2002-%1-07'"_s.arg(month, 2, 10, QLatin1Char('0')))));
    }
    return table;
}

StatementTable badDates() {
    return {
        bad(u"An empty date is refused", u"##"_s),
        bad(u"A blank date is refused", u"# #"_s),
        bad(u"The 30th of February is refused", u"#2001/02/30#"_s),
        bad(u"The 29th of February of another year is refused", u"#2001/2/29#"_s),
        bad(u"The 29th of February of 1900 is refused", u"#1900/2/29#"_s),
        bad(u"The 31st of April is refused", u"#2001-04-31#"_s),
        bad(u"A thirteenth month is refused", u"#2001/13/1#"_s),
        bad(u"A month of zero is refused", u"#2001/0/1#"_s),
        bad(u"A day of zero is refused", u"#2001/1/0#"_s),
        bad(u"A date without a day is refused", u"#2001/3#"_s),
        bad(u"A year alone is refused", u"#2001#"_s),
        bad(u"A date with the year at its end is refused", u"#3/5/2001#"_s),
        bad(u"A date with the day in front is refused", u"#5-Mar-2001#"_s),
        bad(u"A month in other letters is refused", u"#2001-Mrz-05#"_s),
        bad(u"A month written in full is refused", u"#2001-March-05#"_s),
        bad(u"A month of three digits is refused", u"#2001/003/05#"_s),
        bad(u"A day of three digits is refused", u"#2001/3/005#"_s),
        bad(u"A date with dots is refused", u"#2001.3.5#"_s),
        bad(u"A date with a slash too many is refused", u"#2001/3/5/#"_s),
        bad(u"A word is refused as a date", u"#today#"_s),
        bad(u"A date that is not closed is refused", u"#2001/3/5"_s),
        bad(u"A lone number sign is refused", u"#"_s),
    };
}

StatementTable badTimes() {
    return {
        bad(u"24 o'clock is refused", u"#24:00:00#"_s),
        bad(u"24 o'clock to the minute is refused", u"#24:00#"_s),
        bad(u"A sixtieth minute is refused", u"#08:60#"_s),
        bad(u"A sixtieth second is refused", u"#08:00:60#"_s),
        bad(u"An hour alone is refused", u"#8#"_s),
        bad(u"An hour without its minute is refused", u"#8:#"_s),
        bad(u"A minute without its hour is refused", u"#:30#"_s),
        bad(u"A time of four parts is refused", u"#08:00:00:00#"_s),
        bad(u"A time below zero is refused", u"#-1:00#"_s),
        bad(u"A time of the afternoon in letters is refused", u"#08:00 PM#"_s),
        bad(u"The mask of an empty time is refused", u"#__:__:__#"_s),
        bad(u"A date with 24 o'clock is refused", u"#2001/3/5 24:00#"_s),
        bad(u"A date with something else behind it is refused", u"#2001/3/5 x#"_s),
        fails(u"A bad time breaks an insert too",
              u"Insert Into View02(EmpNo,UseDate,T1) Values('a0001',#2001/3/5#,#24:00:00#)", error::Syntax),
        fails(u"A bad date breaks a deletion too", u"delete * from Rule01 where hymd =#  # ", error::Syntax),
        fails(u"A bad date breaks an update that would touch no row",
              u"Update Rule03 Set TimeNo = 'B' Where EmpNo = '99999'      and Ymd = #2001/02/30#",
              error::Syntax),
    };
}

} // namespace

StatementTable dateLiteralStatements() {
    StatementTable all = goodSpellings();
    for (const StatementTable& part : {months(), badDates(), badTimes()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
