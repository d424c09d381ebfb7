#pragma once

#include "app/Prompts.h"
#include "rules/ActionHost.h"

namespace pontrel {

/// A host that is a window: messages and questions are message boxes, the pointer is the program's. It has no
/// progress bar of its own.
template<typename Host = ActionHost>
class WindowHost : public Host {
  public:
    void tell(const QString& message, const QString& title) override { MsgBox(message, title); }
    [[nodiscard]] bool confirm(const QString& question, const QString& title) override {
        return MsgBox(question, title, MsgIcon::None, MsgButtons::YesNo) == MsgAnswer::Yes;
    }
    void setPointer(Pointer pointer) override { setHourglass(pointer == Pointer::Hourglass); }

    void setProgressShown(bool /*shown*/) override {}
    [[nodiscard]] int progress() const override { return 0; }
    void setProgress(int /*value*/) override {}
};

} // namespace pontrel
