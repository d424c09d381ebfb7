// pontrel-admin: looks after the store of a program folder and its safety copies.

#include "CommandLine.h"
#include "MasterCheck.h"
#include "Restore.h"
#include "store/Clock.h"
#include "store/SafetyCopy.h"
#include "store/Schema.h"
#include "store/StoreCheck.h"
#include "store/StorePath.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <chrono>
#include <cstdio>
#include <limits>
#include <optional>
#include <thread>
#include <unistd.h>

namespace {

using namespace pontrel;
using namespace Qt::StringLiterals;
using tools::print;
using tools::Refusal;
using tools::refuse;

const QString Description =
    u"Looks after the store DIR/DB/Pontrel.mdb of a program folder and its safety copies in "
    u"DIR/DB/backup.\n\n"
    "list            Tells the safety copies, the newest first, and why the last one failed if it did.\n"
    "copy            Makes one now, also while the program runs.\n"
    "check           Looks through the store for damage, and through its master data and roster for what\n"
    "                makes an action end without a word or run for ever. Changes nothing.\n"
    "check COPY      Looks through a copy for damage.\n"
    "restore COPY    Puts a copy in the store's place, while the program is closed. The store that stood\n"
    "                there is kept beside it.\n"
    "size            Tells the store's size and the rows of its tables.\n\n"
    "COPY is a name from the list, or the path of a file."_s;

const auto ToTheEnd = [] { return true; };

QString pathOfCopy(const QString& store, const QString& copy) {
    return copy.contains(u'/') ? QDir::current().absoluteFilePath(copy) : copyFolderOf(store) + u'/' + copy;
}

/// What is written must belong to the user whose program is to read it.
void requireOwner(const QString& store) {
    const QFileInfo folder(QFileInfo(store).path());
    if (folder.ownerId() != ::geteuid())
        throw Refusal{
            u"%1 belongs to %2: this has to be done as that user."_s.arg(folder.filePath(), folder.owner())};
}

QString reasonOf(CopyReason reason) {
    switch (reason) {
    case CopyReason::Day:
        return u"first start of the day"_s;
    case CopyReason::Purge:
        return u"before a purge"_s;
    case CopyReason::Replace:
        return u"before a replaced day"_s;
    case CopyReason::Hand:
        break;
    }
    return u"made by hand"_s;
}

int list(const QString& store) {
    if (!QFileInfo(QFileInfo(store).path()).isDir())
        throw Refusal{u"There is no folder %1."_s.arg(QFileInfo(store).path())};
    const QList<SafetyCopy> copies = safetyCopiesOf(store);
    if (copies.isEmpty())
        print(stdout, u"There are no safety copies in %1."_s.arg(copyFolderOf(store)));
    for (const SafetyCopy& copy : copies)
        print(stdout, u"%1  %2  %3  %4"_s.arg(copy.name(), -36)
                          .arg(copy.day.toString(Qt::ISODate) + u' ' + copy.time.toString(u"HH:mm:ss"_s))
                          .arg(QFileInfo(copyFolderOf(store) + u'/' + copy.name()).size(), 12)
                          .arg(reasonOf(copy.reason)));
    for (const SafetyCopy& copy : uncheckedCopiesOf(store))
        print(stdout, u"%1  still to be looked through: the next start of the program does it"_s.arg(
                          copy.name(), -36));
    const QString note = failedCopyNote(store);
    if (note.isEmpty())
        return 0;
    print(stdout, u"The program's last copy failed: "_s + note);
    return 1;
}

int makeCopy(const QString& store) {
    requireOwner(store);
    const CopyOutcome outcome = copyBytes(store, CopyReason::Hand, CopyPace::InPieces, ToTheEnd);
    if (!outcome.copy)
        throw Refusal{u"The copy could not be made: "_s + outcome.finding.technical};
    const QString path = copyFolderOf(store) + u'/' + outcome.copy->name();
    StoreFinding finding = finishCopy(store, *outcome.copy, ToTheEnd);
    // The running program may have begun to look through it.
    for (; finding.kind == StoreFinding::Kind::AtWork; finding = finishCopy(store, *outcome.copy, ToTheEnd))
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    if (finding.kind != StoreFinding::Kind::Sound && !QFileInfo::exists(path))
        throw Refusal{u"The copy was not kept: "_s + finding.technical};
    print(stdout, u"Made "_s + path);
    return 0;
}

int tell(const QString& what, const StoreFinding& finding) {
    switch (finding.kind) {
    case StoreFinding::Kind::Sound:
        print(stdout, what + u" is sound."_s);
        return 0;
    case StoreFinding::Kind::Damaged:
        print(stdout, u"%1 is damaged: %2"_s.arg(what, finding.technical));
        return 1;
    case StoreFinding::Kind::NotLookedAt:
    case StoreFinding::Kind::AtWork:
        break;
    }
    throw Refusal{u"%1 could not be looked through: %2"_s.arg(what, finding.technical)};
}

int checkCopy(const QString& path) {
    if (!QFileInfo(path).isFile())
        throw Refusal{u"There is no copy %1."_s.arg(path)};
    return tell(path, lookThrough(path, ToTheEnd));
}

int checkStore(const QString& store) {
    requireOwner(store);
    QList<tools::MasterFinding> findings;
    const StoreFinding finding = checkCopyOf(store, ToTheEnd, [&findings](const QString& copy) {
        findings = tools::checkMasterData(copy, clock::today());
    });
    if (const int status = tell(store, finding); status != 0)
        return status;
    for (const tools::MasterFinding& each : findings)
        print(stdout, (each.code.isEmpty() ? each.table : each.table + u' ' + each.code) + u": "_s +
                          each.what + u". "_s + each.remedy);
    if (findings.isEmpty())
        print(stdout, u"Its data have nothing by which an action would end without a word."_s);
    return findings.isEmpty() ? 0 : 1;
}

int restore(const QString& folder, const QString& store, const QString& copy) {
    requireOwner(store);
    const tools::Restored restored = tools::restoreStore(folder, copy);
    print(stdout, u"Restored "_s + copy);
    if (!restored.kept.isEmpty())
        print(stdout, u"The store that stood there is kept as "_s + restored.kept);
    if (restored.sentinelRemoved)
        print(stdout,
              u"The leaving date 2038-01-01, which an import sets for its time, has been taken away."_s);
    print(stdout, u"Read the punch files of the days since then again."_s);
    return 0;
}

/// The rows of a table, counted in pieces: nobody is held up, however many there are.
qint64 rowsOf(SQLite::Database& engine, const QString& table) {
    constexpr int Piece = 50'000;
    SQLite::Statement statement(engine,
                                u"SELECT count(*), max(number) FROM (SELECT rowid AS number FROM \"%1\" "
                                "WHERE rowid > ? ORDER BY rowid LIMIT %2)"_s.arg(table)
                                    .arg(Piece)
                                    .toStdString());
    qint64 rows = 0;
    qint64 behind = std::numeric_limits<qint64>::min();
    for (qint64 counted = Piece; counted == Piece;) {
        statement.reset();
        statement.bind(1, static_cast<int64_t>(behind));
        (void)statement.executeStep();
        counted = statement.getColumn(0).getInt64();
        behind = statement.getColumn(1).getInt64();
        rows += counted;
        statement.reset();
    }
    return rows;
}

int size(const QString& store) {
    constexpr int BusyMilliseconds = 5000;
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY, BusyMilliseconds);
    const auto number = [&engine](const char* pragma) {
        return engine.execAndGet(std::string("PRAGMA ") + pragma).getInt64();
    };
    print(stdout, u"%1: %2 bytes, %3 of them free for new rows"_s.arg(store)
                      .arg(QFileInfo(store).size())
                      .arg(number("freelist_count") * number("page_size")));
    for (const Table& table : tables())
        print(stdout, u"%1  %2 rows"_s.arg(table.name, -10).arg(rowsOf(engine, table.name), 10));
    return 0;
}

std::optional<int> run(const QString& folder, const QString& command, const QStringList& words) {
    const QString store = storePathIn(folder);
    const bool namesCopy = words.size() == 1 && !words.first().isEmpty();
    const QString copy = namesCopy ? pathOfCopy(store, words.first()) : QString();
    if (command == u"restore" && namesCopy)
        return restore(folder, store, copy);
    if (command == u"list" && words.isEmpty())
        return list(store);
    if (command == u"check" && namesCopy)
        return checkCopy(copy);
    if (!words.isEmpty() || (command != u"copy" && command != u"check" && command != u"size"))
        return std::nullopt;
    if (!QFileInfo(store).isFile())
        throw Refusal{u"There is no store %1."_s.arg(store)};
    return command == u"copy" ? makeCopy(store) : command == u"check" ? checkStore(store) : size(store);
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(Description);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Shows this text."_s);
    parser.addOption(help);
    parser.addPositionalArgument(u"DIR"_s, u"The program folder."_s);
    parser.addPositionalArgument(u"COMMAND"_s, u"list, copy, check, restore or size."_s);
    parser.addPositionalArgument(u"COPY"_s, u"The copy that is meant."_s, u"[COPY]"_s);
    if (!parser.parse(application.arguments()))
        return refuse(parser.errorText(), parser);
    if (parser.isSet(help)) {
        print(stdout, parser.helpText());
        return 0;
    }
    const QStringList words = parser.positionalArguments();
    if (words.size() < 2 || words.first().isEmpty())
        return refuse(u"Name the program folder, and say what to do."_s, parser);
    try {
        const auto status = run(QDir(words.at(0)).absolutePath(), words.at(1), words.mid(2));
        return status ? *status : refuse(u"Say what to do: list, copy, check, restore or size."_s, parser);
    } catch (const Refusal& refusal) {
        print(stderr, refusal.text);
    } catch (const std::exception& failure) {
        print(stderr, u"The store could not be read: "_s + QString::fromUtf8(failure.what()));
    }
    return 1;
}
