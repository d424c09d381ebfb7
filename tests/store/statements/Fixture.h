#pragma once

#include <QString>
#include <QStringList>

namespace pontrel::test {

/// Creates the store that all statement tables are written for: a few rows in every table, inserted in
/// another order than that of their keys.
void createFixtureStore(const QString& path);

/// The statements that fill it, in their order.
[[nodiscard]] QStringList fixtureStatements();

/// How many rows the table has in the fixture store.
[[nodiscard]] std::size_t fixtureCount(const QString& table);

} // namespace pontrel::test
