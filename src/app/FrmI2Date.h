#pragma once

#include "app/DateDialog.h"

namespace pontrel {

/// The modal dialog "輸入日期起迄" with two date pairs. No window opens it yet.
class FrmI2Date : public DateDialog {
    Q_OBJECT
  public:
    explicit FrmI2Date(QWidget* parent);

    /// Shows the dialog and puts its dates into gDate1 and gDate2. Where it was cancelled, by Escape and the
    /// close box as well, both stay as they were.
    static void ask(QWidget* parent);

    void done(int result) override;
};

} // namespace pontrel
