#pragma once

#include <QByteArray>
#include <QList>

#include <atomic>
#include <mutex>
#include <thread>

namespace pontrel::test {

/// A print server on this machine with one queue, "Office", as the desktop's own would be: it tells of the
/// queue and takes what is printed. Whoever prints finds it where CUPS_SERVER says address().
class PrintServer {
  public:
    struct Job {
        int copies = 1;
        QByteArray document;
    };

    PrintServer();
    ~PrintServer();
    PrintServer(const PrintServer&) = delete;
    PrintServer& operator=(const PrintServer&) = delete;

    [[nodiscard]] QByteArray address() const;
    [[nodiscard]] QList<Job> jobs() const;

    /// Whether there is a queue, without which jobs are refused. There is one at first.
    void setQueue(bool there) { hasQueue_ = there; }
    /// What the queue, which stays there, turns away.
    enum class Refuses {
        Nothing,
        Jobs,     ///< It takes no more jobs.
        Documents ///< It takes a job and then not what is to be printed.
    };
    void setRefuses(Refuses refuses) { refuses_ = refuses; }
    /// From now on nothing answers.
    void stop();

  private:
    void serve();
    void talk(int connection);
    /// The answer to a request, both as they travel.
    [[nodiscard]] QByteArray answer(const QByteArray& request);

    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> hasQueue_ = true;
    std::atomic<Refuses> refuses_ = Refuses::Nothing;
    std::atomic<bool> isStopped_ = false;
    mutable std::mutex mutex_;
    QList<Job> jobs_; ///< Guarded by the mutex.
    std::thread thread_;
};

} // namespace pontrel::test
