#pragma once

#include "app/Window.h"

namespace pontrel {

class StatusBar;
class TabPages;

/// A module window of several pages: the tabs SSTab1 above the status bar StbTool, in the place and size of
/// all module windows.
class TabbedWindow : public Window {
    Q_OBJECT
  protected:
    TabbedWindow(QWidget* parent, const QString& name, const QString& caption);

    /// To be called when all pages are there: the status bar follows them, in the tab order too.
    void addStatusBar();

    TabPages* SSTab1;
    StatusBar* StbTool = nullptr;
};

} // namespace pontrel
