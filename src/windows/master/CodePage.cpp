#include "windows/master/CodePage.h"

#include "app/ControlNames.h"
#include "app/controls/TDBGrid.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int CodeWidth = 90;
constexpr int NameWidth = 300;

} // namespace

CodePage::CodePage(int tab, const CodeTable& table) : RecordTab(masterTab(tab, table.caption, u"編輯區"_s)) {
    TDBGrid* grid = makeGrid(indexed(u"TDBGrid2"_s, tab));
    grid->setColumns({{table.codeHeading, table.codeColumn, 130, Qt::AlignLeft, {}},
                      {table.nameHeading, table.nameColumn, 400, Qt::AlignLeft, {}}});

    const QString boxes = u"Text%1"_s.arg(tab + 1);
    QLineEdit* code = fields().box(indexed(boxes, 0), spoken(table.codeLabel), table.codeColumn, CodeWidth);
    QLineEdit* name = fields().box(indexed(boxes, 1), spoken(table.nameLabel), table.nameColumn, NameWidth);
    auto* lines = new QGridLayout(&frame());
    lines->addWidget(fields().caption(table.codeLabel, code), 0, 0, Qt::AlignRight);
    lines->addWidget(code, 0, 1, Qt::AlignLeft);
    lines->addWidget(fields().caption(table.nameLabel, name), 1, 0, Qt::AlignRight);
    lines->addWidget(name, 1, 1, Qt::AlignLeft);
    lines->setColumnStretch(1, 1);
    setFirstField(code);

    rows().addWidget(grid, 1);
    rows().addWidget(&frame());
    rows().addWidget(&bar());
}

} // namespace pontrel
