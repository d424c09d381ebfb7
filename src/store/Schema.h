#pragma once

#include "store/Value.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace pontrel {

/// A column of the store as the logic sees it.
struct Column {
    QString name;
    ColumnType type = ColumnType::Text;
    int length = 0;            ///< Longest entry of the screens in characters, 0 where they set no limit.
    bool startsAsZero = false; ///< An integer that is 0, not null, on a row inserted without it.
    bool caseCounts = false;   ///< A text compared with its case.
};

/// A table: its columns in their order, and its key, empty where the table has none.
struct Table {
    QString name;
    std::vector<Column> columns;
    QStringList key;

    /// Position of the column, in any case of letters; -1 if there is none.
    [[nodiscard]] int indexOf(QStringView column) const;
};

/// All tables of the store.
[[nodiscard]] const std::vector<Table>& tables();

/// The table of that name in any case of letters; null if there is none.
[[nodiscard]] const Table* findTable(QStringView name);

/// The statements in SQLite's own language that create tables, indexes and triggers in an empty file.
[[nodiscard]] QStringList creationStatements();

inline constexpr int ApplicationId = 0x506f6e74; ///< "Pont", the mark of a store file.
inline constexpr int StoreVersion = 2;

} // namespace pontrel
