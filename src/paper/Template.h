#pragma once

#include "store/Schema.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <vector>

namespace pontrel::paper {

// Lengths are in 1/100 mm throughout.

/// How a value is written. Automatic is settled by the reader after the type of the field.
enum class Format : std::uint8_t {
    Automatic,
    Text,
    Roc,        ///< 115/01/05
    Date,       ///< 2026/01/05
    MonthDay,   ///< 01/05
    Day,        ///< 5
    Weekday,    ///< 一
    HourMinute, ///< 08:00
    Stamp,      ///< 115/01/05 08:00
    Number,     ///< As many decimals as there are.
    Whole,
    OneDecimal,
    DayHour, ///< 2.4: hours as days of eight hours and the hours left.
    Months,  ///< 3年02月
    Words    ///< A word for each whole number from 0.
};

enum class Align : std::uint8_t { Left, Center, Right };
enum class Fit : std::uint8_t { Cut, Wrap, Shrink, ShrinkWrap };
/// Whether a text takes further lines where it is too long.
[[nodiscard]] inline bool wraps(Fit fit) {
    return fit == Fit::Wrap || fit == Fit::ShrinkWrap;
}
enum class Total : std::uint8_t { None, Sum, Count, Min, Max, Distinct };

/// A column of one of the tables that the template reads.
struct Field {
    const Table* table;
    int column;

    [[nodiscard]] const Column& stored() const { return table->columns[static_cast<std::size_t>(column)]; }
    [[nodiscard]] ColumnType type() const { return stored().type; }
    [[nodiscard]] QString name() const { return table->name + u'.' + stored().name; }
    friend bool operator==(const Field&, const Field&) = default;
};

/// What is reckoned for each group and for the whole report, over the rows for which the field when is true.
struct Aggregate {
    Total kind = Total::None;
    std::vector<int> fields; ///< Summed up where there are several.
    int when = -1;
    friend bool operator==(const Aggregate&, const Aggregate&) = default;
};

/// A part of a text.
struct Piece {
    enum class Kind : std::uint8_t {
        Literal,
        Field,
        Named, ///< A value that is given to the report, such as Title.
        Page,
        Pages,
        Continued, ///< Nothing but on a header that is repeated.
        Count,     ///< Rows of the group.
        Aggregate
    };
    Kind kind = Kind::Literal;
    QString text;  ///< Of a literal, or the name.
    int index = 0; ///< Of the field or aggregate.
    Format format = Format::Text;
    QStringList words;
};
using Pieces = std::vector<Piece>;

/// A value on a line: of a column, a card or a flow.
struct Cell {
    QString caption;
    QString savedAs; ///< Its caption in saved tables.
    int left = 0;
    int width = 0;
    Align align = Align::Left;
    Fit fit = Fit::Cut;
    Format format = Format::Text;
    QStringList words;
    bool zeroBlank = false;
    bool once = false; ///< Stands on the first row of its group or page alone.
    QString empty;     ///< Stands for no value.
    int when = -1;     ///< A field that must be true for the cell to show, or -1.
    int aggregate = -1;

    std::vector<int>
        fields; ///< One, or several that are added up; where there are none, the pieces are joined.
    Pieces pieces;
    Total total = Total::None;
    int line = 0; ///< Of a card or flow.
};

/// A line of the heading, or what stands in a corner of the foot.
struct TextLine {
    int font = 2;
    Align align = Align::Left;
    Pieces content; ///< Empty where left and right stand in its place.
    Pieces left, right;
};

struct LookUp {
    const Table* table;
    std::vector<int> on; ///< Fields, one for each column of the table's key.
};

/// A table that a left-over formula may name: rows are kept to which it has one that the formula selects.
struct Related {
    const Table* table;
    int column; ///< Of that table ...
    int field;  ///< ... that is equal to this one.
};

struct Group {
    int by = 0; ///< Field.
    QString caption;
    int name = -1; ///< The field that names its code in saved tables, or -1.
    QString nameCaption;
    bool newPage = false;
    bool repeat = false;
    bool hasHeader = false;
    bool hasFooter = false;
    Pieces header;
    Pieces footer;
    Pieces inTree; ///< Empty where the group is not in the tree.
};

enum class OrderPart : std::uint8_t { Whole, Month, Day };
struct OrderKey {
    int field;
    OrderPart part = OrderPart::Whole;
};

/// Lines at the end of a report, one for each value of a field, with the totals of its rows.
struct EndTotals {
    int by = 0;
    Pieces label;
};

enum class RowKind : std::uint8_t { Columns, Summary, Card, Flow };

struct FontChoice {
    double points = 9;
    bool bold = false;
};
/// Places in Template::fonts.
inline constexpr int TitleFont = 0;
inline constexpr int HeadFont = 1;
inline constexpr int BodyFont = 2;

/// A report's layout as read from its file.
struct Template {
    QString code;
    QString caption;
    int paperWidth = 0;
    int paperHeight = 0;
    int margin = 1000;
    QString family; ///< Empty for the program's own.
    std::array<FontChoice, 3> fonts{{{16, true}, {10, false}, {9, false}}};

    const Table* from = nullptr;
    std::vector<LookUp> lookUps;
    std::vector<Related> related;
    std::vector<Field> fields; ///< All that are read; other members hold places in it.
    std::vector<Group> groups; ///< The outermost first.
    std::vector<OrderKey> order;
    std::vector<Aggregate> aggregates;

    std::vector<TextLine> heading;
    RowKind rows = RowKind::Columns;
    std::vector<Cell> cells; ///< Columns, or what a card or flow shows.
    bool stripes = false;
    int across = 1;       ///< Fields side by side on a card, or cells of a flow.
    int captionWidth = 0; ///< Of a card.
    int lines = 1;        ///< Of a card or of a cell of a flow.

    bool hasEnd = false;
    Pieces end;
    std::vector<EndTotals> endTotals;
    bool hasFoot = false;
    TextLine foot;

    [[nodiscard]] int contentWidth() const { return paperWidth - 2 * margin; }
    [[nodiscard]] const Field& field(int index) const { return fields[static_cast<std::size_t>(index)]; }
};

} // namespace pontrel::paper
