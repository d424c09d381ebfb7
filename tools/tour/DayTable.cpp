#include "tour/DayTable.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <array>

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

struct CharacterRange {
    char32_t first;
    char32_t last;
};

/// The ranges that terminals show two places wide.
constexpr std::array<CharacterRange, 10> WideRanges{{{0x1100, 0x115f},
                                                     {0x2e80, 0x303e},
                                                     {0x3041, 0xa4cf},
                                                     {0xa960, 0xa97f},
                                                     {0xac00, 0xd7a3},
                                                     {0xf900, 0xfaff},
                                                     {0xfe30, 0xfe6f},
                                                     {0xff00, 0xff60},
                                                     {0xffe0, 0xffe6},
                                                     {0x20000, 0x3fffd}}};
constexpr int BetweenColumns = 2;

bool isWide(char32_t character) {
    return std::any_of(WideRanges.begin(), WideRanges.end(), [character](const CharacterRange& range) {
        return character >= range.first && character <= range.last;
    });
}

QString lineOf(const QStringList& cells, const std::vector<int>& widths,
               const std::vector<bool>& toTheRight) {
    QString line;
    for (qsizetype column = 0; column < cells.size(); ++column) {
        const auto place = static_cast<std::size_t>(column);
        const QString& cell = cells.at(column);
        const QString blanks(widths[place] - placesOf(cell), u' ');
        if (column > 0)
            line += QString(BetweenColumns, u' ');
        line += toTheRight[place] ? blanks + cell : cell + blanks;
    }
    while (line.endsWith(u' '))
        line.chop(1);
    return line;
}

} // namespace

DayTable readTable(const QAbstractItemModel& model) {
    DayTable table;
    for (int column = 0; column < model.columnCount(); ++column) {
        table.captions << model.headerData(column, Qt::Horizontal).toString();
        const int alignment = model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
        table.toTheRight.push_back((alignment & Qt::AlignRight) != 0);
    }
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data().toString();
        table.rows.push_back(cells);
    }
    return table;
}

int placesOf(const QString& text) {
    int places = 0;
    const auto characters = text.toUcs4();
    for (const char32_t character : characters) {
        if (!QChar::isMark(character))
            places += isWide(character) ? 2 : 1;
    }
    return places;
}

QStringList aligned(const DayTable& table) {
    std::vector<int> widths;
    for (qsizetype column = 0; column < table.captions.size(); ++column) {
        int width = placesOf(table.captions.at(column));
        for (const QStringList& row : table.rows)
            width = std::max(width, placesOf(row.at(column)));
        widths.push_back(width);
    }
    QStringList rules;
    for (const int width : widths)
        rules << QString(width, u'-');

    QStringList lines{lineOf(table.captions, widths, table.toTheRight),
                      lineOf(rules, widths, table.toTheRight)};
    for (const QStringList& row : table.rows)
        lines << lineOf(row, widths, table.toTheRight);
    return lines;
}

} // namespace pontrel::tour
