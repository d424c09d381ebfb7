#include "windows/leave/GrantPage.h"

#include "app/CodeNames.h"
#include "app/ControlNames.h"
#include "app/controls/TDBGrid.h"
#include "store/DataSource.h"
#include "windows/leave/LeaveNames.h"
#include "windows/leave/LeaveTab.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int CodeWidth = 60;
constexpr int NumberWidth = 50;

CodeBoxRow codeRow(int index, LookupKind kind, const QString& caption, const QString& column) {
    return {.number = index == 0 ? SchemeOfGrant : TypeOfGrant,
            .kind = kind,
            .box = indexed(u"Text2"_s, index),
            .search = indexed(u"Search"_s, index),
            .searchCaption = u"查詢"_s,
            .label = indexed(u"Label41"_s, index),
            .caption = caption,
            .column = column,
            .spokenName = spoken(caption),
            .width = CodeWidth,
            .check = CodeCheck::Leaving,
            .refusal = CodeRefusal::FocusBackOnce}; // Deliberate: a grant may have a code without a parent.
}

} // namespace

GrantPage::GrantPage(int tab, const LeaveNames& names)
    : RecordTab({.index = tab, .caption = u"給假規定"_s, .table = u"Holi02"_s}) {
    TDBGrid* grid = makeGrid(u"TDBGrid1(1)"_s);
    grid->setColumns({named(names.schemes, {u"適用辦法"_s, u"Suitno"_s, 150, Qt::AlignLeft, {}}),
                      {u"假別"_s, u"Holino"_s, 80, Qt::AlignLeft, {}},
                      {u"休假年資(起)"_s, u"HoliYearBeg"_s, 100, Qt::AlignRight, {}},
                      {u"休假年資(迄)"_s, u"HoliYearEnd"_s, 100, Qt::AlignRight, {}},
                      {u"可休日數"_s, u"HoliDays"_s, 90, Qt::AlignRight, {}}});
    makeFields();
    rows().addWidget(grid, 1);
    rows().addWidget(&frame());
    rows().addWidget(&bar());
}

void GrantPage::makeFields() {
    auto* lines = new QGridLayout(&frame());
    const CodeBox* scheme = addCode(codeRow(0, LookupKind::QFrmSuitNo, u"適用辦法："_s, u"SuitNo"_s));
    const CodeBox* type = addCode(codeRow(1, LookupKind::QFrmHoliNo, u"假別代碼："_s, u"HoliNo"_s));
    scheme->addTo(*lines, 0, 0);
    type->addTo(*lines, 1, 0);
    QLineEdit* begin = fields().box(u"Text2(2)"_s, u"休假年資起"_s, u"HoliYearBeg"_s, NumberWidth);
    QLineEdit* end = fields().box(u"Text2(3)"_s, u"休假年資迄"_s, u"HoliYearEnd"_s, NumberWidth);
    QLineEdit* days = fields().box(u"Text2(4)"_s, u"可休日數"_s, u"HoliDays"_s, NumberWidth);
    auto* band = new QHBoxLayout;
    for (QWidget* part : std::initializer_list<QWidget*>{
             begin, fields().caption(u"年"_s), fields().caption(u"～"_s), end, fields().caption(u"年"_s)})
        band->addWidget(part);
    band->addStretch(1);
    lines->addWidget(fields().caption(u"休假年資："_s, begin), 2, 0, Qt::AlignRight);
    lines->addLayout(band, 2, 1);
    lines->addWidget(fields().caption(u"可休日數："_s, days), 3, 0, Qt::AlignRight);
    lines->addWidget(days, 3, 1, Qt::AlignLeft);
    lines->setColumnStretch(1, 1);
    setFirstField(&scheme->box());
}

RecordRules GrantPage::rules() {
    return {.printTab = LeaveReportsTab};
}

RecordSteps GrantPage::steps() {
    return {.afterAdd = [this] { clearNames(); }, .refresh = [this] { showKnownGrants(); }};
}

void GrantPage::showKnownGrants() {
    // Deliberate: from now on a grant without its type or its scheme is not shown, until the window opens
    // anew.
    source().setRecordSource(u" SELECT Syst03.SuitRule, Holi01.HoliType, Holi02.*"
                             "    FROM (Holi01 INNER JOIN Holi02 ON Holi01.HoliNo = Holi02.HoliNo)"
                             " INNER JOIN Syst03 ON Holi02.SuitNo = Syst03.SuitNo"_s);
    source().Refresh();
}

} // namespace pontrel
