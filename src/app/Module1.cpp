#include "app/Module1.h"

#include "app/Application.h"
#include "app/DailyCheck.h"
#include "app/Events.h"
#include "app/MDI.h"
#include "app/Prompts.h"
#include "app/SingleInstance.h"
#include "app/SystemMenu.h"
#include "app/Toolbar.h"
#include "app/Window.h"
#include "app/WindowPlace.h"
#include "app/frmLogin.h"

#include <QDir>
#include <QScreen>

#include <array>
#include <map>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int RaisedBy = 14; ///< Pixels that the main window stands above the middle of the screen.

bool isModule(int index) {
    return index >= 1 && index <= Toolbar::ButtonCount;
}

WindowPlace& modulePlace(int index) {
    static std::array<WindowPlace, Toolbar::ButtonCount> places;
    return places.at(static_cast<std::size_t>(index - 1));
}

std::map<QString, WindowPlace>& childPlaces() {
    static std::map<QString, WindowPlace> places;
    return places;
}

bool right(int index) {
    const std::array rights = {gF1, gF2, gF3, gF4, gF5, gF6, gF7, gF8};
    return rights.at(static_cast<std::size_t>(index - 1));
}

void showModuleWindow(int index) {
    gMDI->setWindowTitle(gMDI->Tb().caption(index));
    LockToolbar();
    gMDI->Tb().setButtonEnabled(index, true);
    if (hasModuleWindow(index))
        modulePlace(index).open(gMDI->clientArea());
    else
        UnlockToolbar();
}

void closeMainWindow() {
    gRecordset.Close();
    gRecordset2.Close();
    CloseDB();
    gSysMenu = nullptr;
    gMDI = nullptr;
}

int start() {
    const QString programFolder = QCoreApplication::applicationDirPath();
    const SingleInstance instance(programFolder);
    if (!instance.isFirst()) {
        MsgBox(u"本程式執行中！"_s, ProgramTitle, MsgIcon::Information);
        return 0;
    }
    gDbPath = databaseFolder(programFolder);
    gDbOpen = false;
    gOpenFailed = false;
    MDI mainWindow;
    placeMainWindow(mainWindow);
    frmLogin().showModal();
    trimSystemMenu();
    DailyCheck check(gDbPath + u"Pontrel.mdb"_s);
    check.start();
    QObject::connect(&mainWindow, &MDI::closed, qApp, &QCoreApplication::quit);
    const int status = QCoreApplication::exec();
    closeMainWindow();
    return status;
}

} // namespace

int Main() {
    int status = 0;
    guarded([&status] { status = start(); });
    return status;
}

void placeMainWindow(MDI& window) {
    gMDI = &window;
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    window.resize(MainWindowSize);
    window.move(screen.left() + (screen.width() - MainWindowSize.width()) / 2,
                screen.top() + (screen.height() - MainWindowSize.height()) / 2 - RaisedBy);
}

void trimSystemMenu() {
    gSysMenu = &gMDI->systemMenu();
    gCloseText = gSysMenu->text(SystemMenu::Close);
    gSysMenu->remove(SystemMenu::Maximize);
    RemoveMaxButton(*gMDI);
}

QString databaseFolder(const QString& programFolder) {
    const QLatin1Char separator('/');
    return (programFolder.endsWith(separator) ? programFolder : programFolder + separator) + u"DB/"_s;
}

void OpenDB() {
    if (gDbOpen)
        return;
    gDatabase = std::make_unique<Database>(gDbPath + u"Pontrel.mdb"_s);
    gDbOpen = true;
}

void CloseDB() {
    if (!gDbOpen)
        return;
    gRecordset.Close();
    gRecordset2.Close();
    gDatabase.reset();
    gDbOpen = false;
}

Database& sharedDatabase() {
    if (!gDatabase)
        throw runTimeError(error::ObjectNotSet);
    return *gDatabase;
}

void OpenToolWindow(const std::int16_t& index) {
    // The rights are not looked at: they gate the buttons alone, and windows lead to each other past them.
    // Meant so.
    if (isModule(index))
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

void registerModuleWindow(int index, std::function<Window*(QWidget* parent)> create) {
    modulePlace(index).setCreate(std::move(create));
}

bool hasModuleWindow(int index) {
    return isModule(index) && modulePlace(index).isRegistered();
}

Window* moduleWindow(int index) {
    return isModule(index) ? modulePlace(index).window() : nullptr;
}

void registerChildWindow(const QString& name, std::function<Window*(QWidget* parent)> create) {
    childPlaces()[name].setCreate(std::move(create));
}

bool hasChildWindow(const QString& name) {
    const auto place = childPlaces().find(name);
    return place != childPlaces().end() && place->second.isRegistered();
}

void openChildWindow(const QString& name) {
    if (hasChildWindow(name))
        childPlaces()[name].open(gMDI->clientArea());
}

Window* childWindow(const QString& name) {
    const auto place = childPlaces().find(name);
    return place == childPlaces().end() ? nullptr : place->second.window();
}

} // namespace pontrel
