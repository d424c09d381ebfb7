#include "app/IFrmQuery.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FrmI1Date.h"
#include "app/Lookup.h"
#include "app/Prompts.h"
#include "app/controls/Buttons.h"
#include "app/controls/OptionButton.h"
#include "rules/Session.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

IFrmQuery::IFrmQuery(QWidget* parent) : QDialog(parent) {
    setObjectName(u"IFrmQuery"_s);
    setWindowTitle(u"查詢選項"_s);
    setAccessibleName(u"查詢選項"_s);
    makeControls();
    EnterAsTab::install(*this);
    Option1[0]->setFocus();
}

void IFrmQuery::makeControls() {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(24, 18, 24, 14);
    rows->setSpacing(8);
    const QStringList kinds{u"全部"_s, u"日期查詢"_s, u"日期/員工查詢"_s, u"員工查詢"_s, u"日期/單位查詢"_s};
    for (int index = 0; index < kinds.size(); ++index) {
        auto* option = new OptionButton(kinds.at(index), this);
        option->setObjectName(indexed(u"Option1"_s, index));
        option->setAccessibleName(option->text());
        rows->addWidget(option, 0, Qt::AlignLeft);
        Option1.at(static_cast<std::size_t>(index)) = option;
    }
    rows->addSpacing(6);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    const QStringList captions{u"確定"_s, u"取消"_s};
    for (int index = 0; index < captions.size(); ++index) {
        QPushButton* button = makeButton(this, indexed(u"Command1"_s, index), captions.at(index));
        buttons->addWidget(button);
        onEvent(button, &QPushButton::clicked, this, [this, index] { Command1_Click(index); });
    }
    rows->addLayout(buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void IFrmQuery::ask(QWidget* parent) {
    IFrmQuery dialog(parent);
    (void)runModal(dialog);
}

void IFrmQuery::Command1_Click(int index) {
    if (index == 1) {
        reject();
        return;
    }
    if (Option1[0]->isChecked()) {
        gQueryKind = 0;
    } else if (Option1[1]->isChecked()) {
        gQueryKind = 1;
        FrmI1Date::ask(this);
    } else if (Option1[2]->isChecked()) {
        gQueryKind = 2;
        FrmI1Date::ask(this);
        Lookup::ask(LookupKind::QFrmEmpNO, this);
    } else if (Option1[3]->isChecked()) {
        gQueryKind = 3;
        Lookup::ask(LookupKind::QFrmEmpNO, this);
    } else if (Option1[4]->isChecked()) {
        gQueryKind = 4;
        FrmI1Date::ask(this);
        Lookup::ask(LookupKind::QFrmUnitNo, this);
    }
    accept();
}

std::optional<QString> queryStatement(const QString& table, const QString& dateColumn, UnitQuery unitQuery) {
    return listStatement({gQueryKind, gDate1, gPickEmpNo, gPickUnitNo}, table, dateColumn, unitQuery);
}

} // namespace pontrel
