#include "rules/CodeLength.h"

#include "store/Database.h"
#include "store/RunTimeError.h"

namespace pontrel {

using namespace Qt::StringLiterals;

int readLenEmpNo(Database& database) {
    const Rows settings = database.select(u"select LenEmpNo from Syst01"_s);
    if (settings.isEmpty())
        throw runTimeError(error::NoCurrentRecord, u"Syst01"_s);
    return settings.at(0, 0).toInt16();
}

void requireCodeLength(int LenEmpNo) {
    constexpr int InvalidCall = 5;
    if (LenEmpNo < 0)
        throw runTimeError(InvalidCall, u"LenEmpNo %1"_s.arg(LenEmpNo));
}

QString codeOfEntry(const QString& entry, int LenEmpNo) {
    requireCodeLength(LenEmpNo);
    return entry.left(LenEmpNo);
}

} // namespace pontrel
