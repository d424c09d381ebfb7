#include "store/Upgrade.h"

#include "store/Creation.h"
#include "store/Schema.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QStringList>

#include <string>

namespace pontrel {

namespace {

/// Version 1 kept its copy marks by triggers, on the staging tables too.
QStringList dropFirstMarks() {
    QStringList statements;
    for (const char* trigger : {"Atte01Deleted", "Atte01Changed", "Atte02Deleted", "Atte02Moved",
                                "AtteTempDeleted", "AtteTempChanged", "AtteTemp1Deleted", "AtteTemp1Changed"})
        statements += QStringLiteral("DROP TRIGGER IF EXISTS %1").arg(QLatin1String(trigger));
    statements += QStringLiteral("DROP TABLE IF EXISTS CopyMark");
    return statements;
}

/// Lays a table out anew with its present key; its indexes by day go with the old one.
QStringList rebuild(const Table& table) {
    const QString fresh = table.name + QStringLiteral("_2");
    return {tableDefinition(table, fresh),
            QStringLiteral("INSERT INTO %1 SELECT * FROM %2 ORDER BY %3")
                .arg(fresh, table.name, table.key.join(QStringLiteral(", "))),
            QStringLiteral("DROP TABLE %1").arg(table.name),
            QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(fresh, table.name)};
}

QStringList fromFirstVersion() {
    QStringList statements = dropFirstMarks();
    for (const QString& name : dailyTables())
        statements += rebuild(*findTable(name));
    statements += viewReasonIndex();
    statements += copyMarkTable();
    statements += keyStatistics();
    // Version 1 could pass over staged rows that had not arrived.
    statements += QStringLiteral("INSERT OR IGNORE INTO Atte01 SELECT * FROM AtteTemp ORDER BY rowid");
    statements += QStringLiteral("INSERT OR IGNORE INTO Atte02 SELECT * FROM AtteTemp1 ORDER BY rowid");
    return statements;
}

} // namespace

void upgradeStore(SQLite::Database& engine) {
    SQLite::Transaction transaction(engine, SQLite::TransactionBehavior::IMMEDIATE);
    // Another connection may have done it meanwhile.
    if (engine.execAndGet("PRAGMA user_version").getInt() == 1) {
        for (const QString& statement : fromFirstVersion())
            engine.exec(statement.toStdString());
        engine.exec("PRAGMA user_version = " + std::to_string(StoreVersion));
        transaction.commit();
    }
    engine.exec("ANALYZE sqlite_schema"); // takes the statistics in
}

} // namespace pontrel
