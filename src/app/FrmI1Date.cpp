#include "app/FrmI1Date.h"

#include "app/ControlNames.h"
#include "app/Prompts.h"
#include "app/controls/TDBMask.h"
#include "rules/NoDate.h"
#include "rules/Session.h"

#include <QLabel>

namespace pontrel {

FrmI1Date::FrmI1Date(QWidget* parent, const QString& caption, QDate day)
    : DateDialog(QStringLiteral("FrmI1Date"), QStringLiteral("輸入日期"), parent) {
    QLabel* label = addCaption(caption);
    addPair(spoken(caption));
    label->setBuddy(&mask(0));
    finish();
    if (day.isValid())
        setDate(0, day);
}

void FrmI1Date::ask(QWidget* parent, const QString& caption, QDate day) {
    FrmI1Date dialog(parent, caption, day);
    (void)runModal(dialog);
}

void FrmI1Date::done(int result) {
    // A cancel is told as this day, which not every caller tests for.
    gDate1 = result == Accepted ? date(0) : NoDate;
    QDialog::done(result);
}

} // namespace pontrel
