#pragma once

#include "app/Module1.h"
#include "app/RecordPage.h"
#include "app/RecordWindow.h"
#include "app/Toolbar.h"
#include "app/WindowRegistry.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TDBGrid.h"
#include "store/DataSource.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/RecordTyping.h"
#include "support/TestStore.h"
#include "support/WindowFixture.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <array>

namespace pontrel::test {

/// A page of the test window: its table and two columns of it, and in what it differs.
struct PagePlan {
    QString table;
    QStringList columns;
    BarMap bar = wholeBar();
    RecordRules rules{};
    RecordSteps steps{};
};

/// A tab of the test window: two bound boxes, grid and bar.
class PlannedTab : public RecordTab {
  public:
    PlannedTab(int index, const PagePlan& plan)
        : RecordTab({.index = index,
                     .caption = plan.table,
                     .table = plan.table,
                     .frameCaption = QStringLiteral("編輯區"),
                     .bar = plan.bar})
        , plan_(plan) {
        TDBGrid* grid = makeGrid(QStringLiteral("TDBGrid2(%1)").arg(index));
        grid->setColumns({{plan.columns.at(0), plan.columns.at(0), 100, Qt::AlignLeft, {}},
                          {plan.columns.at(1), plan.columns.at(1), 150, Qt::AlignLeft, {}}});
        auto* line = new QHBoxLayout(&frame());
        for (int box = 0; box < plan.columns.size(); ++box) {
            const QString& column = plan.columns.at(box);
            auto* edit =
                fields().box(QStringLiteral("Text%1(%2)").arg(index + 1).arg(box), column, column, 0);
            line->addWidget(edit);
            if (box == 0)
                setFirstField(edit);
        }
        rows().addWidget(grid, 1);
        rows().addWidget(&frame());
        rows().addWidget(&bar());
    }

    [[nodiscard]] RecordRules rules() override { return plan_.rules; }
    [[nodiscard]] RecordSteps steps() override { return plan_.steps; }

  private:
    PagePlan plan_;
};

/// A record window of a test in place of Form1: one tab a page.
class PlannedWindow : public RecordWindow {
  public:
    PlannedWindow(QWidget* parent, const QList<PagePlan>& plans, Opening opening = Opening::AtLoad)
        : RecordWindow(parent, QStringLiteral("Form1"), QStringLiteral("記錄"), opening) {
        for (int index = 0; index < plans.size(); ++index)
            addTab(new PlannedTab(index, plans.at(index)));
        completeTabs();
    }

    using RecordWindow::page;
    [[nodiscard]] DataSource& source(int index) { return tab(index).source(); }
};

/// A record window of that tab alone, in place of Form1.
template<typename Tab>
class WindowOf : public RecordWindow {
  public:
    explicit WindowOf(QWidget* parent)
        : RecordWindow(parent, QStringLiteral("Form1"), QStringLiteral("記錄"), Opening::AtLoad) {
        addTab(new Tab);
        completeTabs();
    }
};

/// A stand-in for the reports window: tabs alone.
class TabsProbe : public Window {
  public:
    explicit TabsProbe(QWidget* parent) : Window(parent) {
        setObjectName(QStringLiteral("Form7"));
        auto* tabs = new QTabWidget(this);
        tabs->setObjectName(QStringLiteral("SSTab1"));
        for (int tab = 0; tab < 6; ++tab)
            tabs->addTab(new QWidget, QString::number(tab));
    }

  protected:
    void onLoad() override {}
    void onUnload() override { UnlockToolbar(); }
};

/// The test window over a store of its own.
class RecordFixture : public WindowFixture {
  public:
    Opening opening = Opening::AtLoad;
    bool hasReports = false; ///< Whether the program has a reports window, as far as a jump sees one.
    QList<PagePlan> plans{{QStringLiteral("Base01"), {QStringLiteral("TitleNo"), QStringLiteral("Title")}},
                          {QStringLiteral("Base02"), {QStringLiteral("UnitNo"), QStringLiteral("Unit")}},
                          {QStringLiteral("Base06"), {QStringLiteral("EmpNo"), QStringLiteral("EmpName")}}};

    RecordFixture() : WindowFixture(1) {}
    ~RecordFixture() {
        closeMainWindow();
        registerModuleWindow(1, {});
        registerModuleWindow(7, {});
    }

    /// Shows the main window and opens the test window by its toolbar button's routine.
    void open() {
        openOther([this](QWidget* parent) -> Window* { return new PlannedWindow(parent, plans, opening); });
    }
    /// The same with a window of the test's own.
    void openOther(std::function<Window*(QWidget* parent)> create) {
        showMainWindow();
        registerModuleWindow(7, {});
        if (hasReports)
            registerReports();
        registerModuleWindow(1, std::move(create));
        OpenToolWindow(1);
    }

    template<typename Tab>
    void openTab() {
        openOther([](QWidget* parent) -> Window* { return new WindowOf<Tab>(parent); });
    }

    static void registerReports() {
        registerModuleWindow(7, [](QWidget* parent) -> Window* { return new TabsProbe(parent); });
    }

    /// Titles of the codes 1, 2 and so on.
    void addTitles(int count) {
        for (int code = 1; code <= count; ++code)
            insertRow(store.database(), QStringLiteral("Base01"),
                      {{u"TitleNo", QString::number(code)}, {u"Title", QStringLiteral("職稱%1").arg(code)}});
    }

    [[nodiscard]] PlannedWindow& form() const { return *static_cast<PlannedWindow*>(moduleWindow(1)); }
    [[nodiscard]] QStringList titles() { return rowsOf(store.database(), QStringLiteral("Base01")); }
};

} // namespace pontrel::test
