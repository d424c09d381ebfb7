#pragma once

#include "app/Module1.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "app/controls/StatusBar.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/RecordTyping.h"
#include "support/TestStore.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

namespace pontrel::test {

/// A window of the program over a store of its own, with what a test does to it and sees on it. Fixtures of
/// single windows derive from it.
class WindowFixture {
  public:
    TestStore store;
    PromptAnswers answers;

    explicit WindowFixture(int module) : opened_([module] { return moduleWindow(module); }) {}
    /// For a window over another one, of that name.
    explicit WindowFixture(const QString& child) : opened_([child] { return childWindow(child); }) {}
    /// For whichever window that routine gives at the moment.
    explicit WindowFixture(std::function<Window*()> opened) : opened_(std::move(opened)) {}
    WindowFixture(const WindowFixture&) = delete;
    WindowFixture& operator=(const WindowFixture&) = delete;

    [[nodiscard]] Database& database() { return store.database(); }
    [[nodiscard]] MDI& mainWindow() { return shell_->window(); }
    [[nodiscard]] bool isOpen() const { return opened_() != nullptr; }
    [[nodiscard]] Window& form() const { return *opened_(); }

    template<typename Control = QWidget>
    [[nodiscard]] Control& at(const QString& name) const {
        return control<Control>(form(), name);
    }
    [[nodiscard]] QLineEdit& box(const QString& name) const { return at<QLineEdit>(name); }
    [[nodiscard]] QPushButton& button(const QString& name) const { return at<QPushButton>(name); }
    [[nodiscard]] QTabWidget& tabs() const { return at<QTabWidget>(QStringLiteral("SSTab1")); }
    [[nodiscard]] QString text(const QString& boxName) const { return box(boxName).text(); }
    [[nodiscard]] QString label(const QString& name) const { return at<QLabel>(name).text(); }
    [[nodiscard]] QString panel(int index) const { return label(QStringLiteral("StbTool(%1)").arg(index)); }
    [[nodiscard]] bool panel8Raised() const {
        return at<StatusBar>(QStringLiteral("StbTool")).isLeaveRaised();
    }

    /// Clicks as a mouse does.
    void press(const QString& name) { click(at(name)); }
    void clickTab(int index) {
        QTabBar* bar = tabs().tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    }
    /// Types into a box in place of what it holds, the focus on it.
    void type(const QString& name, const QString& text) {
        box(name).setFocus();
        typeInto(box(name), text);
    }
    /// The key goes to the control that has the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(mainWindow().windowHandle(), key, modifiers);
    }
    /// Types ASCII where the focus is.
    void keys(const QString& text) {
        for (const QChar each : text)
            QTest::keyClick(mainWindow().windowHandle(), each.toLatin1());
    }
    [[nodiscard]] QString focused() {
        const QWidget* focus = mainWindow().focusWidget();
        return focus ? focus->objectName() : QString();
    }

    /// The dialogs that have come: title and text of a message, the name of another.
    [[nodiscard]] QStringList seen() const {
        QStringList dialogs;
        for (const SeenPrompt& prompt : answers.seen())
            dialogs << (prompt.objectName == QStringLiteral("MsgBox") ? prompt.title + u'|' + prompt.text
                                                                      : prompt.objectName);
        return dialogs;
    }

    /// The indexes of the buttons of an array that are on.
    [[nodiscard]] QList<int> buttonsOn(const QString& array) const {
        constexpr int MostButtons = 15;
        QList<int> on;
        for (int index = 0; index < MostButtons; ++index) {
            const auto* each = form().findChild<QPushButton*>(QStringLiteral("%1(%2)").arg(array).arg(index));
            if (each && each->isEnabled())
                on << index;
        }
        return on;
    }
    [[nodiscard]] QList<int> tabsOn() const {
        QList<int> on;
        for (int index = 0; index < tabs().count(); ++index) {
            if (tabs().isTabEnabled(index))
                on << index;
        }
        return on;
    }

  protected:
    ~WindowFixture() = default;

    [[nodiscard]] bool hasMainWindow() const { return shell_ != nullptr; }
    /// Shows the main window idle over the store; the windows of the program are registered with it.
    void showMainWindow() { shell_ = std::make_unique<Shell>(store); }
    /// The same, and opens the module window by its toolbar button's routine.
    void openModule(int module) {
        showMainWindow();
        OpenToolWindow(static_cast<std::int16_t>(module));
    }

    /// Closes it, and all windows in it: for a fixture whose own members the windows use.
    void closeMainWindow() { shell_.reset(); }

  private:
    std::function<Window*()> opened_;
    std::unique_ptr<Shell> shell_;
};

} // namespace pontrel::test
