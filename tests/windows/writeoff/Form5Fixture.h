#pragma once

#include "windows/ModuleFixture.h"

namespace pontrel::test {

/// The tabs of the write-off window.
enum Form5Tab { Reasons, Batch, Entries, Counts };

inline const QDate Day(2001, 3, 5);
inline const QDateTime Now(QDate(2001, 3, 6), QTime(9, 10, 11));

inline const QString UnknownEmployee = QStringLiteral("警告訊息|無此【員工代碼】,請重新輸入");
inline const QString UnknownReason = QStringLiteral("警告訊息|無此【註銷代碼】,請重新輸入");

/// Two employees, one who has left, and three reasons.
inline void addWriteOffPeople(Database& database) {
    addEmployee(database, QStringLiteral("10001"), {{u"EmpName", u"王小明"}});
    addEmployee(database, QStringLiteral("10002"), {{u"EmpName", u"陳美惠"}});
    addEmployee(database, QStringLiteral("10003"),
                {{u"EmpName", u"周雅婷"}, {u"LeaveDate", QDate(2001, 1, 31)}});
    for (const auto& [CnlNo, CnlName] :
         {std::pair(u"01", u"忘記刷卡"), std::pair(u"02", u"公出"), std::pair(u"A12", u"卡鐘故障")})
        insertRow(database, QStringLiteral("Canc01"), {{u"CnlNo", CnlNo}, {u"CnlName", CnlName}});
}

/// A row of Canc02 as rowsOf() tells it; an empty text stands for one, a null text for a null.
[[nodiscard]] inline QString entryRow(const QString& EmpNo, QDate day, const QStringList& reasons,
                                      const Value& Account, const Value& TransDate) {
    Fields fields{{u"EmpNo", EmpNo}, {u"CnlDate", day}, {u"Account", Account}, {u"TransDate", TransDate}};
    for (int swipe = 0; swipe < 4; ++swipe) {
        const QString reason = reasons.value(swipe);
        if (!reason.isNull())
            fields.append({QStringLiteral("CnlNo%1").arg(swipe + 1), reason});
    }
    return expectedRow(QStringLiteral("Canc02"), fields);
}

/// The write-off window, at work for "clerk" on the 6th of March 2001.
class Form5Fixture : public ModuleFixture {
  public:
    Form5Fixture() : ModuleFixture(5) {
        clock::setSource([] { return Now; });
    }

    void addPeople() { addWriteOffPeople(database()); }
    /// Three entries of two people on two days.
    void addEntries() {
        addWriteOff(database(), QStringLiteral("10001"), Day, QStringLiteral("01"), {}, {}, {});
        addWriteOff(database(), QStringLiteral("10001"), Day.addDays(1), {}, QStringLiteral("02"), {}, {});
        addWriteOff(database(), QStringLiteral("10002"), Day, {}, {}, {}, QStringLiteral("A12"));
    }

    /// Opens the window by its toolbar button's routine and clicks the tab.
    void open(Form5Tab tab) {
        openModule(5);
        gAccount = QStringLiteral("clerk");
        if (tab != Reasons)
            clickTab(tab);
    }

    /// The store as another program sees it, in full rows.
    [[nodiscard]] QStringList rows(const QString& table) const { return rowsOf(*store.connect(), table); }
};

} // namespace pontrel::test
