#pragma once

#include "rules/master/SeniorityHost.h"
#include "store/Database.h"

namespace pontrel {

/// The button "計算可休天數": writes the days that the grants give each employee for the seniority stored in
/// HoliExper, as granted and as left, for annual, personal and sick leave. Leave without a matching grant
/// keeps its figures. Throws RunTimeError with the pointer as it stands; what was written until then stays.
void ComputeEntitlement(Database& database, SeniorityHost& host);

} // namespace pontrel
