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

#include <QDir>
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
