#include "app/RecordBar.h"

#include "app/ActionKeys.h"
#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/WindowRegistry.h"
#include "app/controls/Buttons.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Spacing = 3;
constexpr int CaptionMargin = 5; ///< Pixels at each side of a caption.

QString captionOf(BarAction action) {
    static const std::map<BarAction, QString> captions = {
        {BarAction::Add, u"新增資料"_s}, {BarAction::Edit, u"修改"_s},       {BarAction::Delete, u"刪除"_s},
        {BarAction::Cancel, u"取消"_s},  {BarAction::Save, u"存檔"_s},       {BarAction::Query, u"查詢"_s},
        {BarAction::First, u"首筆"_s},   {BarAction::Previous, u"上一筆"_s}, {BarAction::Next, u"下一筆"_s},
        {BarAction::Last, u"末筆"_s},    {BarAction::Refresh, u"更新"_s},    {BarAction::Print, u"列印"_s},
        {BarAction::Leave, u"離開"_s},   {BarAction::Back, QString()}};
    return captions.at(action);
}

/// Whether the program has what the button leads to.
bool isAvailable(BarAction action) {
    switch (action) {
    case BarAction::Print:
        return hasModuleWindow(7);
    case BarAction::Back:
        return hasModuleWindow(3);
    default:
        return true;
    }
}

std::optional<ActionKey> keyActionOf(BarAction action) {
    switch (action) {
    case BarAction::Add:
        return ActionKey::New;
    case BarAction::Edit:
        return ActionKey::Edit;
    case BarAction::Save:
        return ActionKey::Save;
    case BarAction::Query:
        return ActionKey::Query;
    case BarAction::Refresh:
        return ActionKey::Refresh;
    case BarAction::Print:
        return ActionKey::Print;
    default:
        return std::nullopt;
    }
}

int neededWidth(const QPushButton& button) {
    const int content = button.text().isEmpty() ? button.iconSize().width()
                                                : button.fontMetrics().horizontalAdvance(button.text());
    return content + 2 * CaptionMargin;
}

} // namespace

BarMap wholeBar() {
    BarMap actions;
    for (int index = 0; index <= static_cast<int>(BarAction::Leave); ++index)
        actions.emplace(index, static_cast<BarAction>(index));
    return actions;
}

BarMap wholeBarWithBack() {
    BarMap actions = wholeBar();
    actions.emplace(13, BarAction::Back);
    return actions;
}

RecordBar::RecordBar(const QString& array, const BarMap& actions, int width, QWidget* parent)
    : QWidget(parent), array_(array), actions_(actions), width_(width) {
    for (const auto& [index, action] : actions_) {
        const QString caption = captionOf(action);
        const bool isBack = action == BarAction::Back;
        QPushButton* button = makeButton(index, caption, isBack ? u"回異常處理"_s : caption);
        if (isBack) {
            button->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
            button->setToolTip(u"回異常處理"_s);
        }
        if (const auto key = keyActionOf(action))
            giveKey(*button, *key);
        button->setEnabled(isAvailable(action));
        onEvent(button, &QPushButton::clicked, this, [this, does = action] { Q_EMIT pressed(does); });
    }
    // Whoever presses on at the end of the boxes is to keep the row, not to discard it.
    if (QPushButton* cancel = button(BarAction::Cancel), *save = button(BarAction::Save); cancel && save)
        setTabOrder(save, cancel);
    layOut();
}

QPushButton* RecordBar::makeButton(int index, const QString& caption, const QString& accessibleName) {
    QPushButton* button = pontrel::makeButton(this, indexed(array_, index), caption);
    button->setAccessibleName(accessibleName);
    button->setAutoDefault(false);
    buttons_[index] = button;
    return button;
}

QPushButton* RecordBar::addButton(int index, const QString& caption) {
    QPushButton* button = makeButton(index, caption, caption);
    layOut();
    return button;
}

QPushButton* RecordBar::button(int index) const {
    const auto found = buttons_.find(index);
    return found == buttons_.end() ? nullptr : found->second;
}

QPushButton* RecordBar::button(BarAction action) const {
    const auto found = std::find_if(actions_.begin(), actions_.end(),
                                    [action](const auto& entry) { return entry.second == action; });
    return found == actions_.end() ? nullptr : button(found->first);
}

void RecordBar::layOut() {
    delete layout();
    int needed = -Spacing;
    int height = 0;
    for (const auto& [index, button] : buttons_) {
        needed += neededWidth(*button) + Spacing;
        height = std::max(height, button->sizeHint().height());
    }
    const auto count = static_cast<int>(buttons_.size());
    const int inRow = needed > width_ ? (count + 1) / 2 : count;
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Spacing);
    QHBoxLayout* row = nullptr;
    int placed = 0;
    for (const auto& [index, button] : buttons_) {
        if (placed % inRow == 0) {
            row = new QHBoxLayout;
            row->setSpacing(Spacing);
            rows->addLayout(row);
        }
        button->setMinimumSize(neededWidth(*button), height);
        row->addWidget(button, neededWidth(*button));
        ++placed;
    }
}

void RecordBar::setStates(const std::set<BarAction>& on, const std::set<BarAction>& leftAlone) {
    // On before off: the focus of a button that goes off passes to the next one that is on.
    for (const bool state : {true, false}) {
        for (const auto& [index, action] : actions_) {
            const bool wanted = on.contains(action) && isAvailable(action);
            if (wanted == state && !leftAlone.contains(action))
                buttons_.at(index)->setEnabled(state);
        }
    }
}

} // namespace pontrel
