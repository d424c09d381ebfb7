#pragma once

#include "rules/attendance/AttendanceHost.h"
#include "rules/attendance/DailyCalculation.h"
#include "store/DataSource.h"
#include "store/Database.h"

#include <QDate>
#include <QJsonObject>
#include <QString>

#include <memory>

namespace pontrel::bench {

/// The attendance window's work without the window: its two sources, its bar and the user's answers.
class DayCloseHost : public QuietHost<AttendanceHost> {
  public:
    explicit DayCloseHost(const QString& store);

    /// What the user picks in the file dialog, and what he answers when the day is there already.
    void setAnswers(const QString& file, bool replace);

    [[nodiscard]] std::optional<QString> choosePunchFile(const QString& folder) override;
    [[nodiscard]] bool confirm(const QString& question, const QString& title) override;
    void showPunches(const QString& statement) override;
    void refreshExceptions() override;
    void showExceptions(const QString& statement) override;

  private:
    DataSource punches_;
    DataSource exceptions_;
    QString file_;
    bool replace_ = true;
};

/// One opening of the attendance window over a program folder, which runs actions and answers each.
class DayClose {
  public:
    /// Opens the store in the folder's DB. Throws RunTimeError.
    explicit DayClose(const QString& programFolder);

    /// Runs "import=FILE", "import=FILE,replace=no", "recalc=DATE" or "reopen" and tells how it went. An
    /// unknown action or an invalid date changes nothing.
    [[nodiscard]] QJsonObject run(const QString& action);

    /// Processor seconds of the last import or recalculation.
    [[nodiscard]] double cpu() const { return cpu_; }

    /// Whether the text is an action that can be run.
    [[nodiscard]] static bool isAction(const QString& action);

  private:
    void open();
    [[nodiscard]] QJsonObject answer(const QString& action, double seconds, std::int64_t statements);

    QString path_;
    std::unique_ptr<Database> database_;
    std::unique_ptr<DayCloseHost> host_;
    std::unique_ptr<DailyCalculation> calculation_;
    double cpu_ = 0;
};

} // namespace pontrel::bench
