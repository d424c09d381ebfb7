#pragma once

#include <QDate>

namespace pontrel {

/// The day that stands for none: gDate1 after a cancelled date dialog, and in columns while null is not to be
/// met. Deliberate: whoever really means that day is taken for one without a date.
inline const QDate NoDate(2038, 1, 1);

} // namespace pontrel
