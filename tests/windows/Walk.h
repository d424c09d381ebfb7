#pragma once

#include "demo/Demo.h"
#include "support/TestStore.h"
#include "windows/EveryWindow.h"

#include <optional>

namespace pontrel::test {

/// Lays the example organisation out in a store.
inline void fillWithDemo(TestStore& store) {
    createDemo(store.database(), store.folder());
}

/// The program over the example organisation, or over what else fills its store, for a test that is run with
/// every window or every dialog.
class Walk {
  public:
    explicit Walk(void (*fill)(TestStore& store) = fillWithDemo) {
        fill(store_);
        shell_.emplace(store_);
    }

    /// Opens the window of a row of addEveryWindow(). Ends the test where it does not open.
    [[nodiscard]] Window& open(std::size_t window) {
        const EveryWindow each = everyWindow().at(window);
        each.open();
        if (!each.opened())
            qFatal("%s is not open", qPrintable(each.title));
        return *each.opened();
    }

    /// Shows the dialog of a row of addEveryDialog(), and closes it when it has been looked at.
    void show(std::size_t dialog, const std::function<void(QWidget& dialog)>& look) {
        const EveryDialog each = everyDialog().at(dialog);
        answers.expect(each.objectName, [&look](QWidget& shown) {
            look(shown);
            closeDialog(shown);
        });
        each.show();
    }

  private:
    TestStore store_;
    std::optional<Shell> shell_;

  public:
    PromptAnswers answers; ///< The last member: its answers go first.
};

} // namespace pontrel::test
