#pragma once

#include "store/Database.h"

#include <QDate>
#include <QRandomGenerator>

namespace pontrel::test {

/// Makes up small organisations, always the same for a seed: slots of all kinds, sound and unsound; rosters,
/// punches, leave and write-offs with nulls among them; rows that earlier runs left in the tables; now and
/// then a code with an apostrophe. What it makes goes into every store it is given alike.
class RandomDay {
  public:
    explicit RandomDay(quint32 seed) : random_(seed) {}

    [[nodiscard]] static QDate day() { return QDate(2001, 3, 5); }

    void fill(const QList<Database*>& stores);
    /// Leave and write-offs that are entered afterwards.
    void enterMore(const QList<Database*>& stores);

  private:
    [[nodiscard]] int number(int least, int most) { return random_.bounded(least, most + 1); }
    [[nodiscard]] bool oneIn(int chances) { return random_.bounded(chances) == 0; }
    [[nodiscard]] QTime time(int hour);
    [[nodiscard]] QString code();

    void addSlots();
    void addEmployees();
    void addPunches();
    void addLeave(int most);
    void addWriteOffs(int chances);
    void addOldRows();
    void insert(const QString& table, const QList<std::pair<QString, Value>>& fields);

    QRandomGenerator random_;
    QList<Database*> stores_;
    QStringList codes_;
    QStringList slots_;
    QList<int> bounds_; ///< Minutes of the slots' times, near which most punches and leaves lie.
};

} // namespace pontrel::test
