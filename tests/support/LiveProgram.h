#pragma once

#include "support/AppSupport.h"
#include "support/RealInput.h"

#include <QHash>

namespace pontrel::test {

/// Where the program is to stand before a test takes it over.
struct LivePlace {
    int module = 0;
    QString child{};   ///< A window over the module's; none where empty.
    int tab = 0;       ///< Of a module window with tabs.
    QString control{}; ///< The control that has the focus; the window's own choice where empty.
};

/// The program over a store, in a process of its own on a real display, driven by real keys and clicks: it
/// can be stopped while the display goes on. It tells what stands in front, and where its controls are.
class LiveProgram {
  public:
    /// Logs in, goes to the place, and waits until it is there.
    LiveProgram(const TestStore& store, const LivePlace& place);

    RealInput input;

    /// Waits until a window of that object name stands in front: "MDI", or a dialog's.
    [[nodiscard]] bool waitForFront(const QString& window);
    /// The object names of the window in front and of the control with the focus, as told last.
    [[nodiscard]] QString front();
    [[nodiscard]] QString focus();
    /// The object name of the window open over the others in the main window, as told last.
    [[nodiscard]] QString opened();

    /// Clicks a control of a window that has stood in front by now.
    void click(const QString& window, const QString& control);

    /// Holds the key down until it has repeated for two seconds at the server's usual pace, releases it, and
    /// waits until all of it has arrived.
    [[nodiscard]] bool hold(Qt::Key key);

    /// Waits until the program answers input again and has done with all that came before.
    [[nodiscard]] bool settle();

    void stop() { process_.stop(); }
    void resume() { process_.resume(); }
    [[nodiscard]] bool isRunning() const { return process_.isRunning(); }

  private:
    void read();
    [[nodiscard]] int count(const QString& line);

    OtherProcess process_;
    QHash<QString, QPoint> places_; ///< By window and control, with a bar between.
    QHash<QString, int> counts_;    ///< How often each line was written.
    qsizetype linesRead_ = 0;
    QStringList state_; ///< The parts of the last line that told what stands in front.
};

/// The scenario that such a process runs, for runTests().
[[nodiscard]] Scenarios liveProgram();

} // namespace pontrel::test
