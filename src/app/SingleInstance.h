#pragma once

#include <QLocalServer>
#include <QString>

namespace pontrel {

/// Holds the place of the one running program of a user and a program folder, for as long as the object
/// lives. The system gives the place to one process only and takes it back when that process ends, however it
/// ends.
class SingleInstance {
  public:
    explicit SingleInstance(const QString& programFolder);

    /// Whether this object got the place.
    [[nodiscard]] bool isFirst() const { return first_; }

    /// The place's name: the same for every path that leads to the folder.
    [[nodiscard]] static QString nameFor(const QString& programFolder);

  private:
    QLocalServer server_;
    bool first_;
};

} // namespace pontrel
