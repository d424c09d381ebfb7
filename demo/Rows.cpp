#include "demo/Rows.h"

#include "store/Format.h"
#include "store/Recordset.h"
#include "store/RunTimeError.h"
#include "store/StatementText.h"

#include <QStringList>

namespace pontrel::demo {

namespace {

QString literal(const Value& value) {
    switch (value.type()) {
    case ColumnType::Boolean:
        return value.toBoolean() ? QStringLiteral("True") : QStringLiteral("False");
    case ColumnType::Integer:
        return QString::number(value.toInteger());
    case ColumnType::Real:
        return QString::number(value.toReal());
    case ColumnType::Date:
        return dateLiteral(value.toDate());
    case ColumnType::Time:
        return dateLiteral(formatTime(value.toTime(), QStringLiteral("hh:nn:ss")));
    case ColumnType::DateTime:
        return dateLiteral(formatDateTime(value.toDateTime(), QStringLiteral("yyyy-mmm-dd hh:nn:ss")));
    default:
        return textLiteral(value.toText());
    }
}

} // namespace

void insertRow(Database& database, const QString& table,
               std::initializer_list<std::pair<const char16_t*, Value>> columns) {
    QStringList names;
    QStringList values;
    for (const auto& [name, value] : columns) {
        if (value.isNull())
            continue;
        names += QString::fromUtf16(name);
        values += literal(value);
    }
    const QString statement =
        QStringLiteral("insert into %1(%2) values(%3)").arg(table, names.join(u','), values.join(u','));
    if (database.execute(statement) != 1)
        throw runTimeError(error::DuplicateKey, QStringLiteral("a row of the example was refused"),
                           statement);
}

void saveRow(Database& database, const QString& table,
             std::initializer_list<std::pair<const char16_t*, Value>> columns) {
    Recordset rows = database.openRecordset(table);
    rows.AddNew();
    for (const auto& [name, value] : columns)
        if (!value.isNull())
            rows.setField(QString::fromUtf16(name), value);
    rows.Update();
}

} // namespace pontrel::demo
