#pragma once

#include "app/GridTexts.h"
#include "app/LookupFixture.h"
#include "app/ModuleProbes.h"
#include "app/RecordTyping.h"
#include "app/Toolbar.h"
#include "app/Window.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/TestStore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>

namespace pontrel::test {

/// The master data window open over a store of its own, with what a test does to it and sees on it.
class Form1Fixture {
  public:
    TestStore store;
    PromptAnswers answers;

    Form1Fixture() { clearPicks(); }
    ~Form1Fixture() { clearPicks(); }
    Form1Fixture(const Form1Fixture&) = delete;
    Form1Fixture& operator=(const Form1Fixture&) = delete;

    /// Shows the main window and opens the master data by its toolbar button's routine, on a tab.
    void open(int tab = 0) {
        shell_ = std::make_unique<Shell>(store);
        OpenToolWindow(1);
        if (tab != 0)
            clickTab(tab);
    }

    [[nodiscard]] Database& database() { return store.database(); }
    [[nodiscard]] MDI& mainWindow() { return shell_->window(); }
    [[nodiscard]] Window& form() const { return *moduleWindow(1); }
    template<typename Control = QWidget>
    [[nodiscard]] Control& at(const QString& name) const {
        return control<Control>(form(), name);
    }
    [[nodiscard]] QLineEdit& box(const QString& name) const { return at<QLineEdit>(name); }
    [[nodiscard]] QString text(const QString& name) const { return box(name).text(); }
    [[nodiscard]] QString label(const QString& name) const { return at<QLabel>(name).text(); }
    [[nodiscard]] QTabWidget& tabs() const { return at<QTabWidget>(QStringLiteral("SSTab1")); }
    [[nodiscard]] QString panel(int index) const { return label(QStringLiteral("StbTool(%1)").arg(index)); }

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
    [[nodiscard]] QString focused() {
        const QWidget* focus = mainWindow().focusWidget();
        return focus ? focus->objectName() : QString();
    }

    /// The indexes of a bar's buttons that are on.
    [[nodiscard]] QList<int> buttonsOn(int tab) const {
        QList<int> on;
        for (int index = 0; index <= 14; ++index) {
            const auto* each =
                form().findChild<QPushButton*>(QStringLiteral("CtrlCmd%1(%2)").arg(tab).arg(index));
            if (each && each->isEnabled())
                on << index;
        }
        return on;
    }
    [[nodiscard]] QStringList captionsOf(const QString& grid) const {
        return shownCaptions(at<TDBGrid>(grid));
    }

  private:
    std::unique_ptr<Shell> shell_;
};

} // namespace pontrel::test
