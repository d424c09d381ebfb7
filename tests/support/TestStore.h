#pragma once

#include "store/Database.h"

#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace pontrel::test {

/// A new store in a temporary folder of its own, laid out as a program folder: DB/Pontrel.mdb and punch/. The
/// folder goes with the object.
class TestStore {
  public:
    TestStore();
    ~TestStore();
    TestStore(const TestStore&) = delete;
    TestStore& operator=(const TestStore&) = delete;

    [[nodiscard]] Database& database() { return *database_; }
    /// Another connection to the same file, to see what has been committed.
    [[nodiscard]] std::unique_ptr<Database> connect() const;

    [[nodiscard]] QString folder() const { return folder_.path(); }
    [[nodiscard]] QString path() const;        ///< Of the store's file.
    [[nodiscard]] QString punchFolder() const; ///< The folder that the settings row names.

    /// Writes a file of these bytes into the punch folder and returns its path.
    QString writePunchFile(const QString& name, const QByteArray& content) const;

    /// Deletes all rows of the tables that the daily work reads and writes, so that one store serves many
    /// cases.
    void clear();

    /// Puts all statements until the end of this object, or commit(), into one transaction: quick for cases
    /// that ask for nothing but results. Not for tests of what an error leaves committed.
    void holdOpen();
    void commit() { stage_.reset(); }

  private:
    QTemporaryDir folder_;
    std::unique_ptr<Database> database_;
    std::optional<Stage> stage_;
};

} // namespace pontrel::test
