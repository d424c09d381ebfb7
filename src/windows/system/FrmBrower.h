#pragma once

#include <QDialog>

class QFileSystemModel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace pontrel {

/// The modal dialog "瀏覽資料夾": a folder chosen from the tree or typed.
class FrmBrower : public QDialog {
    Q_OBJECT
  public:
    explicit FrmBrower(QWidget* parent);

    /// Shows the dialog and puts its path into gHandPath; a cancel leaves gHandPath as it was.
    static void ask(QWidget* parent);

  private:
    void makeControls();
    void FolderView1_Change();
    void CmdOk_Click();

    QFileSystemModel* folders_;
    QTreeView* FolderView1_ = nullptr;
    QLineEdit* FolderPath_ = nullptr;
    QPushButton* CmdOk_ = nullptr;
    QPushButton* CmdCancel_ = nullptr;
};

} // namespace pontrel
