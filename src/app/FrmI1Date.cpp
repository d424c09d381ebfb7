#include "app/FrmI1Date.h"

#include "app/DatePair.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "store/Clock.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

namespace {

QPushButton* makeButton(QDialog* dialog, int index, const QString& caption) {
    auto* button = new QPushButton(caption, dialog);
    button->setObjectName(QStringLiteral("Command1(%1)").arg(index));
    button->setAccessibleName(caption);
    return button;
}

} // namespace

FrmI1Date::FrmI1Date(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FrmI1Date"));
    setWindowTitle(QStringLiteral("輸入日期"));
    makeControls();
    EnterAsTab::install(*this);
    new DatePair(mask_, date_, 0, DialogDatePair, *new FocusWatch(this), updating_, badDateMark_);
    date_->setDate(clock::today());
    mask_->setFocus();
}

void FrmI1Date::makeControls() {
    caption_ = new QLabel(this);
    caption_->setObjectName(QStringLiteral("Label1"));
    mask_ = new TDBMask(this);
    mask_->setObjectName(QStringLiteral("TDBMask1(0)"));
    mask_->setFixedWidth(mask_->fontMetrics().horizontalAdvance(QStringLiteral("00/00/00")) + 24);
    date_ = new TDBDate(this);
    date_->setObjectName(QStringLiteral("TDBDate1(0)"));
    date_->setAccessibleName(QStringLiteral("日期選擇"));
    date_->setClearable(false); // an answer without a date would be of no use to any caller
    caption_->setBuddy(mask_);

    auto* accept = makeButton(this, 0, QStringLiteral("確定"));
    auto* cancel = makeButton(this, 1, QStringLiteral("取消"));
    onEvent(accept, &QPushButton::clicked, this, [this] { this->accept(); });
    onEvent(cancel, &QPushButton::clicked, this, [this] { reject(); });

    auto* fields = new QHBoxLayout;
    fields->addWidget(caption_);
    fields->addWidget(mask_);
    fields->addWidget(date_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(accept);
    buttons->addSpacing(12);
    buttons->addWidget(cancel);
    buttons->addStretch(1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 12);
    rows->addLayout(fields);
    rows->addSpacing(14);
    rows->addLayout(buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void FrmI1Date::ask(QWidget* parent, const QString& caption) {
    FrmI1Date dialog(parent);
    dialog.caption_->setText(caption);
    dialog.mask_->setAccessibleName(caption);
    (void)runModal(dialog);
}

void FrmI1Date::done(int result) {
    // The date control's date counts, whatever the mask shows; a cancel is told as this day, which not every
    // caller tests for.
    gDate1 = result == Accepted ? date_->date() : QDate(2038, 1, 1);
    QDialog::done(result);
}

} // namespace pontrel
