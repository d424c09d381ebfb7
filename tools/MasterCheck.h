#pragma once

#include <QDate>
#include <QList>
#include <QString>

namespace pontrel::tools {

/// Something in the data by which an action ends without a word, runs for ever or leaves days out.
struct MasterFinding {
    QString table;
    QString code;   ///< Of the row or rows; empty for the settings.
    QString what;   ///< What is wrong.
    QString remedy; ///< What to do about it.
};

/// Looks through the master data, the roster from that day on and that of the month after it. Only reads; to
/// be given a file that nobody writes, as it takes its time. Throws what the engine throws.
[[nodiscard]] QList<MasterFinding> checkMasterData(const QString& store, QDate today);

} // namespace pontrel::tools
