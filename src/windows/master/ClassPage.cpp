#include "windows/master/ClassPage.h"

#include "app/ControlNames.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Steps = 6;
constexpr int SlotWidth = 44;
constexpr int DaysWidth = 44;

} // namespace

ClassPage::ClassPage(int tab) : RecordTab(masterTab(tab, u"班別設定"_s)) {
    QLineEdit* code = fields().box(u"Text5(0)"_s, u"班別代碼"_s, u"ClsNo"_s, 60);
    QLineEdit* name = fields().box(u"Text5(1)"_s, u"班別名稱"_s, u"ClassName"_s, 180);
    setFirstField(code);
    auto* head = new QHBoxLayout;
    head->addWidget(fields().caption(u"班　　別："_s, code));
    head->addWidget(code);
    head->addWidget(name);
    head->addStretch(1);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(8);
    for (int step = 0; step < Steps; ++step)
        addStep(*grid, step);
    auto* lines = new QVBoxLayout(&frame());
    lines->setSpacing(10);
    lines->addLayout(head);
    lines->addLayout(grid);
    lines->addWidget(fields().check(u"Check1"_s, u"國定假日休假"_s, u"ChkHoli"_s));
    rows().addWidget(&frame());
    rows().addStretch(1);
    rows().addWidget(&bar());
}

void ClassPage::addStep(QGridLayout& grid, int step) {
    const QString number = QString::number(step + 1);
    const QString first = u"第"_s + number + u"段"_s;
    const int index = 3 * step + 2;
    // Deliberate: nothing typed is looked up here.
    const CodeBox* slot = addCode({.kind = LookupKind::QFrmTimeNo,
                                   .box = indexed(u"Text5"_s, index),
                                   .search = indexed(u"Search"_s, step),
                                   .caption = u"時　　段："_s,
                                   .column = u"TimeNo"_s + number,
                                   .spokenName = first + u"時段"_s,
                                   .width = SlotWidth});
    QLineEdit* days =
        fields().box(indexed(u"Text5"_s, index + 1), first + u"天數"_s, u"TimeDay"_s + number, DaysWidth);
    QLineEdit* rest = fields().box(indexed(u"Text5"_s, index + 2), first + u"休息天數"_s,
                                   u"TimeRest"_s + number, DaysWidth);
    slot->addTo(grid, step, 0);
    int column = 2;
    for (QWidget* part :
         std::initializer_list<QWidget*>{fields().caption(u"×"_s, days), days, fields().caption(u"天，"_s),
                                         fields().caption(u"休息："_s, rest), rest, fields().caption(u"天"_s),
                                         fields().shown(indexed(u"Label9"_s, step + 1))})
        grid.addWidget(part, step, column++);
    grid.setColumnStretch(column - 1, 1);
}

} // namespace pontrel
