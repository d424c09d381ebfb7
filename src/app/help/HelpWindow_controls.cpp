#include "app/Events.h"
#include "app/help/HelpText.h"
#include "app/help/HelpWindow.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int TreeWidth = 230;
constexpr int WantedWidth = 190;
constexpr int Margin = 6;
constexpr int ZoomStep = 10;

} // namespace

void HelpWindow::addKey(const QList<QKeySequence>& keys, std::function<void()> routine) {
    if (keys.isEmpty())
        return;
    auto* action = new QAction(this);
    action->setShortcuts(keys);
    QWidget::addAction(action);
    onEvent(action, &QAction::triggered, this, std::move(routine));
}

QToolButton* HelpWindow::addButton(const ButtonTexts& texts, std::function<void()> routine) {
    auto* button = new QToolButton(this);
    button->setObjectName(u"Cmd"_s + texts.name);
    button->setText(texts.caption);
    button->setAccessibleName(texts.tip);
    button->setToolTip(
        texts.keys.isEmpty() ? texts.tip : u"%1（%2）"_s.arg(texts.tip, texts.keys.constFirst().toString()));
    button->setAutoRaise(true);
    // Not through onEvent(), which holds a button back while a dialog is open.
    connect(button, &QToolButton::clicked, this, routine);
    addKey(texts.keys, std::move(routine));
    return button;
}

void HelpWindow::makeControls() {
    tree_ = new QTreeWidget(this);
    tree_->setObjectName(u"HelpTree"_s);
    tree_->setAccessibleName(u"目錄"_s);
    tree_->setHeaderHidden(true);
    tree_->header()->setStretchLastSection(true);
    text_ = new HelpText(this);
    text_->setObjectName(u"HelpText"_s);
    text_->setAccessibleName(u"說明的內容"_s);
    wanted_ = new QLineEdit(this);
    wanted_->setObjectName(u"TxtFind"_s);
    wanted_->setAccessibleName(u"尋找的文字"_s);
    wanted_->setToolTip(u"在整本手冊裡尋找（Ctrl+F）"_s);
    wanted_->setFixedWidth(WantedWidth);
    auto* label = new QLabel(u"尋找："_s, this);
    label->setObjectName(u"LblWanted"_s);
    label->setBuddy(wanted_);
    found_ = new QLabel(this);
    found_->setObjectName(u"LblFound"_s);
    found_->setAccessibleName(u"尋找的結果"_s);

    auto* row = new QHBoxLayout;
    row->setContentsMargins(Margin, Margin, Margin, Margin);
    back_ = addButton({u"Back"_s, u"上一頁"_s, u"回到前面看過的地方"_s, {QKeySequence(u"Alt+Left"_s)}},
                      [this] { travel(-1); });
    forward_ = addButton({u"Forward"_s, u"下一頁"_s, u"再到後面看過的地方"_s, {QKeySequence(u"Alt+Right"_s)}},
                         [this] { travel(1); });
    QToolButton* smaller = addButton({u"ZoomOut"_s, u"縮小"_s, u"縮小文字"_s, {QKeySequence(u"Ctrl+-"_s)}},
                                     [this] { setZoom(zoom_ - ZoomStep); });
    // The plus sign stands on the key of the equals sign.
    QToolButton* larger = addButton(
        {u"ZoomIn"_s, u"放大"_s, u"放大文字"_s, {QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s)}},
        [this] { setZoom(zoom_ + ZoomStep); });
    QToolButton* previous =
        addButton({u"FindPrevious"_s, u"上一處"_s, u"上一處"_s, {QKeySequence(u"Shift+F3"_s)}},
                  [this] { findNext(false); });
    QToolButton* next = addButton({u"FindNext"_s, u"下一處"_s, u"下一處"_s, {QKeySequence(u"F3"_s)}},
                                  [this] { findNext(true); });
    QToolButton* close = addButton({u"Close"_s, u"關閉"_s, u"關閉使用說明"_s, {QKeySequence(u"Esc"_s)}},
                                   [this] { this->close(); });
    for (QWidget* each : {static_cast<QWidget*>(back_), static_cast<QWidget*>(forward_),
                          static_cast<QWidget*>(smaller), static_cast<QWidget*>(larger)})
        row->addWidget(each);
    row->addSpacing(2 * Margin);
    row->addWidget(label);
    row->addWidget(wanted_);
    row->addWidget(previous);
    row->addWidget(next);
    row->addWidget(found_, 1);
    row->addWidget(close);

    auto* split = new QSplitter(this);
    split->setObjectName(u"HelpSplit"_s);
    split->addWidget(tree_);
    split->addWidget(text_);
    split->setStretchFactor(1, 1);
    split->setSizes({TreeWidth, width() - TreeWidth});
    split->setChildrenCollapsible(false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(row);
    column->addWidget(split, 1);

    addKey({QKeySequence(u"Ctrl+F"_s)}, [this] {
        wanted_->setFocus(Qt::ShortcutFocusReason);
        wanted_->selectAll();
    });
    addKey({QKeySequence(u"Ctrl+0"_s)}, [this] { setZoom(100); });
    onEvent(wanted_, &QLineEdit::textChanged, this, [this] { typedFind(); });
    onEvent(wanted_, &QLineEdit::returnPressed, this,
            [this] { findNext(!(QGuiApplication::keyboardModifiers() & Qt::ShiftModifier)); });
    onEvent(text_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { followLink(link); });
    onEvent(text_, &HelpText::zoomStep, this,
            [this](bool in) { setZoom(zoom_ + (in ? ZoomStep : -ZoomStep)); });
    onEvent(tree_, &QTreeWidget::currentItemChanged, this, [this] {
        if (const QTreeWidgetItem* item = tree_->currentItem())
            chooseEntry(*item);
    });
}

} // namespace pontrel
