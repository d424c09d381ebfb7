#include "app/CodeCombo.h"

#include "app/ControlNames.h"
#include "store/Database.h"

#include <QGridLayout>
#include <QLabel>

namespace pontrel {

using namespace Qt::StringLiterals;

CodeCombo::CodeCombo(QWidget* parent, const QString& name, const QString& spokenName, const QString& text)
    : DropList(parent) {
    setObjectName(name);
    setAccessibleName(spokenName);
    setEditable(true);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    setFixedWidth(CodeComboWidth);
    setEditText(text);
}

void CodeCombo::addEntries(const QStringList& entries) {
    const QString text = currentText();
    const int current = currentIndex();
    addItems(entries);
    // The first of the entries would become the text of an empty list.
    setCurrentIndex(current);
    setEditText(text);
}

void CodeCombo::cutToCode() {
    const QString text = currentText();
    if (text.contains(u'-'))
        setEditText(text.left(text.indexOf(u'-')));
}

CodeRange addCodeRange(QGridLayout& grid, int row, const QString& array, int index,
                       const CodeRangeTexts& texts) {
    QWidget* frame = grid.parentWidget();
    const auto box = [&](int end, const QString& spokenEnd, const QString& text) {
        return new CodeCombo(frame, indexed(array, index + end), spoken(texts.caption) + spokenEnd, text);
    };
    const CodeRange range{box(0, u"起"_s, texts.low), box(1, u"迄"_s, texts.high)};
    auto* label = new QLabel(texts.caption, frame);
    label->setObjectName(texts.labelName);
    label->setBuddy(range.first);
    grid.addWidget(label, row, 0, Qt::AlignRight);
    grid.addWidget(range.first, row, 1);
    grid.addWidget(new QLabel(u"～"_s, frame), row, 2, Qt::AlignHCenter);
    grid.addWidget(range.last, row, 3);
    grid.setColumnStretch(4, 1);
    return range;
}

QStringList codeEntries(Database& database, const QString& selection) {
    QStringList entries;
    for (const auto& row : database.select(selection))
        entries << row.at(0).joined() + u'-' + row.at(1).joined();
    return entries;
}

} // namespace pontrel
