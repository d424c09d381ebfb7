#include "support/FirstVersion.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace pontrel::test {

namespace {

void replaceOnce(std::string& text, const std::string& old, const std::string& fresh) {
    const std::size_t place = text.find(old);
    if (place == std::string::npos)
        throw std::runtime_error("no " + old + " in " + text);
    text.replace(place, old.size(), fresh);
}

/// Lays a table out anew with another key, which is all that has changed in it.
void giveKey(SQLite::Database& engine, const std::string& table, const std::string& present,
             const std::string& first) {
    SQLite::Statement definition(engine, "SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ?");
    definition.bind(1, table);
    if (!definition.executeStep())
        throw std::runtime_error("no table " + table);
    std::string sql = definition.getColumn(0).getString();
    definition.reset();
    replaceOnce(sql, '"' + table + '"', "fresh");
    replaceOnce(sql, present, first);
    engine.exec(sql);
    engine.exec("INSERT INTO fresh SELECT * FROM " + table + " ORDER BY rowid");
    engine.exec("DROP TABLE " + table);
    engine.exec("ALTER TABLE fresh RENAME TO \"" + table + '"');
}

void addTriggers(SQLite::Database& engine) {
    engine.exec("CREATE TABLE CopyMark (Target TEXT PRIMARY KEY NOT NULL, UpTo INTEGER NOT NULL) STRICT");
    engine.exec("INSERT INTO CopyMark VALUES ('Atte01', 0), ('Atte02', 0)");
    for (const auto& [target, staging] :
         {std::pair<std::string, std::string>{"Atte01", "AtteTemp"}, {"Atte02", "AtteTemp1"}}) {
        const std::string back = " BEGIN UPDATE CopyMark SET UpTo = 0 WHERE Target = '" + target + "'; END";
        engine.exec("CREATE TRIGGER " + target + "Deleted AFTER DELETE ON " + target + back);
        engine.exec("CREATE TRIGGER " + target + (target == "Atte01" ? "Changed" : "Moved") +
                    " AFTER UPDATE ON " + target + back);
        const std::string lower =
            " BEGIN UPDATE CopyMark SET UpTo = old.rowid - 1 WHERE Target = '" + target + "'; END";
        for (const char* event : {"Deleted AFTER DELETE", "Changed AFTER UPDATE"})
            engine.exec("CREATE TRIGGER " + staging + event + " ON " + staging +
                        " WHEN old.rowid <= (SELECT UpTo FROM CopyMark WHERE Target = '" + target + "')" +
                        lower);
    }
}

} // namespace

void layOutAsFirstVersion(const QString& store) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(engine);
    giveKey(engine, "Rule03", "\"YMD\", \"EmpNo\"", "\"EmpNo\", \"YMD\"");
    giveKey(engine, "Atte01", "(\"UseDate\", \"EmpNo\"", "(\"EmpNo\", \"UseDate\"");
    giveKey(engine, "Atte02", "(\"UseDate\", \"EmpNo\"", "(\"EmpNo\", \"UseDate\"");
    giveKey(engine, "Atte03", "(\"UseDate\", \"EmpNo\"", "(\"EmpNo\", \"UseDate\"");
    giveKey(engine, "View02", "(\"UseDate\", \"EmpNo\"", "(\"EmpNo\", \"UseDate\"");
    for (const char* index : {"Atte01Day ON Atte01 (UseDate)", "Atte02Day ON Atte02 (UseDate)",
                              "Atte03Day ON Atte03 (UseDate, TimeNo)", "View02Day ON View02 (UseDate)",
                              "Rule03Day ON Rule03 (YMD, TimeNo, EmpNo)"})
        engine.exec(std::string("CREATE INDEX ") + index);
    engine.exec("DROP INDEX View01Reason");
    engine.exec("DROP TABLE CopyMark");
    engine.exec("DROP TABLE sqlite_stat1");
    addTriggers(engine);
    engine.exec("PRAGMA user_version = 1");
    transaction.commit();
}

} // namespace pontrel::test
