#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace pontrel::test {

/// The store at the end of one stage of an action.
struct Border {
    QString name;
    QStringList rows; ///< Those of storeRows(), sorted.
};

/// The rows of the tables that the daily work writes, and each employee's leaving date.
[[nodiscard]] QStringList storeRows(const QString& programFolder);

/// What the store's own check of its file says: "ok" where it is whole.
[[nodiscard]] QString integrityOf(const QString& programFolder);

/// Whether the store was left in the middle of a write: its journal is there and would be rolled back.
[[nodiscard]] bool hasJournal(const QString& programFolder);

[[nodiscard]] QString storePath(const QString& programFolder);

/// Counts the transactions that have changed the store's file, as its header does.
[[nodiscard]] quint32 changesOf(const QString& programFolder);

/// A moment of an action, in parts of its undisturbed duration: one in each of so many equal pieces.
[[nodiscard]] QList<double> momentsOf(int pieces, quint32 seed);

/// The place among the borders of a store that holds these rows, in any order; -1 where it stands between
/// two of them.
[[nodiscard]] qsizetype placeAmong(const QList<Border>& borders, QStringList rows);

/// An organisation on five time slots with leave and write-offs, a store that has not seen the day yet, and
/// the day's punch file: four punches a head and two overtime swipes of one in ten. What an undisturbed
/// import makes of it is found out once, by day_close.
class Workload {
  public:
    explicit Workload(int employees);

    /// Lays out a program folder with the store as it is before the import, or after it.
    void layOut(const QString& programFolder) const;
    void layOutImported(const QString& programFolder) const;

    /// Adds a write-off of all four punches for every second exception in the store, so that a recalculation
    /// has work to do.
    static void excuse(const QString& programFolder);

    [[nodiscard]] const QDate& day() const { return day_; }
    [[nodiscard]] const QString& punchFile() const { return punchFile_; }
    /// The action that reads the file, and replaces the day where it is there already.
    [[nodiscard]] QString action() const;

    /// The store after the undisturbed import, each table in its own order.
    [[nodiscard]] const QStringList& importedRows() const { return importedRows_; }

    /// The ends of the stages of an import, in order; the first is the store before it. An import that
    /// replaces the day starts at the last, is at the one before it when the sentinel is filled, and at the
    /// second when the day is cleared.
    [[nodiscard]] const QList<Border>& importBorders() const { return importBorders_; }

    /// The same of the day's recalculation over the store in this program folder, which it changes.
    [[nodiscard]] QList<Border> recalculationBorders(const QString& programFolder) const;

  private:
    void findImportBorders(const QStringList& before);

    QTemporaryDir folder_;
    QDate day_{2010, 3, 1};
    QString punchFile_;
    QStringList importedRows_;
    QList<Border> importBorders_;
};

} // namespace pontrel::test
