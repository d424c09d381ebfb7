#pragma once

#include "app/ModuleProbes.h"
#include "app/Start.h"
#include "support/WindowFixture.h"
#include "windows/RegisterWindows.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QMessageBox>

namespace pontrel::test {

/// A child window open over Form8, as a user opens it.
class RecordChildFixture : public WindowFixture {
  public:
    /// The child window's name, and the button of Form8 that leads to it.
    RecordChildFixture(const QString& name, QString button)
        : WindowFixture(name), button_(std::move(button)) {}
    ~RecordChildFixture() { closeMainWindow(); }

    void open() {
        if (!hasMainWindow()) {
            showMainWindow();
            probes.registerAll();
        }
        if (!moduleWindow(8))
            click(test::button(8));
        click(control(*moduleWindow(8), button_));
    }

    [[nodiscard]] QList<int> buttonsOn() const { return WindowFixture::buttonsOn(QStringLiteral("CtrlCmd")); }
    /// The captions of the bar, in the order of their indexes.
    [[nodiscard]] QStringList barCaptions() const {
        QStringList captions;
        for (int index = 0; index <= 9; ++index) {
            if (const auto* each = form().findChild<QPushButton*>(QStringLiteral("CtrlCmd(%1)").arg(index)))
                captions << each->text();
        }
        return captions;
    }

    ModuleProbes probes;

  private:
    QString button_;
};

/// Logs in as the store's user and runs a routine on the child window once the main window stands idle;
/// writes what the one message box says that comes then. For a process of its own.
inline int runInChild(const QString& name, const std::function<void(Window&)>& routine) {
    PromptAnswers answers;
    answers.expect(QStringLiteral("frmLogin"), [](QWidget& dialog) {
        QTest::keyClicks(&control(dialog, QStringLiteral("txtUserName")), QStringLiteral("tester"));
        QTest::keyClicks(&control(dialog, QStringLiteral("txtPassword")), QStringLiteral("secret"));
        click(control(dialog, QStringLiteral("cmdOK")));
    });
    answers.expect(QStringLiteral("MsgBox"), [](QWidget& dialog) {
        const auto& box = static_cast<QMessageBox&>(dialog);
        writeLine(QStringLiteral("%1|%2").arg(box.windowTitle(), box.text().simplified()));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QTimer idle;
    QObject::connect(&idle, &QTimer::timeout, &idle, [&] {
        if (!gMDI || !gMDI->isVisible() || !gSysMenu)
            return;
        idle.stop();
        OpenToolWindow(8);
        openChildWindow(name);
        routine(*childWindow(name));
        writeLine(QStringLiteral("the program goes on"));
        QCoreApplication::quit();
    });
    idle.start(10);
    registerWindows();
    return Main();
}

} // namespace pontrel::test
