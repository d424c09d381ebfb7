#include "paper/NewFile.h"

#include "store/RunTimeError.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace pontrel::paper {

NewFile::NewFile(const QString& target)
    : target_(QFileInfo(target).absoluteFilePath())
    , folder_(QFileInfo(target).absolutePath() + QStringLiteral("/.report-XXXXXX")) {
    if (QFileInfo(target_).isDir())
        fail(qt_error_string(EISDIR));
    if (!folder_.isValid())
        fail(folder_.errorString());
}

QString NewFile::path() const {
    return folder_.filePath(QStringLiteral("report"));
}

void NewFile::put() {
    const QByteArray made = QFile::encodeName(path());
    const int descriptor = ::open(made.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        fail(qt_error_string(errno));
    const bool kept = ::fsync(descriptor) == 0;
    const int reason = errno;
    ::close(descriptor);
    if (!kept)
        fail(qt_error_string(reason));
    if (std::rename(made.constData(), QFile::encodeName(target_).constData()) != 0)
        fail(qt_error_string(errno));
}

void NewFile::fail(const QFileDevice& file) const {
    const QString reason = file.errorString();
    fail(reason == QFile().errorString() ? Unfinished : reason);
}

void NewFile::fail(const QString& reason) const {
    throw RunTimeError(error::FileAccess, QStringLiteral("無法寫入檔案：%1（%2）").arg(target_, reason));
}

} // namespace pontrel::paper
