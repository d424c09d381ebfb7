#include "app/Events.h"
#include "app/controls/NumberEntry.h"
#include "windows/reports/PageView.h"
#include "windows/reports/ReportPreview.h"
#include "windows/reports/ReportSearch.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int PageBoxWidth = 64;
constexpr int WantedWidth = 240;
constexpr int TreeWidth = 240;
constexpr int Margin = 6;

/// The fits stand in the list of zooms behind the levels, as negative numbers.
constexpr int PageWidthEntry = -1;
constexpr int WholePageEntry = -2;

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& text = {}) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

} // namespace

/// A routine of the user's: by a button, or by its key from anywhere in the window.
QAction* ReportPreview::addAction(const ActionTexts& texts, std::function<void()> routine) {
    auto* action = new QAction(texts.caption, this);
    action->setObjectName(u"Act"_s + texts.name);
    action->setShortcuts(texts.keys);
    action->setToolTip(
        texts.keys.isEmpty() ? texts.tip : u"%1（%2）"_s.arg(texts.tip, texts.keys.constFirst().toString()));
    QWidget::addAction(action);
    onEvent(action, &QAction::triggered, this, [this, routine = std::move(routine)] {
        if (isBehindDialog(*this))
            return;
        const PromptsOver over(*this);
        routine();
    });
    auto* button = new QToolButton(tools_);
    button->setDefaultAction(action);
    button->setObjectName(u"Cmd"_s + texts.name);
    button->setAccessibleName(texts.tip);
    addTool(button);
    return action;
}

void ReportPreview::addTool(QWidget* control) {
    tools_->addWidget(control);
}

void ReportPreview::addGap() {
    tools_->addSeparator();
}

void ReportPreview::makeToolbar(PreviewOffers offers) {
    tools_ = new QToolBar(this);
    tools_->setObjectName(u"Tools"_s);
    tools_->setAccessibleName(u"工具列"_s);
    if (offers.print)
        addAction({u"Print"_s, u"列印"_s, u"列印報表"_s, {QKeySequence(u"Ctrl+P"_s)}}, [this] { print(); });
    if (offers.save) {
        addAction({u"Pdf"_s, u"存成 PDF"_s, u"把報表存成 PDF 檔"_s, {QKeySequence(u"Ctrl+S"_s)}},
                  [this] { savePdf(); });
        addAction({u"Sheet"_s, u"試算表"_s, u"把資料存成試算表"_s, {QKeySequence(u"Ctrl+E"_s)}},
                  [this] { saveSheet(); });
        addAction({u"Csv"_s, u"CSV"_s, u"把資料存成 CSV 檔"_s, {QKeySequence(u"Ctrl+Shift+E"_s)}},
                  [this] { saveCsv(); });
    }
    addAction({u"Copy"_s, u"複製"_s, u"複製這一頁的文字"_s, {QKeySequence(u"Ctrl+C"_s)}},
              [this] { copyPage(); });
    addGap();
    makePageControls();
    addGap();
    makeZoomControls();
    addGap();
    addAction({u"Find"_s, u"尋找"_s, u"在報表裡尋找文字"_s, {QKeySequence(u"Ctrl+F"_s)}},
              [this] { openFind(); });
    tree_ = addAction({u"Tree"_s, u"群組"_s, u"顯示或收起群組的目錄"_s, {QKeySequence(u"F4"_s)}},
                      [this] { showTree(tree_->isChecked()); });
    tree_->setCheckable(true);
    addGap();
    addAction({u"Close"_s, u"關閉"_s, u"關閉預覽"_s, {QKeySequence(u"Esc"_s)}}, [this] { leave(); });
}

void ReportPreview::makePageControls() {
    first_ = addAction({u"First"_s, u"首頁"_s, u"第一頁"_s, {QKeySequence(u"Ctrl+Home"_s)}},
                       [this] { pages_->goTo(0); });
    previous_ = addAction({u"Previous"_s, u"上一頁"_s, u"上一頁"_s, {QKeySequence(u"PgUp"_s)}},
                          [this] { pages_->goTo(pages_->page() - 1); });
    page_ = new QLineEdit(this);
    page_->setObjectName(u"TxtPage"_s);
    page_->setAccessibleName(u"頁次"_s);
    page_->setToolTip(u"輸入頁次後按 Enter（Ctrl+G）"_s);
    page_->setFixedWidth(PageBoxWidth);
    page_->setAlignment(Qt::AlignRight);
    makeNumberBox(*page_);
    addTool(page_);
    addTool(makeLabel(this, u"LblPages"_s, u" / %1 "_s.arg(document_->pageCount())));
    next_ = addAction({u"Next"_s, u"下一頁"_s, u"下一頁"_s, {QKeySequence(u"PgDown"_s)}},
                      [this] { pages_->goTo(pages_->page() + 1); });
    last_ = addAction({u"Last"_s, u"末頁"_s, u"最後一頁"_s, {QKeySequence(u"Ctrl+End"_s)}},
                      [this] { pages_->goTo(document_->pageCount() - 1); });
}

void ReportPreview::makeZoomControls() {
    addAction({u"ZoomOut"_s, u"縮小"_s, u"縮小"_s, {QKeySequence(u"Ctrl+-"_s)}},
              [this] { pages_->zoomByStep(false); });
    zoom_ = new QComboBox(this);
    zoom_->setObjectName(u"CboZoom"_s);
    zoom_->setAccessibleName(u"顯示比例"_s);
    zoom_->setToolTip(u"顯示比例（Ctrl+1 是原尺寸）"_s);
    for (const int level : PageView::Levels)
        zoom_->addItem(u"%1 %"_s.arg(level), level);
    zoom_->addItem(u"頁寬"_s, PageWidthEntry);
    zoom_->addItem(u"整頁"_s, WholePageEntry);
    addTool(zoom_);
    // The plus sign stands on the key of the equals sign.
    addAction({u"ZoomIn"_s, u"放大"_s, u"放大"_s, {QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s)}},
              [this] { pages_->zoomByStep(true); });
    addAction({u"PageWidth"_s, u"頁寬"_s, u"配合頁寬"_s, {QKeySequence(u"Ctrl+2"_s)}},
              [this] { pages_->setFit(PageView::Fit::PageWidth); });
    addAction({u"WholePage"_s, u"整頁"_s, u"顯示整頁"_s, {QKeySequence(u"Ctrl+0"_s)}},
              [this] { pages_->setFit(PageView::Fit::WholePage); });
}

QToolButton* ReportPreview::findButton(const ActionTexts& texts, const std::function<void()>& routine) {
    auto* button = new QToolButton(findBar_);
    button->setObjectName(u"Cmd"_s + texts.name);
    button->setText(texts.caption);
    button->setAccessibleName(texts.tip);
    button->setToolTip(texts.tip);
    button->setAutoRaise(true);
    onEvent(button, &QToolButton::clicked, this, routine);
    if (texts.keys.isEmpty())
        return button;
    button->setToolTip(u"%1（%2）"_s.arg(texts.tip, texts.keys.constFirst().toString()));
    auto* action = new QAction(this);
    action->setShortcuts(texts.keys);
    QWidget::addAction(action);
    onEvent(action, &QAction::triggered, this, routine);
    return button;
}

void ReportPreview::makeFindBar() {
    findBar_ = new QFrame(this);
    findBar_->setObjectName(u"FindBar"_s);
    auto* row = new QHBoxLayout(findBar_);
    row->setContentsMargins(Margin, 2, Margin, 2);
    QLabel* label = makeLabel(findBar_, u"LblWanted"_s, u"尋找："_s);
    wanted_ = new QLineEdit(findBar_);
    wanted_->setObjectName(u"TxtFind"_s);
    wanted_->setAccessibleName(u"尋找的文字"_s);
    wanted_->setFixedWidth(WantedWidth);
    wanted_->setClearButtonEnabled(false);
    label->setBuddy(wanted_);
    found_ = makeLabel(findBar_, u"LblFound"_s);
    found_->setAccessibleName(u"尋找的結果"_s);
    row->addWidget(label);
    row->addWidget(wanted_);
    row->addWidget(findButton({u"FindPrevious"_s, u"上一處"_s, u"上一處"_s, {QKeySequence(u"Shift+F3"_s)}},
                              [this] { findNext(false); }));
    row->addWidget(findButton({u"FindNext"_s, u"下一處"_s, u"下一處"_s, {QKeySequence(u"F3"_s)}},
                              [this] { findNext(true); }));
    row->addWidget(found_, 1);
    row->addWidget(findButton({u"FindClose"_s, u"結束尋找"_s, u"結束尋找"_s, {}}, [this] { closeFind(); }));
    findBar_->hide();
}

void ReportPreview::makeTree() {
    groups_ = new QTreeWidget(this);
    groups_->setObjectName(u"GroupTree"_s);
    groups_->setAccessibleName(u"群組的目錄"_s);
    groups_->setHeaderHidden(true);
    groups_->setUniformRowHeights(true);
    groups_->header()->setStretchLastSection(false);
    groups_->hide();
    const auto& groups = document_->layout().groups;
    tree_->setEnabled(document_->rowCount() > 0 &&
                      std::any_of(groups.begin(), groups.end(),
                                  [](const paper::Group& group) { return !group.inTree.empty(); }));
}

void ReportPreview::layOut() {
    split_ = new QSplitter(this);
    split_->addWidget(groups_);
    split_->addWidget(pages_);
    split_->setStretchFactor(1, 1);
    split_->setSizes({TreeWidth, width()});
    split_->setChildrenCollapsible(false);
    status_ = makeLabel(this, u"LblStatus"_s,
                        u"%L1 筆，%L2 頁"_s.arg(document_->rowCount()).arg(document_->pageCount()));
    status_->setContentsMargins(Margin, 2, Margin, 2);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tools_);
    column->addWidget(findBar_);
    column->addWidget(split_, 1);
    column->addWidget(status_);
}

void ReportPreview::connectControls() {
    const auto onKey = [this](const QString& key, auto routine) {
        auto* action = new QAction(this);
        action->setShortcut(QKeySequence(key));
        QWidget::addAction(action);
        onEvent(action, &QAction::triggered, this, routine);
    };
    onKey(u"Ctrl+G"_s, [this] {
        page_->setFocus(Qt::ShortcutFocusReason);
        page_->selectAll();
    });
    onKey(u"Ctrl+1"_s, [this] { pages_->setZoom(100); });
    onEvent(page_, &QLineEdit::returnPressed, this, [this] { typedPage(); });
    onEvent(page_, &QLineEdit::editingFinished, this, [this] { showPage(); });
    onEvent(zoom_, &QComboBox::activated, this, [this](int index) { chosenZoom(index); });
    onEvent(pages_, &PageView::pageChanged, this, [this] { showPage(); });
    onEvent(pages_, &PageView::zoomChanged, this, [this] { showZoom(); });
    onEvent(wanted_, &QLineEdit::textChanged, this, [this] { typedFind(); });
    onEvent(wanted_, &QLineEdit::returnPressed, this,
            [this] { findNext(!(QGuiApplication::keyboardModifiers() & Qt::ShiftModifier)); });
    onEvent(search_, &ReportSearch::advanced, this, [this] { showFound(); });
    onEvent(groups_, &QTreeWidget::currentItemChanged, this, [this] { goToGroup(); });
    onEvent(groups_, &QTreeWidget::itemClicked, this, [this] { goToGroup(); });
}

void ReportPreview::chosenZoom(int index) {
    const int entry = zoom_->itemData(index).toInt();
    if (entry > 0)
        pages_->setZoom(entry);
    else
        pages_->setFit(entry == PageWidthEntry ? PageView::Fit::PageWidth : PageView::Fit::WholePage);
    pages_->setFocus();
}

void ReportPreview::showZoom() {
    const int entry = pages_->fit() == PageView::Fit::PageWidth   ? PageWidthEntry
                      : pages_->fit() == PageView::Fit::WholePage ? WholePageEntry
                                                                  : qRound(pages_->zoom());
    zoom_->setCurrentIndex(zoom_->findData(entry));
}

} // namespace pontrel
