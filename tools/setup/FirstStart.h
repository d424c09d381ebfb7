#pragma once

#include "folder/LayOut.h"

#include <QString>

#include <optional>

namespace pontrel {

/// The title of the set-up's windows.
inline const QString SetupTitle = QStringLiteral("Pontrel 初次設定");

/// The program folder that a click on the icon starts: the one of the last time, brought up to date, or where
/// there is none or its store has gone, one that the user sets up. Nothing where the user has cancelled or
/// what is there cannot be started; that has been told.
[[nodiscard]] std::optional<QString> folderToStart(const MasterCopy& from);

} // namespace pontrel
