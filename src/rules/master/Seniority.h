#pragma once

#include "rules/master/SeniorityHost.h"
#include "store/Database.h"

namespace pontrel {

/// The button "計算休假年資": asks for a date and writes the leave seniority of all employees up to it, in
/// whole years, into HoliExper. From the first employee on an error ends the calculation with a message; the
/// employees before it keep their new seniority. Throws RunTimeError where the employees cannot be read.
void ComputeSeniority(Database& database, SeniorityHost& host);

} // namespace pontrel
