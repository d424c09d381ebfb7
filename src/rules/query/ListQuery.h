#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace pontrel {

/// What a list of daily rows is narrowed by: the kind that the query dialog has set, 0 to 4, and the values
/// that its kinds use.
struct ListQuery {
    int kind = 0;
    QDate day;
    QString EmpNo;
    QString UnitNo;
};

/// Which lists know a query by day and unit.
enum class UnitQuery { None, ByDayAndUnit };

/// The selection that the query asks for, over a table whose days stand in that column; nothing where the
/// kind sets none, so that the list stays as it is. Throws error 3075 for a value that breaks its statement.
[[nodiscard]] std::optional<QString> listStatement(const ListQuery& query, const QString& table,
                                                   const QString& dateColumn, UnitQuery unitQuery);

} // namespace pontrel
