#include "app/controls/TDBGrid.h"

#include "app/Events.h"
#include "app/ListExport.h"
#include "app/controls/ColumnWidths.h"
#include "app/controls/EmptyText.h"
#include "app/controls/FaultCells.h"
#include "app/controls/GridMenu.h"
#include "app/controls/Keys.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/TDBGridModel.h"
#include "store/DataSource.h"
#include "store/Format.h"
#include "store/StoreText.h"

#include <QFontInfo>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace pontrel {

void TranslationList::add(const QString& code, const QString& text) {
    texts_.insert(foldedCode(code), text);
}

QString TranslationList::text(const QString& code) const {
    return texts_.value(foldedCode(code), code);
}

TDBGrid::TDBGrid(QWidget* parent)
    : QTableView(parent), model_(new TDBGridModel(this)), widths_(new ColumnWidths(*this)) {
    // A pixel smaller than the rest of the window, so that a row of a dozen columns is seen whole.
    QFont small = font();
    small.setPixelSize(QFontInfo(small).pixelSize() - 1);
    setFont(small);
    setModel(model_);
    setItemDelegate(new FaultCells(this));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false); // Tab leaves the grid for the next control
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setMinimumSectionSize(20);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu); // the list's
    onEvent(horizontalHeader(), &QWidget::customContextMenuRequested, this, [this](QPoint place) {
        openGridMenu(*this, horizontalHeader()->viewport()->mapToGlobal(place));
    });
    switchInputMethodOff(*this);
    horizontalHeader()->setResizeContentsPrecision(0); // a double click there measures what is in sight
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& now) { moveSource(now.isValid() ? now.row() : -1); });
    onEvent(this, &QTableView::clicked, this, [this](const QModelIndex& cell) {
        // A click that has changed the row was told when the mouse was pressed.
        if (cell.row() == rowBeforePress_ && source_ && source_->editMode() == EditMode::None)
            Q_EMIT rowChosen();
    });
}

void TDBGrid::setSource(DataSource* source) {
    if (source_ != nullptr)
        source_->disconnect(this);
    source_ = source;
    model_->setSource(source);
    if (source == nullptr)
        return;
    onEvent(source, &DataSource::RowsChanged, this, [this] { sourceRowsChanged(); });
    onEvent(source, &DataSource::Reposition, this, [this] { followSource(); });
    onEvent(source, &DataSource::RowBegun, this, [this] { followSource(); });
    connect(source, &QObject::destroyed, this, [this] {
        source_ = nullptr;
        model_->setSource(nullptr);
    });
    followSource();
}

void TDBGrid::setColumns(std::vector<GridColumn> columns) {
    model_->setColumns(std::move(columns));
    const auto& made = model_->columns();
    std::vector<ColumnWidths::Stated> stated;
    for (std::size_t column = 0; column < made.size(); ++column) {
        setColumnWidth(static_cast<int>(column), made[column].width);
        stated.push_back({made[column].column, made[column].width});
    }
    widths_->columnsMade(std::move(stated));
    followSource();
}

void TDBGrid::setEmptyText(const QString& text) {
    if (emptyText_.isEmpty())
        ownDescription_ = accessibleDescription();
    emptyText_ = text;
    tellWhetherEmpty();
}

QString TDBGrid::shownText(const Value& value) {
    switch (value.type()) {
    case ColumnType::Unknown:
        return {};
    case ColumnType::Date:
        return shortDate(value.toDate());
    case ColumnType::Time:
        return shortTime(value.toTime());
    case ColumnType::DateTime:
        return shortDate(value.toDateTime().date()) + u' ' + shortTime(value.toDateTime().time());
    default:
        return value.joined();
    }
}

void TDBGrid::refreshCells() {
    viewport()->update();
}

void TDBGrid::sourceRowsChanged() {
    following_ = true; // emptying the view moves its current row, which is no move of the user's
    model_->sourceChanged();
    following_ = false;
    tellWhetherEmpty();
    followSource();
}

void TDBGrid::tellWhetherEmpty() {
    if (emptyText_.isEmpty())
        return;
    const QString also = model_->rowCount() == 0 ? emptyText_ : QString();
    setAccessibleDescription(QStringList({ownDescription_, also}).join(u' ').trimmed());
    viewport()->update();
}

void TDBGrid::followSource() {
    if (source_ == nullptr || !source_->recordset().isOpen() || model_->columnCount() == 0)
        return;
    const bool hasRow = !source_->isEmpty() && source_->editMode() != EditMode::Add;
    const int row = hasRow ? static_cast<int>(source_->recordset().AbsolutePosition()) : -1;
    following_ = true;
    if (row >= 0 && row < model_->rowCount()) {
        model_->forget(row); // the row may have changed since it was read
        const int column = currentIndex().isValid() ? currentIndex().column() : 0;
        setCurrentIndex(model_->index(row, column));
    } else {
        clearSelection();
        setCurrentIndex({});
    }
    following_ = false;
    holdVisibleRows();
    viewport()->update();
}

void TDBGrid::moveSource(int row) {
    if (following_ || source_ == nullptr || row < 0)
        return;
    guarded([this, row] {
        if (source_->editMode() == EditMode::None) {
            source_->moveTo(row);
            Q_EMIT rowChosen();
        } else { // an edit stays with its row, and so does the grid
            QMetaObject::invokeMethod(
                this, [this] { followSource(); }, Qt::QueuedConnection);
        }
    });
}

void TDBGrid::holdVisibleRows() {
    if (source_ == nullptr || !source_->recordset().isOpen() || model_->rowCount() == 0)
        return;
    guarded([this] {
        const int height = verticalHeader()->defaultSectionSize();
        // Not what the scroll bar says: at its end the last row stands at the bottom, and a part of one more
        // at the top.
        const int first = std::max(0, rowAt(0));
        model_->hold(first, first + viewport()->height() / height + 1);
    });
}

void TDBGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        return; // the menu is about the list and its selected row
    rowBeforePress_ = currentIndex().row();
    QTableView::mousePressEvent(event);
}

void TDBGrid::keyboardSearch(const QString& /*text*/) {}

void TDBGrid::keyPressEvent(QKeyEvent* event) {
    if (isPlainEnter(*event) && currentIndex().isValid())
        Q_EMIT rowTaken();
    else if (event->matches(QKeySequence::Copy))
        copyRow(*this); // and not the current cell alone
    else if (isMenuKey(*event))
        openGridMenu(*this, menuPlace()); // not every desktop makes a request for a menu of them
    else
        QTableView::keyPressEvent(event);
}

void TDBGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const bool onRow = indexAt(event->position().toPoint()).isValid();
    QTableView::mouseDoubleClickEvent(event);
    if (onRow && event->button() == Qt::LeftButton)
        Q_EMIT rowTaken();
}

void TDBGrid::contextMenuEvent(QContextMenuEvent* event) {
    openGridMenu(*this, event->reason() == QContextMenuEvent::Mouse ? event->globalPos() : menuPlace());
}

/// Below the current row, or where that is out of sight, at the head of the list; in the display's places.
QPoint TDBGrid::menuPlace() const {
    const QRect row = visualRect(currentIndex());
    const bool inSight = currentIndex().isValid() && viewport()->rect().contains(0, row.bottom());
    return viewport()->mapToGlobal(inSight ? QPoint(0, row.bottom()) : QPoint());
}

void TDBGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    holdVisibleRows();
}

void TDBGrid::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    model_->forgetAll(); // what another page has done to them meanwhile is to be seen
    holdVisibleRows();
}

void TDBGrid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dy != 0)
        holdVisibleRows();
}

void TDBGrid::paintEvent(QPaintEvent* event) {
    // The store is not read from within painting: what is missing shows empty and is read right afterwards.
    model_->setPainting(true);
    QTableView::paintEvent(event);
    model_->setPainting(false);
    if (model_->rowCount() == 0)
        paintEmptyText(*this, emptyText_);
    if (model_->takeMissed() && source_ != nullptr && source_->recordset().isOpen()) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                holdVisibleRows();
                viewport()->update();
            },
            Qt::QueuedConnection);
    }
}

} // namespace pontrel
