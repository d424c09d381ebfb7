#pragma once

#include "app/DateDialog.h"

namespace pontrel {

/// The modal dialog "輸入日期" with one date pair.
class FrmI1Date : public DateDialog {
    Q_OBJECT
  public:
    /// Opens on that day, or on today where it is invalid.
    explicit FrmI1Date(QWidget* parent, const QString& caption = QStringLiteral("截止日期："),
                       QDate day = {});

    /// Shows the dialog and puts its date into gDate1; 2038-01-01 where it was cancelled, by Escape and the
    /// close box as well.
    static void ask(QWidget* parent, const QString& caption = QStringLiteral("截止日期："), QDate day = {});

    void done(int result) override;
};

} // namespace pontrel
