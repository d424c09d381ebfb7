#pragma once

#include "app/controls/DropList.h"

class QAbstractItemModel;

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
    /// Lists these entries, which other boxes may list too, in place of those that are there. The text stays.
    /// The model belongs to somebody else.
    void shareEntries(QAbstractItemModel* entries);

    /// Leaves of a text with a hyphen what stands before the first one: the code of an entry.
    void cutToCode();
};

/// The least width of a box of codes, in pixels. It fills the column of a grid, as a date pair does.
inline constexpr int CodeComboWidth = 172;

/// The entries that a selection of code and name gives. Throws RunTimeError.
[[nodiscard]] QStringList codeEntries(Database& database, const QString& selection);

} // namespace pontrel
