#include "windows/system/FrmSysSet.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/RecordFields.h"
#include "app/WindowRegistry.h"
#include "app/controls/Buttons.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "windows/system/FrmBrower.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QString Settings = u"Syst01"_s;
const QString MinutesHint = u"單位：分鐘\n只作記錄：請假與加班的時數不按此值計算。"_s;
const QString Unchecked = u"\n存檔時不檢查這個代碼是否存在。"_s;
constexpr int UnitWidth = 32; ///< Of the grid column of units, with a gap behind them.

/// A box of the screen, its unit or an empty text, and its place in the frame's grid.
struct Setting {
    QString caption;
    QString column;
    QString unit;
    int row;
    int column0;  ///< Of the caption; the box and what belongs to it stand behind.
    int span;     ///< Grid columns of the box.
    QString hint; ///< What it does.
};

const std::array<Setting, 10> Boxes = {{
    {u"使用記錄來源路徑："_s,
     u"HandPath"_s,
     {},
     0,
     0,
     4,
     u"按「讀取記錄」時先開啟的資料夾。\n相對路徑由程式所在的資料夾算起。"_s},
    {u"員工代碼長度："_s,
     u"LenEmpNo"_s,
     {},
     1,
     0,
     1,
     u"打卡檔的卡號欄由右邊取這麼多個字元為員工代碼，\n清單中的員工代碼也按此長度截取。已存的代碼不變。"_s},
    {u"間隔秒數："_s,
     u"IntervalSec"_s,
     {},
     1,
     3,
     1,
     u"按功能鍵後，在這麼多秒以內刷卡才算該功能鍵的班別。\n只比較相隔時間的秒數（0 至 59），不看分鐘。"_s},
    {u"請假基本單位："_s, u"HoliMin"_s, u"分"_s, 2, 0, 1, MinutesHint},
    {u"加班基本單位："_s, u"OverTimeMin"_s, u"分"_s, 2, 3, 1, MinutesHint},
    {u"休假代碼："_s,
     u"ThisYearRest"_s,
     {},
     3,
     0,
     1,
     u"休假的假別代碼，計算可休天數與假單餘額時採用。"_s + Unchecked},
    {u"去年保留休假："_s,
     u"LastYearRest"_s,
     {},
     3,
     3,
     1,
     u"去年保留休假的假別代碼，計算假單餘額時採用。"_s + Unchecked},
    {u"事假："_s, u"Leave"_s, {}, 4, 0, 1, u"事假的假別代碼，計算可休天數與假單餘額時採用。"_s + Unchecked},
    {u"病假："_s, u"Sick"_s, {}, 4, 3, 1, u"病假的假別代碼，計算可休天數與假單餘額時採用。"_s + Unchecked},
    {u"公司機關名稱："_s, u"CmpName"_s, {}, 5, 0, 5, u"印在每張報表的標題。"_s},
}};

} // namespace

FrmSysSet::FrmSysSet(QWidget* parent) : RecordChild(parent, u"FrmSysSet"_s, u"系統設定"_s, Settings) {
    makeFrame();
    auto* bar = new RecordBar(
        u"CtrlCmd"_s,
        {{0, BarAction::Edit}, {1, BarAction::Cancel}, {2, BarAction::Save}, {3, BarAction::Leave}},
        contentWidth(), this);
    rows().addWidget(bar);
    placeBehind(bar->button(BarAction::Save), {CmdBrow});
    // Editing is on without a row as well, and then ends in a run-time error: the row must exist.
    makePage({.editArea = {Frame1}, .firstField = Text1[0], .bar = bar},
             {.alsoWithoutRows = {BarAction::Edit}});
    EnterAsTab::install(*this);
    onEvent(CmdBrow, &QPushButton::clicked, this, [this] { CmdBrow_Click(); });
}

void FrmSysSet::registerWindow() {
    registerChildWindow(u"FrmSysSet"_s, [](QWidget* parent) -> Window* { return new FrmSysSet(parent); });
}

void FrmSysSet::makeFrame() {
    Frame1 = new QGroupBox(this);
    Frame1->setObjectName(u"Frame1"_s);
    auto* grid = new QGridLayout(Frame1);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(12);
    grid->setColumnMinimumWidth(2, UnitWidth);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(4, 1);
    for (int index = 0; index < static_cast<int>(Boxes.size()); ++index) {
        makeBox(index);
        if (index == 0) {
            CmdBrow = makeButton(Frame1, u"CmdBrow"_s, u"瀏覽"_s);
            CmdBrow->setToolTip(
                u"選取資料夾。\n在選取視窗按「取消」，路徑會換成上次讀取所用的，或成為空白。"_s);
            grid->addWidget(CmdBrow, 0, 5);
        }
    }
    rows().addWidget(Frame1);
    rows().addStretch(1);
}

void FrmSysSet::makeBox(int index) {
    const Setting& setting = Boxes.at(static_cast<std::size_t>(index));
    auto& grid = *static_cast<QGridLayout*>(Frame1->layout());
    const RecordFields fields(*Frame1, Data1(), Settings);
    QLineEdit* box =
        fields.box(indexed(u"Text1"_s, index), spoken(setting.caption) + setting.unit, setting.column);
    QLabel* label = fields.caption(setting.caption, box);
    label->setObjectName(indexed(u"Label1"_s, index));
    Text1.at(static_cast<std::size_t>(index)) = box;
    grid.addWidget(label, setting.row, setting.column0, Qt::AlignRight);
    grid.addWidget(box, setting.row, setting.column0 + 1, 1, setting.span);
    for (QWidget* part : std::initializer_list<QWidget*>{label, box})
        part->setToolTip(setting.hint);
    box->setAccessibleDescription(setting.hint);
    if (!setting.unit.isEmpty())
        grid.addWidget(fields.caption(setting.unit), setting.row, setting.column0 + 2);
}

void FrmSysSet::CmdBrow_Click() {
    FrmBrower::ask(this);
    // Whichever button ended it: after a cancel the box takes the folder that was last in use, or none. Meant
    // so.
    Text1[0]->setText(gHandPath);
}

} // namespace pontrel
