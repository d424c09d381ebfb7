#pragma once

#include "rules/attendance/DailyCalculation.h"
#include "support/FakeHost.h"
#include "windows/attendance/DayJudgement.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/attendance/Form3Fixture.h"

#include <QPlainTextEdit>

namespace pontrel::test {

inline const QString Exceptions = QStringLiteral("TDBG3(0)");

[[nodiscard]] inline QString sentencesIn(QWidget& dialog) {
    return control<QPlainTextEdit>(dialog, QStringLiteral("DaySentences")).toPlainText();
}

/// A day whose employee came eight minutes after the cushion, as an import calculates it.
inline void addLateDay(Database& database) {
    addSlot(database, QStringLiteral("A"), {{u"TimeName", u"日班"}});
    addEmployee(database, QStringLiteral("10001"),
                {{u"EmpName", u"王小明"}, {u"LeaveDate", QDate(2038, 1, 1)}});
    addRoster(database, QStringLiteral("10001"), Day, QStringLiteral("A"));
    for (const QTime time : {QTime(8, 13), QTime(8, 20), QTime(12, 15), QTime(13, 0), QTime(17, 0)})
        addPunch(database, QStringLiteral("10001"), Day, time);
    FakeHost host;
    DailyCalculation(database, host).CalcSlotLoop(Day, false);
}

/// The attendance window over that day.
struct LateDay : Form3Fixture {
    LateDay() { addLateDay(database()); }

    /// With the keyboard in the list of the exceptions.
    void openExceptions() {
        open();
        clickTab(2);
        at(Exceptions).setFocus();
    }
};

/// The window comes next: looks at it, and closes it by Escape.
inline void expectJudgement(Form3Fixture& fixture, const std::function<void(DayJudgement&)>& look) {
    fixture.answers.expect(QStringLiteral("DayJudgement"), [look](QWidget& dialog) {
        look(static_cast<DayJudgement&>(dialog));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
}

} // namespace pontrel::test
