#include "windows/system/FrmBrower.h"

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/Prompts.h"
#include "app/controls/Buttons.h"
#include "rules/Session.h"

#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize DialogSize(420, 380);

} // namespace

FrmBrower::FrmBrower(QWidget* parent) : QDialog(parent), folders_(new QFileSystemModel(this)) {
    setObjectName(u"FrmBrower"_s);
    setWindowTitle(u"瀏覽資料夾"_s);
    setAccessibleName(u"瀏覽資料夾"_s);
    folders_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    folders_->setRootPath(QDir::rootPath());
    makeControls();
    onEvent(FolderView1_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { FolderView1_Change(); });
    onEvent(CmdOk_, &QPushButton::clicked, this, [this] { CmdOk_Click(); });
    onEvent(CmdCancel_, &QPushButton::clicked, this, [this] { reject(); });
    EnterAsTab::install(*this);
    resize(DialogSize);
}

void FrmBrower::makeControls() {
    auto* Label1 = new QLabel(u"請選取欲使用之路徑："_s, this);
    Label1->setObjectName(u"Label1"_s);
    FolderView1_ = new QTreeView(this);
    FolderView1_->setObjectName(u"FolderView1"_s);
    FolderView1_->setAccessibleName(u"資料夾"_s);
    FolderView1_->setModel(folders_);
    FolderView1_->setHeaderHidden(true);
    for (int column = 1; column < folders_->columnCount(); ++column)
        FolderView1_->hideColumn(column);
    FolderView1_->expand(folders_->index(QDir::rootPath()));
    Label1->setBuddy(FolderView1_);
    FolderPath_ = new QLineEdit(this);
    FolderPath_->setObjectName(u"FolderPath"_s);
    FolderPath_->setAccessibleName(u"路徑"_s);
    CmdOk_ = makeButton(this, u"CmdOk"_s, u"確定"_s);
    CmdCancel_ = makeButton(this, u"CmdCancel"_s, u"取消"_s);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(CmdOk_);
    buttons->addWidget(CmdCancel_);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(Label1);
    rows->addWidget(FolderView1_, 1);
    rows->addWidget(FolderPath_);
    rows->addLayout(buttons);
}

void FrmBrower::ask(QWidget* parent) {
    FrmBrower dialog(parent);
    (void)runModal(dialog);
}

void FrmBrower::FolderView1_Change() {
    const QModelIndexList selected = FolderView1_->selectionModel()->selectedRows();
    if (!selected.isEmpty())
        FolderPath_->setText(QDir::toNativeSeparators(folders_->filePath(selected.constFirst())));
}

void FrmBrower::CmdOk_Click() {
    gHandPath = FolderPath_->text();
    accept();
}

} // namespace pontrel
