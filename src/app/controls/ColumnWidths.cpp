#include "app/controls/ColumnWidths.h"

#include "app/Events.h"
#include "app/Habits.h"
#include "app/Window.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The object name of the window in which a control lies: one within the main window, or a dialog.
QString windowNameOf(const QWidget& control) {
    const QWidget* around = control.parentWidget();
    while (around && !around->isWindow() && !qobject_cast<const Window*>(around))
        around = around->parentWidget();
    return around ? around->objectName() : QString();
}

/// Several columns of a grid may show the same one of the store; names stand in a list of names and widths.
void tellApart(std::vector<ColumnWidths::Stated>& columns) {
    QHash<QString, int> seen;
    for (ColumnWidths::Stated& each : columns) {
        each.name.replace(u' ', u'_').replace(u':', u'_');
        if (const int count = ++seen[each.name]; count > 1)
            each.name += u'#' + QString::number(count); // no statement
    }
}

} // namespace

ColumnWidths::ColumnWidths(QTableView& grid)
    : QObject(&grid), grid_(grid), restore_(new QAction(u"還原欄寬"_s, &grid)) {
    grid.installEventFilter(this);
    grid.horizontalHeader()->viewport()->installEventFilter(this);
    // Qt's own routine, which makes the column as wide as its texts, has run by now.
    onEvent(grid.horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this,
            [this] { keepChanged(); });
    restore_->setObjectName(u"RestoreWidths"_s);
    onEvent(restore_, &QAction::triggered, this, [this] { restoreStated(); });
}

void ColumnWidths::columnsMade(std::vector<Stated> columns) {
    columns_ = std::move(columns);
    tellApart(columns_);
    if (grid_.isVisible())
        giveBack();
}

QString ColumnWidths::key() const {
    const QString window = windowNameOf(grid_);
    return window.isEmpty() || grid_.objectName().isEmpty() ? QString() : window + u'.' + grid_.objectName();
}

QList<int> ColumnWidths::widthsNow() const {
    QList<int> widths;
    for (int column = 0; column < keptCount(); ++column)
        widths << grid_.columnWidth(column);
    return widths;
}

int ColumnWidths::keptCount() const {
    const int count = static_cast<int>(columns_.size());
    return grid_.horizontalHeader()->stretchLastSection() ? std::max(0, count - 1) : count;
}

void ColumnWidths::giveBack() {
    const QMap<QString, int> kept = Habits::ofUser().columnWidths(key());
    for (int column = 0; column < keptCount() && !kept.isEmpty(); ++column) {
        const QString& name = columns_.at(static_cast<std::size_t>(column)).name;
        if (const int width = kept.value(name); width > 0)
            grid_.setColumnWidth(column, width);
    }
}

void ColumnWidths::keepChanged() {
    const QList<int> now = widthsNow();
    if (key().isEmpty() || now == before_ || now.size() != before_.size())
        return;
    QMap<QString, int> kept = Habits::ofUser().columnWidths(key());
    for (int column = 0; column < keptCount(); ++column) {
        const Stated& stated = columns_.at(static_cast<std::size_t>(column));
        if (now[column] == stated.width)
            kept.remove(stated.name);
        else if (now[column] != before_[column])
            kept.insert(stated.name, now[column]);
    }
    before_ = now;
    Habits::ofUser().setColumnWidths(key(), kept);
}

void ColumnWidths::restoreStated() {
    for (int column = 0; column < keptCount(); ++column)
        grid_.setColumnWidth(column, columns_.at(static_cast<std::size_t>(column)).width);
    if (!key().isEmpty())
        Habits::ofUser().setColumnWidths(key(), {});
}

bool ColumnWidths::eventFilter(QObject* watched, QEvent* event) {
    const bool isGrid = watched == &grid_;
    switch (event->type()) {
    case QEvent::Show: // before that it may have neither its name nor its place in a window
        if (isGrid)
            giveBack();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (!isGrid)
            before_ = widthsNow();
        break;
    case QEvent::MouseButtonRelease:
        if (!isGrid)
            keepChanged();
        break;
    default:
        break;
    }
    return false;
}

} // namespace pontrel
