#pragma once

#include <QDialog>
#include <QString>

#include <functional>

class QAbstractButton;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;

namespace pontrel {

/// What the user has entered for a new program folder.
struct SetupWish {
    QString folder; ///< As an absolute path.
    QString account;
    QString password;
    QString company;
    bool demo = false;
};

/// The modal dialog "初次設定": where the program folder shall be, its first account, what its store begins
/// with, and how large the program is shown, which goes among the user's habits.
class SetupDialog : public QDialog {
    Q_OBJECT
  public:
    /// Carries out what was entered; false, after a message, where that failed and the dialog is to stay.
    using CarryOut = std::function<bool(const SetupWish&)>;

    /// The folder proposed is shown to begin with.
    SetupDialog(const QString& folder, CarryOut carryOut);

    /// The folder that was made, or found with a store; good after the dialog was accepted.
    [[nodiscard]] QString folder() const;

  private:
    void layOut();
    void addRow(QGridLayout& grid, const QString& name, const QString& caption, QWidget* box,
                QPushButton* beside = nullptr);
    void addStoreRows(QGridLayout& grid);
    void CmdBrow_Click();
    void CmdOk_Click();
    /// Tells what is missing and puts the focus on it; false where something is.
    [[nodiscard]] bool isFolderGood();
    [[nodiscard]] bool isAccountGood();
    void refuse(QLineEdit& box, const QString& text);

    CarryOut carryOut_;
    QLineEdit* TxtFolder_;
    QPushButton* CmdBrow_;
    QLineEdit* TxtAccount_;
    QLineEdit* TxtPassword_;
    QLineEdit* TxtPassword2_;
    QLineEdit* TxtCompany_;
    QAbstractButton* OptEmpty_;
    QAbstractButton* OptDemo_;
    QComboBox* CboZoom_;
    QPushButton* CmdOk_;
    QPushButton* CmdCancel_;
};

} // namespace pontrel
