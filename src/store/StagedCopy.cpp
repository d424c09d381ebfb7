#include "store/StagedCopy.h"

#include "store/Connection.h"

namespace pontrel {

void copyStaged(Database& database, CopyTarget target) {
    const bool punches = target == CopyTarget::Atte01;
    const QString to = punches ? QStringLiteral("Atte01") : QStringLiteral("Atte02");
    const QString from = punches ? QStringLiteral("AtteTemp") : QStringLiteral("AtteTemp1");
    // A mark above all rows is none of theirs, as in a store that was written anew row by row.
    const QString copy =
        QStringLiteral("INSERT OR IGNORE INTO %1 SELECT * FROM %2 WHERE rowid > coalesce((SELECT UpTo "
                       "FROM CopyMark WHERE Target = '%1' AND UpTo <= (SELECT max(rowid) FROM %2)), "
                       "0) ORDER BY rowid")
            .arg(to, from);
    const QString mark =
        QStringLiteral("UPDATE CopyMark SET UpTo = (SELECT coalesce(max(rowid), 0) FROM %2) WHERE "
                       "Target = '%1'")
            .arg(to, from);
    const auto& connection = database.connection();
    Stage stage(database);
    for (const QString& sql : {copy, mark}) {
        connection->guarded(sql, [&] {
            connection->countStatement();
            Run run(connection->engineStatement(sql.toUtf8()));
            while (run.step()) {
            }
        });
    }
    stage.finish();
}

} // namespace pontrel
