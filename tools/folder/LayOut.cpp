#include "folder/LayOut.h"

#include "folder/Refusal.h"
#include "store/NewStore.h"
#include "store/StorePath.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QStandardPaths>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace pontrel {

namespace {

using Reason = Refusal::Reason;
using Checksums = QMap<QString, QByteArray>; ///< By name below the program folder.

const QString ProgramFile = QStringLiteral("pontrel");
const QString ReportFolder = QStringLiteral("report");
const QString RecordFile = QStringLiteral(".laid-out");
const QString NewerEnding = QStringLiteral(".new");

constexpr QFileDevice::Permissions Readable =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
constexpr QFileDevice::Permissions Executable =
    Readable | QFileDevice::ExeOwner | QFileDevice::ExeGroup | QFileDevice::ExeOther;

/// Of errno, right after a call has failed.
Refusal notWritten(const QString& path) {
    const int number = errno;
    const bool full = number == ENOSPC || number == EDQUOT;
    return {full ? Reason::DiskFull : Reason::NotWritten, path, qt_error_string(number)};
}

/// Empty where the file cannot be read.
QByteArray checksum(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result().toHex();
}

/// A link is not what it leads to, for the file in its place is to be the folder's own.
bool isThere(const QString& path) {
    return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
}

/// Writes all bytes to the disk. Qt's own file would tell less of why it failed.
bool writeAll(int descriptor, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const auto written = ::write(descriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return ::fsync(descriptor) == 0;
}

/// Under which name a file is written until it is whole.
QString unfinished(const QString& target) {
    const QFileInfo place(target);
    return place.path() + QStringLiteral("/.") + place.fileName() + NewerEnding;
}

/// Puts a file in its place in one step: what stands there may be running, and is left to those who run it.
void place(const QByteArray& content, const QString& target, QFileDevice::Permissions permissions) {
    const QString source = unfinished(target);
    QFile::remove(source);
    QFile file(source);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        throw notWritten(target);
    if (!writeAll(file.handle(), content) || !file.setPermissions(permissions) ||
        ::rename(QFile::encodeName(source).constData(), QFile::encodeName(target).constData()) != 0) {
        const Refusal refusal = notWritten(target);
        file.remove();
        throw refusal;
    }
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Refusal{Reason::NoMasterCopy, path, file.errorString()};
    return file.readAll();
}

QStringList templatesIn(const QString& folder) {
    const QStringList names = QDir(folder).entryList({QStringLiteral("*.rpt")}, QDir::Files, QDir::Name);
    if (names.isEmpty())
        throw Refusal{Reason::NoMasterCopy, folder, {}};
    return names;
}

/// One line a file, its checksum and its name. What cannot be understood counts as not there.
Checksums readRecord(const QString& path) {
    Checksums record;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return record;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const auto blank = line.indexOf(' ');
        if (blank > 0)
            record.insert(QString::fromUtf8(line.sliced(blank).trimmed()), line.first(blank));
    }
    return record;
}

QByteArray textOf(const Checksums& record) {
    QByteArray text;
    for (auto each = record.cbegin(); each != record.cend(); ++each)
        text += each.value() + "  " + each.key().toUtf8() + '\n';
    return text;
}

class Layer {
  public:
    explicit Layer(const QString& folder)
        : folder_(folder), record_(readRecord(folder_.filePath(RecordFile))), before_(record_) {}

    void makeFolders() const {
        for (const QString& path :
             {folder_.path(), folder_.filePath(ReportFolder), folder_.filePath(PunchFolder)})
            if (!QDir().mkpath(path))
                throw Refusal{Reason::NoFolder, path, {}};
    }

    void layProgram(const QString& from) {
        const QString target = folder_.filePath(ProgramFile);
        QFile::remove(unfinished(target)); // of a run that was killed
        const QByteArray content = contentOf(from);
        if (checksum(target) != QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex()) {
            place(content, target, Executable);
            done_.written << ProgramFile;
        }
        if (::access(QFile::encodeName(target).constData(), X_OK) != 0)
            throw Refusal{Reason::NotExecutable, target, qt_error_string(errno)};
    }

    void layTemplate(const QString& from) {
        const QString name = ReportFolder + u'/' + QFileInfo(from).fileName();
        const QString target = folder_.filePath(name);
        QFile::remove(unfinished(target)); // of a run that was killed
        const QByteArray content = contentOf(from);
        const QByteArray newest = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
        const QByteArray last = record_.value(name);
        const QByteArray present = checksum(target);
        if (present != newest) {
            if (!isThere(target) || (!last.isEmpty() && present == last)) {
                place(content, target, Readable);
                done_.written << name;
            } else if (last != newest) {
                place(content, target + NewerEnding, Readable);
                done_.kept << name;
            }
        }
        record_.insert(name, newest);
    }

    void keepRecord() const {
        if (record_ != before_)
            place(textOf(record_), folder_.filePath(RecordFile), Readable);
    }

    [[nodiscard]] const LaidOut& done() const { return done_; }

  private:
    QDir folder_;
    Checksums record_; ///< Of each template the one that was laid out or offered last.
    Checksums before_;
    LaidOut done_;
};

QString memoryFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/pontrel/folder");
}

} // namespace

MasterCopy installedCopy() {
    const QDir prefix(QCoreApplication::applicationDirPath() + QStringLiteral("/.."));
    return {QDir::cleanPath(prefix.filePath(QStringLiteral("lib/pontrel/pontrel"))),
            QDir::cleanPath(prefix.filePath(QStringLiteral("share/pontrel/report")))};
}

LaidOut layOut(const MasterCopy& from, const QString& folder) {
    const QStringList names = templatesIn(from.templates);
    Layer layer(folder);
    layer.makeFolders();
    // The program comes last: where it is new, all that it needs is there.
    for (const QString& name : names)
        layer.layTemplate(QDir(from.templates).filePath(name));
    layer.keepRecord();
    layer.layProgram(from.program);
    return layer.done();
}

qint64 spaceNeeded(const MasterCopy& from) {
    constexpr qint64 ForTheStore = 32 * 1024 * 1024; // the example's, with its journal
    qint64 bytes = ForTheStore + QFileInfo(from.program).size();
    for (const QString& name : templatesIn(from.templates))
        bytes += QFileInfo(QDir(from.templates).filePath(name)).size();
    return bytes;
}

FolderState stateOf(const QString& folder) {
    const QFileInfo info(folder);
    if (!info.exists())
        return info.isSymLink() ? FolderState::NoFolder : FolderState::Missing;
    if (!info.isDir())
        return FolderState::NoFolder;
    if (isThere(storePathIn(folder)))
        return FolderState::HasStore;
    QStringList names =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    if (names.isEmpty())
        return FolderState::Empty;
    for (const QString& own : {ProgramFile, ReportFolder, PunchFolder, RecordFile, QStringLiteral("DB"),
                               u'.' + ProgramFile + NewerEnding, u'.' + RecordFile + NewerEnding})
        names.removeAll(own);
    return names.isEmpty() ? FolderState::Begun : FolderState::Foreign;
}

void takeBack(const QString& folder, FolderState before) {
    if ((before != FolderState::Missing && before != FolderState::Empty) || isThere(storePathIn(folder)))
        return;
    QDir place(folder);
    for (const QString& name : {ReportFolder, PunchFolder, QStringLiteral("DB")})
        QDir(place.filePath(name)).removeRecursively();
    for (const QString& name : {ProgramFile, RecordFile})
        place.remove(name);
    if (before == FolderState::Missing)
        place.rmdir(place.absolutePath()); // which fails, as it should, where anything else is in it
}

QString rememberedFolder() {
    QFile file(memoryFile());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray line = file.readAll();
    if (line.endsWith('\n'))
        line.chop(1);
    const QString folder = QFile::decodeName(line);
    return QDir::isAbsolutePath(folder) ? folder : QString();
}

bool rememberFolder(const QString& folder) {
    const QString path = memoryFile();
    if (!QDir().mkpath(QFileInfo(path).path()))
        return false;
    try {
        place(QFile::encodeName(folder) + '\n', path, Readable);
    } catch (const Refusal&) {
        return false;
    }
    return true;
}

} // namespace pontrel
