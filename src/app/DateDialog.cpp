#include "app/DateDialog.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/controls/Buttons.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "store/Clock.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

DateDialog::DateDialog(const QString& name, const QString& title, QWidget* parent)
    : QDialog(parent), watch_(new FocusWatch(this)), fields_(new QHBoxLayout) {
    setObjectName(name);
    setWindowTitle(title);
    setAccessibleName(title);
}

QLabel* DateDialog::addCaption(const QString& caption) {
    auto* label = new QLabel(caption, this);
    label->setObjectName(QStringLiteral("Label%1").arg(++captions_));
    fields_->addWidget(label);
    return label;
}

void DateDialog::addPair(const QString& spokenName) {
    const auto index = static_cast<int>(pairs_.size());
    const DateFields pair =
        makeDateFields(this, indexed(u"TDBMask1"_s, index), indexed(u"TDBDate1"_s, index), spokenName);
    pair.date->setClearable(false); // an answer without a date would be of no use to any caller
    fields_->addWidget(pair.mask);
    fields_->addWidget(pair.date, 1);
    pairs_.push_back(pair);
    new DatePair(pair.mask, pair.date, index, DialogDatePair, *watch_, updating_, badDateMark_);
}

void DateDialog::finish() {
    auto* accept = makeButton(this, indexed(u"Command1"_s, 0), QStringLiteral("確定"));
    auto* cancel = makeButton(this, indexed(u"Command1"_s, 1), QStringLiteral("取消"));
    onEvent(accept, &QPushButton::clicked, this, [this] { this->accept(); });
    onEvent(cancel, &QPushButton::clicked, this, [this] { reject(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(accept);
    buttons->addSpacing(12);
    buttons->addWidget(cancel);
    buttons->addStretch(1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 12);
    rows->addLayout(fields_);
    rows->addSpacing(14);
    rows->addLayout(buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    EnterAsTab::install(*this);
    for (const DateFields& pair : pairs_)
        pair.date->setDate(clock::today());
    pairs_.front().mask->setFocus();
}

void DateDialog::setDate(int index, QDate date) {
    pairs_.at(static_cast<std::size_t>(index)).date->setDate(date);
}

QDate DateDialog::date(int index) const {
    return pairs_.at(static_cast<std::size_t>(index)).date->date();
}

} // namespace pontrel
