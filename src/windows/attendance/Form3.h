#pragma once

#include "app/TabbedWindow.h"
#include "app/WindowHost.h"
#include "rules/attendance/AttendanceHost.h"
#include "rules/attendance/DailyCalculation.h"
#include "windows/attendance/AttendancePage.h"

#include <memory>
#include <vector>

namespace pontrel {

class ExceptionPage;
class ReadPage;

/// The attendance window "出勤管理": reads punch files, shows punches, exceptions and results, recalculates a
/// day. Its pages do what concerns them alone.
class Form3 : public TabbedWindow, private WindowHost<AttendanceHost> {
    Q_OBJECT
  public:
    explicit Form3(QWidget* parent);
    ~Form3() override;

    /// Makes it known as module window 3.
    static void registerWindow();

  protected:
    void onLoad() override;
    void onUnload() override;

  private:
    void makePages();
    void connectControls();

    void SSTab1_Click();
    void Data1_Reposition(AttendancePage& page);
    void readPunchFile();
    void recalculate();
    void logSilentEnd() const;

    void bindTab();
    void showCounter(); ///< Of the current page.
    void showCounterOf(DataSource& source);
    [[nodiscard]] AttendancePage& currentPage() const;

    // What the calculation asks of its window.
    [[nodiscard]] std::optional<QString> choosePunchFile(const QString& folder) override;
    void beforeReplacingDay() override;
    void setProgressShown(bool shown) override;
    [[nodiscard]] int progress() const override;
    void setProgress(int value) override;
    void showPunches(const QString& statement) override;
    void refreshExceptions() override;
    void showExceptions(const QString& statement) override;

    std::unique_ptr<DailyCalculation> calculation_;
    bool TabBound = false; ///< The current page's sources are bound.
    AttendanceNames names_;
    std::vector<AttendancePage*> pages_;
    ReadPage* reading_ = nullptr;
    ExceptionPage* exceptions_ = nullptr;
};

} // namespace pontrel
