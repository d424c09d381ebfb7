#include "app/Start.h"

#include "app/Application.h"
#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/SafetyCopies.h"
#include "app/SingleInstance.h"
#include "app/SystemMenu.h"
#include "app/frmLogin.h"
#include "rules/Session.h"

#include <QApplication>
#include <QDir>
#include <QFileSystemWatcher>
#include <QScreen>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int RaisedBy = 14; ///< Pixels that the main window stands above the middle of the screen.

void closeMainWindow() {
    gRecordset.Close();
    gRecordset2.Close();
    CloseDB();
    gSysMenu = nullptr;
    gMDI = nullptr;
}

/// Brings all that the program shows to the front, and the keyboard to what waits for the user.
void comeToTheFront() {
    const auto bring = [](QWidget& window) {
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.raise();
        window.activateWindow();
    };
    if (gMDI && gMDI->isVisible())
        bring(*gMDI);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* each : windows) {
        if (each != gMDI && each->isVisible() && each->windowType() == Qt::Window)
            bring(*each); // a preview lies over the main window
    }
    if (QWidget* dialog = QApplication::activeModalWidget())
        bring(*dialog);
}

int start() {
    const QString programFolder = QCoreApplication::applicationDirPath();
    const SingleInstance instance(programFolder);
    if (!instance.isFirst()) {
        MsgBox(u"本程式執行中！"_s, ProgramTitle, MsgIcon::Information);
        instance.callFirst();
        return 0;
    }
    const QFileSystemWatcher calls({SingleInstance::lockFile(programFolder)});
    onEvent(&calls, &QFileSystemWatcher::fileChanged, qApp, comeToTheFront);
    gDbPath = databaseFolder(programFolder);
    gDbOpen = false;
    gOpenFailed = false;
    gLeaveValues = {};
    MDI mainWindow;
    placeMainWindow(mainWindow);
    frmLogin().showModal();
    trimSystemMenu();
    SafetyCopies copies(storePath());
    copies.start();
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

} // namespace pontrel
