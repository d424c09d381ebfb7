#pragma once

#include <QDate>
#include <QString>

namespace pontrel {
class Database;
}

namespace pontrel::bench {

/// An organisation for measuring: employees on five time slots, rostered on each day of a range, with leave
/// and write-offs on some of them, and a punch file of four punches a head for any day. The same at every
/// run.
struct Organisation {
    int employees = 10'000;
    QDate firstDay{2010, 3, 1};
    int days = 26;

    /// Writes the organisation into an empty store, in one stage.
    void create(Database& database) const;

    /// Writes the day's punch file into the folder and returns its path.
    [[nodiscard]] QString writePunchFile(const QString& folder, QDate day) const;
};

} // namespace pontrel::bench
