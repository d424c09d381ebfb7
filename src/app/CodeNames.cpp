#include "app/CodeNames.h"

#include "store/Database.h"

namespace pontrel {

void readNames(TranslationList& names, Database& database, const QString& selection) {
    const Rows rows = database.select(selection);
    names.clear();
    for (const auto& row : rows)
        names.add(row.at(0).joined(), row.at(1).joined());
}

GridColumn named(const TranslationList& names, GridColumn column) {
    column.cellText = [&names](const Value& code) {
        return code.isNull() ? QString() : names.text(code.joined());
    };
    return column;
}

} // namespace pontrel
