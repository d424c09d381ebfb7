#pragma once

#include "store/Database.h"
#include "store/Recordset.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

class QWidget;

namespace pontrel {

class MDI;
class SystemMenu;
class Window;

// Values shared by all windows.
inline QString gDbPath;                     ///< Database folder, ends in a separator.
inline std::unique_ptr<Database> gDatabase; ///< The shared connection; null while gDbOpen is false.
inline Recordset gRecordset;                ///< Scratch result set, overwritten by the next use.
inline Recordset gRecordset2;
inline bool gDbOpen = false;
inline bool gOpenFailed = false; ///< A window failed to open its data.
inline QString gAccount;         ///< User of the login.
inline bool gF1 = false, gF2 = false, gF3 = false, gF4 = false, gF5 = false, gF6 = false, gF7 = false,
            gF8 = false;
inline QDate gDate1, gDate2; ///< Results of the date dialogs.
inline QString gHandPath;    ///< Folder of the punch files.
inline QString gPickEmpNo, gPickUnitNo, gPickTitleNo, gPickClsNo, gPickWorkNo, gPickSuitNo, gPickTimeNo,
    gPickHoliNo,
    gPickCnlNo;                        ///< Results of the lookups, kept until the next of their kind.
inline int gQueryKind = 0;             ///< Choice of IFrmQuery, 0 to 4.
inline SystemMenu* gSysMenu = nullptr; ///< The main window's system menu; null before Main fetches it.
inline QString gCloseText;             ///< The system's own words for Close.
inline MDI* gMDI = nullptr;            ///< The main window while it exists.

/// The entry point behind the program's entry: from the check for a second instance to the end of the event
/// loop. Returns the exit status.
int Main();

/// Gives the main window its size and its place on the screen, and makes it gMDI. It stays invisible.
void placeMainWindow(MDI& window);
/// Fetches the main window's system menu, keeps its words for Close and takes Maximise from menu and frame.
void trimSystemMenu();

/// Opens the shared connection where it is not open. Throws RunTimeError.
void OpenDB();
/// Closes the shared connection where it is open, for all windows.
void CloseDB();

/// The shared connection, which another window's end may have closed. Throws RunTimeError where it is not
/// open.
[[nodiscard]] Database& sharedDatabase();

/// The database folder that belongs to a program folder: "DB" below it, with one separator between and one at
/// the end.
[[nodiscard]] QString databaseFolder(const QString& programFolder);

/// A click on toolbar button 1 to 8 from code; other indexes open nothing.
void OpenToolWindow(const std::int16_t& index);
void LockToolbar();
void UnlockToolbar();
void RemoveMaxButton(QWidget& window);
/// Unloads Form1 to Form4, and only those.
void UnloadMainForms();

/// Tells OpenToolWindow how to make the module window 1 to 8. A module without a registered window keeps its
/// button disabled, and opening it ends idle.
void registerModuleWindow(int index, std::function<Window*(QWidget* parent)> create);
[[nodiscard]] bool hasModuleWindow(int index);

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
