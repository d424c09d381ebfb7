#pragma once

#include <QString>

namespace pontrel {

/// The condition that a punch meets which is sorted into the positions of its day.
inline const QString OrdinaryPunches = QStringLiteral("(Class='255' or  Class = '000')");

/// The class of the punches that overtime is made of.
inline const QString OvertimeClass = QStringLiteral("081");

} // namespace pontrel
