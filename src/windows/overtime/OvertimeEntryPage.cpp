#include "windows/overtime/OvertimeEntryPage.h"

#include "app/ControlNames.h"
#include "app/FocusWatch.h"
#include "app/KeyHook.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "rules/Session.h"
#include "rules/overtime/Overtime.h"
#include "store/DataSource.h"
#include "windows/overtime/OvertimeTab.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int CodeWidth = 80;
constexpr int HoursWidth = 40;
constexpr int PunchWidth = 48; ///< There is no room for a cursor to be seen.
constexpr int Punches = 12;
constexpr int PunchesInLine = 6;

} // namespace

OvertimeEntryPage::OvertimeEntryPage()
    : RecordTab({.index = OvertimeEntryTab,
                 .caption = u"加班輸入"_s,
                 .table = u"Over01"_s,
                 .bar = wholeBarWithBack()})
    , punches_(addSource(u"Data2"_s, {})) {
    auto* lines = new QVBoxLayout(&frame());
    lines->setSpacing(10);
    for (QLayout* part : {makeEmployee(), makeTimes(), makeRest(), makePunches()})
        lines->addLayout(part);
    lines->addStretch(1);
    rows().addWidget(&frame(), 1);
    rows().addWidget(&bar());
}

QLayout* OvertimeEntryPage::makeEmployee() {
    employee_ = addCode({.number = UnknownCode,
                         .kind = LookupKind::QFrmEmpNO,
                         .box = u"Text1(0)"_s,
                         .search = u"Search(0)"_s,
                         .label = u"Label2(0)"_s,
                         .caption = u"員工代碼："_s,
                         .column = u"EmpNo"_s,
                         .spokenName = u"員工代碼"_s,
                         .width = CodeWidth,
                         .related = {{u"TitleNo"_s, LookupKind::QFrmTitleNo, u"Label4(0)"_s},
                                     {u"UnitNo"_s, LookupKind::QFrmUnitNo, u"Label4(1)"_s},
                                     {u"ClsNo"_s, LookupKind::QFrmClsNo, u"Label4(2)"_s}}});
    setFirstField(&employee_->box());
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(FieldSpacing);
    grid->setVerticalSpacing(8);
    employee_->addTo(*grid, 0, 0);
    struct Related {
        std::size_t index;
        QString caption;
        int row, column;
    };
    for (const auto& [index, caption, row, column] :
         {Related{1, u"部　　門："_s, 0, 2}, {0, u"職　　稱："_s, 1, 0}, {2, u"班　　別："_s, 1, 2}}) {
        QLabel* shown = employee_->relatedLabel(index);
        grid->addWidget(fields().caption(caption, shown), row, column, Qt::AlignRight);
        grid->addWidget(shown, row, column + 1);
    }
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    return grid;
}

QLayout* OvertimeEntryPage::makeTimes() {
    const QString day = u"加班日期："_s;
    day_ = addDate(1, spoken(day), u"OverDate"_s, SilentDatePair);
    begin_ = fields().time(u"overTime(0)"_s, u"加班開始時間"_s, u"BegTime"_s);
    end_ = fields().time(u"overTime(1)"_s, u"加班結束時間"_s, u"EndTime"_s);
    return fieldLine({fields().caption(day, day_.mask), day_.mask, day_.date,
                      fields().caption(u"加班時間："_s, begin_), begin_, fields().caption(u"～"_s), end_});
}

QLayout* OvertimeEntryPage::makeRest() {
    const auto check = [this](int index, const QString& caption, const QString& column) {
        QCheckBox* box = fields().check(indexed(u"Check1"_s, index), spoken(caption), column);
        box->setText({}); // its caption stands before it
        return box;
    };
    const QString hours = u"加班時數："_s;
    const QString memo = u"備　　註："_s;
    const QString rest = u"轉補休否："_s;
    const QString draw = u"是否請領："_s;
    hours_ = fields().box(u"Text1(4)"_s, spoken(hours), u"OverHours"_s, HoursWidth);
    QLineEdit* memoBox = fields().box(u"Text1(5)"_s, spoken(memo), u"Memo"_s);
    QCheckBox* restBox = check(0, rest, u"Rest"_s);
    QCheckBox* drawBox = check(1, draw, u"Draw"_s);
    account_ = fields().shown(u"Label4(3)"_s, u"Account"_s);

    auto* marks = new QHBoxLayout;
    marks->addWidget(restBox);
    marks->addSpacing(2 * FieldSpacing);
    marks->addLayout(fieldLine({fields().caption(draw, drawBox), drawBox}));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(FieldSpacing);
    grid->setVerticalSpacing(8);
    grid->addWidget(fields().caption(hours, hours_), 0, 0, Qt::AlignRight);
    grid->addLayout(fieldLine({hours_, fields().caption(u"小時"_s)}), 0, 1);
    grid->addWidget(fields().caption(memo, memoBox), 1, 0, Qt::AlignRight);
    grid->addWidget(memoBox, 1, 1, 1, 3);
    grid->addWidget(fields().caption(rest, restBox), 2, 0, Qt::AlignRight);
    grid->addLayout(marks, 2, 1);
    grid->addWidget(fields().caption(u"登錄人員："_s, account_), 2, 2, Qt::AlignRight);
    grid->addWidget(account_, 2, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

QLayout* OvertimeEntryPage::makePunches() {
    const QString caption = u"參考時間："_s;
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(FieldSpacing / 2);
    QLabel* title = fields().caption(caption);
    grid->addWidget(title, 0, 0, Qt::AlignRight);
    for (int punch = 0; punch < Punches; ++punch) {
        const QString number = QString::number(punch + 1);
        TDBTime* time = fields().time(indexed(u"Time1"_s, punch), spoken(caption) + number, {});
        time->setReadOnly(true);
        time->setFocusPolicy(Qt::NoFocus);
        time->setFixedWidth(PunchWidth);
        if (punch == 0)
            title->setBuddy(time);
        punches_->bind(time, "value", u"T"_s + number);
        const int row = punch / PunchesInLine;
        const int column = 1 + 2 * (punch % PunchesInLine);
        grid->addWidget(fields().caption(number, time), row, column, Qt::AlignRight);
        grid->setColumnMinimumWidth(column, fontMetrics().horizontalAdvance(u"00"_s));
        grid->addWidget(time, row, column + 1);
    }
    grid->setColumnMinimumWidth(0, title->sizeHint().width());
    grid->setColumnStretch(2 * PunchesInLine + 1, 1);
    return grid;
}

RecordRules OvertimeEntryPage::rules() {
    return {.alsoWithRows = {BarAction::Query}, .alsoWithoutRows = {BarAction::Query}, .printTab = 5};
}

RecordSteps OvertimeEntryPage::steps() {
    return {.afterAdd = [this] { startRow(); }, .query = [this] { askForRows(u"OverDate"_s); }};
}

void OvertimeEntryPage::connectControls(FormState& form) {
    form.watch.onLostFocus(end_, [this] { fillHours(); });
    // Ahead of what the key does to the date: it is Enter behind the last digit that brings the punches.
    onKeyDown(*day_.mask, [this](const QKeyEvent&) {
        showPunches();
        return false;
    });
}

void OvertimeEntryPage::startRow() {
    clearMasks();
    begin_->clear();
    end_->clear();
    clearNames();
    account_->setText(gAccount);
}

void OvertimeEntryPage::fillHours() {
    if (!begin_->isNull() && !end_->isNull())
        hours_->setText(QString::number(overtimeHours(begin_->time(), end_->time())));
}

void OvertimeEntryPage::showPunches() {
    if (!employee_->text().isEmpty() && day_.date->date().isValid())
        openSource(*punches_, punchesOfDay(employee_->text(), day_.date->date()));
}

} // namespace pontrel
