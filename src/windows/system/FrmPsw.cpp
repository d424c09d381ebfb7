#include "windows/system/FrmPsw.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/RecordFields.h"
#include "app/WindowRegistry.h"
#include "store/DataSource.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QString Accounts = u"syst02"_s;
constexpr int RightsInRow = 4;

// The first is worded otherwise than its toolbar button, and stays so.
const std::array<QString, 8> Rights = {u"基本設定"_s, u"制度管理"_s, u"出勤管理"_s, u"差假管理"_s,
                                       u"註銷管理"_s, u"加班管理"_s, u"報表列印"_s, u"系統管理"_s};

} // namespace

FrmPsw::FrmPsw(QWidget* parent) : RecordChild(parent, u"FrmPsw"_s, u"權限管理"_s, Accounts) {
    rows().addStretch(1);
    makeBox(0, u"使用者名稱:"_s, u"Account"_s);
    makeBox(1, u"密碼:"_s, u"Password"_s);
    text1[1]->setEchoMode(QLineEdit::Password);
    // The star as the system shows it, whatever sign the style would take.
    text1[1]->setStyleSheet(u"lineedit-password-character: 42"_s);
    makeRights();
    rows().addStretch(2);
    auto* bar = new RecordBar(u"CtrlCmd"_s,
                              {{0, BarAction::Add},
                               {1, BarAction::Edit},
                               {2, BarAction::Delete},
                               {3, BarAction::Cancel},
                               {4, BarAction::Save},
                               {5, BarAction::First},
                               {6, BarAction::Previous},
                               {7, BarAction::Next},
                               {8, BarAction::Last},
                               {9, BarAction::Leave}},
                              contentWidth(), this);
    rows().addWidget(bar);
    // Leaving is possible in every state, during an edit too.
    makePage({.editArea = {text1[0], text1[1], Frame1}, .firstField = text1[0], .bar = bar},
             {.leftAlone = {BarAction::Leave}});
    EnterAsTab::install(*this);
}

void FrmPsw::registerWindow() {
    registerChildWindow(u"FrmPsw"_s, [](QWidget* parent) -> Window* { return new FrmPsw(parent); });
}

void FrmPsw::makeBox(int index, const QString& caption, const QString& column) {
    const RecordFields fields(*this, Data1(), Accounts);
    QLineEdit* box = fields.box(indexed(u"text1"_s, index), spoken(caption), column, 220);
    QLabel* label = fields.caption(caption, box);
    label->setObjectName(indexed(u"lblLabels"_s, index));
    label->setFixedWidth(100);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    text1.at(static_cast<std::size_t>(index)) = box;
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(box);
    row->addStretch(1);
    rows().addLayout(row);
}

void FrmPsw::makeRights() {
    Frame1 = new QGroupBox(u"權限設定"_s, this);
    Frame1->setObjectName(u"Frame1"_s);
    auto* grid = new QGridLayout(Frame1);
    const RecordFields fields(*Frame1, Data1(), Accounts);
    for (int index = 0; index < static_cast<int>(Rights.size()); ++index) {
        QCheckBox* right = fields.check(indexed(u"Check1"_s, index),
                                        Rights.at(static_cast<std::size_t>(index)), u"f%1"_s.arg(index + 1));
        grid->addWidget(right, index / RightsInRow, index % RightsInRow);
        Check1.at(static_cast<std::size_t>(index)) = right;
    }
    rows().addWidget(Frame1);
}

} // namespace pontrel
