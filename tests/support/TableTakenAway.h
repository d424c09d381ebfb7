#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <QString>

#include <string>

namespace pontrel::test {

/// Hides a table of a store from all who have the store open, until the end of this object: every statement
/// that names it fails meanwhile. No transaction may be open on the store at either time.
class TableTakenAway {
  public:
    TableTakenAway(const QString& store, std::string table)
        : engine_(store.toStdString(), SQLite::OPEN_READWRITE), table_(std::move(table)) {
        engine_.exec("ALTER TABLE " + table_ + " RENAME TO " + table_ + "_away");
    }
    ~TableTakenAway() { engine_.exec("ALTER TABLE " + table_ + "_away RENAME TO " + table_); }
    TableTakenAway(const TableTakenAway&) = delete;
    TableTakenAway& operator=(const TableTakenAway&) = delete;

  private:
    SQLite::Database engine_;
    std::string table_;
};

} // namespace pontrel::test
