#include "app/SafetyCopies.h"

#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Notice.h"
#include "app/Prompts.h"
#include "app/Toolbar.h"
#include "rules/ActionHost.h"
#include "store/Clock.h"
#include "store/RunTimeError.h"
#include "store/StoreCheck.h"

#include <QApplication>

#include <system_error>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int IdleMs = 200;
bool allEnabled = true;
SafetyCopies* newest = nullptr;

} // namespace

SafetyCopies::SafetyCopies(const QString& store) : store_(store), before_(newest) {
    newest = this;
    idle_.setInterval(IdleMs);
    onEvent(&idle_, &QTimer::timeout, this, [this] { tellWhenIdle(); });
}

SafetyCopies::~SafetyCopies() {
    newest = before_;
    stop_ = true;
    if (thread_.joinable())
        thread_.join();
}

void SafetyCopies::setEnabled(bool enabled) {
    allEnabled = enabled;
}

void SafetyCopies::start() {
    if (!allEnabled)
        return;
    if (!hasCopyOfDay(store_, clock::today())) {
        // The day's copy fails again where the store is damaged; the message comes once a day.
        damageTold_ = !isCheckDue(store_, clock::today());
        copy(CopyReason::Day);
    }
    lookInBackground();
}

void SafetyCopies::before(CopyReason reason) {
    if (!allEnabled || !newest)
        return;
    newest->copy(reason);
    newest->lookInBackground();
}

void SafetyCopies::copy(CopyReason reason) {
    const Hourglass pointer;
    const CopyOutcome outcome = copyBytes(store_, reason, CopyPace::AtOnce, [] { return true; });
    if (!outcome.copy)
        finish(outcome.finding);
}

void SafetyCopies::lookInBackground() {
    if (uncheckedCopiesOf(store_).isEmpty())
        return;
    {
        const std::lock_guard guard(mutex_);
        more_ = true;
        if (looking_)
            return;
        looking_ = true;
    }
    if (thread_.joinable())
        thread_.join();
    try {
        thread_ = std::thread([this] { look(); });
    } catch (const std::system_error&) {
        // Where the machine has no thread to spare, the next copy or start tries again.
        const std::lock_guard guard(mutex_);
        looking_ = false;
    }
}

void SafetyCopies::look() {
    const auto mayGoOn = [this] { return !stop_; };
    const auto takeMore = [this] {
        const std::lock_guard guard(mutex_);
        looking_ = more_ && !stop_;
        more_ = false;
        return looking_;
    };
    while (takeMore())
        for (const SafetyCopy& copy : uncheckedCopiesOf(store_)) {
            const StoreFinding finding = finishCopy(store_, copy, mayGoOn);
            if (stop_)
                break;
            if (finding.kind == StoreFinding::Kind::NotLookedAt && !uncheckedCopiesOf(store_).contains(copy))
                continue; // another process has finished it
            // Carried out by the program's own thread; dropped where this object has gone.
            QMetaObject::invokeMethod(
                this, [this, finding] { guarded([&] { finish(finding); }); }, Qt::QueuedConnection);
        }
}

void SafetyCopies::finish(const StoreFinding& finding) {
    if (finding.kind == StoreFinding::Kind::Sound) {
        rememberCheck(store_, clock::today());
        return;
    }
    if (finding.kind == StoreFinding::Kind::AtWork)
        return;
    noteFailedCopy(store_, finding.technical);
    const bool damaged = finding.kind == StoreFinding::Kind::Damaged;
    logError(runTimeError(damaged ? error::DiskOrStore : error::StoreUnreadable,
                          store_ + u": "_s + finding.technical));
    if (damaged && !damageTold_)
        idle_.start();
    if (!damaged && gMDI)
        tellBriefly(*gMDI, u"無法製作安全備份，請檢查磁碟空間或洽系統管理者"_s);
}

void SafetyCopies::tellWhenIdle() {
    // Not into a dialog's or a window's work: a key meant for it would dismiss the message unread.
    if (!gMDI || !gMDI->Tb().isEnabled() || QApplication::activeModalWidget() ||
        QApplication::activePopupWidget())
        return;
    idle_.stop();
    damageTold_ = true;
    MsgBox(u"資料庫檔案已有損壞,請盡快以備份還原並洽程式設計師"_s, WarningTitle);
    rememberCheck(store_, clock::today());
}

} // namespace pontrel
