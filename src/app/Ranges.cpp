#include "app/Ranges.h"

#include "app/ControlNames.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int PairSpacing = 4; ///< Between a mask and its date control.

enum Column { CaptionColumn, FirstColumn, UntilColumn, LastColumn, RestColumn };

void addUntil(QGridLayout& grid, int row) {
    grid.addWidget(new QLabel(u"～"_s, grid.parentWidget()), row, UntilColumn, Qt::AlignHCenter);
    grid.setColumnStretch(RestColumn, 1);
}

} // namespace

QLabel* addRangeCaption(QGridLayout& grid, int row, const QString& caption, const QString& labelName,
                        QWidget* firstBox) {
    auto* label = new QLabel(caption, grid.parentWidget());
    label->setObjectName(labelName);
    label->setBuddy(firstBox);
    grid.addWidget(label, row, CaptionColumn, Qt::AlignRight);
    return label;
}

CodeRange addCodeRange(QGridLayout& grid, int row, const QString& array, int index,
                       const CodeRangeTexts& texts) {
    const auto box = [&](int end, const QString& spokenEnd, const QString& text) {
        return new CodeCombo(grid.parentWidget(), indexed(array, index + end),
                             spoken(texts.caption) + spokenEnd, text);
    };
    CodeCombo* first = box(0, u"起"_s, texts.low);
    CodeCombo* last = box(1, u"迄"_s, texts.high);
    QLabel* caption = addRangeCaption(grid, row, texts.caption, texts.labelName, first);
    grid.addWidget(first, row, FirstColumn);
    addUntil(grid, row);
    grid.addWidget(last, row, LastColumn);
    return {first, last, caption};
}

DateRange addDateRange(QGridLayout& grid, int row, int index, const DateRangeTexts& texts) {
    const auto pair = [&](int end, const QString& spokenEnd, Column column) {
        const DateFields fields =
            makeDateFields(grid.parentWidget(), indexed(texts.masks, index + end),
                           indexed(texts.dates, index + end), spoken(texts.caption) + spokenEnd);
        auto* line = new QHBoxLayout;
        line->setSpacing(PairSpacing);
        line->addWidget(fields.mask);
        line->addWidget(fields.date, 1);
        grid.addLayout(line, row, column);
        return fields;
    };
    const DateFields first = pair(0, u"起"_s, FirstColumn);
    const DateFields last = pair(1, u"迄"_s, LastColumn);
    QLabel* caption = addRangeCaption(grid, row, texts.caption, texts.labelName, first.mask);
    addUntil(grid, row);
    return {first, last, caption};
}

} // namespace pontrel
