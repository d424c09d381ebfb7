#include "rules/attendance/Positions.h"

namespace pontrel {

using namespace Qt::StringLiterals;

const QStringList& positionNames() {
    static const QStringList names{u"上午上班"_s, u"上午下班"_s, u"下午上班"_s, u"下午下班"_s};
    return names;
}

QString positionName(int position) {
    return positionNames().value(position - 1);
}

} // namespace pontrel
