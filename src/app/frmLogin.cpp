#include "app/frmLogin.h"

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/Window.h"
#include "rules/Session.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace pontrel {

using namespace Qt::StringLiterals;

frmLogin::frmLogin()
    : lblLabels_{new QLabel(u"使用者名稱(&U):"_s, this), new QLabel(u"密碼(&P):"_s, this)}
    , txtUserName_(new QLineEdit(this))
    , txtPassword_(new QLineEdit(this))
    , cmdOK_(new QPushButton(u"確定"_s, this))
    , cmdCancel_(new QPushButton(u"取消"_s, this)) {
    setObjectName(u"frmLogin"_s);
    setWindowTitle(u"登入"_s);
    setAccessibleName(u"登入"_s);
    setModal(true);
    layOut();
    onEvent(cmdOK_, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    onEvent(cmdCancel_, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    EnterAsTab::install(*this);
}

void frmLogin::layOut() {
    lblLabels_[0]->setObjectName(u"lblLabels(0)"_s);
    lblLabels_[0]->setBuddy(txtUserName_);
    lblLabels_[1]->setObjectName(u"lblLabels(1)"_s);
    lblLabels_[1]->setBuddy(txtPassword_);
    txtUserName_->setObjectName(u"txtUserName"_s);
    txtUserName_->setAccessibleName(u"使用者名稱"_s);
    txtUserName_->setMinimumWidth(180);
    txtPassword_->setObjectName(u"txtPassword"_s);
    txtPassword_->setAccessibleName(u"密碼"_s);
    txtPassword_->setEchoMode(QLineEdit::Password);
    // The star as the system shows it, whatever sign the style would take.
    txtPassword_->setStyleSheet(u"lineedit-password-character: 42"_s);
    cmdOK_->setObjectName(u"cmdOK"_s);
    cmdOK_->setAccessibleName(u"確定"_s);
    cmdCancel_->setObjectName(u"cmdCancel"_s);
    cmdCancel_->setAccessibleName(u"取消"_s);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(16, 16, 16, 16);
    grid->setVerticalSpacing(10);
    grid->addWidget(lblLabels_[0], 0, 0);
    grid->addWidget(txtUserName_, 0, 1);
    grid->addWidget(lblLabels_[1], 1, 0);
    grid->addWidget(txtPassword_, 1, 1);
    grid->addLayout(buttons, 2, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
}

void frmLogin::showModal() {
    Load();
    (void)runModal(*this);
}

void frmLogin::Load() {
    // Unlike in the other windows, the opening itself stands under the trap.
    trapOpen([] { OpenDB(); });
}

void frmLogin::Unload() {
    done(Accepted);
    CloseDB();
}

void frmLogin::cmdOK_Click() {
    if (!findAccount()) {
        askAgain();
        return;
    }
    Unload();
    UnlockToolbar();
}

void frmLogin::cmdCancel_Click() {
    endProcess(0);
}

void frmLogin::reject() {
    cmdCancel_Click();
}

bool frmLogin::findAccount() {
    if (!gDatabase)
        throw runTimeError(error::ObjectNotSet);
    gRecordset =
        gDatabase->openRecordset(u"SELECT account, password,f1,f2,f3,f4,f5,f6,f7,f8   From syst02 "_s);
    bool good = false;
    while (!good && !gRecordset.AtEOF()) {
        gAccount = gRecordset.field(u"account"_s).toText();
        const QString password = gRecordset.field(u"password"_s).toText();
        int column = 0;
        for (bool* flag : {&gF1, &gF2, &gF3, &gF4, &gF5, &gF6, &gF7, &gF8})
            *flag = gRecordset.field(u"f%1"_s.arg(++column)).toBoolean();
        good = gAccount == txtUserName_->text() && password == txtPassword_->text();
        if (!good)
            gRecordset.MoveNext();
    }
    gRecordset.Close();
    return good;
}

void frmLogin::askAgain() {
    MsgBox(u"密碼錯誤,請重新輸入!"_s, u"登入"_s);
    txtPassword_->setFocus();
    txtPassword_->home(false);
    txtPassword_->end(true);
}

} // namespace pontrel
