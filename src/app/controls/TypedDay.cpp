#include "app/controls/TypedDay.h"

#include "app/controls/Keys.h"
#include "app/controls/NumberEntry.h"
#include "rules/Calendar.h"
#include "store/Clock.h"

#include <QKeyEvent>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MonthAndDay = 4;

/// How many digits a day has that begins with this one; 0 where none does.
qsizetype digitsFrom(QChar first) {
    return first == u'1' ? 7 : first == u'2' ? 8 : 0;
}

} // namespace

QString yearOfRepublic(int year) {
    const int local = year - RepublicZero;
    return local > 0 ? u"民國%1年"_s.arg(local) : u"民國前%1年"_s.arg(1 - local);
}

TypedDay::Outcome TypedDay::take(const QKeyEvent& key) {
    const bool isPlain = !(key.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier));
    if (!isPlain)
        return Outcome::NotMine;
    const QString text = plainDigits(key.text());
    if (text.size() == 1 && text.at(0) >= u'0' && text.at(0) <= u'9')
        return addDigit(text.at(0));
    const bool isUnfinished = !digits_.isEmpty() && !day_.isValid();
    switch (key.key()) {
    case Qt::Key_T:
        clear();
        day_ = clock::today();
        return Outcome::Day;
    case Qt::Key_Backspace:
        return digits_.isEmpty() && wrong_.isEmpty() ? Outcome::NotMine : removeDigit();
    case Qt::Key_Escape:
        if (digits_.isEmpty() && wrong_.isEmpty())
            return Outcome::NotMine;
        clear();
        return Outcome::Typing;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!isUnfinished)
            return Outcome::NotMine;
        if (wrong_.isEmpty())
            wrong_ = u"日期還沒有輸入完"_s;
        return Outcome::Wrong;
    default:
        return Outcome::NotMine;
    }
}

TypedDay::Outcome TypedDay::addDigit(QChar digit) {
    if (digits_.isEmpty() || digits_.size() == digitsFrom(digits_.at(0)))
        clear();
    if (digits_.isEmpty() && digitsFrom(digit) == 0) {
        wrong_ = u"請由 1（民國 7 位）或 2（西元 8 位）開始"_s;
        return Outcome::Wrong;
    }
    digits_ += digit;
    wrong_.clear();
    if (digits_.size() < digitsFrom(digits_.at(0)))
        return Outcome::Typing;
    day_ = typed();
    if (day_.isValid())
        return Outcome::Day;
    wrong_ = u"沒有這一天"_s;
    return Outcome::Wrong;
}

TypedDay::Outcome TypedDay::removeDigit() {
    digits_.chop(1);
    wrong_.clear();
    day_ = {};
    return Outcome::Typing;
}

/// The day that the digits name; invalid where there is none.
QDate TypedDay::typed() const {
    const QString year = digits_.chopped(MonthAndDay);
    const QString rest = digits_.right(MonthAndDay);
    const int added = digits_.at(0) == u'1' ? RepublicZero : 0;
    return {year.toInt() + added, rest.left(2).toInt(), rest.right(2).toInt()};
}

void TypedDay::clear() {
    digits_.clear();
    wrong_.clear();
    day_ = {};
}

void TypedDay::refuse() {
    day_ = {};
    wrong_ = u"這裡沒有這一天"_s;
}

QString TypedDay::hint() const {
    if (digits_.isEmpty())
        return wrong_.isEmpty() ? u"鍵入 1150305 或 20260305，T 今天"_s : wrong_;
    const qsizetype year = digitsFrom(digits_.at(0)) - MonthAndDay;
    QString shown = digits_.leftJustified(year + MonthAndDay, u'_');
    shown.insert(year + 2, u'/').insert(year, u'/');
    return wrong_.isEmpty() ? shown : shown + u' ' + wrong_;
}

} // namespace pontrel
