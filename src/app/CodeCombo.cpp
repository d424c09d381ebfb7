#include "app/CodeCombo.h"

#include "store/Database.h"

namespace pontrel {

using namespace Qt::StringLiterals;

CodeCombo::CodeCombo(QWidget* parent, const QString& name, const QString& spokenName, const QString& text)
    : DropList(parent) {
    setObjectName(name);
    setAccessibleName(spokenName);
    setEditable(true);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    setMinimumWidth(CodeComboWidth);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon); // no entry is measured
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

void CodeCombo::shareEntries(QAbstractItemModel* entries) {
    const QString text = currentText();
    setModel(entries); // and its first entry for the text
    setCurrentIndex(-1);
    setEditText(text);
}

void CodeCombo::cutToCode() {
    const QString text = currentText();
    if (text.contains(u'-'))
        setEditText(text.left(text.indexOf(u'-')));
}

QStringList codeEntries(Database& database, const QString& selection) {
    QStringList entries;
    for (const auto& row : database.select(selection))
        entries << row.at(0).joined() + u'-' + row.at(1).joined();
    return entries;
}

} // namespace pontrel
