#pragma once

#include "app/Window.h"

#include <QPointer>

#include <functional>

namespace pontrel {

/// A window of the program that is created on first use: how to make it, and the one that is loaded.
class WindowPlace {
  public:
    void setCreate(std::function<Window*(QWidget* parent)> create) { create_ = std::move(create); }
    [[nodiscard]] bool isRegistered() const { return static_cast<bool>(create_); }

    /// The loaded window; null where it is not loaded.
    [[nodiscard]] Window* window() const {
        return window_ && !window_->isUnloaded() ? window_.data() : nullptr;
    }

    /// Shows the window, making and loading it below the parent where it is not loaded.
    void open(QWidget* parent) {
        if (!window())
            window_ = create_(parent);
        window_->open();
    }

  private:
    std::function<Window*(QWidget* parent)> create_;
    QPointer<Window> window_;
};

} // namespace pontrel
