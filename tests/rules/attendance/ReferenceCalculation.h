#pragma once

#include "store/Database.h"

#include <QDate>
#include <QString>

#include <array>

namespace pontrel::test {

/// The daily calculation as its statements tell it, each run by itself and in turn, nothing folded and
/// nothing kept in memory. Slow and plain: what the real one is held against.
class ReferenceCalculation {
  public:
    explicit ReferenceCalculation(Database& database) : database_(database) {}

    bool RecalcDone = false;

    void CalcSlotLoop(QDate date, bool recalculating);
    void Recalculate(QDate date);

  private:
    struct Slot {
        QString TimeNo;
        int CardType = 0;
        int ElstType = 0;
        // Minutes by the names of the columns.
        int StrIn1 = 0, StdT1 = 0, StdT2 = 0, EndOut2 = 0, StrIn3 = 0, StdT3 = 0, StdT4 = 0, EndOut4 = 0;
        int ElstMin = 0, Cushion = 0, Delay = 0, Earlier = 0, Cushion1 = 0, Delay1 = 0, Earlier1 = 0;
        std::array<bool, 5> StdC{};
    };

    void readSlot(const Rows& rows, std::size_t row, Slot& slot);
    void AssignSlotPunches(const Slot& slot);
    void RecalcSlot(const Slot& slot);
    void assign(const QString& EmpNo, const Slot& slot);
    void nullPasses(const QString& EmpNo);
    [[nodiscard]] static int windowOf(int P, const Slot& slot);
    void MarkLeaveCover(const QString& EmpNo, const Slot& slot);
    void MarkWriteOffCover(const QString& EmpNo);
    void CalcLateEarly(const QString& EmpNo, const Slot& slot);
    void judge(const QString& EmpNo, const Slot& slot, int i, int Time, int Std);
    void ClassifyExceptions(const QString& EmpNo, int CardType, bool rerun);
    void run(const QString& statement) { database_.execute(statement); }
    [[nodiscard]] QString where(const QString& EmpNo) const;

    Database& database_;
    QString day_;
};

} // namespace pontrel::test
