#pragma once

#include "app/ControlNames.h"
#include "support/Builders.h"
#include "support/LiveProgram.h"
#include "windows/master/Form1Pages.h"

#include <vector>

namespace pontrel::test {

/// A button that deletes the row it stands by, the table that loses it, and three rows of that, told by what
/// is in them besides nulls.
struct DeleteButton {
    QString title; ///< Of the test's row.
    LivePlace place;
    QString table;
    std::vector<Fields> rows;

    /// The object name of the button beside it that leaves the window.
    [[nodiscard]] QString leave() const {
        const QString array = place.control.section(u'(', 0, 0);
        return indexed(array, place.child.isEmpty() ? 12 : 9);
    }
};

/// Three rows that differ in that column.
[[nodiscard]] inline std::vector<Fields> threeOf(const QString& column, const Fields& others = {}) {
    std::vector<Fields> rows;
    for (const QString& code : {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}) {
        rows.push_back(others);
        rows.back().push_back({column, code});
    }
    return rows;
}

/// Every button that deletes a row.
[[nodiscard]] inline const std::vector<DeleteButton>& deleteButtons() {
    static const std::vector<DeleteButton> all = [] {
        const QDate day(2001, 3, 5);
        std::vector<DeleteButton> buttons{
            {QStringLiteral("accounts"),
             {8, QStringLiteral("FrmPsw"), 0, QStringLiteral("CtrlCmd(2)")},
             QStringLiteral("syst02"),
             threeOf(QStringLiteral("Account"), {{QStringLiteral("Password"), QStringLiteral("x")}})},
            {QStringLiteral("employees"),
             {1, {}, 5, QStringLiteral("CtrlCmd5(2)")},
             QStringLiteral("Base06"),
             threeOf(QStringLiteral("EmpNo"))},
            {QStringLiteral("leave types"),
             {4, {}, 0, QStringLiteral("CtrlCmd0(2)")},
             QStringLiteral("Holi01"),
             threeOf(QStringLiteral("HoliNo"))},
            {QStringLiteral("leave grants"),
             {4, {}, 1, QStringLiteral("CtrlCmd1(2)")},
             QStringLiteral("Holi02"),
             threeOf(QStringLiteral("SuitNo"),
                     {{QStringLiteral("HoliNo"), QStringLiteral("01")}, {QStringLiteral("HoliYearBeg"), 1}})},
            {QStringLiteral("leave notes"),
             {4, {}, 2, QStringLiteral("CtrlCmd2(2)")},
             QStringLiteral("Holi03"),
             threeOf(QStringLiteral("BusNo"), {{QStringLiteral("EmpNo"), QStringLiteral("10001")},
                                               {QStringLiteral("HoliNo"), QStringLiteral("01")}})},
            {QStringLiteral("reasons"),
             {5, {}, 0, QStringLiteral("CtrlCmd0(3)")},
             QStringLiteral("Canc01"),
             threeOf(QStringLiteral("CnlNo"))},
            {QStringLiteral("write-offs"),
             {5, {}, 2, QStringLiteral("CtrlCmd2(2)")},
             QStringLiteral("Canc02"),
             threeOf(QStringLiteral("EmpNo"), {{QStringLiteral("CnlDate"), day}})},
            {QStringLiteral("overtime"),
             {6, {}, 0, QStringLiteral("CtrlCmd0(2)")},
             QStringLiteral("Over01"),
             threeOf(QStringLiteral("EmpNo"),
                     {{QStringLiteral("OverDate"), day}, {QStringLiteral("BegTime"), QTime(18, 0)}})}};
        for (int tab = 0; tab < PlainPages.size(); ++tab) {
            const auto& page = PlainPages.at(tab);
            buttons.push_back({QStringLiteral("tab %1").arg(tab),
                               {1, {}, tab, QStringLiteral("CtrlCmd%1(2)").arg(tab)},
                               page.table,
                               threeOf(page.codeColumn)});
        }
        return buttons;
    }();
    return all;
}

} // namespace pontrel::test
