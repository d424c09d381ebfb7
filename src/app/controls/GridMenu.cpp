#include "app/controls/GridMenu.h"

#include "app/Events.h"
#include "app/ListExport.h"
#include "app/controls/ColumnWidths.h"
#include "app/controls/TDBGridModel.h"

#include <QApplication>
#include <QMenu>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

QAction* addEntry(QMenu& menu, TDBGrid& grid, const QString& name, const QString& text,
                  void (*routine)(const TDBGrid&)) {
    QAction* entry = menu.addAction(text);
    entry->setObjectName(name);
    entry->setEnabled(grid.rows().isOpen());
    onEvent(entry, &QAction::triggered, &grid, [&grid, routine] { routine(grid); });
    return entry;
}

QMenu* menuOf(TDBGrid& grid) {
    const QString name = u"GridMenu"_s;
    if (auto* made = grid.findChild<QMenu*>(name, Qt::FindDirectChildrenOnly))
        return made;
    auto* menu = new QMenu(&grid);
    menu->setObjectName(name);
    menu->setAccessibleName(u"清單功能"_s);
    return menu;
}

} // namespace

void openGridMenu(TDBGrid& grid, QPoint place) {
    if (QApplication::activePopupWidget() != nullptr)
        return; // a desktop may ask for it by the key and by an event
    // It is kept, and not deleted when it closes: what it starts runs within the press of its entry.
    QMenu* menu = menuOf(grid);
    menu->clear();
    menu->addActions(grid.actions());
    menu->addSeparator();
    QAction* copy = addEntry(*menu, grid, u"ActCopyRow"_s, u"複製選取的列(&C)"_s, copyRow);
    copy->setEnabled(copy->isEnabled() && grid.currentIndex().isValid());
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut); // the key itself is the grid's
    copy->setShortcutVisibleInContextMenu(true);
    addEntry(*menu, grid, u"ActCopyAll"_s, u"複製全部的列(&A)"_s, copyAllRows);
    menu->addSeparator();
    addEntry(*menu, grid, u"ActExportCsv"_s, u"匯出成 CSV 檔(&V)…"_s, exportCsv);
    addEntry(*menu, grid, u"ActExportSheet"_s, u"匯出成試算表(&S)…"_s, exportSheet);
    menu->addSeparator();
    menu->addAction(grid.findChild<ColumnWidths*>()->restoreAction());
    menu->popup(place);
}

} // namespace pontrel
