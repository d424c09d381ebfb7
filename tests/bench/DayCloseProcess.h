#pragma once

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <optional>

namespace pontrel::test {

/// How a run of day_close ended and what it said.
struct DayCloseEnd {
    bool crashed = false; ///< Ended by a signal.
    int status = -1;      ///< Its exit status, where it did not crash.
    QList<QJsonObject> answers;
    QString errors; ///< What it wrote to its error output.
};

/// A process of day_close over a program folder. All members throw where it does not start, is silent for a
/// minute, or says anything on its output that is not an object of JSON on a line of its own.
class DayCloseProcess {
  public:
    /// Starts it with these actions, or with "-" to be told what to do.
    explicit DayCloseProcess(const QString& programFolder,
                             const QStringList& actions = {QStringLiteral("-")});
    ~DayCloseProcess(); ///< Kills it where it still runs.
    DayCloseProcess(const DayCloseProcess&) = delete;
    DayCloseProcess& operator=(const DayCloseProcess&) = delete;

    /// Writes a line to its standard input; the input stays open.
    void send(const QString& line);
    /// Its next answer, waited for.
    [[nodiscard]] QJsonObject answer();
    /// Sends an action and waits for the answer.
    [[nodiscard]] QJsonObject ask(const QString& action);
    /// The answer that has come within these milliseconds, if any.
    [[nodiscard]] std::optional<QJsonObject> answerWithin(int milliseconds);

    /// Kills it at once, as the loss of power would; nothing of it runs any more afterwards.
    void kill();
    /// Closes its input, waits for its end and tells of that and of the answers not yet asked for.
    [[nodiscard]] DayCloseEnd end();

    [[nodiscard]] qint64 identifier() const { return process_.processId(); }

  private:
    QProcess process_;
};

/// Runs day_close over a program folder with these actions to its end.
[[nodiscard]] DayCloseEnd runDayClose(const QString& programFolder, const QStringList& actions);

/// An answer without its seconds, which differ from run to run. Throws where they are no number of seconds.
[[nodiscard]] QJsonObject withoutSeconds(QJsonObject answer);

/// The text that shows an object in a failure.
[[nodiscard]] QString shown(const QJsonObject& object);

} // namespace pontrel::test
