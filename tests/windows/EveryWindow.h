#pragma once

#include "app/FrmI1Date.h"
#include "app/FrmI2Date.h"
#include "app/IFrmQuery.h"
#include "app/Lookup.h"
#include "app/Module1.h"
#include "app/ProgressBox.h"
#include "app/Prompts.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "app/frmLogin.h"
#include "support/AppSupport.h"
#include "windows/RegisterWindows.h"
#include "windows/attendance/DayJudgement.h"
#include "windows/system/FrmBrower.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTabWidget>

#include <functional>
#include <vector>

namespace pontrel::test {

/// A modal dialog of the program and the routine that shows it.
struct EveryDialog {
    QString objectName;
    QString title; ///< Of the test's row: several kinds may be one class.
    std::function<void()> show;
};

/// Every modal dialog that the program has, but for Qt's own file dialog.
[[nodiscard]] inline std::vector<EveryDialog> everyDialog() {
    std::vector<EveryDialog> dialogs;
    for (int kind = 0; kind <= static_cast<int>(LookupKind::QFrmEmpNO); ++kind) {
        const auto lookup = static_cast<LookupKind>(kind);
        const QString name = lookupTexts(lookup).name;
        dialogs.push_back({name, name, [lookup] { Lookup::ask(lookup, gMDI); }});
    }
    const auto add = [&dialogs](const QString& name, const QString& title, std::function<void()> show) {
        dialogs.push_back({name, title, std::move(show)});
    };
    const auto message = [](MsgButtons buttons) {
        MsgBox(QStringLiteral("確定刪除這筆資料?"), QStringLiteral("確認刪除"), MsgIcon::Question, buttons);
    };
    const QString box = QStringLiteral("MsgBox");
    add(QStringLiteral("FrmI1Date"), QStringLiteral("FrmI1Date"), [] { FrmI1Date::ask(gMDI); });
    add(QStringLiteral("FrmI2Date"), QStringLiteral("FrmI2Date"), [] { FrmI2Date::ask(gMDI); });
    add(QStringLiteral("IFrmQuery"), QStringLiteral("IFrmQuery"), [] { IFrmQuery::ask(gMDI); });
    add(QStringLiteral("FrmBrower"), QStringLiteral("FrmBrower"), [] { FrmBrower::ask(gMDI); });
    add(QStringLiteral("DayJudgement"), QStringLiteral("DayJudgement"),
        [] { DayJudgement::ask(gMDI, QStringLiteral("10001"), QDate(2001, 3, 5)); });
    add(QStringLiteral("frmLogin"), QStringLiteral("frmLogin"), [] { frmLogin().showModal(); });
    add(QStringLiteral("InputBox"), QStringLiteral("InputBox"),
        [] { (void)inputBox(QStringLiteral("請輸入年度"), QStringLiteral("年度")); });
    add(QStringLiteral("ProgressBox"), QStringLiteral("ProgressBox"), [] {
        setProgressDelay(0);
        (void)runWithProgress(QStringLiteral("存成 PDF"), [](const ProgressStep& step) {
            while (step(1, 2)) // until it is closed
                ;
            return false;
        });
        setProgressDelay(-1);
    });
    add(box, QStringLiteral("MsgBox with one button"), [message] { message(MsgButtons::Ok); });
    add(box, QStringLiteral("MsgBox with a question"), [message] { message(MsgButtons::YesNo); });
    return dialogs;
}

/// A window in the main window's client area: how it is opened, and the one that is open.
struct EveryWindow {
    QString title; ///< Of the test's row.
    std::function<void()> open;
    std::function<Window*()> opened;
};

/// Every module window that is registered, and the child windows.
[[nodiscard]] inline std::vector<EveryWindow> everyWindow() {
    std::vector<EveryWindow> windows;
    for (int module = 1; module <= 8; ++module) {
        if (hasModuleWindow(module))
            windows.push_back({QStringLiteral("Form%1").arg(module),
                               [module] { OpenToolWindow(static_cast<std::int16_t>(module)); },
                               [module] { return moduleWindow(module); }});
    }
    for (const QString& name : {QStringLiteral("FrmPsw"), QStringLiteral("FrmSysSet")}) {
        windows.push_back({name,
                           [name] {
                               OpenToolWindow(8);
                               openChildWindow(name);
                           },
                           [name] { return childWindow(name); }});
    }
    return windows;
}

/// Brings every tab in an area to the front that can be, those within a page too, and runs the routine for
/// each; once where there are no tabs.
inline void onEveryPage(QWidget& area, const QString& name,
                        const std::function<void(const QString&)>& routine) {
    for (QTabWidget* tabs : area.findChildren<QTabWidget*>()) {
        if (!tabs->isVisibleTo(&area))
            continue;
        for (int tab = 0; tab < tabs->count(); ++tab) {
            if (!tabs->isTabEnabled(tab))
                continue;
            tabs->setCurrentIndex(tab);
            onEveryPage(*tabs->currentWidget(), name + u'/' + tabs->tabText(tab), routine);
        }
        return;
    }
    routine(name);
}

/// Looks at every page of a window, and where its rows can be edited, at each in the edit state as well, for
/// a new row and for one that is there.
///
/// Where answers are given, the batch of a page is opened as well, and cancelled by its question.
inline void inEveryState(Window& window, const std::function<void(const QString& place, bool isEdit)>& look,
                         PromptAnswers* answers = nullptr) {
    const auto pressable = [&window](const QString& caption) -> QAbstractButton* {
        for (auto* button : window.findChildren<QAbstractButton*>()) {
            if (button->text() == caption && button->isVisible() && button->isEnabled())
                return button;
        }
        return nullptr;
    };
    onEveryPage(window, window.objectName(), [&](const QString& page) {
        look(page, false);
        if (QAbstractButton* begin = answers ? pressable(QStringLiteral("新增")) : nullptr) {
            click(*begin);
            look(page + QStringLiteral("/新增"), false);
            QAbstractButton* end = pressable(QStringLiteral("存檔／取消"));
            QVERIFY2(end, qPrintable(page));
            answers->expectMsgBox(MsgAnswer::No);
            click(*end);
            QVERIFY2(pressable(QStringLiteral("新增")), qPrintable(page));
        }
        for (const QString& caption : {QStringLiteral("新增資料"), QStringLiteral("修改")}) {
            QAbstractButton* begin = pressable(caption);
            if (!begin)
                continue;
            click(*begin);
            onEveryPage(window, page + u'/' + caption, [&](const QString& place) { look(place, true); });
            QAbstractButton* cancel = pressable(QStringLiteral("取消"));
            QVERIFY2(cancel, qPrintable(page));
            click(*cancel);
            QVERIFY2(pressable(caption), qPrintable(page));
        }
    });
}

/// Logs in where the dialog is the login, which would end the program otherwise; closes any other.
inline void closeDialog(QWidget& dialog) {
    if (dialog.objectName() != QStringLiteral("frmLogin")) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    }
    control<QLineEdit>(dialog, QStringLiteral("txtUserName")).setText(QStringLiteral("tester"));
    control<QLineEdit>(dialog, QStringLiteral("txtPassword")).setText(QStringLiteral("secret"));
    click(control(dialog, QStringLiteral("cmdOK")));
}

/// For a test's data function: one row a window, its place in everyWindow().
inline void addEveryWindow() {
    QTest::addColumn<std::size_t>("window");
    registerWindows();
    const auto windows = everyWindow();
    for (std::size_t window = 0; window < windows.size(); ++window)
        QTest::addRow("%s", qPrintable(windows.at(window).title)) << window;
}

/// The same for the dialogs: their places in everyDialog().
inline void addEveryDialog() {
    QTest::addColumn<std::size_t>("dialog");
    const auto dialogs = everyDialog();
    for (std::size_t dialog = 0; dialog < dialogs.size(); ++dialog)
        QTest::addRow("%s", qPrintable(dialogs.at(dialog).title)) << dialog;
}

} // namespace pontrel::test
