#pragma once

#include <QString>

namespace pontrel {

/// What a new store starts with besides its tables.
struct NewStore {
    QString handPath; ///< Folder of the punch files.
    QString account;  ///< The first account, with all eight rights.
    QString password;
};

/// Creates the file with all tables, the settings row, the schemes and the first account. Makes the folder
/// where it is missing. Refuses (error 75) to overwrite a file; leaves nothing behind when it fails.
void createStore(const QString& path, const NewStore& start);

} // namespace pontrel
