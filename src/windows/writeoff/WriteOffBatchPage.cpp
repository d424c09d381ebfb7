#include "windows/writeoff/WriteOffBatchPage.h"

#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/TwoLists.h"
#include "app/WindowHost.h"
#include "app/WindowRegistry.h"
#include "app/controls/Buttons.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "rules/Session.h"
#include "rules/writeoff/WriteOffBatch.h"
#include "windows/writeoff/WriteOffTab.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int ReasonLength = 2; ///< Of an entry, as beside a single one.
constexpr int ReasonWidth = 36;
constexpr int FirstSearch = 2;
constexpr int StampLines = 2; ///< Of the grid, ahead of the reasons.
enum Button { BeginButton, EndButton, LeaveButton, BackButton };

// Deliberate: the third repeats the first, though it stands for the way in of the afternoon.
constexpr std::array<int, Positions> ShownPositions = {1, 2, 1, 4};

} // namespace

WriteOffBatchPage::WriteOffBatchPage()
    : RecordTab({.index = WriteOffBatchTab, .caption = u"註銷批次"_s, .table = u"Canc01"_s}) {
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

QLayout* WriteOffBatchPage::makeFields() {
    const QString day = u"日  　  期："_s;
    date_ = addDate(0, spoken(day), {}, SilentDatePair);
    account_ = fields().shown(u"Label4(23)"_s);
    moment_ = fields().shown(u"Label16"_s);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(FieldSpacing);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->addWidget(fields().caption(day, date_.mask), 0, 0, StampLines, 1,
                    Qt::AlignRight | Qt::AlignVCenter);
    grid->addLayout(fieldLine({date_.mask, date_.date}), 0, 1, StampLines, 1);
    grid->addWidget(fields().caption(u"登錄人員："_s, account_), 0, 2, Qt::AlignRight);
    grid->addWidget(account_, 0, 3);
    grid->addWidget(fields().caption(u"實際註銷時間："_s, moment_), 1, 2, Qt::AlignRight);
    grid->addWidget(moment_, 1, 3);
    addReasons(*grid);
    return grid;
}

void WriteOffBatchPage::addReasons(QGridLayout& grid) {
    for (int swipe = 0; swipe < static_cast<int>(reasons_.size()); ++swipe) {
        const auto place = static_cast<std::size_t>(swipe);
        CodeBox* reason = addCode({.number = FirstReasonOfBatch + swipe,
                                   .kind = LookupKind::QFrmCnlNo,
                                   .box = indexed(u"Text8"_s, swipe),
                                   .search = indexed(u"Search"_s, FirstSearch + swipe),
                                   .label = indexed(u"Label40"_s, swipe),
                                   .caption = reasonCaption(ShownPositions.at(place)),
                                   .spokenName = positionName(swipe + 1),
                                   .width = ReasonWidth,
                                   .length = ReasonLength,
                                   .check = CodeCheck::Enter,
                                   .afterSearch = LookupKey::Tab});
        reason->caption()->setObjectName(indexed(u"Label20"_s, swipe));
        reason->addTo(grid, StampLines + swipe / 2, 2 * (swipe % 2));
        reasons_.at(place) = reason;
    }
}

QLayout* WriteOffBatchPage::makeButtons() {
    CmdBat =
        pontrel::makeButtons(this, u"CmdBat"_s, {u"新增"_s, u"存檔／取消"_s, u"離開"_s, u"回異常處理"_s});
    CmdBat[BackButton]->setEnabled(hasModuleWindow(3));
    auto* line = new QHBoxLayout;
    line->setSpacing(4);
    for (QPushButton* button : std::as_const(CmdBat))
        line->addWidget(button, 1);
    placeSearchesBehind(CmdBat[EndButton]);
    return line;
}

void WriteOffBatchPage::connectControls(FormState&) {
    onEvent(CmdBat[LeaveButton], &QPushButton::clicked, this, [this] { Q_EMIT leave(); });
    onEvent(CmdBat[BackButton], &QPushButton::clicked, this, [this] { Q_EMIT backToExceptions(); });
}

BatchParts WriteOffBatchPage::batchParts() {
    BatchParts parts{.frame = &frame(),
                     .lists = lists_,
                     .begin = CmdBat[BeginButton],
                     .end = CmdBat[EndButton],
                     .others = {CmdBat[LeaveButton]},
                     .account = account_,
                     .moment = moment_};
    if (hasModuleWindow(3))
        parts.others << CmdBat[BackButton];
    return parts;
}

BatchSteps WriteOffBatchPage::batchSteps() {
    return {.question = u"是否確定執行註銷批次 ?"_s,
            .clear = [this] { clear(); },
            .run = [this](const QStringList& chosen, const QDateTime& now) { run(chosen, now); }};
}

void WriteOffBatchPage::clear() {
    for (CodeBox* reason : reasons_)
        reason->clear();
}

void WriteOffBatchPage::run(const QStringList& chosen, const QDateTime& now) {
    WindowHost<> host;
    RunWriteOffBatch(
        sharedDatabase(), host,
        {.entries = chosen,
         .date = date_.date->date(),
         .reasons = {reasons_[0]->text(), reasons_[1]->text(), reasons_[2]->text(), reasons_[3]->text()},
         .gAccount = gAccount,
         .TransDate = now});
}

} // namespace pontrel
