#include "support/Dump.h"

#include "store/RunTimeError.h"
#include "store/Schema.h"

#include <algorithm>

namespace pontrel::test {

namespace {

QString shown(const Value& value) {
    switch (value.type()) {
    case ColumnType::Unknown:
        return QStringLiteral("null");
    case ColumnType::Date:
        return value.toDate().toString(Qt::ISODate);
    case ColumnType::DateTime:
        return value.toDate().toString(Qt::ISODate) + u' ' + value.toTime().toString(Qt::ISODate);
    default:
        return value.joined();
    }
}

Value startOf(const Column& column) {
    if (column.type == ColumnType::Boolean)
        return false;
    return column.startsAsZero ? Value(0) : Value();
}

} // namespace

QStringList rowsOfSelection(Database& database, const QString& statement) {
    QStringList lines;
    const Rows rows = database.select(statement);
    for (const std::vector<Value>& row : rows) {
        QStringList values;
        std::transform(row.begin(), row.end(), std::back_inserter(values), shown);
        lines += values.join(u'|');
    }
    return lines;
}

QStringList rowsOf(Database& database, const QString& table) {
    return rowsOfSelection(database, QStringLiteral("Select * from ") + table);
}

QString expectedRow(const QString& table, const Fields& fields) {
    const Table* definition = findTable(table);
    if (definition == nullptr)
        throw runTimeError(error::UnknownTable, table);
    QStringList values;
    for (const Column& column : definition->columns) {
        const auto given = std::find_if(fields.rbegin(), fields.rend(), [&column](const Field& field) {
            return field.column.compare(column.name, Qt::CaseInsensitive) == 0;
        });
        values += shown(given == fields.rend() ? startOf(column) : given->value);
    }
    for (const Field& field : fields)
        if (definition->indexOf(field.column) < 0)
            throw runTimeError(error::UnknownName, field.column);
    return values.join(u'|');
}

QString dailyRow(const QString& EmpNo, QDate day, const QString& TimeNo, const Fields& more) {
    return expectedRow(QStringLiteral("Atte02"),
                       Fields{{u"EmpNo", EmpNo}, {u"UseDate", day}, {u"TimeNo", TimeNo}} + more);
}

QStringList dumpDailyTables(Database& database) {
    QStringList lines;
    for (const char16_t* name :
         {u"AtteTemp", u"Atte01", u"Over01", u"AtteTemp1", u"View02", u"Atte03", u"Atte02"}) {
        const QString table = QString::fromUtf16(name);
        for (const QString& row : rowsOf(database, table))
            lines += table + QStringLiteral(": ") + row;
    }
    for (const QString& row : rowsOfSelection(database, QStringLiteral("Select EmpNo,LeaveDate from Base06")))
        lines += QStringLiteral("Base06: ") + row;
    return lines;
}

} // namespace pontrel::test
