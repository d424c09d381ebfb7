#pragma once

#include <QString>
#include <QTemporaryDir>

namespace pontrel::test {

/// Gives this process and its children mounts of their own, which no other process sees and which go with
/// the last of them. As root, or as the user who is root in a user namespace of his own. To be called at the
/// head of main(), while there is but one thread. Returns a sentence on what the machine refuses, empty where
/// it worked.
[[nodiscard]] QString enterOwnMounts();

/// A small file system in memory, mounted on a temporary folder. All members throw where the system refuses.
class SmallDisk {
  public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] QString folder() const { return folder_.path(); }
    [[nodiscard]] qint64 freeBytes() const;

    /// Fills the disk with a file of no use, so that at most so many bytes are left.
    void fillUpTo(qint64 left);
    /// Takes that file away.
    void freeSpace();

    void setReadOnly(bool readOnly);

  private:
    [[nodiscard]] QString ballast() const { return folder_.filePath(QStringLiteral("ballast")); }

    QTemporaryDir folder_;
};

} // namespace pontrel::test
