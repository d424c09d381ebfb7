#include "store/Creation.h"

#include "store/Schema.h"

namespace pontrel {

namespace {

QString quoted(const QString& name) {
    return u'"' + name + u'"';
}

QString columnDefinition(const Column& column, bool isKey) {
    QString definition = quoted(column.name);
    switch (column.type) {
    case ColumnType::Integer:
        definition += QStringLiteral(" INTEGER");
        break;
    case ColumnType::Real:
        definition += QStringLiteral(" REAL");
        break;
    case ColumnType::Boolean:
        return definition +
               QStringLiteral(" INTEGER NOT NULL DEFAULT 0 CHECK (%1 IN (0, 1))").arg(quoted(column.name));
    case ColumnType::Text:
        definition += column.caseCounts ? QStringLiteral(" TEXT") : QStringLiteral(" TEXT COLLATE NOCASE");
        break;
    default:
        definition += QStringLiteral(" TEXT");
        break;
    }
    if (isKey)
        definition += QStringLiteral(" NOT NULL");
    if (column.startsAsZero)
        definition += QStringLiteral(" DEFAULT 0");
    return definition;
}

/// What the statements of the daily work look for, beyond the keys.
QStringList indexes() {
    return {QStringLiteral("CREATE INDEX AtteTempDay ON AtteTemp (UseDate, EmpNo, UseTime, class)"),
            QStringLiteral("CREATE INDEX AtteTemp1Day ON AtteTemp1 (UseDate, EmpNo)"),
            QStringLiteral("CREATE INDEX Holi04Employee ON Holi04 (EmpNo, HoliDate)"),
            QStringLiteral("CREATE INDEX Holi04Day ON Holi04 (HoliDate, EmpNo)"),
            QStringLiteral("CREATE INDEX Canc02Day ON Canc02 (CnlDate, EmpNo)"),
            QStringLiteral("CREATE INDEX Holi04Note ON Holi04 (BusNo)"),
            QStringLiteral("CREATE INDEX Holi03Employee ON Holi03 (EmpNo)"),
            QStringLiteral("CREATE INDEX Over01Employee ON Over01 (EmpNo, OverDate)"),
            QStringLiteral("CREATE INDEX Over01Day ON Over01 (OverDate)"),
            viewReasonIndex()};
}

} // namespace

QString tableDefinition(const Table& table, const QString& name) {
    QStringList parts;
    for (const Column& column : table.columns)
        parts += columnDefinition(column, table.key.contains(column.name));
    if (!table.key.isEmpty()) {
        QStringList key;
        for (const QString& column : table.key)
            key += quoted(column);
        parts += QStringLiteral("PRIMARY KEY (%1)").arg(key.join(QStringLiteral(", ")));
    }
    return QStringLiteral("CREATE TABLE %1 (%2) STRICT").arg(quoted(name), parts.join(QStringLiteral(", ")));
}

QStringList dailyTables() {
    return {QStringLiteral("Rule03"), QStringLiteral("Atte01"), QStringLiteral("Atte02"),
            QStringLiteral("Atte03"), QStringLiteral("View02")};
}

QString viewReasonIndex() {
    return QStringLiteral("CREATE INDEX View01Reason ON View01 (EmpNo, CnlNo)");
}

QString copyMarkTable() {
    return QStringLiteral("CREATE TABLE CopyMark (Target TEXT PRIMARY KEY NOT NULL, UpTo INTEGER, "
                          "Counter INTEGER NOT NULL, Place INTEGER NOT NULL) STRICT");
}

QStringList keyStatistics() {
    // Rows; rows of a day; rows of a day and employee; and so on along the key, for an office of a thousand.
    // The engine asks only whether a day has many.
    return {QStringLiteral("ANALYZE sqlite_schema"), QStringLiteral("DELETE FROM sqlite_stat1"),
            QStringLiteral("INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES "
                           "('Rule03', 'sqlite_autoindex_Rule03_1', '1000000 1000 1'), "
                           "('Atte01', 'sqlite_autoindex_Atte01_1', '4000000 4000 4 1 1 1'), "
                           "('Atte02', 'sqlite_autoindex_Atte02_1', '1000000 1000 1 1'), "
                           "('Atte03', 'sqlite_autoindex_Atte03_1', '100000 100 1 1'), "
                           "('View02', 'sqlite_autoindex_View02_1', '1000000 1000 1')")};
}

QStringList creationStatements() {
    QStringList statements;
    for (const Table& table : tables())
        statements += tableDefinition(table, table.name);
    statements += indexes();
    statements += copyMarkTable();
    statements += QStringLiteral("CREATE TRIGGER Base06Kept BEFORE DELETE ON Base06 WHEN EXISTS (SELECT 1 "
                                 "FROM Over01 WHERE EmpNo = old.EmpNo) "
                                 "OR EXISTS (SELECT 1 FROM Holi03 WHERE EmpNo = old.EmpNo) BEGIN SELECT "
                                 "RAISE(ABORT, 'employee in use'); END");
    statements += keyStatistics();
    return statements;
}

} // namespace pontrel
