#include "demo/Plan.h"

namespace pontrel::demo {

namespace {

QDate january(int day) {
    return {2010, 1, day};
}

QDate february(int day) {
    return {2010, 2, day};
}

/// Swipes written off before the days of the roster.
const std::vector<WriteOff>& earlierWriteOffs() {
    static const std::vector<WriteOff> all{
        {10005, january(12), {u"01", nullptr, nullptr, nullptr}},
        {10005, february(3), {u"01", nullptr, nullptr, nullptr}},
        {10005, february(23), {nullptr, nullptr, nullptr, u"01"}},
        {10009, february(4), {u"02", u"02", u"02", u"02"}},
        {10009, february(5), {u"02", u"02", nullptr, nullptr}},
        {10015, january(20), {nullptr, nullptr, nullptr, u"04"}},
        {10015, february(10), {nullptr, nullptr, nullptr, u"04"}},
        {10017, february(25), {nullptr, nullptr, u"04", u"04"}},
        {10021, february(2), {nullptr, u"03", u"03", nullptr}},
        {10022, february(2), {nullptr, u"03", u"03", nullptr}},
        {10023, february(2), {nullptr, u"03", nullptr, nullptr}},
        {10026, february(22), {u"01", nullptr, nullptr, nullptr}},
        {10026, february(24), {nullptr, nullptr, nullptr, u"01"}},
        {10034, february(11), {u"01", nullptr, nullptr, u"01"}},
    };
    return all;
}

} // namespace

void writeEarlierEntries(Database& database) {
    for (const WriteOff& entry : earlierWriteOffs())
        writeWriteOff(database, entry);
}

} // namespace pontrel::demo
