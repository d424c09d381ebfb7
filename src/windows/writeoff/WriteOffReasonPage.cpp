#include "windows/writeoff/WriteOffReasonPage.h"

#include "app/ControlNames.h"
#include "app/controls/TDBGrid.h"
#include "windows/writeoff/WriteOffTab.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The buttons of the other bars without the query; those before it stand one place further.
const BarMap ReasonBar = {{1, BarAction::Add},      {2, BarAction::Edit},   {3, BarAction::Delete},
                          {4, BarAction::Cancel},   {5, BarAction::Save},   {6, BarAction::First},
                          {7, BarAction::Previous}, {8, BarAction::Next},   {9, BarAction::Last},
                          {10, BarAction::Refresh}, {11, BarAction::Print}, {12, BarAction::Leave}};

struct Field {
    QString caption;
    QString column;
    int width; ///< In pixels.
};

const std::vector<Field> Fields = {
    {u"註銷代碼："_s, u"CnlNo"_s, 60}, {u"註銷原因："_s, u"CnlName"_s, 260}, {u"備註："_s, u"Memo"_s, 260}};

} // namespace

WriteOffReasonPage::WriteOffReasonPage()
    : RecordTab(
          {.index = WriteOffReasonTab, .caption = u"註銷原因"_s, .table = u"Canc01"_s, .bar = ReasonBar}) {
    TDBGrid* grid = makeGrid(u"TDBG2"_s);
    grid->setColumns({{u"註銷代碼"_s, u"CnlNo"_s, 90, Qt::AlignLeft, {}},
                      {u"註銷原因"_s, u"CnlName"_s, 220, Qt::AlignLeft, {}},
                      {u"備註"_s, u"Memo"_s, 220, Qt::AlignLeft, {}}});

    auto* lines = new QGridLayout(&frame());
    for (int index = 0; index < static_cast<int>(Fields.size()); ++index) {
        const Field& field = Fields.at(static_cast<std::size_t>(index));
        QLineEdit* box =
            fields().box(indexed(u"Text1"_s, index), spoken(field.caption), field.column, field.width);
        lines->addWidget(fields().caption(field.caption, box), index, 0, Qt::AlignRight);
        lines->addWidget(box, index, 1, Qt::AlignLeft);
        if (index == 0)
            setFirstField(box);
    }
    lines->setColumnStretch(1, 1);

    rows().addWidget(grid, 1);
    rows().addWidget(&frame());
    rows().addWidget(&bar());
}

RecordRules WriteOffReasonPage::rules() {
    return {.printTab = WriteOffReportsTab};
}

} // namespace pontrel
