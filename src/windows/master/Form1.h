#pragma once

#include "app/RecordWindow.h"
#include "app/WindowHost.h"
#include "rules/master/SeniorityHost.h"

namespace pontrel {

class EmployeePage;
class SlotPage;

/// The master data window "基本資料": titles, units, employment types, time slots, shift classes and
/// employees, a tab each.
class Form1 : public RecordWindow, private WindowHost<SeniorityHost> {
    Q_OBJECT
  public:
    explicit Form1(QWidget* parent);

    /// Makes it known as module window 1.
    static void registerWindow();

  protected:
    void beforeBar() override;

  private:
    void addTabs();

    // What the two calculations ask of their window.
    [[nodiscard]] QDate askDate() override;
    void refreshRecordBar() override;
    void openFailed(const RunTimeError& cause) override;

    SlotPage* slots_ = nullptr;
    EmployeePage* employees_ = nullptr;
};

} // namespace pontrel
