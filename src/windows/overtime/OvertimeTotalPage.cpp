#include "windows/overtime/OvertimeTotalPage.h"

#include "app/CodeNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/KeyHook.h"
#include "app/Module1.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "rules/overtime/Overtime.h"
#include "store/DataSource.h"
#include "windows/overtime/OvertimeTab.h"

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

} // namespace

OvertimeTotalPage::OvertimeTotalPage()
    : RecordTab(
          {.index = OvertimeTotalTab, .caption = u"加班查詢"_s, .table = u"Over01"_s, .hasFrame = false})
    , employee_(addCode({.number = UnknownCode,
                         .kind = LookupKind::QFrmEmpNO,
                         .box = u"Text4"_s,
                         .search = u"Search(2)"_s,
                         .label = u"Label4(97)"_s,
                         .caption = u"員工代號："_s,
                         .spokenName = u"員工代號"_s,
                         .width = CodeWidth,
                         .check = CodeCheck::Enter,
                         .afterSearch = LookupKey::Tab}))
    , first_(addDate(2, u"期間起日"_s, {}, SilentDatePair))
    , last_(addDate(3, u"期間迄日"_s, {}, SilentDatePair))
    , grid_(makeGrid(u"TDBG1(1)"_s)) {
    placeBehind(last_.date, {employee_->search()});
    grid_->setColumns({{u"員工碼"_s, u"EmpNo"_s, 165, Qt::AlignLeft, {}},
                       named(names_, {u"姓名"_s, u"EmpNo"_s, 210, Qt::AlignLeft, {}}),
                       {u"加班總時數"_s, u"SubTot"_s, 150, Qt::AlignRight, {}}});
    auto* period = new QHBoxLayout;
    period->setSpacing(4);
    for (QWidget* part : std::initializer_list<QWidget*>{first_.mask, first_.date, fields().caption(u"～"_s),
                                                         last_.mask, last_.date})
        period->addWidget(part);
    period->addStretch(1);
    auto* lines = new QGridLayout;
    lines->setHorizontalSpacing(6);
    employee_->addTo(*lines, 0, 0);
    lines->addWidget(fields().caption(u"期間："_s, first_.mask), 1, 0, Qt::AlignRight);
    lines->addLayout(period, 1, 1);
    lines->setColumnStretch(1, 1);
    rows().addLayout(lines);
    rows().addWidget(grid_, 1);
}

void OvertimeTotalPage::connectControls(FormState& form) {
    onEvent(last_.mask, &TDBMask::changed, this, [this] { total(); });
    onKeyDown(*last_.mask, [this](const QKeyEvent&) {
        total(); // which a key that changes the mask does once more, behind the change
        return false;
    });
    // The mask has no place for the dates from 2011 on.
    onEvent(last_.date, &TDBDate::changed, this, [this, &form] {
        if (!form.updating)
            total();
    });
}

void OvertimeTotalPage::total() {
    const QDate first = first_.date->date();
    const QDate last = last_.date->date();
    if (!first.isValid() || !last.isValid())
        return;
    openSource(source(), overtimeTotal(employee_->text(), first, last));
    readNames(names_, sharedDatabase(), u"SELECT EmpNo, EmpName   From Base06 "_s);
    grid_->refreshCells();
}

} // namespace pontrel
