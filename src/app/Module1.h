#pragma once

#include <QString>

#include <cstdint>

class QWidget;

namespace pontrel {

class MDI;
class SystemMenu;

// The main window and its toolbar, as all windows reach them.
inline SystemMenu* gSysMenu = nullptr; ///< The main window's system menu; null before Main fetches it.
inline QString gCloseText;             ///< The system's own words for Close.
inline MDI* gMDI = nullptr;            ///< The main window while it exists.

/// A click on toolbar button 1 to 8 from code; other indexes open nothing.
void OpenToolWindow(const std::int16_t& index);
void LockToolbar();
void UnlockToolbar();
void RemoveMaxButton(QWidget& window);
/// Unloads Form1 to Form4, and only those.
void UnloadMainForms();

} // namespace pontrel
