#include "store/Upgrade.h"

#include "store/Creation.h"
#include "store/Schema.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QStringList>

#include <string>
#include <vector>

namespace pontrel {

namespace {

/// Version 1 kept its copy marks by triggers, on the staging tables too.
QStringList firstTriggers() {
    return {QStringLiteral("Atte01Deleted"),    QStringLiteral("Atte01Changed"),
            QStringLiteral("Atte02Deleted"),    QStringLiteral("Atte02Moved"),
            QStringLiteral("AtteTempDeleted"),  QStringLiteral("AtteTempChanged"),
            QStringLiteral("AtteTemp1Deleted"), QStringLiteral("AtteTemp1Changed")};
}

QStringList dropFirstMarks() {
    QStringList statements;
    for (const QString& trigger : firstTriggers())
        statements += QStringLiteral("DROP TRIGGER IF EXISTS ") + trigger;
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

/// What another program has added to the tables that are laid out anew: it would go with the old ones.
std::vector<std::string> foreignParts(SQLite::Database& engine) {
    static const QStringList own{QStringLiteral("Atte01Day"), QStringLiteral("Atte02Day"),
                                 QStringLiteral("Atte03Day"), QStringLiteral("View02Day"),
                                 QStringLiteral("Rule03Day")};
    std::vector<std::string> parts;
    SQLite::Statement all(engine,
                          "SELECT tbl_name, name, sql FROM sqlite_schema WHERE type IN ('index', 'trigger') "
                          "AND sql IS NOT NULL");
    while (all.executeStep()) {
        const QString name = QString::fromStdString(all.getColumn(1).getString());
        if (dailyTables().contains(QString::fromStdString(all.getColumn(0).getString()),
                                   Qt::CaseInsensitive) &&
            !own.contains(name) && !firstTriggers().contains(name))
            parts.push_back(all.getColumn(2).getString());
    }
    return parts;
}

} // namespace

void upgradeStore(SQLite::Database& engine) {
    SQLite::Transaction transaction(engine, SQLite::TransactionBehavior::IMMEDIATE);
    // Another connection may have done it meanwhile.
    if (engine.execAndGet("PRAGMA user_version").getInt() == 1) {
        // So that a view or trigger of another program's, which names one of the tables, does not keep it
        // from its name.
        engine.exec("PRAGMA legacy_alter_table = ON");
        const std::vector<std::string> foreign = foreignParts(engine);
        for (const QString& statement : fromFirstVersion())
            engine.exec(statement.toStdString());
        for (const std::string& statement : foreign)
            engine.exec(statement);
        engine.exec("PRAGMA legacy_alter_table = OFF");
        engine.exec("PRAGMA user_version = " + std::to_string(StoreVersion));
        transaction.commit();
    }
    engine.exec("ANALYZE sqlite_schema"); // takes the statistics in
}

} // namespace pontrel
