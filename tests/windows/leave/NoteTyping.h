#pragma once

#include "support/WindowFixture.h"

namespace pontrel::test {

/// A leave note as it is typed: the dates as six places, the times as four digits.
struct TypedNote {
    QString EmpNo;
    QString HoliNo;
    QString begin, beginTime;
    QString end, endTime;
};

/// Fills the note being edited in the leave window.
inline void fillNote(WindowFixture& it, const TypedNote& note) {
    it.type(QStringLiteral("Text3(0)"), note.EmpNo);
    it.type(QStringLiteral("Text3(2)"), note.HoliNo);
    it.type(QStringLiteral("TDBMask1(0)"), note.begin);
    it.type(QStringLiteral("TDBTime1(0)"), note.beginTime);
    it.type(QStringLiteral("TDBMask1(1)"), note.end);
    it.type(QStringLiteral("TDBTime1(1)"), note.endTime);
}

} // namespace pontrel::test
