#include "app/Lookup.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/Prompts.h"
#include "app/Window.h"
#include "app/controls/Buttons.h"
#include "app/controls/Keys.h"
#include "app/controls/TDBGrid.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "store/StatementText.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize GridSize(430, 240);
constexpr int CodeWidth = 90;
constexpr int LastWidth = 60;  ///< At least: the last column takes the rest.
constexpr int NameWidth = 230; ///< Where a third column follows.
constexpr int LinesOfAName = 2;

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& caption = {}) {
    auto* label = new QLabel(caption, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

void Lookup::ask(LookupKind kind, QWidget* parent) {
    Lookup dialog(kind, parent);
    dialog.Load();
    (void)runModal(dialog);
}

Lookup::Lookup(LookupKind kind, QWidget* parent)
    : QDialog(parent), texts_(lookupTexts(kind)), Data1(new DataSource(this)) {
    setObjectName(texts_.name);
    setWindowTitle(texts_.title);
    setAccessibleName(texts_.title);
    makeControls();
    layOut();
    connectControls();
}

void Lookup::makeControls() {
    Data1->setObjectName(u"Data1"_s);
    if (texts_.hasSearchBoxes)
        makeSearchBoxes();
    makeGrid();
    Label1 = makeLabel(this, u"Label1"_s, texts_.codeCaption);
    Label2 = makeLabel(this, u"Label2"_s, texts_.nameCaption);
    Label3 = makeLabel(this, u"Label3"_s);
    Label4 = makeLabel(this, u"Label4"_s);
    Label1->setBuddy(Label3);
    Label2->setBuddy(Label4);
    Label4->setWordWrap(true);
    Label4->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Label4->setFixedHeight(LinesOfAName * Label4->fontMetrics().lineSpacing());
    Data1->bind(Label3, "text", texts_.codeColumn, true);
    Data1->bind(Label4, "text", texts_.nameColumn, true);
    const QStringList captions{u"確定"_s, u"取消"_s};
    for (int index = 0; index < captions.size(); ++index) {
        Command1.at(static_cast<std::size_t>(index)) =
            makeButton(this, indexed(u"Command1"_s, index), captions.at(index));
    }
}

void Lookup::makeSearchBoxes() {
    const auto makeBox = [this](const QString& name, const QString& hint, const QString& accessibleName) {
        auto* box = new QLineEdit(this);
        box->setObjectName(name);
        box->setPlaceholderText(hint);
        box->setAccessibleName(accessibleName);
        return box;
    };
    Text1 = makeBox(u"Text1"_s, u"員工代碼"_s, u"尋找員工代碼"_s);
    Text2 = makeBox(u"Text2"_s, u"姓名"_s, u"尋找姓名"_s);
    Text1->setFixedWidth(CodeWidth);
    Text2->setFixedWidth(NameWidth);
}

void Lookup::makeGrid() {
    TDBGrid2 = new TDBGrid(this);
    TDBGrid2->setObjectName(u"TDBGrid2"_s);
    TDBGrid2->setAccessibleName(texts_.gridCaptions.join(u' '));
    TDBGrid2->setFixedSize(GridSize);
    std::vector<GridColumn> columns;
    const bool hasThird = texts_.gridColumns.size() > 2;
    const std::array<int, 3> widths{CodeWidth, hasThird ? NameWidth : LastWidth, LastWidth};
    columns.reserve(static_cast<std::size_t>(texts_.gridColumns.size()));
    for (int column = 0; column < texts_.gridColumns.size(); ++column)
        columns.push_back({texts_.gridCaptions.at(column),
                           texts_.gridColumns.at(column),
                           widths.at(static_cast<std::size_t>(column)),
                           Qt::AlignLeft,
                           {}});
    TDBGrid2->setColumns(std::move(columns));
    TDBGrid2->horizontalHeader()->setStretchLastSection(true);
    TDBGrid2->setEmptyText(u"沒有可選的資料，請先建立。"_s);
    TDBGrid2->setSource(Data1);
}

void Lookup::layOut() {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(12, 12, 12, 12);
    rows->setSpacing(6);
    if (texts_.hasSearchBoxes) {
        auto* boxes = new QHBoxLayout;
        boxes->setSpacing(0); // each stands over its column
        boxes->addWidget(Text1);
        boxes->addWidget(Text2);
        boxes->addStretch(1);
        rows->addLayout(boxes);
    }
    rows->addWidget(TDBGrid2);
    auto* row = new QGridLayout;
    row->setHorizontalSpacing(6);
    row->setColumnStretch(1, 1);
    row->addWidget(Label1, 0, 0);
    row->addWidget(Label3, 0, 1);
    row->addWidget(Label2, 1, 0, Qt::AlignTop);
    row->addWidget(Label4, 1, 1);
    rows->addLayout(row);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch(1);
    buttons->addWidget(Command1[0]);
    buttons->addWidget(Command1[1]);
    buttons->addStretch(1);
    rows->addLayout(buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void Lookup::connectControls() {
    EnterAsTab::install(*this);
    for (int index : {0, 1})
        onEvent(Command1.at(static_cast<std::size_t>(index)), &QPushButton::clicked, this,
                [this, index] { Command1_Click(index); });
    onEvent(TDBGrid2, &TDBGrid::rowTaken, this, [this] { Command1_Click(0); });
    if (!texts_.hasSearchBoxes) {
        TDBGrid2->setFocus();
        return;
    }
    onEvent(Text1, &QLineEdit::textChanged, this, [this] { Text1_Change(); });
    onEvent(Text2, &QLineEdit::textChanged, this, [this] { Text2_Change(); });
    auto* watch = new FocusWatch(this);
    watch->onLostFocus(Text1, [this] { Text1_LostFocus(); });
    watch->onLostFocus(Text2, [this] { Text2_LostFocus(); });
    for (QPushButton* button : Command1)
        button->installEventFilter(this);
    Text1->setFocus();
}

bool Lookup::eventFilter(QObject* watched, QEvent* event) {
    // Deliberate: Enter on a button of the lookup with search boxes moves on instead of pressing it.
    if (event->type() == QEvent::KeyPress) {
        if (isEnter(*static_cast<QKeyEvent*>(event))) {
            EnterAsTab::sendTab();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void Lookup::Load() {
    OpenDB();
    trapOpen([this] {
        Data1->setDatabaseName(storePath());
        Data1->setRecordSource(texts_.table);
        Data1->Refresh();
        Data1->MoveLastAndFirst();
    });
}

void Lookup::Command1_Click(int index) {
    if (index == 0) {
        *texts_.result = Label3->text();
        accept();
    } else {
        reject();
    }
}

void Lookup::Text1_Change() {
    Data1->FindFirst(u"empno like"_s + startLiteral(Text1->text()));
}

void Lookup::Text2_Change() {
    Data1->FindFirst(u"empname like"_s + startLiteral(Text2->text()));
}

// Deliberate: neither of these two refreshes the source; the list stays the whole table.

void Lookup::Text1_LostFocus() {
    Data1->setRecordSource(u"select * from Base06 where empno like "_s + startLiteral(Text1->text()) +
                           u" order by EmpNo,EmpName"_s);
}

void Lookup::Text2_LostFocus() {
    // Deliberate: the name stands in both places.
    const QString start = startLiteral(Text2->text());
    Data1->setRecordSource(u"select * from Base06 where empno like "_s + start + u" and empname like  "_s +
                           start + u" order by EmpNo,EmpName"_s);
}

} // namespace pontrel
