#pragma once

#include "app/BatchPage.h"
#include "app/RecordTab.h"
#include "app/TabbedWindow.h"

#include <functional>
#include <vector>

namespace pontrel {

class RecordPage;

/// When a record window opens the sources of its tabs.
enum class Opening {
    Lazily, ///< Each time that a tab comes to the front, or the tab in front is clicked outside an edit.
    AtLoad  ///< All of them, once.
};

/// A module window whose tabs are record tabs: makes a record page of each, opens their sources, keeps the
/// bar of the tab in front, and closes the shared connection at its end.
///
/// A window derives from it, adds its tabs in its constructor and then calls completeTabs().
class RecordWindow : public TabbedWindow {
    Q_OBJECT
  public:
    ~RecordWindow() override;

  protected:
    RecordWindow(QWidget* parent, const QString& name, const QString& caption, Opening opening);

    /// Adds the tab behind the others; its index is to be its place. The window owns it.
    void addTab(RecordTab* tab);
    /// To be called when all tabs are there: adds the status bar and connects everything.
    void completeTabs();
    /// Makes the batch of one of the tabs, whose status bar and tabs are those of the window; behind
    /// completeTabs().
    void addBatch(BatchParts parts, BatchSteps steps);

    [[nodiscard]] RecordTab& tab(int index) const { return *tabs_.at(static_cast<std::size_t>(index)); }
    [[nodiscard]] RecordPage& page(int index) const { return *pages_.at(static_cast<std::size_t>(index)); }
    [[nodiscard]] FormState& form() { return form_; }

    /// Brings panels, buttons and tabs up to date with the tab in front.
    void RefreshRecordBar();
    /// The trap of the window's data: a run-time error is told as a failed open and unlocks the toolbar.
    /// Whether there was none.
    bool trapOfWindow(const std::function<void()>& routine);

    /// What the window reads besides its sources when it is loaded, within its trap.
    virtual void readAtLoad() {}
    /// Ahead of each refresh of the bar, the source in front being open.
    virtual void beforeBar() {}

    void onLoad() override;
    void onUnload() override;

  private:
    void makePage(RecordTab& tab);
    void openAll();
    [[nodiscard]] bool openSource();
    void SSTab1_Click();
    [[nodiscard]] int current() const;

    Opening opening_;
    bool SourceOpen =
        false; ///< The source in front has been opened since the last change of tab, or all have.
    FormState form_;
    std::vector<RecordTab*> tabs_;
    std::vector<RecordPage*> pages_;
};

} // namespace pontrel
