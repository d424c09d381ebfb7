#include "windows/master/SlotPage.h"

#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/controls/DropList.h"
#include "app/controls/OptionButton.h"
#include "app/controls/TDBTime.h"
#include "rules/attendance/Positions.h"
#include "rules/attendance/SlotTimes.h"
#include "windows/master/MinuteHints.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MinutesWidth = 36; ///< Of three digits.
constexpr int SideMargin = 6;    ///< Of the two frames: the lines fill the page.

const std::array<QString, 5> Options = {u"免刷卡"_s, u"1卡"_s, u"2卡"_s, u"3卡"_s, u"4卡"_s};

/// What the daily calculation looks at with each option.
const std::array<QString, 5> OptionHints = {
    u"不列為異常。"_s, u"只看上午上班。"_s, u"看上午上班與下午下班。"_s,
    u"看上午上班、下午上班與下午下班。"_s, u"四個位置都看；上午上班到下班未滿 4 小時也列為異常。"_s};
const QString ElasticHint = u"「上午4小時」與「上午4 小時,下午4小時!」須配「4卡」，\n"
                            u"「下午4小時」須配「3卡」或「4卡」；其他配法會使當日的計算提早結束。"_s;
const QString CheckHint = u"勾選時才計算這個位置的遲到或早退；是否缺卡另按卡數判斷。"_s;

QString timeHint(const QString& caption) {
    static const QMap<QString, QString> hints = {{u"最早"_s, u"上班卡自這個時間起收。"_s},
                                                 {u"標準"_s, u"遲到、早退以這個時間計算。"_s},
                                                 {u"最晚"_s, u"下班卡收到這個時間為止。"_s}};
    return hints.value(caption);
}

/// Tells it in the tooltip and to assistive technology.
void explain(QWidget& control, const QString& hint) {
    control.setToolTip(hint);
    control.setAccessibleDescription(hint);
}

/// The number that a carrier box holds; -1 for none.
int numberIn(const QLineEdit& carrier) {
    bool isNumber = false;
    const int number = carrier.text().toInt(&isNumber);
    return isNumber ? number : -1;
}

QGridLayout* makeGridOn(QWidget* frame) {
    auto* grid = new QGridLayout(frame);
    const QMargins margins = grid->contentsMargins();
    grid->setContentsMargins(SideMargin, margins.top(), SideMargin, margins.bottom());
    return grid;
}

} // namespace

SlotPage::SlotPage(int tab) : RecordTab(masterTab(tab, u"時段設定"_s)) {
    auto* lines = new QVBoxLayout(&frame());
    lines->addLayout(makeHead());
    auto* settings = new QHBoxLayout;
    settings->setSpacing(4);
    settings->addWidget(makePunchSettings());
    settings->addWidget(makeFlexibleSettings(), 1);
    lines->addLayout(settings);
    cardType_ = fields().hiddenBox(u"Text4(7)"_s, u"CardType"_s);
    elasticType_ = fields().hiddenBox(u"Text4(6)"_s, u"ElstType"_s);
    rows().addWidget(&frame());
    rows().addStretch(1);
    rows().addWidget(&bar());
}

RecordSteps SlotPage::steps() {
    return {.afterReposition = [this] {
        if (!isHidden()) // it is the tab showing
            showChoiceOfRow();
    }};
}

QHBoxLayout* SlotPage::makeHead() {
    QLineEdit* code = fields().box(u"Text4(0)"_s, u"時段代碼"_s, u"TimeNo"_s, 40);
    QLineEdit* name = fields().box(u"Text4(1)"_s, u"時段名稱"_s, u"TimeName"_s, 150);
    setFirstField(code);
    auto* line = new QHBoxLayout;
    line->addWidget(fields().caption(u"時段："_s, code));
    line->addWidget(code);
    line->addWidget(name);
    line->addStretch(1);
    auto* group = new QButtonGroup(this);
    for (int index = 0; index < static_cast<int>(OptCT.size()); ++index) {
        auto* option = new OptionButton(Options.at(static_cast<std::size_t>(index)), &frame());
        option->setObjectName(indexed(u"OptCT"_s, index));
        option->setAccessibleName(option->text());
        explain(*option, OptionHints.at(static_cast<std::size_t>(index)));
        group->addButton(option);
        line->addWidget(option);
        OptCT.at(static_cast<std::size_t>(index)) = option;
        // Nothing else follows the choice: no box is ticked or cleared by it.
        onEvent(option, &OptionButton::clicked, this,
                [this, index] { cardType_->setText(QString::number(index)); });
    }
    return line;
}

QGroupBox* SlotPage::makePunchSettings() {
    auto* box = new QGroupBox(u"  打卡設定"_s, &frame());
    box->setObjectName(u"FrameTS(3)"_s);
    QGridLayout* grid = makeGridOn(box);
    grid->setHorizontalSpacing(5);
    grid->setVerticalSpacing(8);
    struct Entry {
        int index;
        QString caption;
        QString column;
    };
    // The bound of a half stands before its way in and after its way out, as the day goes.
    const std::array<std::array<Entry, 2>, Positions> entries = {
        {{{{0, u"最早"_s, u"StrIn1"_s}, {2, u"標準"_s, u"StdT1"_s}}},
         {{{3, u"標準"_s, u"StdT2"_s}, {6, u"最晚"_s, u"EndOut2"_s}}},
         {{{1, u"最早"_s, u"StrIn3"_s}, {4, u"標準"_s, u"StdT3"_s}}},
         {{{5, u"標準"_s, u"StdT4"_s}, {7, u"最晚"_s, u"EndOut4"_s}}}}};
    for (int row = 0; row < Positions; ++row) {
        const QString& caption = positionNames().at(row);
        QCheckBox* check = fields().check(indexed(u"CheckT"_s, row), caption, u"StdC%1"_s.arg(row + 1));
        check->setMinimumSize(check->sizeHint());
        explain(*check, CheckHint);
        grid->addWidget(check, row, 0);
        int column = 1;
        for (const Entry& entry : entries.at(static_cast<std::size_t>(row))) {
            addTime(*grid, row, column, entry.index, entry.caption, caption + entry.caption, entry.column);
            column += 2;
        }
    }
    grid->addWidget(fields().check(u"CheckRest"_s, u"中途休息"_s, u"Rest"_s), Positions, 0, 1, 5);
    grid->setRowStretch(Positions + 1, 1);
    return box;
}

void SlotPage::addTime(QGridLayout& grid, int row, int column, int index, const QString& caption,
                       const QString& spokenName, const QString& dataColumn) {
    TDBTime* time = fields().time(indexed(u"TDBTime1"_s, index), spokenName, dataColumn);
    time->setShowSeconds(true);
    explain(*time, timeHint(caption));
    grid.addWidget(fields().caption(caption, time), row, column, Qt::AlignRight);
    grid.addWidget(time, row, column + 1, Qt::AlignLeft);
}

QGroupBox* SlotPage::makeFlexibleSettings() {
    auto* box = new QGroupBox(u"  彈性上班"_s, &frame());
    box->setObjectName(u"Frame2"_s);
    Combo1 = new DropList(&frame());
    Combo1->setObjectName(u"Combo1"_s);
    Combo1->setAccessibleName(u"彈性類別"_s);
    explain(*Combo1, ElasticHint);
    Combo1->addItems(elasticityNames());
    Combo1->setCurrentIndex(-1);
    Combo1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    onEvent(Combo1, &QComboBox::activated, this,
            [this](int entry) { elasticType_->setText(QString::number(entry)); });
    QGridLayout* grid = makeGridOn(box);
    grid->setHorizontalSpacing(4);
    grid->addWidget(fields().caption(u"彈性類別："_s, Combo1), 0, 0, 1, 7);
    grid->addWidget(Combo1, 1, 0, 1, 7);
    addMinutes(*grid, 2, 0, 2, u"彈性："_s, {}, u"ElstMin"_s);
    struct Half {
        QString caption;
        std::array<int, 3> boxes;
        QString suffix; ///< Of the columns.
    };
    const std::array<Half, 2> halves = {{{u"上午"_s, {3, 4, 5}, {}}, {u"下午"_s, {10, 9, 8}, u"1"_s}}};
    int column = 0;
    for (const auto& [caption, boxes, suffix] : halves) {
        grid->addWidget(fields().caption(caption), 3, column, 1, 3, Qt::AlignHCenter);
        addMinutes(*grid, 4, column, boxes[0], u"緩衝："_s, caption, u"Cushion"_s + suffix);
        addMinutes(*grid, 5, column, boxes[1], u"遲到："_s, caption, u"Delay"_s + suffix);
        addMinutes(*grid, 6, column, boxes[2], u"早退："_s, caption, u"Earlier"_s + suffix);
        column += 4;
    }
    grid->setColumnMinimumWidth(3, 6);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(7, 1);
    return box;
}

void SlotPage::addMinutes(QGridLayout& grid, int row, int column, int index, const QString& caption,
                          const QString& half, const QString& dataColumn) {
    QLineEdit* box =
        fields().box(indexed(u"Text4"_s, index), half + spoken(caption), dataColumn, MinutesWidth);
    QLabel* label = fields().caption(caption, box);
    explain(*box, minuteHint(dataColumn));
    label->setToolTip(box->toolTip());
    grid.addWidget(label, row, column, Qt::AlignRight);
    grid.addWidget(box, row, column + 1);
    grid.addWidget(fields().caption(u"分"_s), row, column + 2);
}

void SlotPage::showOption() {
    const int option = numberIn(*cardType_);
    if (option >= 0 && option < static_cast<int>(OptCT.size()))
        OptCT.at(static_cast<std::size_t>(option))->setChecked(true);
}

void SlotPage::showListEntry() {
    const int entry = numberIn(*elasticType_);
    if (entry >= 0 && entry < Combo1->count())
        Combo1->setCurrentIndex(entry);
}

void SlotPage::showChoices() {
    showOption();
    showListEntry();
}

void SlotPage::showChoiceOfRow() {
    if (cardType_->text().isEmpty())
        showListEntry();
    else
        showOption();
}

} // namespace pontrel
