#pragma once

namespace SQLite {
class Database;
}

namespace pontrel {

/// Brings a store of an earlier version to the present one, in one transaction: where it fails, or the
/// program is killed in it, the earlier version stands. A store of the present version is left alone. Throws
/// what the engine throws.
void upgradeStore(SQLite::Database& engine);

} // namespace pontrel
