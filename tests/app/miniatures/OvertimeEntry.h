#pragma once

#include "app/miniatures/Miniature.h"

namespace pontrel::test {

using namespace Qt::StringLiterals;

/// An overtime entry: an employee whose code is never refused, hours that follow from the times, and the
/// punches of the day from a source of their own, asked for by any key in the date's mask.
class OvertimeEntry : public Miniature {
  public:
    OvertimeEntry() : Miniature({.index = 0, .caption = u"加班輸入"_s, .table = u"Over01"_s}) {
        employee = addCode({.number = 1,
                            .kind = LookupKind::QFrmEmpNO,
                            .box = u"Text1(0)"_s,
                            .search = u"Search(0)"_s,
                            .label = u"Label2(0)"_s,
                            .column = u"EmpNo"_s,
                            .spokenName = u"員工代碼"_s,
                            .related = {{u"TitleNo"_s, LookupKind::QFrmTitleNo, u"Label4(0)"_s}}});
        setFirstField(&employee->box());
        punches->bind(firstPunch, "value", u"T1"_s);
        stack({employee}, {employee->relatedLabel(0), day.mask, day.date, begin, end, hours, firstPunch},
              makeGrid(u"TDBG1(2)"_s));
    }
    RecordSteps steps() override {
        return {.afterAdd = [this] {
            clearMasks();
            clearNames();
            begin->clear();
            end->clear();
        }};
    }
    void connectControls(FormState& form) override {
        form.watch.onLostFocus(
            end, [this] { hours->setText(QString::number(begin->time().secsTo(end->time()) / 3600)); });
        onKeyDown(*day.mask, [this](const QKeyEvent&) {
            showPunches();
            return false;
        });
    }

  private:
    void showPunches() {
        if (employee->text().isEmpty() || !day.date->date().isValid())
            return;
        openSource(*punches, u"Select * from View02 Where UseDate ="_s + dateLiteral(day.date->date()) +
                                 u" and EmpNo = "_s + textLiteral(employee->text()));
    }

    CodeBox* employee = nullptr;
    DateFields day = addDate(1, u"加班日期"_s, u"OverDate"_s, SilentDatePair);
    TDBTime* begin = fields().time(u"overTime(0)"_s, u"開始時間"_s, u"BegTime"_s);
    TDBTime* end = fields().time(u"overTime(1)"_s, u"結束時間"_s, u"EndTime"_s);
    QLineEdit* hours = fields().box(u"Text1(4)"_s, u"加班時數"_s, u"OverHours"_s);
    TDBTime* firstPunch = fields().time(u"Time1(0)"_s, u"參考時間"_s, {});
    DataSource* punches = addSource(u"Data2"_s, {});
};

} // namespace pontrel::test
