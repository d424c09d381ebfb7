#pragma once

#include "app/CodeCombo.h"
#include "app/DatePair.h"

class QGridLayout;
class QLabel;

namespace pontrel {

// Rows of a grid that ask from what to what: a caption, two boxes or date pairs, "～" between them. They
// stand in columns 0 to 3 and belong to the grid's widget.

/// The two boxes of a range of codes.
struct CodeRange {
    CodeCombo* first;
    CodeCombo* last;
    QLabel* caption;
};

/// What a range of codes is made with.
struct CodeRangeTexts {
    QString caption;   ///< As it stands before the boxes.
    QString labelName; ///< Object name of the caption; may be empty.
    QString low;       ///< What the boxes show at first.
    QString high;
};

/// Places the boxes of that index and the next, such as "Combo2(4)" and "Combo2(5)".
[[nodiscard]] CodeRange addCodeRange(QGridLayout& grid, int row, const QString& array, int index,
                                     const CodeRangeTexts& texts);

/// The two pairs of a range of dates.
struct DateRange {
    DateFields first;
    DateFields last;
    QLabel* caption;
};

/// What a range of dates is made with.
struct DateRangeTexts {
    QString caption;   ///< As it stands before the pairs.
    QString labelName; ///< Object name of the caption; may be empty.
    QString masks;     ///< The arrays of the masks and of the date controls, such as "Mk2" and "TDBD2".
    QString dates;
};

/// Places the fields of two date pairs of that index and the next. The pairs themselves are the caller's.
[[nodiscard]] DateRange addDateRange(QGridLayout& grid, int row, int index, const DateRangeTexts& texts);

/// Places a caption in column 0 of the row, before its first box.
QLabel* addRangeCaption(QGridLayout& grid, int row, const QString& caption, const QString& labelName,
                        QWidget* firstBox);

} // namespace pontrel
