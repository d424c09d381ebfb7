#pragma once

#include <QStringView>

class QLineEdit;

namespace pontrel {

/// Lets the box take no more characters than an entry of that column may have; a rare character counts as
/// one. Without a limit of the column the box has none, and a longer value of a row shows whole in any case.
void limitToColumn(QLineEdit& box, QStringView table, QStringView column);

} // namespace pontrel
