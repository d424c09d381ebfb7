#include "rules/attendance/PunchWindows.h"

namespace pontrel {

PunchWindows::PunchWindows(const SlotTimes& slot) {
    switch (slot.ElstType) {
    case 0:
        addRigid(slot);
        break;
    case 1:
        // Deliberate: the arrival alone is taken, however many punches the slot requires.
        if (slot.CardType >= 1 && slot.CardType <= 4)
            add(1, slot.StrIn1, slot.StdT1 + slot.ElstMin);
        break;
    case 2:
        if (slot.CardType == 4)
            addMorningElastic(slot);
        break;
    case 3:
        if (slot.CardType == 3 || slot.CardType == 4)
            addAfternoonElastic(slot);
        break;
    case 4:
        if (slot.CardType == 4)
            addBothElastic(slot);
        break;
    default:
        break;
    }
}

int PunchWindows::positionOf(int minute) const {
    for (const PunchWindow& window : all())
        if (window.lower <= minute && minute <= window.upper)
            return window.position;
    return 0;
}

void PunchWindows::add(int position, int lower, int upper) {
    windows_[count_++] = {position, lower, upper};
}

// Deliberate: some bounds wrap at midnight and their neighbours do not.

void PunchWindows::addRigid(const SlotTimes& slot) {
    add(1, slot.StrIn1, wrappedMinutes(slot.StdT1 + slot.Cushion + slot.Delay));
    add(2, wrappedMinutes(slot.StdT2 - slot.Cushion - slot.Earlier), slot.EndOut2);
    add(3, slot.StrIn3, slot.StdT3 + slot.Cushion1 + slot.Delay1);
    add(4, slot.StdT4 - slot.Cushion1 - slot.Earlier1, slot.EndOut4);
}

void PunchWindows::addMorningElastic(const SlotTimes& slot) {
    add(1, slot.StrIn1, wrappedMinutes(slot.StdT1 + slot.ElstMin));
    add(2, slot.StdT2, slot.EndOut2);
    add(3, slot.StrIn3, wrappedMinutes(slot.StdT3 + slot.Cushion1 + slot.Delay1));
    add(4, wrappedMinutes(slot.StdT4 - slot.Earlier1), slot.EndOut4);
}

void PunchWindows::addAfternoonElastic(const SlotTimes& slot) {
    add(1, slot.StrIn1, slot.StdT1 + slot.Cushion);
    if (slot.CardType == 4)
        add(2, slot.StdT2 - slot.Cushion, slot.EndOut2);
    add(3, slot.StrIn3, slot.StdT3 + slot.ElstMin);
    add(4, slot.StdT4 - slot.ElstMin, slot.EndOut4);
}

void PunchWindows::addBothElastic(const SlotTimes& slot) {
    add(1, slot.StrIn1, slot.StdT1 + slot.ElstMin);
    add(2, slot.StdT2 - slot.ElstMin, slot.EndOut2);
    add(3, slot.StrIn3, slot.StdT3 + slot.ElstMin);
    add(4, slot.StdT4 - slot.ElstMin, slot.EndOut4);
}

} // namespace pontrel
