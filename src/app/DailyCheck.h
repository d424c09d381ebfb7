#pragma once

#include "store/StoreCheck.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>
#include <thread>

namespace pontrel {

/// Once a day, behind the login, looks through a copy of the store for damage, in a thread that touches no
/// window and none of the program's connections. Says nothing where all is well; damage is told in a message
/// as soon as the program stands idle, and why a look was not possible on the standard error output.
class DailyCheck : public QObject {
    Q_OBJECT
  public:
    explicit DailyCheck(const QString& store);
    ~DailyCheck() override; ///< Ends the look where it still goes on.

    /// Begins to look, where the day has not had its look yet.
    void start();

    /// Switches all looks off, or on again, for tests that mind another file beside the store.
    static void setEnabled(bool enabled);

  private:
    void finish(const StoreFinding& finding);
    void tellWhenIdle();

    QString store_;
    QTimer idle_;
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

} // namespace pontrel
