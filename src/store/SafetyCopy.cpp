#include "store/SafetyCopy.h"

#include "store/Clock.h"
#include "store/HeldFile.h"
#include "store/SyncFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int KeptDays = 7;
constexpr int KeptOfDay = 3; ///< Of those made before an action.
constexpr int KeptWeeks = 5;
constexpr int KeptMonths = 24;

const QString Start = u"Pontrel-"_s;
const QString End = u".mdb"_s;
const QString Copying = u".copying-"_s;
const QString Unchecked = u".unchecked-"_s;

constexpr std::array Reasons{CopyReason::Day, CopyReason::Purge, CopyReason::Replace, CopyReason::Hand};

QString wordOf(CopyReason reason) {
    switch (reason) {
    case CopyReason::Day:
        return u"day"_s;
    case CopyReason::Purge:
        return u"purge"_s;
    case CopyReason::Replace:
        return u"replace"_s;
    case CopyReason::Hand:
        break;
    }
    return u"hand"_s;
}

bool isEarlier(const SafetyCopy& one, const SafetyCopy& other) {
    return one.day != other.day ? one.day < other.day : one.time < other.time;
}

/// The copies whose files bear that mark in front of their names, the oldest first. Links and folders are
/// none.
QList<SafetyCopy> copiesMarked(const QString& mark, const QString& store) {
    QList<SafetyCopy> copies;
    const QStringList names =
        QDir(copyFolderOf(store)).entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Name);
    for (const QString& name : names)
        if (name.startsWith(mark))
            if (const auto copy = SafetyCopy::ofName(name.mid(mark.size())))
                copies += *copy;
    std::stable_sort(copies.begin(), copies.end(), isEarlier);
    return copies;
}

QString pathOf(const QString& store, const QString& mark, const SafetyCopy& copy) {
    return copyFolderOf(store) + u'/' + mark + copy.name();
}

bool makeFolder(const QString& folder) {
    const QFileDevice::Permissions owner =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    if (!QFileInfo(folder).isDir())
        return QDir().mkdir(folder, owner);
    // One that was there may have been open to others; one elsewhere, to which a link leads, is not ours.
    return (!QFileInfo(folder).isSymLink() && QFile::setPermissions(folder, owner)) ||
           QFileInfo(folder).isWritable();
}

void removeLeftCopies(const QString& store) {
    for (const SafetyCopy& copy : copiesMarked(Copying, store)) {
        const QString path = pathOf(store, Copying, copy);
        if (HeldFile(path, HeldFile::Open::Existing).held())
            QFile::remove(path);
    }
}

/// A copy of this second, or of the first one behind all names of the day that are not earlier: names rise as
/// the copies are made, also where one in between has gone or the clock has been put back by an hour.
SafetyCopy nextCopy(const QString& store, CopyReason reason) {
    QList<SafetyCopy> there;
    // Whatever bears such a name has taken it, a folder or a link too.
    const QStringList names =
        QDir(copyFolderOf(store)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    for (const QString& name : names)
        for (const QString& mark : {Copying, Unchecked, QString()})
            if (const auto copy = SafetyCopy::ofName(name.mid(mark.size())); copy && name.startsWith(mark))
                there += *copy;
    std::sort(there.begin(), there.end(), isEarlier);
    const QDateTime now = clock::now();
    SafetyCopy next{now.date(), QTime(now.time().hour(), now.time().minute(), now.time().second()), reason};
    for (const SafetyCopy& copy : there)
        if (copy.day == next.day && copy.time >= next.time) {
            next.time = copy.time.addSecs(1);
            if (next.time < copy.time) // midnight
                next.day = copy.day.addDays(1);
        }
    return next;
}

StoreFinding notMade(const QString& why) {
    return {StoreFinding::Kind::NotLookedAt, u"no safety copy: "_s + why};
}

/// The new one stays, also where a wrong clock has made it the oldest.
void thinOut(const QString& store, const SafetyCopy& made) {
    for (const SafetyCopy& copy : superfluousAmong(safetyCopiesOf(store)))
        if (copy != made)
            QFile::remove(pathOf(store, {}, copy));
}

/// In one step, or not at all; never over another file.
bool rename(const QString& from, const QString& to) {
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return true;
    // Not every file system can tell by itself whether the name is free.
    return errno == EINVAL && !QFileInfo::exists(to) && ::rename(source.constData(), target.constData()) == 0;
}

QString notePath(const QString& store) {
    return QFileInfo(store).path() + u"/.copy-failed"_s;
}

} // namespace

QString SafetyCopy::name() const {
    return Start + day.toString(u"yyyyMMdd"_s) + u'-' + time.toString(u"HHmmss"_s) + u'-' + wordOf(reason) +
           End;
}

std::optional<SafetyCopy> SafetyCopy::ofName(const QString& name) {
    constexpr qsizetype DateWidth = 8;
    constexpr qsizetype TimeWidth = 6;
    const qsizetype from = Start.size();
    for (const CopyReason reason : Reasons) {
        const SafetyCopy copy{QDate::fromString(name.mid(from, DateWidth), u"yyyyMMdd"_s),
                              QTime::fromString(name.mid(from + DateWidth + 1, TimeWidth), u"HHmmss"_s),
                              reason};
        // What stands anywhere else, or in another spelling, shows when the name is written again.
        if (copy.day.isValid() && copy.time.isValid() && copy.name() == name)
            return copy;
    }
    return std::nullopt;
}

QString copyFolderOf(const QString& store) {
    return QFileInfo(store).path() + u"/backup"_s;
}

QList<SafetyCopy> safetyCopiesOf(const QString& store) {
    QList<SafetyCopy> copies = copiesMarked({}, store);
    std::reverse(copies.begin(), copies.end());
    return copies;
}

QList<SafetyCopy> uncheckedCopiesOf(const QString& store) {
    return copiesMarked(Unchecked, store);
}

bool hasCopyOfDay(const QString& store, QDate day) {
    const auto copies = safetyCopiesOf(store) + uncheckedCopiesOf(store);
    return std::any_of(copies.begin(), copies.end(), [day](const SafetyCopy& copy) {
        return copy.reason == CopyReason::Day && copy.day == day;
    });
}

QList<SafetyCopy> superfluousAmong(const QList<SafetyCopy>& copies) {
    QList<SafetyCopy> newestFirst = copies;
    std::stable_sort(newestFirst.begin(), newestFirst.end(),
                     [](const SafetyCopy& one, const SafetyCopy& other) { return isEarlier(other, one); });
    QHash<qint64, int> madeBeforeActions;
    const auto isOneTooMany = [&madeBeforeActions](const SafetyCopy& copy) {
        const bool beforeAction = copy.reason == CopyReason::Purge || copy.reason == CopyReason::Replace;
        return beforeAction && ++madeBeforeActions[copy.day.toJulianDay()] > KeptOfDay;
    };
    QSet<qint64> days;
    QSet<qint64> weeks;
    QSet<int> months;
    /// Whether the period is a new one among those of which copies are kept.
    const auto opens = [](auto& periods, auto period, int most) {
        if (periods.contains(period) || periods.size() >= most)
            return false;
        periods.insert(period);
        return true;
    };
    QList<SafetyCopy> superfluous;
    for (const SafetyCopy& copy : newestFirst) {
        const qint64 day = copy.day.toJulianDay();
        const bool ofLastDays = (opens(days, day, KeptDays) || days.contains(day)) && !isOneTooMany(copy);
        const bool ofWeek = opens(weeks, day / 7, KeptWeeks); // Julian day 0 is a Monday
        const bool ofMonth = opens(months, copy.day.year() * 12 + copy.day.month(), KeptMonths);
        if (!ofLastDays && !ofWeek && !ofMonth)
            superfluous += copy;
    }
    return superfluous;
}

CopyOutcome copyBytes(const QString& store, CopyReason reason, CopyPace pace,
                      const std::function<bool()>& mayGoOn) {
    const QString folder = copyFolderOf(store);
    if (!makeFolder(folder))
        return {{}, notMade(u"the folder %1 cannot be made"_s.arg(folder))};
    removeLeftCopies(store);
    if (!hasRoomForCopy(store, folder))
        return {{}, notMade(u"too little room on the disk"_s)};
    const SafetyCopy copy = nextCopy(store, reason);
    const QString path = pathOf(store, Copying, copy);
    const HeldFile file(path, HeldFile::Open::New);
    if (!file.held())
        return {{}, notMade(u"%1 cannot be written: %2"_s.arg(path, qt_error_string(errno)))};
    StoreFinding finding = copyStore(store, path, pace, mayGoOn);
    if (finding.kind == StoreFinding::Kind::Sound &&
        (!file.sync() || !rename(path, pathOf(store, Unchecked, copy))))
        finding = notMade(u"%1 cannot be kept"_s.arg(path));
    if (finding.kind != StoreFinding::Kind::Sound) {
        QFile::remove(path);
        return {{}, finding};
    }
    syncFolder(folder);
    return {copy, finding};
}

StoreFinding finishCopy(const QString& store, const SafetyCopy& copy, const std::function<bool()>& mayGoOn) {
    const QString path = pathOf(store, Unchecked, copy);
    const HeldFile file(path, HeldFile::Open::Existing);
    if (!file.held())
        return QFileInfo::exists(path) ? StoreFinding{StoreFinding::Kind::AtWork, {}}
                                       : notMade(u"%1 is gone"_s.arg(path));
    StoreFinding finding = lookThrough(path, mayGoOn);
    if (finding.kind == StoreFinding::Kind::Damaged)
        QFile::remove(path);
    if (finding.kind != StoreFinding::Kind::Sound)
        return finding;
    if (!rename(path, pathOf(store, {}, copy)))
        return notMade(u"%1 cannot be given its name"_s.arg(path));
    QFile::remove(notePath(store));
    thinOut(store, copy);
    syncFolder(copyFolderOf(store));
    return finding;
}

void noteFailedCopy(const QString& store, const QString& why) {
    QFile note(notePath(store));
    if (note.open(QIODevice::WriteOnly | QIODevice::Truncate,
                  QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        note.write((clock::now().toString(u"yyyy-MM-dd HH:mm:ss "_s) + why.simplified() + u'\n').toUtf8());
}

QString failedCopyNote(const QString& store) {
    QFile note(notePath(store));
    return note.open(QIODevice::ReadOnly) ? QString::fromUtf8(note.readLine()).trimmed() : QString();
}

} // namespace pontrel
