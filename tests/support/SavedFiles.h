#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

namespace pontrel::test {

// What stands in files, as others than the program read and write them.

/// "(unreadable)" where it cannot be read.
[[nodiscard]] QByteArray contentOf(const QString& path);

/// In place of what stands there; ends the test where that fails.
void writeContent(const QString& path, const QByteArray& content);

/// The text of a PDF's pages, its places kept; none where it cannot be read.
[[nodiscard]] QStringList pdfPages(const QString& path);

/// The cells of a sheet of a saved spreadsheet, a row each: texts in quotes, numbers as they stand. Sheets
/// are counted from 1. A single line tells what is wrong where it cannot be read.
[[nodiscard]] QStringList sheetOf(const QString& path, int sheet);

/// A part of a saved spreadsheet, such as "xl/worksheets/sheet1.xml".
[[nodiscard]] QByteArray sheetPart(const QString& path, const QString& name);

/// A cell of a saved spreadsheet.
struct SheetCell {
    bool isText = false;
    QString content; ///< The text, or the number as it stands.
    QString format;  ///< How a number is shown; empty without a format of its own.
};

/// The cells of the first sheet that hold something, by their names, such as "B2".
[[nodiscard]] QHash<QString, SheetCell> cellsOf(const QString& path);

/// How the numbers of the first sheet's cells are shown, by the cell; those without a format of their own are
/// left out.
[[nodiscard]] QHash<QString, QString> formatsOf(const QString& path);

} // namespace pontrel::test
