#include "windows/leave/LeaveNames.h"

#include "app/CodeNames.h"
#include "rules/Calendar.h"
#include "store/Database.h"

namespace pontrel {

using namespace Qt::StringLiterals;

void LeaveNames::read(Database& database) {
    readNames(schemes, database, u"SELECT SuitNo, SuitRule   From Syst03 "_s);
    readNames(types, database, LeaveTypeNames);
    const Rows dates = database.select(u"SELECT distinct HoliDate   From Holi04 "_s);
    weekdays.clear();
    for (const std::vector<Value>& row : dates) {
        if (const Value& date = row.at(0); !date.isNull())
            weekdays.add(date.joined(), weekday(date.toDate()));
    }
}

} // namespace pontrel
