#pragma once

#include <QString>

namespace pontrel {

/// Holds the place of the one running program of a user and a program folder, for as long as the object
/// lives. The place is a lock on a file of the user's own in the folder DB, which no other user can open: the
/// system gives it to one process only and takes it back when that process ends, however it ends. The empty
/// file stays. Where it cannot be made, as on a disk that is read-only, nothing is locked.
class SingleInstance {
  public:
    explicit SingleInstance(const QString& programFolder);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether no other program holds the place.
    [[nodiscard]] bool isFirst() const { return first_; }

    /// Asks the program that holds the place to come to the front: the time of its file becomes the present.
    /// Does nothing where there is no file.
    void callFirst() const;

    [[nodiscard]] static QString lockFile(const QString& programFolder);

  private:
    int descriptor_;
    bool first_;
};

} // namespace pontrel
