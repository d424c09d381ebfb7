#pragma once

#include "rules/schedule/RosterGeneration.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/RecordingHost.h"
#include "support/TestStore.h"

#include <QStringList>

#include <vector>

namespace pontrel::test {

/// Stands for the roster window.
class FakeRosterHost final : public RecordingHost<RosterHost> {
  public:
    using RecordingHost::RecordingHost;

    std::vector<QDate> days; ///< Every day shown.

    void showDay(QDate day) override {
        days.push_back(day);
        noteStage(QStringLiteral("showDay"));
    }
    void refreshRoster() override { record(QStringLiteral("refreshRoster")); }
};

/// A slot worked for some days and the rest days after it; a null slot is a step not in use.
struct ClassStep {
    Value slot;
    Value days;
    Value rests;
};

/// A store with employees and classes, and who presses "產生班別表".
struct RosterDesk {
    TestStore store;
    FakeRosterHost host{&store.database()};
    QString gPickClsNo;
    QString gPickEmpNo;
    QDate gDate1{2020, 1, 1}; ///< The day on which the window was opened, far from any run.
    QDate gDate2{2020, 1, 1};

    [[nodiscard]] Database& database() { return store.database(); }

    void addClass(const QString& ClsNo, const std::vector<ClassStep>& steps, bool ChkHoli = false) {
        Fields fields{{u"ClsNo", ClsNo}, {u"ChkHoli", ChkHoli}};
        int number = 1;
        for (const ClassStep& step : steps) {
            fields.append({QStringLiteral("TimeNo%1").arg(number), step.slot});
            fields.append({QStringLiteral("TimeDay%1").arg(number), step.days});
            fields.append({QStringLiteral("TimeRest%1").arg(number), step.rests});
            ++number;
        }
        insertRow(database(), QStringLiteral("Base05"), fields);
    }
    void addMember(const QString& EmpNo, const QString& ClsNo, QDate left = {}) {
        addEmployee(database(), EmpNo,
                    {{u"ClsNo", ClsNo}, {u"LeaveDate", left.isValid() ? Value(left) : Value()}});
    }
    void addDayOff(QDate day) { insertRow(database(), QStringLiteral("Rule01"), {{u"hymd", day}}); }

    void generate(const RosterRange& range) {
        RosterGeneration generation(database(), host, {gPickClsNo, gPickEmpNo, gDate1, gDate2});
        generation.GenerateRoster(range);
    }
    /// For all employees of the classes.
    [[nodiscard]] static RosterRange range(QDate start, QDate end,
                                           const QString& firstClsNo = QStringLiteral("0000"),
                                           const QString& lastClsNo = QStringLiteral("ZZZZ")) {
        return {QStringLiteral("000000"), QStringLiteral("ZZZZZZ"), start, end, firstClsNo, lastClsNo};
    }

    /// The roster as another program sees it: "EmpNo|day|slot".
    [[nodiscard]] QStringList roster() const {
        const auto other = store.connect();
        return rowsOfSelection(*other, QStringLiteral("select * from Rule03 order by EmpNo,YMD"));
    }
    /// The same of one employee, without the code.
    [[nodiscard]] QStringList rosterOf(const QString& EmpNo) const {
        QStringList rows;
        const QStringList all = roster();
        for (const QString& row : all) {
            if (row.startsWith(EmpNo + u'|'))
                rows += row.mid(EmpNo.size() + 1);
        }
        return rows;
    }
};

/// Rows "day|slot" from a day on, one character a day: a letter is a slot, "-" a rest day, a blank no row.
[[nodiscard]] inline QStringList days(QDate from, const QString& slots) {
    QStringList rows;
    for (const QChar slot : slots) {
        if (slot != u' ')
            rows += from.toString(u"yyyy-MM-dd") + u'|' + (slot == u'-' ? QString() : QString(slot));
        from = from.addDays(1);
    }
    return rows;
}

} // namespace pontrel::test
