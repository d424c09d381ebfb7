#include "store/NewStore.h"

#include "store/RunTimeError.h"
#include "store/Schema.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace pontrel {

namespace {

/// Makes the file, so that no other program's file is ever taken for the new store, readable by its owner
/// alone.
void makeFile(const QString& path) {
    makeStoreFolder(QFileInfo(path).absolutePath());
    // What an interrupted program left of another store would be played into the new one.
    for (const QString& rest : {path + QStringLiteral("-journal"), path + QStringLiteral("-wal")})
        if (QFileInfo::exists(rest))
            throw runTimeError(error::FileAccess, rest);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                   QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        throw runTimeError(error::FileAccess, file.errorString() + QStringLiteral(": ") + path);
}

void fill(SQLite::Database& engine, const NewStore& start) {
    engine.exec("PRAGMA journal_mode = DELETE; PRAGMA synchronous = EXTRA");
    SQLite::Transaction transaction(engine);
    engine.exec("PRAGMA application_id = " + std::to_string(ApplicationId));
    engine.exec("PRAGMA user_version = " + std::to_string(StoreVersion));
    for (const QString& statement : creationStatements())
        engine.exec(statement.toStdString());
    SQLite::Statement settings(engine,
                               "INSERT INTO Syst01 VALUES (?, 5, 10, 60, 60, '01', '02', '03', '04', '')");
    settings.bind(1, start.handPath.toStdString());
    settings.exec();
    SQLite::Statement account(engine, "INSERT INTO syst02 VALUES (?, ?, 1, 1, 1, 1, 1, 1, 1, 1)");
    account.bind(1, start.account.toStdString());
    account.bind(2, start.password.toStdString());
    account.exec();
    engine.exec("INSERT INTO Syst03 VALUES ('1', '公務人員請假規則'), ('2', '勞工請假規則'), ('3', "
                "'約聘僱人員給假辦法')");
    transaction.commit();
}

} // namespace

void makeStoreFolder(const QString& path) {
    const QFileInfo folder(path);
    if (folder.isDir())
        return;
    const QFileDevice::Permissions owner =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    if (!QDir().mkpath(folder.absolutePath()) || !QDir().mkdir(path, owner))
        throw runTimeError(error::FileAccess, path);
}

void createStore(const QString& path, const NewStore& start) {
    makeFile(path);
    try {
        SQLite::Database engine(path.toStdString(), SQLite::OPEN_READWRITE);
        fill(engine, start);
    } catch (const SQLite::Exception& failure) {
        QFile::remove(path);
        throw runTimeError(error::StoreUnreadable, QString::fromUtf8(failure.what()));
    }
}

} // namespace pontrel
