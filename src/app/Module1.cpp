#include "app/Module1.h"

#include "app/MDI.h"
#include "app/SystemMenu.h"
#include "app/Toolbar.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "rules/Session.h"

#include <array>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

bool right(int index) {
    const std::array rights = {gF1, gF2, gF3, gF4, gF5, gF6, gF7, gF8};
    return rights.at(static_cast<std::size_t>(index - 1));
}

void showModuleWindow(int index) {
    gMDI->setWindowTitle(gMDI->Tb().caption(index));
    LockToolbar();
    gMDI->Tb().setButtonEnabled(index, true);
    if (hasModuleWindow(index))
        openModuleWindow(index, gMDI->clientArea());
    else
        UnlockToolbar();
}

} // namespace

void OpenToolWindow(const std::int16_t& index) {
    // Deliberate: the rights are not looked at. They gate the buttons alone, and windows lead to each other
    // past them.
    if (index >= 1 && index <= Toolbar::ButtonCount)
        showModuleWindow(index);
    if (gOpenFailed) {
        UnlockToolbar();
        UnloadMainForms();
        gOpenFailed = false;
    }
}

void LockToolbar() {
    Toolbar& Tb = gMDI->Tb();
    for (int number = 1; number <= Toolbar::ButtonCount; ++number)
        Tb.setButtonEnabled(number, false);
    Tb.setEnabled(false);
    if (gSysMenu)
        gSysMenu->remove(SystemMenu::Close);
    RemoveMaxButton(*gMDI);
    gMDI->update();
}

void UnlockToolbar() {
    Toolbar& Tb = gMDI->Tb();
    for (int number = 1; number <= Toolbar::ButtonCount; ++number)
        Tb.setButtonEnabled(number, right(number) && hasModuleWindow(number));
    Tb.setEnabled(true);
    gMDI->setWindowTitle(u"Pontrel V1.1 - Norvale"_s);
    gMDI->showForm0();
    if (gSysMenu)
        gSysMenu->append(SystemMenu::Close, gCloseText);
    RemoveMaxButton(*gMDI);
    gMDI->update();
}

void RemoveMaxButton(QWidget& window) {
    setFrameButton(window, Qt::WindowMaximizeButtonHint, false);
}

void UnloadMainForms() {
    for (const int index : {1, 2, 3, 4}) {
        if (Window* window = moduleWindow(index))
            window->unload();
    }
}

} // namespace pontrel
