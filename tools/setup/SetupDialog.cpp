#include "setup/SetupDialog.h"

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/Habits.h"
#include "app/Prompts.h"
#include "app/Zoom.h"
#include "app/controls/Buttons.h"
#include "app/controls/DropList.h"
#include "app/controls/OptionButton.h"
#include "folder/LayOut.h"
#include "rules/Session.h"
#include "setup/FirstStart.h"
#include "windows/system/FrmBrower.h"

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int BoxWidth = 300;

QLineEdit* makeBox(QWidget* parent, const QString& name, const QString& text = {}) {
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(name);
    box->setMinimumWidth(BoxWidth);
    return box;
}

QLineEdit* makePasswordBox(QWidget* parent, const QString& name) {
    QLineEdit* box = makeBox(parent, name);
    box->setEchoMode(QLineEdit::Password);
    box->setStyleSheet(u"lineedit-password-character: 42"_s); // as in the login
    return box;
}

OptionButton* makeOption(QWidget* parent, const QString& name, const QString& caption) {
    auto* option = new OptionButton(caption, parent);
    option->setObjectName(name);
    option->setAccessibleName(QString(caption).remove(QRegularExpression(u"\\(&.\\)"_s)));
    return option;
}

/// The steps that have room on the screen; in front the user's own one or, where he has none, the one that is
/// proposed for the screen.
QComboBox* makeZoomList(QWidget* parent) {
    auto* list = new DropList(parent);
    list->setObjectName(u"CboZoom"_s);
    const QSize screen = zoom::screenRoom();
    for (const int percent : zoom::Steps) {
        if (percent <= zoom::largestFitting(screen))
            list->addItem(u"%1%"_s.arg(percent), percent);
    }
    const bool chosen = !Habits::ofUser().value(u"zoom"_s).isEmpty();
    const int step = chosen ? zoom::stepOf(Habits::ofUser().zoom()) : zoom::proposed(screen);
    list->setCurrentIndex(std::max(0, list->findData(step)));
    return list;
}

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

} // namespace

SetupDialog::SetupDialog(const QString& folder, CarryOut carryOut)
    : carryOut_(std::move(carryOut))
    , TxtFolder_(makeBox(this, u"TxtFolder"_s, folder))
    , CmdBrow_(makeButton(this, u"CmdBrow"_s, u"瀏覽"_s))
    , TxtAccount_(makeBox(this, u"TxtAccount"_s, u"admin"_s))
    , TxtPassword_(makePasswordBox(this, u"TxtPassword"_s))
    , TxtPassword2_(makePasswordBox(this, u"TxtPassword2"_s))
    , TxtCompany_(makeBox(this, u"TxtCompany"_s))
    , OptEmpty_(makeOption(this, u"OptEmpty"_s, u"空白資料庫(&E)"_s))
    , OptDemo_(makeOption(this, u"OptDemo"_s, u"範例資料庫，供試用(&D)"_s))
    , CboZoom_(makeZoomList(this))
    , CmdOk_(makeButton(this, u"CmdOk"_s, u"確定"_s))
    , CmdCancel_(makeButton(this, u"CmdCancel"_s, u"取消"_s)) {
    setObjectName(u"SetupDialog"_s);
    setWindowTitle(SetupTitle);
    setAccessibleName(SetupTitle);
    OptEmpty_->setChecked(true);
    layOut();
    onEvent(CmdBrow_, &QPushButton::clicked, this, [this] { CmdBrow_Click(); });
    onEvent(CmdOk_, &QPushButton::clicked, this, [this] { CmdOk_Click(); });
    onEvent(CmdCancel_, &QPushButton::clicked, this, [this] { reject(); });
    EnterAsTab::install(*this);
    placeBehind(CmdCancel_, {CmdBrow_});
    TxtFolder_->setFocus();
}

void SetupDialog::layOut() {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(10);
    addRow(*grid, u"LblFolder"_s, u"程式資料夾(&F)："_s, TxtFolder_, CmdBrow_);
    addRow(*grid, u"LblAccount"_s, u"使用者名稱(&U)："_s, TxtAccount_);
    addRow(*grid, u"LblPassword"_s, u"密碼(&P)："_s, TxtPassword_);
    addRow(*grid, u"LblPassword2"_s, u"再輸入一次密碼(&R)："_s, TxtPassword2_);
    addRow(*grid, u"LblCompany"_s, u"公司機關名稱(&N)："_s, TxtCompany_);
    addStoreRows(*grid);
    addRow(*grid, u"LblZoom"_s, u"顯示比例(&Z)："_s, CboZoom_);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(CmdOk_);
    buttons->addWidget(CmdCancel_);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 16);
    rows->setSpacing(14);
    rows->addWidget(makeLabel(
        this, u"LblIntro"_s,
        u"請指定程式資料夾及第一個使用者。資料庫、報表範本與打卡檔案都放在這個資料夾裡，\n日後由「系統管理」可再新增使用者。"_s));
    rows->addLayout(grid);
    rows->addLayout(buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void SetupDialog::addStoreRows(QGridLayout& grid) {
    const int row = grid.rowCount();
    grid.addWidget(makeLabel(this, u"LblStore"_s, u"資料庫內容"_s), row, 0);
    grid.addWidget(OptEmpty_, row, 1);
    grid.addWidget(OptDemo_, row + 1, 1);
}

void SetupDialog::addRow(QGridLayout& grid, const QString& name, const QString& caption, QWidget* box,
                         QPushButton* beside) {
    const int row = grid.rowCount();
    auto* label = makeLabel(this, name, caption);
    label->setBuddy(box);
    box->setAccessibleName(spoken(QString(caption).remove(QRegularExpression(u"\\(&.\\)"_s))));
    grid.addWidget(label, row, 0);
    grid.addWidget(box, row, 1);
    if (beside)
        grid.addWidget(beside, row, 2);
}

QString SetupDialog::folder() const {
    QString path = TxtFolder_->text().trimmed();
    if (path == u'~' || path.startsWith(u"~/"_s))
        path.replace(0, 1, QDir::homePath());
    return path.isEmpty() ? path : QDir::cleanPath(path);
}

void SetupDialog::CmdBrow_Click() {
    gHandPath = folder();
    FrmBrower::ask(this);
    TxtFolder_->setText(gHandPath);
}

void SetupDialog::CmdOk_Click() {
    if (!isFolderGood())
        return;
    const FolderState state = stateOf(folder());
    // With a store come its accounts and all else; the boxes for a new one are not asked for then.
    if (state != FolderState::HasStore && !isAccountGood())
        return;
    const SetupWish wish{folder(), TxtAccount_->text(), TxtPassword_->text(), TxtCompany_->text(),
                         OptDemo_->isChecked()};
    if (!carryOut_(wish))
        return;
    Habits::ofUser().setZoom(CboZoom_->currentData().toInt());
    accept();
}

bool SetupDialog::isFolderGood() {
    if (folder().isEmpty())
        refuse(*TxtFolder_, u"請輸入程式資料夾！"_s);
    else if (!QDir::isAbsolutePath(folder()))
        refuse(*TxtFolder_, u"程式資料夾請輸入完整路徑！"_s);
    else
        return true;
    return false;
}

bool SetupDialog::isAccountGood() {
    if (TxtAccount_->text().isEmpty())
        refuse(*TxtAccount_, u"請輸入使用者名稱！"_s);
    else if (TxtPassword_->text().isEmpty())
        refuse(*TxtPassword_, u"請輸入密碼！"_s);
    else if (TxtPassword_->text() != TxtPassword2_->text())
        refuse(*TxtPassword2_, u"兩次輸入的密碼不同，請重新輸入！"_s);
    else
        return true;
    return false;
}

void SetupDialog::refuse(QLineEdit& box, const QString& text) {
    MsgBox(text, SetupTitle, MsgIcon::Exclamation);
    box.setFocus();
    box.selectAll();
}

} // namespace pontrel
