#pragma once

#include <QDialog>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace pontrel {

/// The login dialog. It ends well, or the process ends with it.
class frmLogin : public QDialog {
    Q_OBJECT
  public:
    frmLogin();

    /// Runs the load routine and shows the dialog; returns after a good login, with the main window unlocked.
    void showModal();

    void reject() override; ///< Escape and the close box: the same as "取消".

  private:
    void layOut();
    void Load();
    void Unload();
    void cmdOK_Click();
    void cmdCancel_Click();
    [[nodiscard]] bool findAccount();
    void askAgain();

    std::array<QLabel*, 2> lblLabels_{};
    QLineEdit* txtUserName_;
    QLineEdit* txtPassword_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
};

} // namespace pontrel
