#pragma once

#include "rules/ActionHost.h"
#include "store/RunTimeError.h"

#include <QDate>

namespace pontrel {

/// What the calculations of seniority and entitlement ask of whoever runs them: the window, or a program
/// without one.
class SeniorityHost : public ActionHost {
  public:
    /// The date that the user gives in the date dialog; 2038-01-01 where he cancels it.
    [[nodiscard]] virtual QDate askDate() = 0;

    /// Brings the record bar up to date at the end of a calculation.
    virtual void refreshRecordBar() = 0;

    /// Tells that a calculation has ended early, in the words of a failed open of data whatever the cause:
    /// the message "資料庫開啟異常,請洽程式設計師" under the title "異常警告"; then sets gOpenFailed and
    /// unlocks the toolbar.
    virtual void openFailed(const RunTimeError& cause) = 0;
};

} // namespace pontrel
