#include "windows/overtime/OvertimeBatchPage.h"

#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/TwoLists.h"
#include "app/WindowHost.h"
#include "app/controls/Buttons.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "rules/Session.h"
#include "rules/overtime/Overtime.h"
#include "rules/overtime/OvertimeBatch.h"
#include "windows/overtime/OvertimeTab.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int HoursWidth = 40;
enum Button { BeginButton, EndButton, LeaveButton };

} // namespace

OvertimeBatchPage::OvertimeBatchPage()
    : RecordTab({.index = OvertimeBatchTab, .caption = u"加班批次"_s, .table = u"Over01"_s}) {
    auto* lines = new QVBoxLayout(&frame());
    lines->setContentsMargins(8, 6, 8, 6);
    lines->setSpacing(6);
    lines->addLayout(makeFields());
    lists_ = new TwoLists(&frame());
    lists_->setEmptyText(u"請先按「新增」，員工會列在這裡。"_s);
    lines->addWidget(lists_, 1);
    rows().addWidget(&frame(), 1);
    rows().addLayout(makeButtons());
}

QLayout* OvertimeBatchPage::makeFields() {
    const QString day = u"日  　  期："_s;
    const QString begin = u"開始時間："_s;
    const QString end = u"結束時間："_s;
    const QString hours = u"時   　 數："_s;
    date_ = addDate(0, spoken(day), {}, SilentDatePair);
    begin_ = fields().time(u"overTime(2)"_s, spoken(begin), {});
    end_ = fields().time(u"overTime(3)"_s, spoken(end), {});
    hours_ = fields().freeBox(u"Text8(1)"_s, spoken(hours), HoursWidth);
    makeNumberBox(*hours_);
    account_ = fields().shown(u"Label4(23)"_s);
    moment_ = fields().shown(u"Label16"_s);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(FieldSpacing);
    grid->setVerticalSpacing(4);
    grid->addWidget(fields().caption(day, date_.mask), 0, 0, Qt::AlignRight);
    grid->addLayout(fieldLine({date_.mask, date_.date}), 0, 1);
    grid->addWidget(fields().caption(begin, begin_), 0, 2, Qt::AlignRight);
    grid->addWidget(begin_, 0, 3, Qt::AlignLeft);
    grid->addWidget(fields().caption(end, end_), 0, 4, Qt::AlignRight);
    grid->addWidget(end_, 0, 5, Qt::AlignLeft);
    grid->addWidget(fields().caption(hours, hours_), 1, 0, Qt::AlignRight);
    grid->addWidget(hours_, 1, 1, Qt::AlignLeft);
    grid->addWidget(fields().caption(u"登錄人員："_s, account_), 1, 2, Qt::AlignRight);
    grid->addWidget(account_, 1, 3, 1, 3);
    grid->addWidget(fields().caption(u"實際登錄時間："_s, moment_), 2, 0, Qt::AlignRight);
    grid->addWidget(moment_, 2, 1);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLayout* OvertimeBatchPage::makeButtons() {
    CmdBat = pontrel::makeButtons(this, u"CmdBat"_s, {u"新增"_s, u"存檔／取消"_s, u"離開"_s});
    auto* line = new QHBoxLayout;
    line->setSpacing(4);
    for (QPushButton* button : std::as_const(CmdBat))
        line->addWidget(button, 1);
    return line;
}

void OvertimeBatchPage::connectControls(FormState& form) {
    form.watch.onLostFocus(end_, [this] { fillHours(); });
    onEvent(CmdBat[LeaveButton], &QPushButton::clicked, this, [this] { Q_EMIT leave(); });
}

BatchParts OvertimeBatchPage::batchParts() {
    return {.frame = &frame(),
            .lists = lists_,
            .begin = CmdBat[BeginButton],
            .end = CmdBat[EndButton],
            .others = {CmdBat[LeaveButton]},
            .account = account_,
            .moment = moment_};
}

BatchSteps OvertimeBatchPage::batchSteps() {
    // Deliberate: the question speaks of the write-off batch.
    return {.question = u"是否確定執行註銷批次 ?"_s,
            .run = [this](const QStringList& chosen, const QDateTime& now) { run(chosen, now); }};
}

void OvertimeBatchPage::fillHours() {
    if (!begin_->isNull() && !end_->isNull())
        hours_->setText(QString::number(overtimeHours(begin_->time(), end_->time())));
}

void OvertimeBatchPage::run(const QStringList& chosen, const QDateTime& now) {
    WindowHost<> host;
    RunOvertimeBatch(sharedDatabase(), host,
                     {.entries = chosen,
                      .date = date_.date->date(),
                      .BegTime = begin_->time(),
                      .EndTime = end_->time(),
                      .OverHours = hours_->text(),
                      .gAccount = gAccount,
                      .TransDate = now});
}

} // namespace pontrel
