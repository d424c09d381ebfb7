#include "rules/reports/SelectedRows.h"

#include "rules/reports/Selection.h"
#include "store/StoreText.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace pontrel::test {

namespace {

void bind(SQLite::Statement& statement, int parameter, const Value& value) {
    switch (value.type()) {
    case ColumnType::Unknown:
        statement.bind(parameter);
        break;
    case ColumnType::Integer:
        statement.bind(parameter, static_cast<int64_t>(value.toInteger()));
        break;
    case ColumnType::Real:
        statement.bind(parameter, value.toReal());
        break;
    case ColumnType::Date:
        statement.bind(parameter, storeText(value.toDate()));
        break;
    default:
        statement.bind(parameter, value.toText().toStdString());
        break;
    }
}

} // namespace

QStringList selectedRows(const QString& path, const QString& table, const QString& column,
                         const QString& formula) {
    const Selection selection = translateSelection(formula);
    const bool hasEmployee = table != QLatin1String("Base06") && findTable(table)->indexOf(u"EmpNo") >= 0;
    QByteArray sql =
        "SELECT \"" + table.toUtf8() + "\".\"" + column.toUtf8() + "\" FROM \"" + table.toUtf8() + '"';
    if (hasEmployee)
        sql += " LEFT JOIN Base06 ON Base06.EmpNo = \"" + table.toUtf8() + "\".EmpNo";
    if (!selection.condition.isEmpty())
        sql += " WHERE " + selection.condition;
    sql += " ORDER BY \"" + table.toUtf8() + "\".rowid";
    const SQLite::Database file(path.toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement statement(file, sql.toStdString());
    for (std::size_t index = 0; index < selection.values.size(); ++index)
        bind(statement, static_cast<int>(index) + 1, selection.values[index]);
    QStringList rows;
    while (statement.executeStep())
        rows += QString::fromStdString(statement.getColumn(0).getString());
    return rows;
}

} // namespace pontrel::test
