#pragma once

#include <QString>

namespace pontrel {

/// The pointer over the program's windows.
enum class Pointer { Normal, Hourglass };

/// What every long action of the logic asks of whoever runs it: a window, or a program without one. None of
/// it is called inside a stage.
class ActionHost {
  public:
    virtual ~ActionHost() = default;

    /// A message with an OK button under the title "警告訊息".
    virtual void tell(const QString& message) = 0;
    virtual void setPointer(Pointer pointer) = 0;
};

} // namespace pontrel
