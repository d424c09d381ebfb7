#pragma once

#include <QDialog>

class QLabel;

namespace pontrel {

class TDBDate;
class TDBMask;

/// The modal dialog "輸入日期" with one date pair. It opens on today.
class FrmI1Date : public QDialog {
    Q_OBJECT
  public:
    explicit FrmI1Date(QWidget* parent);

    /// Shows the dialog and puts its date into gDate1; 2038-01-01 where it was cancelled, by Escape and the
    /// close box as well.
    static void ask(QWidget* parent, const QString& caption = QStringLiteral("截止日期："));

    void done(int result) override;

  private:
    void makeControls();

    bool updating_ = false;
    int badDateMark_ = 0;
    QLabel* caption_ = nullptr;
    TDBMask* mask_ = nullptr;
    TDBDate* date_ = nullptr;
};

} // namespace pontrel
