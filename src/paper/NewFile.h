#pragma once

#include <QFileDevice>
#include <QString>
#include <QTemporaryDir>

#include <functional>

namespace pontrel::paper {

/// Why a file has failed that gives no reason of its own.
inline const QString Unfinished = QStringLiteral("檔案沒有寫完，磁碟可能已滿");

/// Told how much of a file is done, of how much; false ends the work and leaves no file.
using Progress = std::function<bool(std::size_t done, std::size_t all)>;

/// A file in the making: written beside its place, so that what stands there stays as it is until the new one
/// is whole. What has not been put in place goes with the object.
class NewFile {
  public:
    /// Throws error 75 where nothing can be written beside the target.
    explicit NewFile(const QString& target);

    [[nodiscard]] QString path() const;
    [[nodiscard]] QString folder() const { return folder_.path(); }

    /// Writes all that the system holds back to the disk and puts the file in its place, over one that is
    /// there. Throws error 75.
    void put();

    /// Throws error 75 with the reason.
    [[noreturn]] void fail(const QString& reason) const;
    /// The same with what has befallen the file, or where that tells nothing, that it is not whole.
    [[noreturn]] void fail(const QFileDevice& file) const;

  private:
    QString target_;
    QTemporaryDir folder_;
};

} // namespace pontrel::paper
