#include "windows/leave/LeaveHoursPage.h"

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "store/DataSource.h"
#include "store/StatementText.h"
#include "windows/leave/LeaveTab.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

LeaveHoursPage::LeaveHoursPage(int tab)
    : RecordTab({.index = tab, .caption = u"假時查詢"_s, .table = u"Holi01"_s, .hasFrame = false}) {
    employee_ = addCode({.number = EmployeeOfHours,
                         .kind = LookupKind::QFrmEmpNO,
                         .box = u"Text4"_s,
                         .search = u"Search(7)"_s,
                         .searchCaption = u"查詢"_s,
                         .label = u"Label4(97)"_s,
                         .caption = u"員工代碼："_s,
                         .spokenName = u"員工代碼"_s,
                         .width = 90,
                         .check = CodeCheck::Enter});
    from_ = addDate(3, u"期間自"_s, {}, ModuleDatePair);
    to_ = addDate(4, u"期間至"_s, {}, ModuleDatePair);
    placeBehind(to_.date, {employee_->search()});
    TDBGrid* grid = makeGrid(u"TDBGrid2"_s);
    grid->setColumns({{u"假別"_s, u"HNo"_s, 100, Qt::AlignLeft, {}},
                      {u"假別名稱"_s, u"HoliType"_s, 220, Qt::AlignLeft, {}},
                      {u"請假總日數"_s, u"hr"_s, 120, Qt::AlignRight, {}}});

    auto* lines = new QGridLayout;
    lines->setColumnStretch(1, 1);
    employee_->addTo(*lines, 0, 0);
    auto* period = new QHBoxLayout;
    for (QWidget* part : std::initializer_list<QWidget*>{from_.mask, from_.date, fields().caption(u"～"_s),
                                                         to_.mask, to_.date})
        period->addWidget(part);
    period->addStretch(1);
    lines->addWidget(fields().caption(u"期間："_s, from_.mask), 1, 0, Qt::AlignRight);
    lines->addLayout(period, 1, 1);
    rows().addLayout(lines);
    rows().addWidget(grid, 1);
}

void LeaveHoursPage::connectControls(FormState&) {
    // Deliberate: a change of the employee or of the first day asks nothing, only one of the last day does.
    onEvent(to_.mask, &TDBMask::changed, this, [this] {
        if (DatePair::dateOf(to_.mask->value()))
            showHours();
    });
    onEvent(to_.date, &TDBDate::changed, this, [this] {
        // One that the mask cannot hold; any other has come by way of it.
        if (to_.mask->value().isEmpty() && to_.date->date().isValid())
            showHours();
    });
}

void LeaveHoursPage::showHours() {
    if (!from_.date->date().isValid())
        return;
    source().setRecordSource(
        u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
        "  From Holi04,Holi01  where Holi04.HoliNo = Holi01.HoliNo      and Holi04.EmpNo = "_s +
        textLiteral(employee_->text()) + u"     and Holi04.HoliDate Between "_s +
        dateLiteral(from_.date->date()) + u" and "_s + dateLiteral(to_.date->date()) +
        u" Group by Holi04.HoliNo,HoliType "_s);
    source().Refresh();
}

} // namespace pontrel
