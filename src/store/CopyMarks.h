#pragma once

#include "store/Schema.h"
#include "store/StagedCopy.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>

namespace pontrel {

/// How far the staged rows have reached their targets, as the store's table CopyMark keeps it: all staged
/// rows with a rowid up to the mark have met their target's key. A mark holds only as long as nobody but the
/// program has written into the file and the rows have kept their rowids. For the one it carries the file's
/// change counter, which the engine raises with every transaction of whatever program, as the program's own
/// last transaction left it: each of these begins by reading the marks and ends by handing them on. For the
/// other it stands at a rowid drawn at random and names it, so that what gives rows new rowids, as writing
/// the store down and reading it back in does, parts the two.
class CopyMarks {
  public:
    /// The marks as a connection of the program reads and writes them.
    explicit CopyMarks(SQLite::Database& engine);

    /// The tables whose rows the marks of a target depend on, and whether a change of these columns of one,
    /// or the deletion of its rows where there are none, takes the target's mark back.
    [[nodiscard]] static bool disturbs(const Table& table, const QStringList& columns, CopyTarget target);

    /// Reads the marks. Right after the begin of each transaction that is to write.
    void begin();
    /// Hands the marks on where the transaction has changed anything. Right before its commit. Throws what
    /// the engine throws.
    void end();

    /// The highest rowid of the staged rows that are known to be in the target; nothing where none is known.
    [[nodiscard]] std::optional<std::int64_t> upTo(CopyTarget target) const;
    void setUpTo(CopyTarget target, std::optional<std::int64_t> upTo);

  private:
    void read();

    SQLite::Database& engine_;
    std::int64_t rowid_; ///< Of the first mark that this connection writes; the second follows it.
    std::array<std::optional<std::int64_t>, 2> upTo_;
    std::optional<std::int64_t>
        counter_; ///< The file's as the transaction began; nothing where it cannot be read.
    std::int64_t changesBefore_ = 0;
    std::optional<SQLite::Statement> read_;
    std::optional<SQLite::Statement> write_;
};

} // namespace pontrel
