#pragma once

#include "app/controls/DropList.h"

class QGridLayout;

namespace pontrel {

class Database;

/// A box for a code that lists codes with their names, "<code>-<name>", and may be typed into freely: what is
/// typed stays as it is, and out of the list.
class CodeCombo : public DropList {
    Q_OBJECT
  public:
    /// The text is what it shows at first.
    CodeCombo(QWidget* parent, const QString& name, const QString& spokenName, const QString& text);

    /// Adds entries behind those that are there. The text and the entry on which the box stands stay.
    void addEntries(const QStringList& entries);

    /// Leaves of a text with a hyphen what stands before the first one: the code of an entry.
    void cutToCode();
};

/// The two boxes of a range of codes.
struct CodeRange {
    CodeCombo* first;
    CodeCombo* last;
};

/// What a range of codes is made with.
struct CodeRangeTexts {
    QString caption;   ///< As it stands before the boxes.
    QString labelName; ///< Object name of the caption; may be empty.
    QString low;       ///< What the boxes show at first.
    QString high;
};

/// Places a caption and the two boxes of a range, such as "Combo2(4)" and "Combo2(5)", in columns 0 to 3 of
/// the grid's row, "～" between them. The boxes belong to the grid's widget.
[[nodiscard]] CodeRange addCodeRange(QGridLayout& grid, int row, const QString& array, int index,
                                     const CodeRangeTexts& texts);

/// The width of a box of codes, in pixels.
inline constexpr int CodeComboWidth = 172;

/// The entries that a selection of code and name gives. Throws RunTimeError.
[[nodiscard]] QStringList codeEntries(Database& database, const QString& selection);

} // namespace pontrel
