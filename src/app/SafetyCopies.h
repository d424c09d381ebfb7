#pragma once

#include "store/SafetyCopy.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <mutex>
#include <thread>

namespace pontrel {

/// Keeps the program's store safe: a copy at the first start of a day, and one before punches are deleted.
/// The bytes are copied at once, under the hourglass; the look through the copy goes on in a thread that
/// touches no window and not the store. Damage is told in a message as soon as the program stands idle; that
/// a copy was not possible, in a line over the main window for some seconds, and why, in a line on the
/// standard error output and in a note beside the store. Nothing of it stops anybody.
class SafetyCopies : public QObject {
    Q_OBJECT
  public:
    /// For the store at that path; before() goes to the newest of these objects.
    explicit SafetyCopies(const QString& store);
    /// Ends the look where it still goes on; the next start takes it up again.
    ~SafetyCopies() override;

    /// Makes the day's copy where there is none, and looks through what is there to be looked through.
    void start();

    /// Makes a copy before an action that cannot be undone. To be called outside a stage. Without an object
    /// nothing happens.
    static void before(CopyReason reason);

    /// Switches all copies off, or on again, for tests that mind other files beside the store.
    static void setEnabled(bool enabled);

  private:
    void copy(CopyReason reason);
    void lookInBackground();
    void look(); ///< Runs in the thread.
    void finish(const StoreFinding& finding);
    void tellWhenIdle();

    QString store_;
    SafetyCopies* before_; ///< The object that this one has taken the place of.
    QTimer idle_;
    bool damageTold_ = false;
    std::atomic<bool> stop_ = false;
    std::thread thread_;
    std::mutex mutex_;     ///< Guards the following.
    bool looking_ = false; ///< The thread is at it.
    bool more_ = false;    ///< Another copy has come since it began.
};

} // namespace pontrel
