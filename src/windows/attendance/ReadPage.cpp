#include "windows/attendance/ReadPage.h"

#include "app/ActionKeys.h"
#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/FrmI1Date.h"
#include "app/Prompts.h"
#include "app/SafetyCopies.h"
#include "app/WindowRegistry.h"
#include "rules/ActionHost.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "store/Format.h"
#include "store/StatementText.h"

#include <QGridLayout>
#include <QProgressBar>
#include <QPushButton>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int ButtonsInRow = 5;
constexpr int PurgeGap = 18;
constexpr int BarHeight = 16;
constexpr int BarEnd = 110;

const QString PurgeHint = u"刪除所選日期當天及以前的打卡記錄，不再詢問；勤惰與異常的結果保留。\n"
                          u"注意：在日期視窗按「取消」也會刪除，而且是全部的打卡記錄。\n"
                          u"不想刪除時，請選一個比所有打卡記錄都早的日期，再按「確定」。"_s;

} // namespace

ReadPage::ReadPage(int tab, AttendanceNames& names) : AttendancePage(tab, u"Atte01"_s, names) {
    makeControls();
}

void ReadPage::makeControls() {
    TDBGrid* TDBG1 = makeGrid(u"TDBG1"_s, u"打卡記錄"_s, punchColumns(), source());
    TDBG1->setEmptyText(u"沒有打卡記錄。請按「讀取記錄」讀入打卡檔，或按「查詢」另選日期。"_s);
    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(u"ProgressBar1"_s);
    ProgressBar1_->setAccessibleName(u"執行進度"_s);
    ProgressBar1_->setRange(0, BarEnd);
    ProgressBar1_->setValue(0);
    ProgressBar1_->setFixedHeight(BarHeight);
    QSizePolicy keepsPlace = ProgressBar1_->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    ProgressBar1_->setSizePolicy(keepsPlace);
    ProgressBar1_->hide();

    const QStringList captions{u"讀取記錄"_s, u"查詢"_s, u"首筆"_s, u"上一筆"_s, u"下一筆"_s,
                               u"末筆"_s,     u"更新"_s, u"列印"_s, u"離開"_s,   u"清除打卡記錄"_s};
    std::vector<QPushButton*> made;
    auto* buttons = new QGridLayout;
    buttons->setSpacing(Margin);
    for (int index = 0; index < ButtonCount; ++index) {
        QPushButton* button = makeButton(indexed(u"CtrlCmd0"_s, index), captions.at(index));
        // The purge stands a little apart; the button above it takes the gap too.
        if (index == Purge)
            buttons->addWidget(button, 1, ButtonsInRow);
        else
            buttons->addWidget(button, index / ButtonsInRow, index % ButtonsInRow, 1,
                               index == ButtonsInRow - 1 ? 2 : 1);
        if (index == Print)
            button->setEnabled(hasModuleWindow(7));
        onEvent(button, &QPushButton::clicked, this, [this, index] { CtrlCmd0_Click(index); });
        made.push_back(button);
    }
    giveKey(*made.at(Query), ActionKey::Query);
    giveKey(*made.at(Refresh), ActionKey::Refresh);
    giveKey(*made.at(Print), ActionKey::Print);

    for (int column = 0; column <= ButtonsInRow; ++column)
        buttons->setColumnStretch(column, column == ButtonsInRow - 1 ? 0 : 1);
    buttons->setColumnMinimumWidth(ButtonsInRow - 1, PurgeGap);
    made.at(Purge)->setToolTip(PurgeHint);
    made.at(Purge)->setAccessibleDescription(PurgeHint);

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    rows->setSpacing(Margin);
    rows->addWidget(TDBG1, 1);
    rows->addWidget(ProgressBar1_);
    rows->addLayout(buttons);
}

void ReadPage::CtrlCmd0_Click(int index) {
    switch (index) {
    case Read:
        Q_EMIT readPunchFile();
        return;
    case Query:
        query();
        return;
    case Refresh:
        run();
        return;
    case Print:
        Q_EMIT jump(7, 2);
        return;
    case Leave:
        Q_EMIT leave();
        return;
    case Purge:
        purge();
        return;
    default:
        move(index);
    }
}

void ReadPage::move(int index) {
    DataSource& punches = source();
    if (punches.isEmpty())
        return;
    switch (index) {
    case First:
        punches.MoveFirst();
        return;
    case Previous:
        punches.MovePrevious();
        if (punches.recordset().AtBOF())
            punches.MoveFirst();
        return;
    case Next:
        punches.MoveNext();
        if (punches.recordset().AtEOF())
            punches.MoveLast();
        return;
    default:
        punches.MoveLast();
    }
}

void ReadPage::query() {
    // Deliberate: the date of a cancelled dialog is not tested for, and shows an empty day.
    FrmI1Date::ask(this);
    show(u"Select * from Atte01  Where UseDate = "_s + dateLiteral(gDate1) +
         u" order by usedate desc,empno,UseTime"_s);
}

void ReadPage::purge() {
    // Deliberate: without a question, and a cancelled dialog purges up to its date as well.
    FrmI1Date::ask(this);
    SafetyCopies::before(CopyReason::Purge);
    sharedDatabase().execute(u" delete * from Atte01   where UseDate <= "_s + dateLiteral(gDate1));
    if (!source().isEmpty())
        source().MoveLast();
    run();
    MsgBox(shortDate(gDate1) + u"前之打卡資料已清除完畢!!"_s, WarningTitle);
}

} // namespace pontrel
