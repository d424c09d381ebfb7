#pragma once

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/Module1.h"
#include "app/RecordPage.h"
#include "app/RecordTyping.h"
#include "app/Toolbar.h"
#include "app/Window.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TDBGrid.h"
#include "store/DataSource.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/TestStore.h"

#include <QGroupBox>
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

/// A record window of a test in place of Form1: one tab a page, each with two bound boxes, grid and bar.
class RecordWindow : public Window {
  public:
    RecordWindow(QWidget* parent, const QList<PagePlan>& plans) : Window(parent), plans_(plans) {
        using namespace Qt::StringLiterals;
        setObjectName(u"Form1"_s);
        setAccessibleName(u"記錄"_s);
        setGeometry(QRect(QPoint(0, 0), ModuleWindowSize));
        auto* rows = new QVBoxLayout(this);
        SSTab1 = new QTabWidget(this);
        SSTab1->setObjectName(u"SSTab1"_s);
        SSTab1->setAccessibleName(u"頁籤"_s);
        StbTool = new StatusBar(this);
        rows->addWidget(SSTab1, 1);
        rows->addWidget(StbTool);
        for (int tab = 0; tab < plans_.size(); ++tab)
            makePage(tab);
        EnterAsTab::install(*this);
    }

    [[nodiscard]] RecordPage& page(int tab) { return *pages_.at(tab); }
    [[nodiscard]] DataSource& source(int tab) { return *sources_.at(tab); }

  protected:
    void onLoad() override {
        OpenDB();
        openTrapped([this] {
            for (int tab = 0; tab < plans_.size(); ++tab)
                pages_.at(tab)->open(plans_.at(tab).table);
            pages_.constFirst()->RefreshRecordBar();
        });
    }
    void onUnload() override {
        CloseDB();
        UnlockToolbar();
    }

  private:
    void makePage(int tab) {
        using namespace Qt::StringLiterals;
        const PagePlan& plan = plans_.at(tab);
        auto* source = new DataSource(this);
        auto* content = new QWidget;
        auto* rows = new QVBoxLayout(content);
        auto* grid = new TDBGrid(content);
        grid->setObjectName(u"TDBGrid2(%1)"_s.arg(tab));
        grid->setAccessibleName(u"資料"_s);
        grid->setColumns({{plan.columns.at(0), plan.columns.at(0), 100, Qt::AlignLeft, {}},
                          {plan.columns.at(1), plan.columns.at(1), 150, Qt::AlignLeft, {}}});
        auto* frame = new QGroupBox(u"編輯區"_s, content);
        frame->setObjectName(u"Frame1(%1)"_s.arg(tab));
        auto* fields = new QHBoxLayout(frame);
        QList<QLineEdit*> boxes;
        for (const QString& column : plan.columns) {
            auto* box = new QLineEdit(frame);
            box->setObjectName(u"Text%1(%2)"_s.arg(tab + 1).arg(boxes.size()));
            box->setAccessibleName(column);
            fields->addWidget(box);
            source->bind(box, "text", column);
            boxes << box;
        }
        auto* bar = new RecordBar(u"CtrlCmd%1"_s.arg(tab), plan.bar, ModuleWindowSize.width() - 40, content);
        rows->addWidget(grid, 1);
        rows->addWidget(frame);
        rows->addWidget(bar);
        SSTab1->addTab(content, plan.table);
        sources_ << source;
        pages_ << new RecordPage(*this,
                                 {.source = source,
                                  .editArea = {frame},
                                  .firstField = boxes.constFirst(),
                                  .bar = bar,
                                  .grid = grid,
                                  .statusBar = StbTool,
                                  .tabs = SSTab1,
                                  .tab = tab},
                                 plan.rules, plan.steps);
    }

    QList<PagePlan> plans_;
    QTabWidget* SSTab1 = nullptr;
    StatusBar* StbTool = nullptr;
    QList<DataSource*> sources_;
    QList<RecordPage*> pages_;
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

/// The test window open over a store of its own, with what a test does to it and sees on it.
class RecordFixture {
  public:
    TestStore store;
    PromptAnswers answers;
    QList<PagePlan> plans{{QStringLiteral("Base01"), {QStringLiteral("TitleNo"), QStringLiteral("Title")}},
                          {QStringLiteral("Base02"), {QStringLiteral("UnitNo"), QStringLiteral("Unit")}},
                          {QStringLiteral("Base06"), {QStringLiteral("EmpNo"), QStringLiteral("EmpName")}}};

    ~RecordFixture() {
        registerModuleWindow(1, {});
        registerModuleWindow(7, {});
    }

    /// Shows the main window and opens the test window by its toolbar button's routine.
    void open() {
        shell_ = std::make_unique<Shell>(store);
        registerModuleWindow(1,
                             [this](QWidget* parent) -> Window* { return new RecordWindow(parent, plans); });
        OpenToolWindow(1);
    }

    /// Makes the program have a reports window, as far as a jump sees one.
    static void registerReports() {
        registerModuleWindow(7, [](QWidget* parent) -> Window* { return new TabsProbe(parent); });
    }

    /// Titles of the codes 1, 2 and so on.
    void addTitles(int count) {
        for (int code = 1; code <= count; ++code)
            insertRow(store.database(), QStringLiteral("Base01"),
                      {{u"TitleNo", QString::number(code)}, {u"Title", QStringLiteral("職稱%1").arg(code)}});
    }

    [[nodiscard]] RecordWindow& form() const { return *static_cast<RecordWindow*>(moduleWindow(1)); }
    [[nodiscard]] bool isOpen() const { return moduleWindow(1) != nullptr; }

    template<typename Control = QWidget>
    [[nodiscard]] Control& at(const QString& name) const {
        return control<Control>(form(), name);
    }
    [[nodiscard]] QTabWidget& tabs() const { return at<QTabWidget>(QStringLiteral("SSTab1")); }
    [[nodiscard]] QString panel(int index) const {
        return at<StatusBar>(QStringLiteral("StbTool")).text(index);
    }
    [[nodiscard]] bool panel8Raised() const {
        return at<StatusBar>(QStringLiteral("StbTool")).isLeaveRaised();
    }
    [[nodiscard]] QString text(const QString& name) const { return at<QLineEdit>(name).text(); }
    [[nodiscard]] QStringList titles() { return rowsOf(store.database(), QStringLiteral("Base01")); }

    void press(const QString& name) { click(at<QPushButton>(name)); }
    void type(const QString& name, const QString& text) { typeInto(at<QLineEdit>(name), text); }

    /// Clicks the tab as a mouse does.
    void clickTab(int index) {
        QTabBar* bar = tabs().tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    }

    /// The indexes of a bar's buttons that are on.
    [[nodiscard]] QList<int> buttonsOn(const QString& array) const {
        QList<int> on;
        for (int index = 0; index <= 14; ++index) {
            const auto* button =
                form().findChild<QPushButton*>(QStringLiteral("%1(%2)").arg(array).arg(index));
            if (button && button->isEnabled())
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

  private:
    std::unique_ptr<Shell> shell_;
};

} // namespace pontrel::test
