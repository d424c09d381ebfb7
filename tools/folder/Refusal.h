#pragma once

#include <QString>

namespace pontrel {

/// Why a program folder or its store has not been made. Each program says it in its user's language.
struct Refusal {
    enum class Reason {
        NoFolder,      ///< The folder at that path cannot be made.
        NotWritten,    ///< The file or the folder at that path cannot be written.
        DiskFull,      ///< The same, for want of room.
        NotExecutable, ///< No program may be run where that file lies.
        NoMasterCopy,  ///< What is to be laid out is missing at that path.
        BeingMade,     ///< Another run makes a store in that folder at this moment.
        LeftJournal,   ///< That journal belongs to a store that is no longer there.
        StoreExists,   ///< There is a store at that path.
        NotPlaced,     ///< The store is made and cannot be moved to that path.
        NotTold,       ///< What the user has to know before the store stands could not be told.
    };
    Reason reason;
    QString path;
    QString technical; ///< What the machine says; may be empty.
};

} // namespace pontrel
