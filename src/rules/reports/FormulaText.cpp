#include "rules/reports/FormulaText.h"

#include "store/Format.h"
#include "store/RunTimeError.h"
#include "store/StatementText.h"
#include "store/Value.h"

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MonthBox = 6;

QString dateNumbers(QDate date) {
    // Deliberate: an empty date goes in as date(0,0,0), which no record meets.
    return u"%1,%2,%3"_s.arg(date.year()).arg(date.month()).arg(date.day());
}

/// The text as it stands between apostrophes of the pattern.
QString joinedText(const QString& text) {
    if (breaksLiteral(text))
        throw runTimeError(error::Syntax, text);
    return text;
}

QString monthNumber(const QString& text) {
    return QString::number(Value(leadingNumber(text)).toInt16());
}

QString punchMark(int index) {
    static const std::array marks{
        u" and ({Atte02.F1} = True  or {Atte02.F2} = True or {Atte02.F3} = True or {Atte02.F4} = True )"_s,
        u" and {Atte02.F1} = True"_s, u" and {Atte02.F2} = True"_s, u" and {Atte02.F3} = True"_s,
        u" and {Atte02.F4} = True"_s};
    return marks.at(static_cast<std::size_t>(index));
}

QString threeLeaveTypes(const QStringList& codes, qsizetype first) {
    QStringList comparisons;
    for (qsizetype position = first; position < first + 3; ++position)
        comparisons += u"{Holi04.HoliNo} = "_s + textLiteral(codes.value(position));
    return comparisons.join(u" or "_s);
}

QString leaveTypes(const QStringList& codes) {
    QString text = u" and ("_s + threeLeaveTypes(codes, 0);
    for (qsizetype first = 3; first < static_cast<qsizetype>(MostLeaveTypes); first += 3)
        text += u"  or "_s + threeLeaveTypes(codes, first);
    return text + u')';
}

QString valueOf(QStringView mark, const ReportChoice& choice, const QStringList& codes) {
    const auto number = [&] { return mark.sliced(mark.lastIndexOf(u' ') + 1).toInt(); };
    if (mark.startsWith(u"date "))
        return dateNumbers(choice.dates.at(static_cast<std::size_t>(number())));
    if (mark.startsWith(u"combo "))
        return joinedText(choice.combos.value(number()));
    if (mark == u"month")
        return monthNumber(choice.combos.value(MonthBox));
    if (mark == u"punch mark")
        return punchMark(choice.punchMark);
    if (mark == u"three leave types")
        return u" and ("_s + threeLeaveTypes(codes, 0);
    return leaveTypes(codes);
}

} // namespace

QString joinFormula(const QString& pattern, const ReportChoice& choice, const QStringList& codes) {
    QString formula;
    qsizetype position = 0;
    for (qsizetype open = pattern.indexOf(u'['); open >= 0; open = pattern.indexOf(u'[', position)) {
        const qsizetype close = pattern.indexOf(u']', open);
        formula += QStringView(pattern).sliced(position, open - position);
        formula += valueOf(QStringView(pattern).sliced(open + 1, close - open - 1), choice, codes);
        position = close + 1;
    }
    return formula + pattern.sliced(position);
}

} // namespace pontrel
