#include "app/ProgressBox.h"

#include "app/Events.h"
#include "app/InputGate.h"
#include "app/Prompts.h"
#include "app/controls/Buttons.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include <optional>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int DefaultDelayMs = 400;
constexpr int RoundMs = 30; ///< Between two looks at what the user does.
constexpr int BoxWidth = 360;
constexpr int Parts = 1000;

int replacedDelay = -1;

/// The dialog of a work that runs below it, between the rounds of its own events.
class ProgressBox {
  public:
    explicit ProgressBox(const QString& caption) : dialog_(promptParent()) {
        dialog_.setObjectName(u"ProgressBox"_s);
        dialog_.setWindowTitle(caption);
        dialog_.setAccessibleName(caption);
        dialog_.setModal(true);
        auto* column = new QVBoxLayout(&dialog_);
        text_ = new QLabel(caption, &dialog_);
        bar_ = new QProgressBar(&dialog_);
        bar_->setObjectName(u"ProgressBar"_s);
        bar_->setAccessibleName(caption);
        bar_->setRange(0, Parts);
        QPushButton* cancel = makeButton(&dialog_, u"Cancel"_s, u"取消"_s);
        cancel->setAutoDefault(false);
        column->addWidget(text_);
        column->addWidget(bar_);
        column->addWidget(cancel, 0, Qt::AlignCenter);
        dialog_.setMinimumWidth(BoxWidth);
        QObject::connect(cancel, &QPushButton::clicked, &dialog_, &QDialog::reject);
        QObject::connect(&dialog_, &QDialog::rejected, &dialog_, [this] { isCancelled_ = true; });
        passed_.start();
    }

    ~ProgressBox() {
        const QWidget* beneath = dialog_.parentWidget();
        const bool wasShown = gate_.has_value();
        dialog_.hide();
        gate_.reset();
        if (wasShown && beneath && beneath->window()->isVisible())
            beneath->window()->activateWindow();
    }
    ProgressBox(const ProgressBox&) = delete;
    ProgressBox& operator=(const ProgressBox&) = delete;

    bool step(std::size_t done, std::size_t all) {
        const int wait = replacedDelay >= 0 ? replacedDelay : gate_ ? RoundMs : DefaultDelayMs;
        if (isCancelled_ || passed_.elapsed() < wait)
            return !isCancelled_;
        if (!gate_) {
            gate_.emplace(dialog_);
            dialog_.show();
        }
        bar_->setValue(all == 0 ? 0 : static_cast<int>(Parts * done / all));
        QCoreApplication::processEvents();
        passed_.start();
        return !isCancelled_;
    }

  private:
    QDialog dialog_;
    QLabel* text_;
    QProgressBar* bar_;
    std::optional<InputGate::Dialog> gate_;
    QElapsedTimer passed_;
    bool isCancelled_ = false;
};

} // namespace

bool runWithProgress(const QString& caption, const std::function<bool(const ProgressStep&)>& work) {
    ProgressBox box(caption);
    return work([&box](std::size_t done, std::size_t all) { return box.step(done, all); });
}

bool attempt(const QString& caption, const std::function<bool(const ProgressStep&)>& work) {
    try {
        return runWithProgress(caption, work);
    } catch (const RunTimeError& failure) {
        logError(failure);
        MsgBox(failure.text(), ProgramTitle, MsgIcon::Exclamation);
        return false;
    }
}

void setProgressDelay(int milliseconds) {
    replacedDelay = milliseconds;
}

} // namespace pontrel
