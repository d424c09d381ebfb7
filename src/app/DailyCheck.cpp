#include "app/DailyCheck.h"

#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/Toolbar.h"
#include "rules/ActionHost.h"
#include "store/Clock.h"
#include "store/RunTimeError.h"

#include <QApplication>

#include <system_error>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int IdleMs = 200;
bool allEnabled = true;

} // namespace

DailyCheck::DailyCheck(const QString& store) : store_(store) {
    idle_.setInterval(IdleMs);
    onEvent(&idle_, &QTimer::timeout, this, [this] { tellWhenIdle(); });
}

DailyCheck::~DailyCheck() {
    stop_ = true;
    if (thread_.joinable())
        thread_.join();
}

void DailyCheck::setEnabled(bool enabled) {
    allEnabled = enabled;
}

void DailyCheck::start() {
    if (!allEnabled || !isCheckDue(store_, clock::today()))
        return;
    try {
        thread_ = std::thread([this, store = store_] {
            const StoreFinding finding = checkCopyOf(store, [this] { return !stop_; });
            // Carried out by the program's own thread; dropped where this object has gone.
            QMetaObject::invokeMethod(
                this, [this, finding] { guarded([&] { finish(finding); }); }, Qt::QueuedConnection);
        });
    } catch (const std::system_error&) {
        // Where the machine has no thread to spare, the next start tries again.
    }
}

void DailyCheck::finish(const StoreFinding& finding) {
    if (finding.kind == StoreFinding::Kind::Sound)
        rememberCheck(store_, clock::today());
    else
        logError(runTimeError(finding.kind == StoreFinding::Kind::Damaged ? error::DiskOrStore
                                                                          : error::StoreUnreadable,
                              store_ + u": "_s + finding.technical));
    if (finding.kind == StoreFinding::Kind::Damaged)
        idle_.start();
}

void DailyCheck::tellWhenIdle() {
    // Not into a dialog's or a window's work: a key meant for it would dismiss the message unread.
    if (!gMDI || !gMDI->Tb().isEnabled() || QApplication::activeModalWidget() ||
        QApplication::activePopupWidget())
        return;
    idle_.stop();
    MsgBox(u"資料庫檔案已有損壞,請盡快以備份還原並洽程式設計師"_s, WarningTitle);
    rememberCheck(store_, clock::today());
}

} // namespace pontrel
