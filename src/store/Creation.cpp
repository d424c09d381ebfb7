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

QString tableDefinition(const Table& table) {
    QStringList parts;
    for (const Column& column : table.columns)
        parts += columnDefinition(column, table.key.contains(column.name));
    if (!table.key.isEmpty()) {
        QStringList key;
        for (const QString& column : table.key)
            key += quoted(column);
        parts += QStringLiteral("PRIMARY KEY (%1)").arg(key.join(QStringLiteral(", ")));
    }
    return QStringLiteral("CREATE TABLE %1 (%2) STRICT")
        .arg(quoted(table.name), parts.join(QStringLiteral(", ")));
}

/// What the statements of the daily work look for, beyond the keys.
QStringList indexes() {
    return {QStringLiteral("CREATE INDEX Atte01Day ON Atte01 (UseDate)"),
            QStringLiteral("CREATE INDEX AtteTempDay ON AtteTemp (UseDate, EmpNo, UseTime, class)"),
            QStringLiteral("CREATE INDEX AtteTemp1Day ON AtteTemp1 (UseDate, EmpNo)"),
            QStringLiteral("CREATE INDEX Atte02Day ON Atte02 (UseDate)"),
            QStringLiteral("CREATE INDEX Atte03Day ON Atte03 (UseDate, TimeNo)"),
            QStringLiteral("CREATE INDEX View02Day ON View02 (UseDate)"),
            QStringLiteral("CREATE INDEX Rule03Day ON Rule03 (YMD, TimeNo, EmpNo)"),
            QStringLiteral("CREATE INDEX Holi04Employee ON Holi04 (EmpNo, HoliDate)"),
            QStringLiteral("CREATE INDEX Holi04Day ON Holi04 (HoliDate, EmpNo)"),
            QStringLiteral("CREATE INDEX Canc02Day ON Canc02 (CnlDate, EmpNo)"),
            QStringLiteral("CREATE INDEX Holi04Note ON Holi04 (BusNo)"),
            QStringLiteral("CREATE INDEX Holi03Employee ON Holi03 (EmpNo)"),
            QStringLiteral("CREATE INDEX Over01Employee ON Over01 (EmpNo, OverDate)"),
            QStringLiteral("CREATE INDEX Over01Day ON Over01 (OverDate)")};
}

/// The marks that let a staged copy pass over rows known to be in its target: all staged rows up to UpTo are
/// there. The triggers keep that true whatever statement, of whatever program, changes the tables.
QStringList copyMarks() {
    QStringList statements{
        QStringLiteral(
            "CREATE TABLE CopyMark (Target TEXT PRIMARY KEY NOT NULL, UpTo INTEGER NOT NULL) STRICT"),
        QStringLiteral("INSERT INTO CopyMark VALUES ('Atte01', 0), ('Atte02', 0)"),
        // A result taken away counts from its own staged row on, so that a recalculated day costs no full
        // copy.
        QStringLiteral(
            "CREATE TRIGGER Atte02Deleted AFTER DELETE ON Atte02 BEGIN UPDATE CopyMark SET UpTo = coalesce("
            "(SELECT min(rowid) - 1 FROM AtteTemp1 WHERE UseDate = old.UseDate AND EmpNo = old.EmpNo AND "
            "rowid <= UpTo), UpTo) WHERE Target = 'Atte02'; END"),
        QStringLiteral("CREATE TRIGGER Atte02Moved AFTER UPDATE OF EmpNo, UseDate, TimeNo ON Atte02 BEGIN "
                       "UPDATE CopyMark SET UpTo = 0 WHERE Target = 'Atte02'; END"),
        QStringLiteral("CREATE TRIGGER Atte01Deleted AFTER DELETE ON Atte01 WHEN "
                       "(SELECT UpTo FROM CopyMark WHERE Target = 'Atte01') > 0 BEGIN "
                       "UPDATE CopyMark SET UpTo = 0 WHERE Target = 'Atte01'; END"),
        QStringLiteral("CREATE TRIGGER Atte01Changed AFTER UPDATE ON Atte01 BEGIN "
                       "UPDATE CopyMark SET UpTo = 0 WHERE Target = 'Atte01'; END")};
    const QStringList pairs[] = {{QStringLiteral("AtteTemp"), QStringLiteral("Atte01"), QString()},
                                 {QStringLiteral("AtteTemp1"), QStringLiteral("Atte02"),
                                  QStringLiteral(" OF EmpNo, UseDate, TimeNo")}};
    for (const QStringList& pair : pairs) {
        const QString lower =
            QStringLiteral("BEGIN UPDATE CopyMark SET UpTo = old.rowid - 1 WHERE Target = '%1'; END");
        statements += QStringLiteral("CREATE TRIGGER %1Deleted AFTER DELETE ON %1 WHEN old.rowid <= "
                                     "(SELECT UpTo FROM CopyMark WHERE Target = '%2') ")
                          .arg(pair[0], pair[1]) +
                      lower.arg(pair[1]);
        statements += QStringLiteral("CREATE TRIGGER %1Changed AFTER UPDATE%3 ON %1 WHEN old.rowid <= "
                                     "(SELECT UpTo FROM CopyMark WHERE Target = '%2') ")
                          .arg(pair[0], pair[1], pair[2]) +
                      lower.arg(pair[1]);
    }
    return statements;
}

} // namespace

QStringList creationStatements() {
    QStringList statements;
    for (const Table& table : tables())
        statements += tableDefinition(table);
    statements += indexes();
    statements += copyMarks();
    statements += QStringLiteral("CREATE TRIGGER Base06Kept BEFORE DELETE ON Base06 WHEN EXISTS (SELECT 1 "
                                 "FROM Over01 WHERE EmpNo = old.EmpNo) "
                                 "OR EXISTS (SELECT 1 FROM Holi03 WHERE EmpNo = old.EmpNo) BEGIN SELECT "
                                 "RAISE(ABORT, 'employee in use'); END");
    return statements;
}

} // namespace pontrel
