#pragma once

#include "app/Module1.h"
#include "app/ModuleProbes.h"
#include "app/RecordTyping.h"
#include "app/Window.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/TestStore.h"
#include "windows/RegisterWindows.h"
#include "app/Start.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace pontrel::test {

/// A child window open over Form8, as a user opens it.
class RecordChildFixture {
  public:
    TestStore store;
    PromptAnswers answers;

    /// The child window's name, and the button of Form8 that leads to it.
    RecordChildFixture(QString name, QString button) : name_(std::move(name)), button_(std::move(button)) {}

    void open() {
        if (!shell_) {
            shell_ = std::make_unique<Shell>(store);
            probes.registerAll();
        }
        if (!moduleWindow(8))
            click(test::button(8));
        click(control(*moduleWindow(8), button_));
    }

    [[nodiscard]] Database& database() { return store.database(); }
    [[nodiscard]] bool isOpen() const { return childWindow(name_) != nullptr; }
    [[nodiscard]] Window& form() const { return *childWindow(name_); }

    template<typename Control = QWidget>
    [[nodiscard]] Control& at(const QString& name) const {
        return control<Control>(form(), name);
    }
    [[nodiscard]] QString text(const QString& name) const { return at<QLineEdit>(name).text(); }
    void press(const QString& name) { click(at<QPushButton>(name)); }
    void type(const QString& name, const QString& text) { typeInto(at<QLineEdit>(name), text); }

    /// The indexes of the buttons that are on.
    [[nodiscard]] QList<int> buttonsOn() const {
        QList<int> on;
        for (int index = 0; index <= 9; ++index) {
            const auto* each = form().findChild<QPushButton*>(QStringLiteral("CtrlCmd(%1)").arg(index));
            if (each && each->isEnabled())
                on << index;
        }
        return on;
    }
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
    QString name_;
    QString button_;
    std::unique_ptr<Shell> shell_;
};

/// The texts of a window that have not room enough, and the controls that lie beyond its edge.
[[nodiscard]] inline QStringList cutTexts(const QWidget& window) {
    QStringList cut;
    for (const QWidget* each : window.findChildren<QWidget*>()) {
        if (!each->isVisible() || each->objectName().startsWith(QStringLiteral("qt_")))
            continue;
        const bool hasCaption = qobject_cast<const QLabel*>(each) || qobject_cast<const QCheckBox*>(each);
        const auto* button = qobject_cast<const QPushButton*>(each);
        if ((hasCaption && each->width() < each->sizeHint().width()) ||
            (button && button->width() < button->fontMetrics().horizontalAdvance(button->text()) + 8) ||
            !window.rect().contains(QRect(each->mapTo(&window, QPoint()), each->size())))
            cut << each->objectName();
    }
    return cut;
}

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
