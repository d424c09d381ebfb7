#include "rules/reports/FormulaText.h"

#include "store/Format.h"
#include "store/StatementText.h"
#include "store/Value.h"

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MonthBox = 6;
constexpr QChar Quote = u'\''; // no statement

QString dateNumbers(QDate date) {
    // Deliberate: an empty date goes in as date(0,0,0), which no record meets.
    return u"%1,%2,%3"_s.arg(date.year()).arg(date.month()).arg(date.day());
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

/// Joins one formula.
class Joining {
  public:
    Joining(const ReportChoice& choice, const QStringList& codes) : choice_(choice), codes_(codes) {}

    SelectionFormula run(const QString& pattern) {
        qsizetype position = 0;
        for (qsizetype open = pattern.indexOf(u'['); open >= 0; open = pattern.indexOf(u'[', position)) {
            const qsizetype close = pattern.indexOf(u']', open);
            formula_.text += QStringView(pattern).sliced(position, open - position);
            formula_.text += valueOf(QStringView(pattern).sliced(open + 1, close - open - 1));
            position = close + 1;
        }
        formula_.text += QStringView(pattern).sliced(position);
        return std::move(formula_);
    }

  private:
    QString valueOf(QStringView mark) {
        const auto number = [&] { return mark.sliced(mark.lastIndexOf(u' ') + 1).toInt(); };
        if (mark.startsWith(u"date "))
            return dateNumbers(choice_.dates.at(static_cast<std::size_t>(number())));
        if (mark.startsWith(u"combo "))
            return joined(choice_.combos.value(number()));
        if (mark == u"month")
            return monthNumber(choice_.combos.value(MonthBox));
        if (mark == u"punch mark")
            return punchMark(choice_.punchMark);
        if (mark == u"three leave types")
            return u" and ("_s + threeLeaveTypes(0);
        return leaveTypes();
    }

    /// The text as it stands between apostrophes. Deliberate: one in it is no error here, for the formula is
    /// stored before the engine reads it.
    QString joined(const QString& text) {
        formula_.isBroken = formula_.isBroken || breaksLiteral(text);
        return text;
    }

    QString threeLeaveTypes(qsizetype first) {
        QStringList comparisons;
        for (qsizetype position = first; position < first + 3; ++position)
            comparisons += u"{Holi04.HoliNo} = "_s + Quote + joined(codes_.value(position)) + Quote;
        return comparisons.join(u" or "_s);
    }

    QString leaveTypes() {
        QString text = u" and ("_s + threeLeaveTypes(0);
        for (qsizetype first = 3; first < static_cast<qsizetype>(MostLeaveTypes); first += 3)
            text += u"  or "_s + threeLeaveTypes(first);
        return text + u')';
    }

    const ReportChoice& choice_;
    const QStringList& codes_;
    SelectionFormula formula_;
};

} // namespace

SelectionFormula joinFormula(const QString& pattern, const ReportChoice& choice, const QStringList& codes) {
    return Joining(choice, codes).run(pattern);
}

} // namespace pontrel
