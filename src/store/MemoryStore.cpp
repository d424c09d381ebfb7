#include "store/MemoryStore.h"

#include "store/Connection.h"
#include "store/OpenStore.h"

namespace pontrel {

namespace {

/// Each day by itself: the keys of daily tables begin with it, and a range would read everybody's rows.
QString daysOf(const RowChoice& choice) {
    QStringList days;
    for (QDate day = choice.first; day <= choice.last; day = day.addDays(1))
        days += u'\'' + day.toString(Qt::ISODate) + u'\'';
    return days.join(u',');
}

QString selectionOf(const RowChoice& choice) {
    QStringList conditions;
    if (!choice.employeeColumn.isEmpty())
        conditions += QStringLiteral("\"%1\" = :employee").arg(choice.employeeColumn);
    if (!choice.dayColumn.isEmpty())
        conditions += QStringLiteral("\"%1\" IN (%2)").arg(choice.dayColumn, daysOf(choice));
    return QStringLiteral("SELECT * FROM \"%1\"%2 ORDER BY +rowid")
        .arg(choice.table, conditions.isEmpty()
                               ? QString()
                               : QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" AND ")));
}

void copyValue(const SQLite::Column& value, SQLite::Statement& into, int parameter) {
    if (value.isNull())
        into.bind(parameter);
    else if (value.isInteger())
        into.bind(parameter, value.getInt64());
    else if (value.isFloat())
        into.bind(parameter, value.getDouble());
    else
        into.bind(parameter, value.getString());
}

void copyRows(SQLite::Statement& rows, SQLite::Database& target, const QString& table) {
    std::string places = "?";
    for (int column = 1; column < rows.getColumnCount(); ++column)
        places += ",?";
    SQLite::Statement insert(target, "INSERT INTO \"" + table.toStdString() + "\" VALUES (" + places + ')');
    while (rows.executeStep()) {
        for (int column = 0; column < rows.getColumnCount(); ++column)
            copyValue(rows.getColumn(column), insert, column + 1);
        insert.exec();
        insert.reset();
    }
}

} // namespace

std::unique_ptr<Database> copyIntoMemory(const QString& path, const std::vector<RowChoice>& choices,
                                         const QString& EmpNo) {
    auto copy = std::make_unique<Database>(MemoryPath);
    copy->connection()->guarded({}, [&] {
        const std::unique_ptr<SQLite::Database> store = openStoreToRead(path);
        // One moment for all tables.
        SQLite::Transaction moment(*store);
        SQLite::Database& target = copy->connection()->engine();
        for (const RowChoice& choice : choices) {
            SQLite::Statement rows(*store, selectionOf(choice).toStdString());
            if (!choice.employeeColumn.isEmpty())
                rows.bind(":employee", EmpNo.toStdString());
            copyRows(rows, target, choice.table);
        }
    });
    return copy;
}

} // namespace pontrel
