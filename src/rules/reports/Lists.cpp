#include "rules/reports/Lists.h"

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

QString listStatement(ReportTab tab) {
    switch (tab) {
    case ReportTab::Leave:
        return u"SELECT HoliNo, HoliType From Holi01 "_s;
    case ReportTab::WriteOff:
        return u"SELECT CnlNo, CnlName From Canc01 "_s;
    default:
        return {};
    }
}

} // namespace

std::vector<ListEntry> readList(Database& database, ReportTab tab) {
    std::vector<ListEntry> entries;
    if (const QString statement = listStatement(tab); !statement.isEmpty()) {
        for (const auto& row : database.select(statement))
            entries.push_back({row.at(0).joined() + u' ' + row.at(1).joined(), true});
    }
    return entries;
}

} // namespace pontrel
