#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QLabel;
class QPushButton;
class QTabWidget;
class QWidget;

namespace pontrel {

class StatusBar;
class TwoLists;

/// The controls of a batch page. The lists stand within the frame.
struct BatchParts {
    QWidget* frame = nullptr; ///< Enabled while a batch is open, and only then.
    TwoLists* lists = nullptr;
    QPushButton* begin = nullptr; ///< "新增": on while no batch is open.
    QPushButton* end = nullptr;   ///< "存檔／取消": on while one is.
    QList<QPushButton*> others{}; ///< On while no batch is open.
    QLabel* account = nullptr;    ///< Shows the user's account while a batch is open.
    QLabel* moment = nullptr;     ///< Shows when the batch was run.
    StatusBar* statusBar = nullptr;
    QTabWidget* tabs = nullptr; ///< All but the one in front are off while a batch is open.
};

/// In what a batch differs from the others.
struct BatchSteps {
    QString question;              ///< Asked under "警告訊息" before it runs.
    std::function<void()> clear{}; ///< Empties the page's own fields when a batch is opened.
    /// Runs it for the entries chosen, of which there may be none, at that moment.
    std::function<void(const QStringList& chosen, const QDateTime& now)> run;
    std::function<void()> closed{}; ///< The batch is closed, run or not.
    QString stateWord{};            ///< What panel 2 says while a batch is open.
};

/// The behaviour that the batches share: for employees chosen from two lists the same thing is written. It
/// is opened by one button and ended by another, which asks whether to run it and otherwise cancels it; there
/// is no other way out. It goes with its window.
class BatchPage : public QObject {
    Q_OBJECT
  public:
    BatchPage(QWidget& window, BatchParts parts, BatchSteps steps);

    [[nodiscard]] bool isOpen() const { return open_; }

    /// What a click on the button "新增" does: empties the page, lists all current employees and opens the
    /// batch. Throws RunTimeError.
    void begin();
    /// What a click on the button "存檔／取消" does. A run-time error of the run leaves the batch open.
    void end();

  private:
    void setOpen(bool open);

    BatchParts parts_;
    BatchSteps steps_;
    bool open_ = false;
};

/// The current employees as the batches list them: code, two blanks, name. Reads the shared connection;
/// throws RunTimeError.
[[nodiscard]] QStringList batchEntries();

} // namespace pontrel
