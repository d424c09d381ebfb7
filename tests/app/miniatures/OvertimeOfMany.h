#pragma once

#include "app/BatchPage.h"
#include "app/TwoLists.h"
#include "app/WindowHost.h"
#include "app/controls/Buttons.h"
#include "app/miniatures/Miniature.h"
#include "rules/Batch.h"

#include <QLabel>

namespace pontrel::test {

using namespace Qt::StringLiterals;

/// An hour of overtime on a day, for each employee of a list.
class HourForEach : public BatchWork {
  public:
    explicit HourForEach(QDate day) : day_(day) {}
    void write(const QString& EmpNo) override {
        sharedDatabase().execute(u"Insert into Over01([EmpNo],[OverDate],[OverHours]) values ("_s +
                                 textLiteral(EmpNo) + u","_s + dateLiteral(day_) + u",1)"_s);
    }

  private:
    QDate day_;
};

/// A batch: two lists, a date, two buttons.
class OvertimeOfMany : public Miniature {
  public:
    OvertimeOfMany() : Miniature({.index = 0, .caption = u"加班批次"_s, .table = u"Over01"_s}) {
        day_ = addDate(0, u"加班日期"_s, {}, SilentDatePair);
        lists_ = new TwoLists(&frame());
        buttons_ = makeButtons(this, u"CmdBat"_s, {u"新增"_s, u"存檔／取消"_s});
        stack({}, {day_.mask, day_.date, lists_});
        for (QPushButton* button : buttons_)
            rows().addWidget(button);
        rows().addWidget(moment_ = fields().shown(u"Label16"_s));
    }
    [[nodiscard]] BatchParts batchParts() {
        return {
            .frame = &frame(), .lists = lists_, .begin = buttons_[0], .end = buttons_[1], .moment = moment_};
    }
    [[nodiscard]] BatchSteps batchSteps() {
        return {.question = u"是否確定執行加班批次 ?"_s,
                .run = [this](const QStringList& chosen, const QDateTime&) {
                    WindowHost<> host;
                    HourForEach hours(day_.date->date());
                    runBatch(sharedDatabase(), host, chosen, 5, hours);
                }};
    }

  private:
    DateFields day_;
    TwoLists* lists_;
    QLabel* moment_;
    QList<QPushButton*> buttons_;
};

class OvertimeOfManyWindow : public RecordWindow {
  public:
    explicit OvertimeOfManyWindow(QWidget* parent)
        : RecordWindow(parent, u"Probe"_s, u"加班"_s, Opening::AtLoad) {
        auto* batch = new OvertimeOfMany;
        addTab(batch);
        completeTabs();
        addBatch(batch->batchParts(), batch->batchSteps());
    }
};

} // namespace pontrel::test
