#include "store/CopyMarks.h"

#include "store/Connection.h"

#include <sqlite3.h>

#include <QRandomGenerator>

#include <algorithm>
#include <limits>

namespace pontrel {

namespace {

constexpr std::array Targets{CopyTarget::Atte01, CopyTarget::Atte02};

std::size_t placeOf(CopyTarget target) {
    return target == CopyTarget::Atte01 ? 0 : 1;
}

const char* nameOf(CopyTarget target) {
    return target == CopyTarget::Atte01 ? "Atte01" : "Atte02";
}

/// The change counter in the file's header, as the last transaction left it. Nothing where the header cannot
/// be read, or where another program has brought the file into another journal mode, in which the counter
/// does not rise with each transaction.
std::optional<std::int64_t> changeCounter(sqlite3* handle) {
    constexpr int Formats = 18; // of writing and of reading, one byte each: 1 with a rollback journal
    constexpr std::size_t Counter = 24 - Formats;
    sqlite3_file* file = nullptr;
    std::array<unsigned char, Counter + 4> bytes{};
    if (sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file == nullptr || file->pMethods == nullptr ||
        file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), Formats) != SQLITE_OK ||
        bytes[0] != 1 || bytes[1] != 1)
        return std::nullopt;
    std::int64_t counter = 0;
    for (std::size_t place = Counter; place < bytes.size(); ++place)
        counter = counter * 256 + bytes[place];
    return counter;
}

} // namespace

CopyMarks::CopyMarks(SQLite::Database& engine)
    : engine_(engine), rowid_(static_cast<std::int64_t>(QRandomGenerator::global()->generate64() >> 2)) {}

bool CopyMarks::disturbs(const Table& table, const QStringList& columns, CopyTarget target) {
    const bool punches = target == CopyTarget::Atte01;
    if (table.name != (punches ? QLatin1String("Atte01") : QLatin1String("Atte02")) &&
        table.name != (punches ? QLatin1String("AtteTemp") : QLatin1String("AtteTemp1")))
        return false;
    const QStringList& key = findTable(punches ? u"Atte01" : u"Atte02")->key;
    return columns.isEmpty() || std::any_of(columns.begin(), columns.end(), [&key](const QString& column) {
               return key.contains(column, Qt::CaseInsensitive);
           });
}

void CopyMarks::begin() {
    upTo_.fill(std::nullopt);
    changesBefore_ = sqlite3_total_changes(engine_.getHandle());
    counter_ = changeCounter(engine_.getHandle());
    if (!counter_)
        return;
    try {
        read();
    } catch (const SQLite::Exception&) {
        counter_.reset(); // a store without its marks works all the same
    }
}

void CopyMarks::read() {
    // A trigger of somebody else's may change the tables within a transaction of the program.
    if (!read_)
        read_.emplace(engine_,
                      "SELECT UpTo FROM CopyMark WHERE Target = ? AND Counter = ? AND Place = rowid AND NOT "
                      "EXISTS (SELECT 1 FROM sqlite_schema WHERE type = 'trigger' AND name <> 'Base06Kept')");
    for (const CopyTarget target : Targets) {
        Run run(*read_);
        read_->bind(1, nameOf(target));
        read_->bind(2, *counter_);
        if (run.step() && !read_->getColumn(0).isNull())
            upTo_[placeOf(target)] = run.identity();
    }
}

void CopyMarks::end() {
    // A transaction that changes nothing leaves the counter as it is, and the marks with it.
    if (sqlite3_total_changes(engine_.getHandle()) == changesBefore_ || !counter_)
        return;
    if (!write_)
        write_.emplace(engine_, "INSERT OR REPLACE INTO CopyMark (rowid, Target, UpTo, Counter, Place) "
                                "VALUES (?4, ?3, ?1, ?2, ?4)");
    constexpr std::int64_t Wrap = 1LL << 32;
    for (const CopyTarget target : Targets) {
        Run run(*write_); // also where it fails, as on a full disk, it must be ready for the next transaction
        if (const auto upTo = upTo_[placeOf(target)])
            write_->bind(1, *upTo);
        else
            write_->bind(1);
        write_->bind(2, (*counter_ + 1) % Wrap);
        write_->bind(3, nameOf(target));
        write_->bind(4, rowid_ + static_cast<std::int64_t>(placeOf(target)));
        while (run.step()) {
        }
    }
}

std::optional<std::int64_t> CopyMarks::upTo(CopyTarget target) const {
    return upTo_[placeOf(target)];
}

void CopyMarks::setUpTo(CopyTarget target, std::optional<std::int64_t> upTo) {
    // Behind the highest rowid that there can be the engine gives new rows any that is free.
    if (upTo && *upTo > std::numeric_limits<std::int64_t>::max() / 2)
        upTo.reset();
    upTo_[placeOf(target)] = upTo;
}

} // namespace pontrel
