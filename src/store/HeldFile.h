#pragma once

#include <QString>

namespace pontrel {

/// A file that this process alone works on while the object lives: the system frees it when the process ends,
/// however it ends. On a disk that knows no such holding, everybody holds it.
class HeldFile {
  public:
    enum class Open {
        New,     ///< Made, open to its owner alone; one that is there already is not held.
        Existing ///< Links are not followed.
    };

    HeldFile(const QString& path, Open open);
    ~HeldFile();
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    [[nodiscard]] bool held() const { return held_; }
    /// Whether all that was written is on the disk.
    [[nodiscard]] bool sync() const;

  private:
    int descriptor_;
    bool held_ = false;
};

} // namespace pontrel
