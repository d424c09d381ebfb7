#include "app/ListExport.h"

#include "app/ProgressBox.h"
#include "app/SaveFile.h"
#include "app/controls/GridTable.h"
#include "paper/CsvFile.h"
#include "paper/SheetFile.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTabWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t LinesBetweenProgress = 1000;
const QString OnlyList = u"資料"_s; ///< What a tab's own list is called.

using SaveTable = std::function<bool(const paper::PlainTable&, const QString& path, const ProgressStep&)>;

/// A text that tabs and ends of lines cannot tear apart, as spreadsheets write and read it.
void appendCell(QString& line, const QString& text) {
    const bool quoted =
        text.contains(u'\t') || text.contains(u'\n') || text.contains(u'\r') || text.startsWith(u'"');
    if (quoted)
        line += u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"';
    else
        line += text;
}

void appendLine(QString& lines, const GridTable& table, std::size_t line) {
    for (std::size_t column = 0; column < table.columns().size(); ++column) {
        if (column > 0)
            lines += u'\t';
        appendCell(lines, table.text(line, column));
    }
}

void appendCaptions(QString& lines, const GridTable& table) {
    for (std::size_t column = 0; column < table.columns().size(); ++column) {
        if (column > 0)
            lines += u'\t';
        appendCell(lines, table.columns()[column].caption);
    }
}

/// What a list is called: in a dialog as the dialog is, otherwise as its tab is, with its own name where the
/// tab may have others.
QString titleOf(const TDBGrid& grid) {
    const QTabWidget* tabs = nullptr;
    for (const QWidget* above = grid.parentWidget(); above && !tabs; above = above->parentWidget())
        tabs = qobject_cast<const QTabWidget*>(above);
    QString title = tabs ? tabs->tabText(tabs->currentIndex()) : grid.window()->windowTitle();
    if (tabs && grid.accessibleName() != OnlyList && grid.accessibleName() != title)
        title += u' ' + grid.accessibleName();
    return title.remove(u'&').replace(u'/', u'-');
}

/// Saves the list as a file of that kind, which the user names, and tells how much it is.
void exportTo(const TDBGrid& grid, const SaveKind& kind, const QString& caption, const SaveTable& save) {
    const GridTable table(grid);
    const std::optional<QString> path =
        saveUnderChosenName(titleOf(grid), kind, caption, [&](const QString& file, const ProgressStep& step) {
            return save(table, file, step);
        });
    if (path)
        MsgBox(u"已匯出 %L1 列到「%2」。"_s.arg(table.lineCount()).arg(QDir::toNativeSeparators(*path)),
               caption, MsgIcon::Information);
}

} // namespace

void copyRow(const TDBGrid& grid) {
    const int row = grid.currentIndex().row();
    if (row < 0 || !grid.rows().isOpen())
        return;
    QString line;
    const bool isRead = attempt(u"複製"_s, [&](const ProgressStep&) {
        appendLine(line, GridTable(grid), static_cast<std::size_t>(row));
        return true;
    });
    if (isRead)
        QGuiApplication::clipboard()->setText(line);
}

void copyAllRows(const TDBGrid& grid) {
    const GridTable table(grid);
    QString lines;
    appendCaptions(lines, table);
    lines += u'\n';
    const bool isRead = attempt(u"複製"_s, [&](const ProgressStep& step) {
        for (std::size_t line = 0; line < table.lineCount(); ++line) {
            appendLine(lines, table, line);
            lines += u'\n';
            if (line % LinesBetweenProgress == 0 && !step(line, table.lineCount()))
                return false;
        }
        return true;
    });
    if (isRead)
        QGuiApplication::clipboard()->setText(lines);
}

void exportCsv(const TDBGrid& grid) {
    exportTo(grid, CsvKind, u"匯出成 CSV 檔"_s,
             [](const paper::PlainTable& table, const QString& path, const ProgressStep& step) {
                 return paper::saveCsv(table, path, step);
             });
}

void exportSheet(const TDBGrid& grid) {
    exportTo(grid, SheetKind, u"匯出成試算表"_s,
             [](const paper::PlainTable& table, const QString& path, const ProgressStep& step) {
                 return paper::saveSheet(table, path, step);
             });
}

} // namespace pontrel
