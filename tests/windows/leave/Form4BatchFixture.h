#pragma once

#include "windows/leave/Form4Fixture.h"

namespace pontrel::test {

inline const QString BatchQuestion = QStringLiteral("警告訊息|是否確定執行假單批次 ?");
inline const QString BatchNotSaved = QStringLiteral("錯誤訊息|部份欄位未輸入所以存檔不成功,請重新輸入...");
inline const QString BatchTooMuch = QStringLiteral("錯誤訊息|該假累計可請天數,已超過! 請檢查.....");

/// The leave window with its batch.
class Form4BatchFixture : public Form4Fixture {
  public:
    [[nodiscard]] QStringList left() const { return entriesOf(QStringLiteral("List1")); }
    [[nodiscard]] QStringList right() const { return entriesOf(QStringLiteral("List2")); }
    void begin() { press(QStringLiteral("CmdBat(0)")); }
    /// Chooses everybody and enters a leave of Monday.
    void fill(const QString& HoliNo, const QString& beginTime, const QString& endTime) {
        press(QStringLiteral("CMDCTRL(1)"));
        typeDate(2, QStringLiteral("900305"));
        type(QStringLiteral("Text8(0)"), HoliNo);
        typeTime(2, beginTime);
        typeTime(3, endTime);
    }
    void run(MsgAnswer answer = MsgAnswer::Yes) {
        answers.expectMsgBox(answer);
        press(QStringLiteral("CmdBat(1)"));
    }
    /// A note as the batch writes it.
    [[nodiscard]] static Fields batchNote(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                          double HoliHours) {
        return with(with(wholeNote(BusNo, EmpNo, HoliNo, Monday), {u"HoliHours", HoliHours}),
                    {u"TransDate", QDateTime(Today, QTime(9, 10, 12))});
    }
    [[nodiscard]] static Fields wholeDay(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                         int hours, const QString& TimeNo) {
        return day(BusNo, EmpNo, HoliNo, Monday, QTime(8, 0), QTime(17, 0), hours, TimeNo);
    }
    /// What the tab shows while no batch is open; empty where something of it does not.
    [[nodiscard]] QString shut() const {
        const bool off = !at(QStringLiteral("Frame1(3)")).isEnabled();
        const bool buttons = WindowFixture::buttonsOn(QStringLiteral("CmdBat")) == QList<int>{0};
        const bool isShut = off && buttons && tabsOn().size() == tabs().count() && panel(2).isEmpty();
        return isShut && panel8Raised() ? QStringLiteral("shut") : QString();
    }
};

} // namespace pontrel::test
