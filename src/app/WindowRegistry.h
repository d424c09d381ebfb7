#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace pontrel {

class Window;

/// Tells the registry how to make the module window 1 to 8. A module without a registered window keeps its
/// button disabled, and opening it ends idle.
void registerModuleWindow(int index, std::function<Window*(QWidget* parent)> create);
[[nodiscard]] bool hasModuleWindow(int index);

/// Shows the module window, making and loading it below the parent where it is not loaded. Does nothing for
/// one that is not registered.
void openModuleWindow(int index, QWidget* parent);
/// The loaded module window of that index; null where it is not loaded.
[[nodiscard]] Window* moduleWindow(int index);

/// Tells openChildWindow how to make the child window of that name, such as "FrmPsw".
void registerChildWindow(const QString& name, std::function<Window*(QWidget* parent)> create);
[[nodiscard]] bool hasChildWindow(const QString& name);

/// Shows the child window over the module window, loading it where it is not loaded. Does nothing for a name
/// that is not registered.
void openChildWindow(const QString& name);
/// The loaded child window of that name; null where it is not loaded.
[[nodiscard]] Window* childWindow(const QString& name);

} // namespace pontrel
