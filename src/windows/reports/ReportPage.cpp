#include "windows/reports/ReportPage.h"

#include "app/CodeCombo.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/FormState.h"
#include "app/controls/HintedList.h"
#include "app/controls/OptionButton.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"

#include <QLabel>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The index of the first option that is on.
int firstOn(const std::vector<OptionButton*>& options) {
    const auto on =
        std::ranges::find_if(options, [](const OptionButton* option) { return option->isChecked(); });
    return static_cast<int>(on - options.begin());
}

} // namespace

ReportPage::ReportPage(ReportTab tab, FormState& form) : tab_(tab), form_(form) {
    makeControls();
    connectControls();
    followOption();
}

void ReportPage::connectControls() {
    for (std::size_t index = 0; index < options_.size(); ++index)
        onEvent(options_[index], &OptionButton::clicked, this,
                [this, index] { Option_Click(static_cast<int>(index)); });
    // Deliberate: cut as the box is left and not before. A click on the button leaves it, and so does the
    // key, which goes to the button first; a script that presses the button from within the box joins the
    // whole entry.
    for (CodeCombo* box : combos_)
        form_.watch.onLostFocus(box, [box] { box->cutToCode(); });
}

void ReportPage::setChoices(RangeKind kind, QAbstractItemModel* choices) {
    for (std::size_t index = 0; index < combos_.size(); ++index) {
        if (comboKinds_[index] == kind)
            combos_[index]->shareEntries(choices);
    }
}

void ReportPage::setEntries(const std::vector<ListEntry>& entries) {
    list_->clear();
    for (const ListEntry& entry : entries)
        (new QListWidgetItem(entry.text, list_))->setSelected(entry.selected);
}

void ReportPage::Option_Click(int index) {
    clickedOption_ = index;
    followOption();
}

void ReportPage::Cmd_Click(int index) {
    if (index == 0)
        Q_EMIT print();
    else
        Q_EMIT leave();
}

int ReportPage::option() const {
    return firstOn(options_);
}

void ReportPage::followOption() {
    const ReportFields& fields = findReport(tab_, option())->fields;
    for (std::size_t index = 0; index < dates_.size(); ++index) {
        const int number = static_cast<int>(index);
        if (fields.leavesMask(number))
            continue;
        dates_[index].mask->setEnabled(fields.mask(number));
        dates_[index].date->setEnabled(fields.mask(number));
    }
    for (std::size_t index = 0; index < combos_.size(); ++index)
        combos_[index]->setEnabled(fields.combo(static_cast<int>(index)));

    const auto followControls = [](const std::vector<Row>& rows, const auto& isOn) {
        for (const Row& row : rows) {
            bool on = false;
            for (int index = row.first; index < row.end; ++index)
                on = on || isOn(static_cast<std::size_t>(index));
            row.caption->setEnabled(on);
        }
    };
    followControls(dateRows_, [this](std::size_t index) { return dates_[index].mask->isEnabled(); });
    followControls(comboRows_, [this](std::size_t index) { return combos_[index]->isEnabled(); });

    if (list_) {
        list_->setEnabled(fields.list);
        listCaption_->setVisible(fields.listCaption);
    }
    if (FrameTS_) {
        FrameTS_->setVisible(fields.punchMarks);
        punchMarkCaption_->setVisible(fields.punchMarks);
    }
}

ReportChoice ReportPage::choice() const {
    ReportChoice choice;
    choice.tab = tab_;
    choice.option = option();
    choice.clickedOption = clickedOption_;
    if (FrameTS_)
        choice.punchMark = firstOn(punchMarks_);
    for (std::size_t index = 0; index < dates_.size(); ++index)
        choice.dates.at(index) = dates_[index].date->date();
    for (std::size_t index = 0; index < choice.masks.size(); ++index) {
        const TDBMask& mask = *dates_[index].mask;
        // A blank mask still shows its slashes.
        choice.masks.at(index) = mask.value().isEmpty() ? QString() : mask.text();
    }
    for (const CodeCombo* box : combos_)
        choice.combos += box->currentText();
    for (int entry = 0; list_ && entry < list_->count(); ++entry)
        choice.list.push_back({list_->item(entry)->text(), list_->item(entry)->isSelected()});
    return choice;
}

std::array<QString, 2> ReportPage::units() const {
    const auto first =
        static_cast<std::size_t>(std::ranges::find(comboKinds_, RangeKind::Unit) - comboKinds_.begin());
    return {combos_.at(first)->currentText(), combos_.at(first + 1)->currentText()};
}

} // namespace pontrel
