#pragma once

#include "app/miniatures/Miniature.h"

namespace pontrel::test {

using namespace Qt::StringLiterals;

/// A leave note: its day rows beside it, a code that opens its lookup, a check of the period on saving.
class LeaveNote : public Miniature {
  public:
    LeaveNote() : Miniature({.index = 0, .caption = u"輸入假單"_s, .table = u"Holi03"_s}) {
        CodeBox* code = addCode({.number = 1,
                                 .kind = LookupKind::QFrmEmpNO,
                                 .box = u"Text3(0)"_s,
                                 .search = u"Search(2)"_s,
                                 .label = u"Label4(2)"_s,
                                 .column = u"EmpNo"_s,
                                 .spokenName = u"員工代碼"_s,
                                 .check = CodeCheck::Leaving,
                                 .refusal = CodeRefusal::Lookup,
                                 .related = {{u"TitleNo"_s, LookupKind::QFrmTitleNo, u"Label4(3)"_s}}});
        setFirstField(&code->box());
        dayRows->setObjectName(u"TDBGrid1(2)"_s);
        dayRows->setColumns({{u"日期"_s, u"HoliDate"_s}, {u"假單"_s, u"BusNo"_s}});
        dayRows->setSource(days);
        stack({code}, {BusNo, code->relatedLabel(0), begin.mask, begin.date, end.mask, end.date}, dayRows);
    }
    RecordRules rules() override { return {.printTab = 3, .deleteEnd = DeleteEnd::Next}; }
    RecordSteps steps() override {
        return {.afterAdd =
                    [this] {
                        clearMasks();
                        clearNames();
                        BusNo->setText(u"3"_s);
                    },
                .beforeSave = [this] { return checkPeriod(); },
                .afterMove =
                    [this] {
                        openSource(*days,
                                   u"select * from Holi04 where BusNo ="_s + textLiteral(BusNo->text()));
                    }};
    }
    void connectControls(FormState& form) override {
        form.watch.onLostFocus(begin.mask, [this] { end.mask->setValue(begin.mask->value()); });
        onEvent(dayRows, &TDBGrid::rowChosen, this, [this] {
            source().FindFirst(u"BusNo ="_s + textLiteral(days->recordset().field(u"BusNo"_s).joined()));
        });
    }

  private:
    SaveStep checkPeriod() {
        if (begin.date->date() <= end.date->date())
            return SaveStep::Save;
        MsgBox(u"終止日期不可小於開始日期,請重新輸入"_s, u"警告訊息"_s);
        end.mask->setFocus();
        return SaveStep::StayInEdit;
    }

    QLabel* BusNo = fields().shown(u"Label4(0)"_s, u"BusNo"_s);
    DateFields begin = addDate(0, u"請假日期自"_s, u"HoliBegDate"_s, ModuleDatePair);
    DateFields end = addDate(1, u"請假日期至"_s, u"HoliEndDate"_s, ModuleDatePair);
    DataSource* days = addSource(u"Data2(0)"_s, u"Holi04"_s);
    TDBGrid* dayRows = new TDBGrid(this);
};

} // namespace pontrel::test
