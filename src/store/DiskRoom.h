#pragma once

#include <QString>

#include <optional>

namespace pontrel {

/// Bytes that this user can still write to the folder's file system; nothing where the system does not tell.
[[nodiscard]] std::optional<qint64> roomLeftIn(const QString& folder);

} // namespace pontrel
