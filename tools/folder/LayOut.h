#pragma once

#include <QString>
#include <QStringList>

namespace pontrel {

/// What a version of the program brings for a program folder.
struct MasterCopy {
    QString program;   ///< The executable.
    QString templates; ///< The folder with its report templates.
};

/// The master copy of the installation that this executable belongs to: in `lib` and `share` beside its
/// folder.
[[nodiscard]] MasterCopy installedCopy();

/// What laying out has done.
struct LaidOut {
    QStringList written; ///< Names below the folder of what is new or newer there.
    QStringList kept;    ///< Templates that were edited there and of which a newer one now lies beside them.
};

/// Puts the program and its report templates into a program folder, each file in one step, or brings those
/// that are there up to date. A template that has been edited since it was laid out stays, and the newer one
/// is laid beside it once, its name ending in ".new"; which ones were edited tell the checksums in the
/// folder's file ".laid-out". Makes the folders where they are missing and touches nothing else, above all
/// not the store. May be repeated after it was killed at any moment. Throws Refusal.
[[nodiscard]] LaidOut layOut(const MasterCopy& from, const QString& folder);

/// Bytes that a new program folder takes at most before anything is entered.
[[nodiscard]] qint64 spaceNeeded(const MasterCopy& from);

/// What a folder is, seen by somebody who wants to make it a program folder.
enum class FolderState {
    Missing,  ///< There is none.
    Empty,    ///< There is nothing in it.
    Begun,    ///< It holds nothing but what laying out and making a store put there, and no store.
    HasStore, ///< There is a store in it.
    Foreign,  ///< There is something else in it.
    NoFolder, ///< It is a file.
};
[[nodiscard]] FolderState stateOf(const QString& folder);

/// Takes away what layOut() and makeProgramStore() have put into a folder that was missing or empty before;
/// nothing where there was anything in it, or where a store stands in it now.
void takeBack(const QString& folder, FolderState before);

/// The folder that the user's icon starts, as an absolute path; empty where there is none yet. It stands in a
/// file of the user's configuration.
[[nodiscard]] QString rememberedFolder();
/// Keeps it for the next start. False where that cannot be written.
[[nodiscard]] bool rememberFolder(const QString& folder);

} // namespace pontrel
