#include "windows/leave/LeaveBatchTab.h"

#include "app/FocusWatch.h"
#include "app/TwoLists.h"
#include "app/controls/Buttons.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "rules/CodeLength.h"
#include "rules/Session.h"
#include "rules/leave/LeaveNotes.h"
#include "windows/leave/LeaveTab.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int CodeWidth = 60;
constexpr int HoursWidth = 50;

} // namespace

LeaveBatchTab::LeaveBatchTab(int tab)
    : RecordTab({.index = tab, .caption = u"假單批次"_s, .table = u"Holi01"_s}) {
    auto* lines = new QVBoxLayout(&frame());
    lists_ = new TwoLists(&frame());
    lists_->setEmptyText(u"請先按「新增」，員工會列在這裡。"_s);
    lines->addWidget(lists_, 1);
    lines->addWidget(makePeriod());
    lines->addLayout(makeType());
    rows().addWidget(&frame(), 1);
    rows().addLayout(makeButtons());
}

QWidget* LeaveBatchTab::makePeriod() {
    auto* box = new QGroupBox(u"實際請假時間："_s, &frame());
    date_ = addDate(2, u"請假日期"_s, {}, ModuleDatePair);
    begin_ = fields().time(u"TDBTime1(2)"_s, u"開始時間"_s, {});
    end_ = fields().time(u"TDBTime1(3)"_s, u"結束時間"_s, {});
    box->setLayout(fieldLine({date_.mask, date_.date, fields().caption(u"開始時間："_s, begin_), begin_,
                              fields().caption(u"結束時間："_s, end_), end_}));
    return box;
}

QLayout* LeaveBatchTab::makeType() {
    auto* grid = new QGridLayout;
    type_ = addCode({.number = TypeOfBatch,
                     .kind = LookupKind::QFrmHoliNo,
                     .box = u"Text8(0)"_s,
                     .search = u"Search(5)"_s,
                     .searchCaption = u"查詢"_s,
                     .label = u"Label40"_s,
                     .caption = u"假別："_s,
                     .spokenName = u"假別代碼"_s,
                     .width = CodeWidth,
                     .check = CodeCheck::Leaving,
                     .refusal = CodeRefusal::Lookup});
    hours_ = fields().freeBox(u"Text8(1)"_s, u"時數"_s, HoursWidth);
    makeNumberBox(*hours_);
    account_ = fields().shown(u"Label4(23)"_s);
    moment_ = fields().shown(u"Label16"_s);
    type_->addTo(*grid, 0, 0);
    grid->addWidget(fields().caption(u"時數："_s, hours_), 0, 2, Qt::AlignRight);
    grid->addWidget(hours_, 0, 3, Qt::AlignLeft);
    grid->addWidget(fields().caption(u"登錄人員："_s, account_), 1, 0, Qt::AlignRight);
    grid->addWidget(account_, 1, 1);
    grid->addWidget(moment_, 1, 2, 1, 2);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLayout* LeaveBatchTab::makeButtons() {
    auto* line = new QHBoxLayout;
    line->addStretch(1);
    CmdBat = pontrel::makeButtons(this, u"CmdBat"_s, {u"新增"_s, u"存檔／取消"_s});
    for (QPushButton* button : std::as_const(CmdBat))
        line->addWidget(button);
    placeSearchesBehind(CmdBat.at(1));
    line->addStretch(1);
    return line;
}

BatchParts LeaveBatchTab::batchParts() const {
    return {.frame = lists_->parentWidget(),
            .lists = lists_,
            .begin = CmdBat.at(0),
            .end = CmdBat.at(1),
            .account = account_,
            .moment = moment_};
}

BatchSteps LeaveBatchTab::batchSteps() {
    return {.question = u"是否確定執行假單批次 ?"_s,
            .clear = [this] { clear(); },
            .run = [this](const QStringList& chosen, const QDateTime& now) { run(chosen, now); },
            .stateWord = u"新增資料"_s};
}

void LeaveBatchTab::readSettings(Database& database) {
    codes_ = readBalanceCodes(database);
    LenEmpNo = readLenEmpNo(database);
}

void LeaveBatchTab::connectControls(FormState& form) {
    for (QWidget* control : {static_cast<QWidget*>(date_.mask), static_cast<QWidget*>(date_.date)})
        form.watch.onLostFocus(control, [this] { fillTimes(); });
}

void LeaveBatchTab::clear() {
    type_->clear();
    hours_->clear();
    clearMasks(); // the date control keeps its date
    begin_->clear();
    end_->clear();
}

void LeaveBatchTab::fillTimes() {
    if (!date_.date->date().isValid())
        return;
    // Deliberate: of no employee, so that these are always the times of the first slot, over what was
    // entered.
    LeaveNotes(sharedDatabase(), *this, gLeaveValues).LoadDaySlot(date_.date->date(), {});
    begin_->setTime(gLeaveValues.StdT1);
    end_->setTime(gLeaveValues.StdT4);
}

void LeaveBatchTab::run(const QStringList& chosen, const QDateTime& now) {
    RunLeaveBatch(sharedDatabase(), *this, gLeaveValues,
                  {.entries = chosen,
                   .LenEmpNo = LenEmpNo,
                   .HoliNo = type_->text(),
                   .codes = codes_,
                   .date = date_.date->date(),
                   .HoliBegTime = begin_->time(),
                   .HoliEndTime = end_->time(),
                   .gAccount = gAccount,
                   .TransDate = now});
}

void LeaveBatchTab::showHours(const QString& HoliHours) {
    hours_->setText(HoliHours);
}

} // namespace pontrel
