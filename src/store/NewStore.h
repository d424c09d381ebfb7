#pragma once

#include <QString>

namespace pontrel {

/// The folder of the punch files that a new store names: beside the program, which can be moved with it.
inline const QString PunchFolder = QStringLiteral("punch");

/// What a new store starts with besides its tables.
struct NewStore {
    QString handPath; ///< Folder of the punch files; a relative one counts from the program's folder.
    QString account;  ///< The first account, with all eight rights.
    QString password;
};

/// Makes the folder of a store, and those above it, where it is missing; itself open to its owner alone.
/// Throws error 75.
void makeStoreFolder(const QString& path);

/// Creates the file with all tables, the settings row, the schemes and the first account. Makes the folder
/// where it is missing, as makeStoreFolder() does. Refuses (error 75) to overwrite a file; leaves nothing
/// behind when it fails.
void createStore(const QString& path, const NewStore& start);

} // namespace pontrel
