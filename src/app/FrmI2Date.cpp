#include "app/FrmI2Date.h"

#include "app/Prompts.h"
#include "app/controls/TDBMask.h"
#include "rules/Session.h"

#include <QLabel>

namespace pontrel {

FrmI2Date::FrmI2Date(QWidget* parent)
    : DateDialog(QStringLiteral("FrmI2Date"), QStringLiteral("輸入日期起迄"), parent) {
    QLabel* first = addCaption(QStringLiteral("起始日期:"));
    addPair(QStringLiteral("起始日期"));
    QLabel* last = addCaption(QStringLiteral("~"));
    addPair(QStringLiteral("截止日期"));
    first->setBuddy(&mask(0));
    last->setBuddy(&mask(1));
    finish();
}

void FrmI2Date::ask(QWidget* parent) {
    FrmI2Date dialog(parent);
    (void)runModal(dialog);
}

void FrmI2Date::done(int result) {
    if (result == Accepted) {
        gDate1 = date(0);
        gDate2 = date(1);
    }
    QDialog::done(result);
}

} // namespace pontrel
