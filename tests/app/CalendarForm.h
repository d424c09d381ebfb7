#pragma once

#include "app/controls/TDBCalendar.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QVBoxLayout>

namespace pontrel::test {

inline const QDate Today(2026, 3, 5);
inline const QDate Holiday(2026, 3, 17);

/// A window with the calendar, its group of days off, and a box after it.
struct CalendarForm : QWidget {
    TDBCalendar calendar;
    QLineEdit next;
    QList<QDate> picks;

    CalendarForm() {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&calendar);
        rows->addWidget(&next);
        calendar.createGroup(QStringLiteral("nowork"), QStringLiteral("放假日"));
        calendar.showGroup(QStringLiteral("nowork"));
        connect(&calendar, &TDBCalendar::picked, this, [this](QDate day) { picks << day; });
        calendar.setFocus();
        resize(420, 320);
        show();
    }
    [[nodiscard]] bool waitActive() { return QTest::qWaitForWindowActive(this, PatienceMs); }
    [[nodiscard]] QTableView& days() const { return control<QTableView>(calendar, QStringLiteral("Days")); }
    [[nodiscard]] QString title() const { return control<QLabel>(calendar, QStringLiteral("Month")).text(); }

    /// The middle of a day of the month shown, in the table's viewport; fails the look-up with a null point.
    [[nodiscard]] QPoint placeOf(int day) const {
        const QAbstractItemModel& model = *days().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < model.columnCount(); ++column) {
                const QModelIndex place = model.index(row, column);
                if (place.data().toString() == QString::number(day))
                    return days().visualRect(place).center();
            }
        }
        return {};
    }
    void clickDay(int day) const {
        QTest::mouseClick(days().viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(day));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    /// What the field of a day looks like.
    [[nodiscard]] QImage look(int day) const {
        const QModelIndex place = days().indexAt(placeOf(day));
        return days().viewport()->grab(days().visualRect(place)).toImage();
    }
    /// The colour of a day's field beside its figures.
    [[nodiscard]] QColor ground(int day) const {
        const QImage field = look(day);
        return field.pixelColor(field.width() / 8, field.height() / 2);
    }
};

} // namespace pontrel::test
