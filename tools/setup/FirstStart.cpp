#include "setup/FirstStart.h"

#include "app/Prompts.h"
#include "app/SingleInstance.h"
#include "app/ZoomKeys.h"
#include "folder/Refusal.h"
#include "folder/StoreMaker.h"
#include "setup/SetupDialog.h"
#include "store/DiskRoom.h"
#include "store/RunTimeError.h"
#include "store/StorePath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Megabyte = 1024 * 1024;
constexpr qsizetype MostNames = 10; ///< In a message, which has to fit onto the screen.

QString sentence(const Refusal& refusal) {
    switch (refusal.reason) {
    case Refusal::Reason::NoFolder:
        return u"無法建立資料夾「%1」。"_s.arg(refusal.path);
    case Refusal::Reason::DiskFull:
        return u"磁碟已滿，無法寫入「%1」。"_s.arg(refusal.path);
    case Refusal::Reason::NotExecutable:
        return u"「%1」所在的磁碟不允許執行程式，請另選資料夾。"_s.arg(refusal.path);
    case Refusal::Reason::NoMasterCopy:
        return u"找不到要安裝的檔案「%1」，請重新安裝 Pontrel。"_s.arg(refusal.path);
    case Refusal::Reason::BeingMade:
        return u"另一個設定程式正在「%1」建立資料庫，請稍候再試。"_s.arg(refusal.path);
    case Refusal::Reason::LeftJournal:
        return u"「%1」屬於一個已不存在的資料庫。請將該資料庫放回原處，或將此檔案移走。"_s.arg(refusal.path);
    case Refusal::Reason::StoreExists:
        return u"資料庫「%1」已經存在。"_s.arg(refusal.path);
    default:
        return u"無法寫入「%1」。\n%2"_s.arg(refusal.path, refusal.technical).trimmed();
    }
}

void tellKept(const LaidOut& done) {
    if (done.kept.isEmpty())
        return;
    QString names = done.kept.first(std::min(done.kept.size(), MostNames)).join(u'\n');
    if (done.kept.size() > MostNames)
        names += u"\n等 %1 個檔案"_s.arg(done.kept.size());
    MsgBox(u"下列報表範本曾經修改過，因此予以保留；新版範本放在同一資料夾，檔名後面加上「.new」：\n\n"_s +
               names,
           ProgramTitle, MsgIcon::Information);
}

/// Whether the program of that folder runs at this moment: it is left alone then, and so is its folder.
bool isRunning(const QString& folder) {
    return !SingleInstance(folder).isFirst();
}

/// Brings a folder that has a store up to date. False where it cannot be started.
bool bringUpToDate(const MasterCopy& from, const QString& folder) {
    const SingleInstance place(folder); // so that none starts in the middle of it
    if (!place.isFirst())
        return true;
    try {
        tellKept(layOut(from, folder));
        return true;
    } catch (const Refusal& refusal) {
        const bool canStart = QFileInfo(folder + u"/pontrel"_s).isExecutable();
        MsgBox(canStart ? u"程式未能更新，仍以原有的版本啟動。\n"_s + sentence(refusal) : sentence(refusal),
               ProgramTitle, canStart ? MsgIcon::Exclamation : MsgIcon::Critical);
        return canStart;
    }
}

/// Megabytes that are missing where the folder shall be; 0 where there are enough, or nobody can tell.
qint64 missingMegabytes(const MasterCopy& from, const QString& folder) {
    QString above = folder;
    while (!QFileInfo(above).isDir() && above != QDir::rootPath())
        above = QFileInfo(above).path();
    const std::optional<qint64> left = roomLeftIn(above);
    const qint64 missing = left ? spaceNeeded(from) - *left : 0;
    return missing > 0 ? missing / Megabyte + 1 : 0;
}

/// Empty where the folder and its store have been made, else why not; what has been laid out in any case.
QString makeFolder(const MasterCopy& from, const SetupWish& wish, LaidOut& done) {
    const Hourglass pointer;
    const FolderState before = stateOf(wish.folder);
    try {
        if (const qint64 missing = missingMegabytes(from, wish.folder))
            return u"磁碟空間不足，還需要 %1 MB。"_s.arg(missing);
        done = layOut(from, wish.folder);
        makeProgramStore({wish.folder, wish.account, wish.password, wish.company, wish.demo});
        return {};
    } catch (const Refusal& refusal) {
        if (refusal.reason != Refusal::Reason::BeingMade) // what is there is another set-up's
            takeBack(wish.folder, before);
        return sentence(refusal);
    } catch (const RunTimeError& error) {
        takeBack(wish.folder, before);
        return u"無法建立資料庫：%1（%2）\n%3"_s.arg(error.text())
            .arg(error.number())
            .arg(error.technical())
            .trimmed();
    }
}

bool fail(const QString& text) {
    MsgBox(text, SetupTitle, MsgIcon::Exclamation);
    return false;
}

bool takeStore(const MasterCopy& from, const QString& folder) {
    const QString question = u"資料夾「%1」已有資料庫。要使用這個資料庫嗎？\n"
                             u"其中的使用者、密碼及公司機關名稱都維持原樣。"_s;
    if (MsgBox(question.arg(folder), SetupTitle, MsgIcon::Question, MsgButtons::YesNo) != MsgAnswer::Yes)
        return false;
    if (isRunning(folder))
        return fail(u"資料夾「%1」的程式正在執行，請先結束該程式。"_s.arg(folder));
    return bringUpToDate(from, folder);
}

bool setUp(const MasterCopy& from, const SetupWish& wish) {
    switch (stateOf(wish.folder)) {
    case FolderState::HasStore:
        if (!takeStore(from, wish.folder))
            return false;
        break;
    case FolderState::Foreign:
        return fail(u"資料夾「%1」不是空的，請另選資料夾。"_s.arg(wish.folder));
    case FolderState::NoFolder:
        return fail(u"「%1」不是資料夾，請另選資料夾。"_s.arg(wish.folder));
    default:
        LaidOut done;
        const QString reason = makeFolder(from, wish, done);
        tellKept(done); // also where the store has failed: the next try keeps them in silence
        if (!reason.isEmpty())
            return fail(reason);
    }
    if (!rememberFolder(wish.folder))
        MsgBox(u"無法記住程式資料夾，下次啟動時會再詢問一次。"_s, SetupTitle, MsgIcon::Exclamation);
    return true;
}

} // namespace

std::optional<QString> folderToStart(const MasterCopy& from) {
    // Whoever has chosen no zoom yet is offered the one that suits the screen.
    const ZoomKeys::Rest zoomKeys;
    const QString last = rememberedFolder();
    if (!last.isEmpty() && stateOf(last) == FolderState::HasStore)
        return bringUpToDate(from, last) ? std::optional(last) : std::nullopt;
    if (!last.isEmpty())
        MsgBox(u"找不到程式資料夾「%1」中的資料庫。\n若它在外接磁碟或網路磁碟上，請先連接，再重新啟動；"
               u"否則請重新指定程式資料夾。"_s.arg(last),
               SetupTitle, MsgIcon::Exclamation);
    SetupDialog dialog(last.isEmpty() ? QDir::home().filePath(u"Pontrel"_s) : last,
                       [&from](const SetupWish& wish) { return setUp(from, wish); });
    return runModal(dialog) == QDialog::Accepted ? std::optional(dialog.folder()) : std::nullopt;
}

} // namespace pontrel
