#pragma once

#include "app/TabbedWindow.h"
#include "app/WindowHost.h"
#include "rules/master/SeniorityHost.h"

#include <functional>
#include <vector>

namespace pontrel {

class EmployeePage;
class FocusWatch;
class MasterPage;
class RecordPage;
class SlotPage;

/// The master data window "基本資料": titles, units, employment types, time slots, shift classes and
/// employees, a tab each.
class Form1 : public TabbedWindow, private WindowHost<SeniorityHost> {
    Q_OBJECT
  public:
    explicit Form1(QWidget* parent);
    ~Form1() override;

    /// Makes it known as module window 1.
    static void registerWindow();

  protected:
    void onLoad() override;
    void onUnload() override;

  private:
    void makeTabPages();
    void makeRecordPages();
    void connectControls();

    void SSTab1_Click();
    void RefreshRecordBar();
    [[nodiscard]] bool openCurrentSource();
    /// The trap of the window's data: a run-time error is told as a failed open and unlocks the toolbar.
    /// Whether there was none.
    bool trapOfWindow(const std::function<void()>& routine);

    // What the two calculations ask of their window.
    [[nodiscard]] QDate askDate() override;
    void refreshRecordBar() override;
    void openFailed(const RunTimeError& cause) override;

    bool SourceOpen = false; ///< The current tab's source has been opened since the last change of tab.
    FocusWatch* watch_;
    std::vector<MasterPage*> tabs_;
    std::vector<RecordPage*> pages_;
    SlotPage* slots_ = nullptr;
    EmployeePage* employees_ = nullptr;
};

} // namespace pontrel
