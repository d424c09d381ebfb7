#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/Lookup.h"
#include "app/Module1.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TabPages.h"
#include "store/DataSource.h"
#include "windows/attendance/Form3.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

// Which controls the window has, where they sit, and which routine answers each.

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int PageMargin = 4;
constexpr int ReadButtonsInRow = 5;
constexpr int CodeBoxWidth = 110;

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
    for (int index = 0; index < TabCount; ++index) {
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

    SSTab1->addTab(makeReadTab(), u"讀取記錄"_s);
    SSTab1->addTab(makePunchQueryTab(), u"記錄查詢"_s);
    SSTab1->addTab(makeExceptionTab(), u"異常處理"_s);
    SSTab1->addTab(makeAttendanceQueryTab(), u"勤惰查詢"_s);
    enableJumps();
    addStatusBar();
}

std::vector<GridColumn> Form3::punchColumns() const {
    return {{u"員工碼"_s, u"EmpNo"_s, 90, Qt::AlignLeft, {}},
            named(employeeNames_, {u"姓名"_s, u"empno"_s, 130, Qt::AlignLeft, {}}),
            {u"打卡日期"_s, u"UseDate"_s, 104, Qt::AlignLeft, {}},
            {u"打卡時間"_s, u"UseTime"_s, 80, Qt::AlignLeft, {}},
            {u"班別"_s, u"class"_s, 66, Qt::AlignLeft, {}},
            {u"機號"_s, u"ReaderId"_s, 66, Qt::AlignLeft, {}}};
}

QWidget* Form3::makeReadTab() {
    auto* page = new QWidget;
    TDBG1 = makeGrid(page, u"TDBG1"_s, u"打卡記錄"_s);
    TDBG1->setColumns(punchColumns());
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
    return makeResultPage(
        page, TDBG3[0], 0, 0,
        {u"假單管理"_s, u"註銷管理"_s, u"加班管理"_s, u"查詢"_s, u"報表管理"_s, u"重新計算"_s});
}

QWidget* Form3::makeAttendanceQueryTab() {
    auto* page = new QWidget;
    TDBG3[1] = makeGrid(page, u"TDBG3(1)"_s, u"勤惰記錄"_s);
    TDBG3[1]->setColumns({{u"出勤日期"_s, u"UseDate"_s, 72, Qt::AlignLeft, {}},
                          {u"員工碼"_s, u"EmpNo"_s, 50, Qt::AlignLeft, {}},
                          named(employeeNames_, {u"姓名"_s, u"empno"_s, 66, Qt::AlignLeft, {}}),
                          {u"時段"_s, u"TimeNo"_s, 32, Qt::AlignLeft, {}},
                          {u"上午上班"_s, u"Time1"_s, 56, Qt::AlignLeft, {}},
                          {u"上午下班"_s, u"Time2"_s, 56, Qt::AlignLeft, {}},
                          {u"下午上班"_s, u"Time3"_s, 56, Qt::AlignLeft, {}},
                          {u"下午下班"_s, u"Time4"_s, 56, Qt::AlignLeft, {}},
                          {u"異常"_s, u"Expt"_s, 34, Qt::AlignLeft, {}},
                          {u"逾時(分)"_s, u"Cushion3"_s, 54, Qt::AlignRight, {}}});
    TDBG3[1]->setSource(Data1[AttendanceQueryTab]);
    return makeResultPage(page, TDBG3[1], 2, 6,
                          {u"假單管理"_s, u"註銷管理"_s, u"加班管理"_s, u"查詢"_s, u"報表管理"_s, u"離開"_s});
}

QWidget* Form3::makeResultPage(QWidget* page, TDBGrid* results, std::size_t firstSmallGrid,
                               std::size_t firstButton, const QStringList& captions) {
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->setSpacing(4);
    rows->addWidget(results, 5);
    rows->addLayout(makeSmallGrids(page, firstSmallGrid), 3);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(4);
    std::size_t index = firstButton;
    for (const QString& caption : captions) {
        auto* button = makeButton(page, indexed(u"CmdCtrl"_s, static_cast<int>(index)), caption);
        buttons->addWidget(button, 1);
        CmdCtrl.at(index++) = button;
    }
    rows->addLayout(buttons);
    return page;
}

QLayout* Form3::makeSmallGrids(QWidget* page, std::size_t first) {
    const auto number = static_cast<int>(first);
    auto* leave = makeGrid(page, indexed(u"TDBG4"_s, number), u"請假記錄"_s);
    leave->setColumns({{u"假單編號"_s, u"BusNo"_s, 88, Qt::AlignLeft, {}},
                       named(leaveNames_, {u"假名"_s, u"HoliNo"_s, 58, Qt::AlignLeft, {}}),
                       {u"開始"_s, u"BegTime"_s, 38, Qt::AlignLeft, {}},
                       {u"結束"_s, u"EndTime"_s, 38, Qt::AlignLeft, {}},
                       {u"時數"_s, u"HoliHours"_s, 32, Qt::AlignRight, {}}});
    leave->setSource(Data3[1]);
    auto* writeOffs = makeGrid(page, indexed(u"TDBG4"_s, number + 1), u"註銷記錄"_s);
    writeOffs->setColumns({{u"註銷日期"_s, u"CnlDate"_s, 70, Qt::AlignLeft, {}},
                           named(reasonNames_, {u"上午上班"_s, u"cnlno1"_s, 56, Qt::AlignLeft, {}}),
                           named(reasonNames_, {u"上午下班"_s, u"cnlno2"_s, 56, Qt::AlignLeft, {}}),
                           named(reasonNames_, {u"下午上班"_s, u"cnlno3"_s, 56, Qt::AlignLeft, {}}),
                           named(reasonNames_, {u"下午下班"_s, u"cnlno4"_s, 56, Qt::AlignLeft, {}})});
    writeOffs->setSource(Data3[2]);
    TDBG4.at(first) = leave;
    TDBG4.at(first + 1) = writeOffs;
    auto* small = new QHBoxLayout;
    small->setSpacing(4);
    // Just wide enough for whole leave note numbers here and whole reasons there.
    small->addWidget(leave, 256);
    small->addWidget(writeOffs, 296);
    return small;
}

QWidget* Form3::makePunchQueryTab() {
    auto* page = new QWidget;
    auto* caption = new QLabel(u"員工編號："_s, page);
    caption->setObjectName(u"Label4(0)"_s);
    Text1 = new QLineEdit(page);
    Text1->setObjectName(u"Text1"_s);
    Text1->setAccessibleName(u"員工編號"_s);
    Text1->setFixedWidth(CodeBoxWidth);
    caption->setBuddy(Text1);
    Search = makeSearchButton(page, u"Search"_s, u"查詢員工代碼"_s);
    Label3 = new QLabel(page);
    Label3->setObjectName(u"Label3"_s);
    Label3->setTextFormat(Qt::PlainText);
    TDBG2 = makeGrid(page, u"TDBG2"_s, u"打卡記錄"_s);
    TDBG2->setColumns(punchColumns());
    TDBG2->setSource(Data1[PunchQueryTab]);

    auto* code = new QHBoxLayout;
    code->setSpacing(6);
    code->addWidget(caption);
    code->addWidget(Text1);
    code->addWidget(Search);
    code->addSpacing(6);
    code->addWidget(Label3, 1);
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->setSpacing(4);
    rows->addLayout(code);
    rows->addWidget(TDBG2, 1);
    return page;
}

void Form3::enableJumps() {
    CtrlCmd0[7]->setEnabled(hasModuleWindow(7));
    for (const std::size_t first : {0U, 6U}) {
        CmdCtrl.at(first)->setEnabled(hasModuleWindow(4));
        CmdCtrl.at(first + 1)->setEnabled(hasModuleWindow(5));
        CmdCtrl.at(first + 2)->setEnabled(hasModuleWindow(6));
        CmdCtrl.at(first + 4)->setEnabled(hasModuleWindow(7));
    }
}

void Form3::connectControls() {
    // Enter in the code box is its own: it runs the query.
    Text1->removeEventFilter(EnterAsTab::install(*this));
    onEvent(Text1, &QLineEdit::textChanged, this, [this] { Text1_Change(); });
    onEvent(Text1, &QLineEdit::returnPressed, this, [this] { Text1_Enter(); });
    onEvent(Search, &QPushButton::clicked, this, [this] { Search_Click(); });
    for (std::size_t index = 0; index < CtrlCmd0.size(); ++index)
        onEvent(CtrlCmd0[index], &QPushButton::clicked, this,
                [this, index] { CtrlCmd0_Click(static_cast<int>(index)); });
    for (std::size_t index = 0; index < CmdCtrl.size(); ++index)
        onEvent(CmdCtrl[index], &QPushButton::clicked, this,
                [this, index] { CmdCtrl_Click(static_cast<int>(index)); });
    for (int index = 0; index < TabCount; ++index)
        onEvent(Data1.at(static_cast<std::size_t>(index)), &DataSource::Reposition, this,
                [this, index] { Data1_Reposition(index); });
    onEvent(SSTab1, &QTabWidget::currentChanged, this, [this] { SSTab1_Click(); });
    // A click on the page's own tab binds it anew as well.
    onEvent(SSTab1, &TabPages::frontTabClicked, this, [this] { SSTab1_Click(); });
}

} // namespace pontrel
