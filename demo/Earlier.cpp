#include "demo/Plan.h"

namespace pontrel::demo {

using namespace Qt::StringLiterals;

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
        {{10005}, january(12), {{u"01"_s, {}, {}, {}}}},
        {{10005}, february(3), {{u"01"_s, {}, {}, {}}}},
        {{10005}, february(23), {{{}, {}, {}, u"01"_s}}},
        {{10009}, february(4), {{u"02"_s, u"02"_s, u"02"_s, u"02"_s}}},
        {{10009}, february(5), {{u"02"_s, u"02"_s, {}, {}}}},
        {{10015}, january(20), {{{}, {}, {}, u"04"_s}}},
        {{10015}, february(10), {{{}, {}, {}, u"04"_s}}},
        {{10017}, february(25), {{{}, {}, u"04"_s, u"04"_s}}},
        {{10021, 10022}, february(2), {{{}, u"03"_s, u"03"_s, {}}}},
        {{10023}, february(2), {{{}, u"03"_s, {}, {}}}},
        {{10026}, february(22), {{u"01"_s, {}, {}, {}}}},
        {{10026}, february(24), {{{}, {}, {}, u"01"_s}}},
        {{10034}, february(11), {{u"01"_s, {}, {}, u"01"_s}}},
    };
    return all;
}

} // namespace

void writeEarlierEntries(Database& database) {
    for (const WriteOff& each : earlierWriteOffs())
        writeWriteOff(database, each);
}

} // namespace pontrel::demo
