#include "app/controls/DayKeys.h"

#include "rules/Calendar.h"

#include <QKeyEvent>

namespace pontrel {

std::optional<QDate> dayByKey(QDate from, const QKeyEvent& key) {
    const int months = key.modifiers().testFlag(Qt::ControlModifier) ? MonthsOfYear : 1;
    switch (key.key()) {
    case Qt::Key_Left:
        return from.addDays(-1);
    case Qt::Key_Right:
        return from.addDays(1);
    case Qt::Key_Up:
        return from.addDays(-DaysOfWeek);
    case Qt::Key_Down:
        return from.addDays(DaysOfWeek);
    case Qt::Key_PageUp:
        return from.addMonths(-months);
    case Qt::Key_PageDown:
        return from.addMonths(months);
    case Qt::Key_Home:
        return QDate(from.year(), from.month(), 1);
    case Qt::Key_End:
        return QDate(from.year(), from.month(), from.daysInMonth());
    default:
        return std::nullopt;
    }
}

} // namespace pontrel
