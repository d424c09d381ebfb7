#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/controls/StatusBar.h"
#include "attendance/Form3.h"
#include "store/DataSource.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

// Which controls the window has, where they sit, and which routine answers each.

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int WindowMargin = 3;
constexpr int PageMargin = 4;
constexpr int ReadButtonsInRow = 5;

QString indexed(const QString& name, int index) {
    return u"%1(%2)"_s.arg(name).arg(index);
}

} // namespace

QPushButton* Form3::makeButton(QWidget* page, const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption, page);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    return button;
}

TDBGrid* Form3::makeGrid(QWidget* page, const QString& name, const QString& accessibleName) {
    auto* grid = new TDBGrid(page);
    grid->setObjectName(name);
    grid->setAccessibleName(accessibleName);
    return grid;
}

GridColumn Form3::named(const TranslationList& names, GridColumn column) const {
    column.cellText = [&names](const Value& code) {
        return code.isNull() ? QString() : names.text(code.joined());
    };
    return column;
}

void Form3::makeControls() {
    setFixedSize(ModuleWindowSize);
    move(0, 0);
    for (int index : {ReadTab, ExceptionTab}) {
        auto* source = new DataSource(this);
        source->setObjectName(indexed(u"Data1"_s, index));
        source->setDatabaseName(gDbPath + u"Pontrel.mdb"_s);
        Data1.at(static_cast<std::size_t>(index)) = source;
    }
    // The end of an import refreshes it as it is, also where its page was never opened.
    Data1[ExceptionTab]->setRecordSource(u"Atte03"_s);
    for (int index : {1, 2}) {
        auto* source = new DataSource(this);
        source->setObjectName(indexed(u"Data3"_s, index));
        source->setDatabaseName(gDbPath + u"Pontrel.mdb"_s);
        Data3.at(static_cast<std::size_t>(index)) = source;
    }

    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(u"SSTab1"_s);
    SSTab1->setAccessibleName(u"頁籤"_s);
    SSTab1->addTab(makeReadTab(), u"讀取記錄"_s);
    SSTab1->addTab(new QWidget, u"記錄查詢"_s);
    SSTab1->addTab(makeExceptionTab(), u"異常處理"_s);
    SSTab1->addTab(new QWidget, u"勤惰查詢"_s);
    SSTab1->setTabEnabled(PunchQueryTab, false);
    SSTab1->setTabEnabled(AttendanceQueryTab, false);

    StbTool = new StatusBar(this);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(WindowMargin, WindowMargin, WindowMargin, WindowMargin);
    rows->setSpacing(4);
    rows->addWidget(SSTab1, 1);
    rows->addWidget(StbTool);
}

QWidget* Form3::makeReadTab() {
    auto* page = new QWidget;
    TDBG1 = makeGrid(page, u"TDBG1"_s, u"打卡記錄"_s);
    TDBG1->setColumns({{u"員工碼"_s, u"EmpNo"_s, 90, Qt::AlignLeft, {}},
                       named(employeeNames_, {u"姓名"_s, u"empno"_s, 130, Qt::AlignLeft, {}}),
                       {u"打卡日期"_s, u"UseDate"_s, 104, Qt::AlignLeft, {}},
                       {u"打卡時間"_s, u"UseTime"_s, 80, Qt::AlignLeft, {}},
                       {u"班別"_s, u"class"_s, 66, Qt::AlignLeft, {}},
                       {u"機號"_s, u"ReaderId"_s, 66, Qt::AlignLeft, {}}});
    TDBG1->setSource(Data1[ReadTab]);

    ProgressBar1 = new QProgressBar(page);
    ProgressBar1->setObjectName(u"ProgressBar1"_s);
    ProgressBar1->setAccessibleName(u"執行進度"_s);
    ProgressBar1->setRange(0, 110);
    ProgressBar1->setValue(0);
    ProgressBar1->setFixedHeight(16);
    QSizePolicy keepsPlace = ProgressBar1->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    ProgressBar1->setSizePolicy(keepsPlace);
    ProgressBar1->hide();

    const QStringList captions{u"讀取記錄"_s, u"查詢"_s, u"首筆"_s, u"上一筆"_s, u"下一筆"_s,
                               u"末筆"_s,     u"更新"_s, u"列印"_s, u"離開"_s,   u"清除打卡記錄"_s};
    auto* buttons = new QGridLayout;
    buttons->setSpacing(4);
    for (int index = 0; index < captions.size(); ++index) {
        auto* button = makeButton(page, indexed(u"CtrlCmd0"_s, index), captions.at(index));
        buttons->addWidget(button, index / ReadButtonsInRow, index % ReadButtonsInRow);
        buttons->setColumnStretch(index % ReadButtonsInRow, 1);
        CtrlCmd0.at(static_cast<std::size_t>(index)) = button;
    }
    CtrlCmd0[7]->setEnabled(hasModuleWindow(7));

    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->setSpacing(4);
    rows->addWidget(TDBG1, 1);
    rows->addWidget(ProgressBar1);
    rows->addLayout(buttons);
    return page;
}

QWidget* Form3::makeExceptionTab() {
    auto* page = new QWidget;
    TDBG3[0] = makeGrid(page, u"TDBG3(0)"_s, u"異常記錄"_s);
    TDBG3[0]->setColumns({{u"出勤日期"_s, u"UseDate"_s, 70, Qt::AlignLeft, {}},
                          {u"員工碼"_s, u"EmpNo"_s, 42, Qt::AlignLeft, {}},
                          named(employeeNames_, {u"姓名"_s, u"empno"_s, 46, Qt::AlignLeft, {}}),
                          {u"時段"_s, u"TimeNo"_s, 30, Qt::AlignLeft, {}},
                          {u"上班"_s, u"Time1"_s, 39, Qt::AlignLeft, {}},
                          {u"下班"_s, u"Time2"_s, 39, Qt::AlignLeft, {}},
                          {u"上班"_s, u"Time3"_s, 39, Qt::AlignLeft, {}},
                          {u"下班"_s, u"Time4"_s, 39, Qt::AlignLeft, {}},
                          {u"遲到.早退"_s, u"DelayF"_s, 58, Qt::AlignRight, {}},
                          {u"時間一"_s, u"T1"_s, 42, Qt::AlignLeft, {}},
                          {u"時間二"_s, u"T2"_s, 42, Qt::AlignLeft, {}},
                          {u"逾時(分)"_s, u"Cushion3"_s, 50, Qt::AlignRight, {}}});
    TDBG3[0]->setSource(Data1[ExceptionTab]);
    TDBG4[0] = makeGrid(page, u"TDBG4(0)"_s, u"請假記錄"_s);
    TDBG4[0]->setColumns({{u"假單編號"_s, u"BusNo"_s, 88, Qt::AlignLeft, {}},
                          named(leaveNames_, {u"假名"_s, u"HoliNo"_s, 58, Qt::AlignLeft, {}}),
                          {u"開始"_s, u"BegTime"_s, 38, Qt::AlignLeft, {}},
                          {u"結束"_s, u"EndTime"_s, 38, Qt::AlignLeft, {}},
                          {u"時數"_s, u"HoliHours"_s, 32, Qt::AlignRight, {}}});
    TDBG4[0]->setSource(Data3[1]);
    TDBG4[1] = makeGrid(page, u"TDBG4(1)"_s, u"註銷記錄"_s);
    TDBG4[1]->setColumns({{u"註銷日期"_s, u"CnlDate"_s, 70, Qt::AlignLeft, {}},
                          named(reasonNames_, {u"上午上班"_s, u"cnlno1"_s, 56, Qt::AlignLeft, {}}),
                          named(reasonNames_, {u"上午下班"_s, u"cnlno2"_s, 56, Qt::AlignLeft, {}}),
                          named(reasonNames_, {u"下午上班"_s, u"cnlno3"_s, 56, Qt::AlignLeft, {}}),
                          named(reasonNames_, {u"下午下班"_s, u"cnlno4"_s, 56, Qt::AlignLeft, {}})});
    TDBG4[1]->setSource(Data3[2]);

    const QStringList captions{u"假單管理"_s, u"註銷管理"_s, u"加班管理"_s,
                               u"查詢"_s,     u"報表管理"_s, u"重新計算"_s};
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(4);
    for (int index = 0; index < captions.size(); ++index) {
        auto* button = makeButton(page, indexed(u"CmdCtrl"_s, index), captions.at(index));
        buttons->addWidget(button, 1);
        CmdCtrl.at(static_cast<std::size_t>(index)) = button;
    }
    CmdCtrl[0]->setEnabled(hasModuleWindow(4));
    CmdCtrl[1]->setEnabled(hasModuleWindow(5));
    CmdCtrl[2]->setEnabled(hasModuleWindow(6));
    CmdCtrl[3]->setEnabled(false); // its dialog of five kinds of query is not part of the program yet
    CmdCtrl[4]->setEnabled(hasModuleWindow(7));

    auto* small = new QHBoxLayout;
    small->setSpacing(4);
    // Just wide enough for whole leave note numbers here and whole reasons there.
    small->addWidget(TDBG4[0], 256);
    small->addWidget(TDBG4[1], 296);
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->setSpacing(4);
    rows->addWidget(TDBG3[0], 5);
    rows->addLayout(small, 3);
    rows->addLayout(buttons);
    return page;
}

void Form3::connectControls() {
    EnterAsTab::install(*this);
    for (std::size_t index = 0; index < CtrlCmd0.size(); ++index)
        onEvent(CtrlCmd0[index], &QPushButton::clicked, this,
                [this, index] { CtrlCmd0_Click(static_cast<int>(index)); });
    for (std::size_t index = 0; index < CmdCtrl.size(); ++index)
        onEvent(CmdCtrl[index], &QPushButton::clicked, this,
                [this, index] { CmdCtrl_Click(static_cast<int>(index)); });
    for (int index : {ReadTab, ExceptionTab})
        onEvent(Data1.at(static_cast<std::size_t>(index)), &DataSource::Reposition, this,
                [this, index] { Data1_Reposition(index); });
    onEvent(SSTab1, &QTabWidget::currentChanged, this, [this] { SSTab1_Click(); });
    // A click on the page's own tab binds it anew as well.
    onEvent(SSTab1->tabBar(), &QTabBar::tabBarClicked, this, [this](int index) {
        if (index == SSTab1->currentIndex())
            SSTab1_Click();
    });
    onEvent(StbTool, &StatusBar::leaveClicked, this, [this] { unload(); });
}

} // namespace pontrel
