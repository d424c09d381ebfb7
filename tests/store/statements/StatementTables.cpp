#include "store/statements/StatementCase.h"

namespace pontrel::test {

const std::vector<NamedTable>& statementTables() {
    static const std::vector<NamedTable> tables{
        {"import", importStatements()},
        {"slot loop", slotLoopStatements()},
        {"cover", coverStatements()},
        {"exceptions", exceptionStatements()},
        {"attendance screens", attendanceScreenStatements()},
        {"roster", rosterStatements()},
        {"leave", leaveStatements()},
        {"leave queries", leaveQueryStatements()},
        {"write-offs", writeOffStatements()},
        {"overtime", overtimeStatements()},
        {"reports", reportStatements()},
        {"master data", masterStatements()},
        {"lookups", lookupStatements()},
        {"two tables", twoTableStatements()},
        {"nulls", nullStatements()},
        {"booleans", booleanStatements()},
        {"patterns", patternStatements()},
        {"date literals", dateLiteralStatements()},
        {"conversions", conversionStatements()},
        {"arithmetic", arithmeticStatements()},
        {"formats", formatStatements()},
        {"orders", orderStatements()},
        {"texts", textStatements()},
        {"keys", keyStatements()},
        {"refused", refusedStatements()},
    };
    return tables;
}

} // namespace pontrel::test
