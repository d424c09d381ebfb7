#pragma once

#include "rules/leave/LeaveBatch.h"
#include "rules/leave/LeaveNotes.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/RecordingHost.h"
#include "support/TestStore.h"

namespace pontrel::test {

/// Records as the other hosts do; what the window would show as the hours stands among the calls.
class LeaveHost final : public RecordingHost<LeaveBatchHost> {
  public:
    using RecordingHost::RecordingHost;
    void showHours(const QString& HoliHours) override { hours += HoliHours; }

    QStringList hours; ///< Every text shown, in order.
};

inline const QString UnknownType = QStringLiteral("tell 錯誤訊息: 無此假別代碼,請重新輸入......");

/// A store with employees 10001 to 10003, slot A from 08:00 to 12:00 and 13:00 to 17:00, and types 01, which
/// leaves out days off, and 08, which does not; and a program that has just started on it.
struct LeaveDesk {
    LeaveDesk() {
        store.holdOpen();
        for (const char16_t* EmpNo : {u"10001", u"10002", u"10003"})
            addEmployee(database(), QString::fromUtf16(EmpNo));
        addSlot(database(), QStringLiteral("A"));
        addType(QStringLiteral("01"), true);
        addType(QStringLiteral("08"), false);
        store.commit();
    }

    [[nodiscard]] Database& database() { return store.database(); }
    [[nodiscard]] LeaveNotes notes() { return {database(), host, values}; }

    void addType(const QString& HoliNo, bool HoliDeduct) {
        insertRow(database(), QStringLiteral("Holi01"), {{u"HoliNo", HoliNo}, {u"HoliDeduct", HoliDeduct}});
    }
    [[nodiscard]] QStringList days() { return rowsOf(database(), QStringLiteral("Holi04")); }
    [[nodiscard]] QStringList noteRows() { return rowsOf(database(), QStringLiteral("Holi03")); }

    TestStore store;
    LeaveHost host{&store.database()};
    LeaveValues values;
};

/// Monday.
inline const QDate March5(2001, 3, 5);

/// The row of Holi04 as rowsOf() tells it.
[[nodiscard]] inline QString dayRow(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                    QDate day, QTime begin, QTime end, int hours, const QString& TimeNo) {
    return expectedRow(QStringLiteral("Holi04"), {{u"BusNo", BusNo},
                                                  {u"EmpNo", EmpNo},
                                                  {u"HoliNo", HoliNo},
                                                  {u"HoliDate", day},
                                                  {u"BegTime", begin},
                                                  {u"EndTime", end},
                                                  {u"HoliHours", hours},
                                                  {u"TimeNo", TimeNo}});
}

} // namespace pontrel::test
