#include "windows/leave/LeaveTypePage.h"

#include "app/ControlNames.h"
#include "app/controls/TDBGrid.h"
#include "windows/leave/LeaveTab.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int CodeWidth = 60;
constexpr int NameWidth = 180;

} // namespace

LeaveTypePage::LeaveTypePage(int tab)
    : RecordTab({.index = tab, .caption = u"假別設定"_s, .table = u"Holi01"_s}) {
    TDBGrid* grid = makeGrid(u"TDBGrid1(0)"_s);
    grid->setColumns({{u"假別代碼"_s, u"HoliNo"_s, 90, Qt::AlignLeft, {}},
                      {u"假別"_s, u"HoliType"_s, 150, Qt::AlignLeft, {}},
                      {u"扣除假日"_s, u"HoliDeduct"_s, 70, Qt::AlignLeft, {}},
                      {u"備註"_s, u"Memo"_s, 220, Qt::AlignLeft, {}}});

    auto* lines = new QGridLayout(&frame());
    const auto addLine = [&](const QString& caption, QWidget* field, Qt::Alignment alignment) {
        const int line = lines->rowCount();
        lines->addWidget(fields().caption(caption, field), line, 0, Qt::AlignRight);
        lines->addWidget(field, line, 1, alignment);
    };
    QLineEdit* code = fields().box(u"Text1(0)"_s, u"假別代碼"_s, u"HoliNo"_s, CodeWidth);
    addLine(u"假別代碼："_s, code, Qt::AlignLeft);
    addLine(u"假    別："_s, fields().box(u"Text1(1)"_s, u"假別"_s, u"HoliType"_s, NameWidth), Qt::AlignLeft);
    QCheckBox* deduct = fields().check(u"Check1"_s, u"是"_s, u"HoliDeduct"_s);
    deduct->setAccessibleName(u"扣除假日"_s);
    addLine(u"扣除假日："_s, deduct, Qt::AlignLeft);
    addLine(u"備    註："_s, fields().box(u"Text1(2)"_s, u"備註"_s, u"Memo"_s), {});
    lines->setColumnStretch(1, 1);
    setFirstField(code);

    rows().addWidget(grid, 1);
    rows().addWidget(&frame());
    rows().addWidget(&bar());
}

RecordRules LeaveTypePage::rules() {
    return {.printTab = LeaveReportsTab};
}

} // namespace pontrel
