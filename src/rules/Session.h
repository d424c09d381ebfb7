#pragma once

#include "rules/leave/LeaveValues.h"
#include "store/Database.h"
#include "store/Recordset.h"

#include <QDate>
#include <QString>

#include <memory>

namespace pontrel {

// Values of the one session that the program runs, shared by all windows under names that the system gives.
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
    gPickCnlNo;                  ///< Results of the lookups, kept until the next of their kind.
inline int gQueryKind = 0;       ///< Choice of IFrmQuery, 0 to 4.
inline LeaveValues gLeaveValues; ///< Working values of the leave routines, from lookup to lookup.

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

/// The program's folder of the session, above its database folder.
[[nodiscard]] QString programFolder();

/// The data file in the database folder of the session.
[[nodiscard]] QString storePath();

} // namespace pontrel
