#include "store/StagedCopy.h"

#include "store/Connection.h"

namespace pontrel {

namespace {

/// What stands in the target by its key need not be offered: the look for it costs less than the refusal.
QString offer(CopyTarget target, bool all) {
    const bool punches = target == CopyTarget::Atte01;
    const QString to = punches ? QStringLiteral("Atte01") : QStringLiteral("Atte02");
    const QString from = punches ? QStringLiteral("AtteTemp") : QStringLiteral("AtteTemp1");
    if (!all)
        return QStringLiteral("INSERT OR IGNORE INTO %1 SELECT * FROM %2 WHERE rowid > ?1 ORDER BY rowid")
            .arg(to, from);
    QStringList same;
    for (const QString& column : findTable(to)->key)
        same += QStringLiteral("there.\"%1\" = %2.\"%1\"").arg(column, from);
    return QStringLiteral("INSERT OR IGNORE INTO %1 SELECT * FROM %2 WHERE NOT EXISTS "
                          "(SELECT 1 FROM %1 AS there WHERE %3) ORDER BY rowid")
        .arg(to, from, same.join(QStringLiteral(" AND ")));
}

} // namespace

void copyStaged(Database& database, CopyTarget target) {
    const auto& connection = database.connection();
    runStage(database, [&] {
        const auto known = connection->copyMarks().upTo(target);
        const QString copy = offer(target, !known.has_value());
        connection->guarded(copy, [&] {
            connection->countStatement();
            {
                Run run(connection->engineStatement(copy.toUtf8()));
                if (known)
                    run.bind(1, *known);
                while (run.step()) {
                }
            }
            Run highest(connection->engineStatement(target == CopyTarget::Atte01
                                                        ? "SELECT coalesce(max(rowid), 0) FROM AtteTemp"
                                                        : "SELECT coalesce(max(rowid), 0) FROM AtteTemp1"));
            (void)highest.step();
            connection->copyMarks().setUpTo(target, highest.identity());
        });
    });
}

void replaceResults(Database& database, const QString& employeeAndDay) {
    const auto& connection = database.connection();
    runStage(database, [&] {
        const auto known = connection->copyMarks().upTo(CopyTarget::Atte02);
        database.execute(QStringLiteral("Delete Atte02.* from Atte02 ") + employeeAndDay);
        database.execute(QStringLiteral(" Insert into Atte02 Select * from AtteTemp1 ") + employeeAndDay);
        // All that was taken out and is staged is in again.
        connection->copyMarks().setUpTo(CopyTarget::Atte02, known);
    });
}

} // namespace pontrel
