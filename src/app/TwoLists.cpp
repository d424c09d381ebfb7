#include "app/TwoLists.h"

#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/Prompts.h"
#include "app/controls/Buttons.h"
#include "app/controls/Keys.h"
#include "rules/ActionHost.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Spacing = 6;
constexpr int ButtonWidth = 40;
constexpr int LeastListWidth = 120;

QStringList textsOf(const QListWidget& list) {
    QStringList texts;
    texts.reserve(list.count());
    for (int row = 0; row < list.count(); ++row)
        texts << list.item(row)->text();
    return texts;
}

/// Takes the selected entries out; their texts, from the top.
QStringList takeSelected(QListWidget& list) {
    QList<int> rows;
    for (int row = 0; row < list.count(); ++row) {
        if (list.item(row)->isSelected())
            rows << row;
    }
    if (rows.isEmpty())
        return {};
    // In place of a current entry that is taken out Qt would select a neighbour.
    list.setCurrentItem(nullptr, QItemSelectionModel::Clear);
    QStringList texts;
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        texts << std::unique_ptr<QListWidgetItem>(list.takeItem(*row))->text();
    std::reverse(texts.begin(), texts.end());
    // The keyboard goes on from there.
    list.setCurrentItem(list.item(std::min(rows.first(), list.count() - 1)), QItemSelectionModel::NoUpdate);
    return texts;
}

} // namespace

// EntryList
// ------------------------------------------------------------------------------------------------------------

EntryList::EntryList(QWidget* parent) : HintedList(parent) {
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
}

void EntryList::keyPressEvent(QKeyEvent* event) {
    if (isPlainEnter(*event))
        Q_EMIT enterPressed();
    else
        HintedList::keyPressEvent(event);
}

void EntryList::mousePressEvent(QMouseEvent* event) {
    doubleClicked_ = false;
    HintedList::mousePressEvent(event);
}

void EntryList::mouseDoubleClickEvent(QMouseEvent* event) {
    QListWidgetItem* entry = itemAt(event->position().toPoint());
    if (!entry || event->button() != Qt::LeftButton)
        return;
    doubleClicked_ = true;
    entry->setSelected(true);
    Q_EMIT entryDoubleClicked();
}

void EntryList::mouseMoveEvent(QMouseEvent* event) {
    // The button that is still down after a double click would select what has moved up beneath it.
    if (!doubleClicked_)
        HintedList::mouseMoveEvent(event);
}

// TwoLists
// ------------------------------------------------------------------------------------------------------------

TwoLists::TwoLists(QWidget* parent) : QWidget(parent) {
    List1 = makeList(u"List1"_s, u"未選取的員工"_s);
    QLayout* buttons = makeButtons();
    List2 = makeList(u"List2"_s, u"選取的員工"_s);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(Spacing);
    grid->addWidget(List1, 0, 0);
    grid->addLayout(buttons, 0, 1);
    grid->addWidget(List2, 0, 2);
    grid->addLayout(makeCount(u"Label4(98)"_s, u"剩餘人數："_s, 0), 1, 0);
    grid->addLayout(makeCount(u"Label4(99)"_s, u"選取人數："_s, 1), 1, 2);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);

    onEvent(List1, &EntryList::entryDoubleClicked, this, [this] { moveSelected(*List1, *List2); });
    onEvent(List2, &EntryList::entryDoubleClicked, this, [this] { moveSelected(*List2, *List1); });
    onEvent(List1, &EntryList::enterPressed, this, [this] { List1_Enter(); });
    showCounts();
}

EntryList* TwoLists::makeList(const QString& name, const QString& spokenName) {
    auto* list = new EntryList(this);
    list->setObjectName(name);
    list->setAccessibleName(spokenName);
    list->setMinimumWidth(LeastListWidth);
    return list;
}

QLayout* TwoLists::makeButtons() {
    struct Texts {
        QString caption;
        QString spoken;
    };
    const std::array<Texts, 4> texts{{{u">"_s, u"選取"_s},
                                      {u">>"_s, u"全部選取"_s},
                                      {u"<"_s, u"取消選取"_s},
                                      {u"<<"_s, u"全部取消選取"_s}}};
    auto* column = new QVBoxLayout;
    column->setSpacing(Spacing);
    column->addStretch();
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const int number = static_cast<int>(index);
        QPushButton* button = makeButton(this, indexed(u"CMDCTRL"_s, number), texts.at(index).caption);
        button->setAccessibleName(texts.at(index).spoken);
        button->setToolTip(texts.at(index).spoken);
        button->setAutoDefault(false);
        button->setFixedWidth(ButtonWidth);
        onEvent(button, &QPushButton::clicked, this, [this, number] { CMDCTRL_Click(number); });
        column->addWidget(button);
        CMDCTRL.at(index) = button;
    }
    column->addStretch();
    return column;
}

QLayout* TwoLists::makeCount(const QString& captionName, const QString& caption, int index) {
    auto* label = new QLabel(caption, this);
    label->setObjectName(captionName);
    auto* count = new QLabel(this);
    count->setObjectName(indexed(u"Label3"_s, index));
    label->setBuddy(count);
    Label3.at(static_cast<std::size_t>(index)) = count;
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(label);
    row->addWidget(count, 1);
    return row;
}

void TwoLists::setEmptyText(const QString& text) {
    emptyText_ = text;
    showCounts();
}

void TwoLists::clear() {
    setEntries({});
}

void TwoLists::setEntries(const QStringList& entries) {
    List1->clear();
    List2->clear();
    List1->addItems(entries);
    showCounts();
}

QStringList TwoLists::remaining() const {
    return textsOf(*List1);
}

QStringList TwoLists::chosen() const {
    return textsOf(*List2);
}

void TwoLists::CMDCTRL_Click(int index) {
    const bool choosing = index < 2;
    EntryList& from = choosing ? *List1 : *List2;
    EntryList& to = choosing ? *List2 : *List1;
    const bool all = index % 2 == 1;
    if (all)
        moveAll(from, to);
    else if (!moveSelected(from, to))
        MsgBox(u"請選擇員工編號及姓名..."_s, FaultTitle);
}

void TwoLists::List1_Enter() {
    moveSelected(*List1, *List2);
    if (enterSelectsFirst_ && List1->count() > 0)
        List1->setCurrentItem(List1->item(0), QItemSelectionModel::ClearAndSelect);
}

bool TwoLists::moveSelected(EntryList& from, EntryList& to) {
    const QStringList texts = takeSelected(from);
    if (texts.isEmpty())
        return false;
    to.addItems(texts);
    endMove();
    return true;
}

/// The selected entries go first, then the others from the top.
void TwoLists::moveAll(EntryList& from, EntryList& to) {
    if (from.count() == 0)
        return;
    QStringList texts = takeSelected(from);
    texts += textsOf(from);
    from.clear();
    to.addItems(texts);
    endMove();
}

void TwoLists::endMove() {
    for (EntryList* list : {List1, List2})
        list->clearSelection();
    showCounts();
}

void TwoLists::showCounts() {
    Label3[0]->setText(QString::number(List1->count()));
    Label3[1]->setText(QString::number(List2->count()));
    List1->setEmptyText(List1->count() + List2->count() == 0 ? emptyText_ : QString());
}

} // namespace pontrel
