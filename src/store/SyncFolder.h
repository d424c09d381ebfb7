#pragma once

#include <QString>

namespace pontrel {

/// Brings the names of a folder's files to the disk, so that a file that has been renamed or made there bears
/// its name after a power failure too. Where the system refuses, they get there later.
void syncFolder(const QString& folder);

} // namespace pontrel
