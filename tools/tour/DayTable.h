#pragma once

#include <QString>
#include <QStringList>

#include <vector>

class QAbstractItemModel;

namespace pontrel::tour {

/// The rows of a grid as texts, as they stand on the screen.
struct DayTable {
    QStringList captions;
    std::vector<bool> toTheRight; ///< Of each column: whether its texts stand at its right side.
    std::vector<QStringList> rows;

    friend bool operator==(const DayTable&, const DayTable&) = default;
};

/// Reads a grid's model, all of its rows.
[[nodiscard]] DayTable readTable(const QAbstractItemModel& model);

/// Places that a text takes on a terminal: two for a Han character and others of full width, none for a mark
/// upon another character, one for the rest.
[[nodiscard]] int placesOf(const QString& text);

/// The table in lines of equal columns: captions, a rule, one line a row.
[[nodiscard]] QStringList aligned(const DayTable& table);

} // namespace pontrel::tour
