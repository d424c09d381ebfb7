#pragma once

#include "app/miniatures/Miniature.h"

namespace pontrel::test {

using namespace Qt::StringLiterals;

/// The overtime of one employee: no row is edited, and Enter in the code box asks.
class OvertimeList : public Miniature {
  public:
    OvertimeList()
        : Miniature({.index = 0, .caption = u"加班明細"_s, .table = u"Over01"_s, .hasFrame = false}) {
        CodeBox* employee = addCode({.number = 1,
                                     .kind = LookupKind::QFrmEmpNO,
                                     .box = u"Text5"_s,
                                     .search = u"Search(1)"_s,
                                     .label = u"Label4(96)"_s,
                                     .caption = u"員工代號："_s,
                                     .spokenName = u"員工代號"_s,
                                     .width = 80,
                                     .check = CodeCheck::Enter,
                                     .afterSearch = LookupKey::Enter});
        employee->onEnter([this, employee] {
            openSource(source(), u"Select * From Over01 Where EmpNo = "_s + textLiteral(employee->text()) +
                                     u" Order by OverDate desc"_s);
        });
        TDBGrid* list = makeGrid(u"TDBG1(0)"_s);
        list->setColumns({{u"加班日期"_s, u"OverDate"_s}, {u"時數"_s, u"OverHours"_s}});
        auto* line = new QGridLayout;
        employee->addTo(*line, 0, 0);
        rows().addLayout(line);
        rows().addWidget(list);
    }
};

} // namespace pontrel::test
