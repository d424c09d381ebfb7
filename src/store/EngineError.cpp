#include "store/EngineError.h"

#include "store/SqlFunctions.h"

#include <sqlite3.h>

#include <QRegularExpression>

namespace pontrel {

namespace {

/// The columns that the engine names in its reason for a refusal: "... Rule03.YMD, Rule03.EmpNo".
QStringList columnsIn(const QString& reason) {
    static const QRegularExpression qualified(QStringLiteral(R"(\b\w+\.(\w+))"));
    QStringList columns;
    for (auto each = qualified.globalMatch(reason); each.hasNext();)
        columns += each.next().captured(1);
    return columns;
}

} // namespace

RunTimeError stageLost(const QString& technical) {
    return {error::DiskOrStore, QStringLiteral("磁碟已滿,進行中的資料沒有存入"), technical};
}

RunTimeError engineError(const SQLite::Exception& failure, const QString& statement) {
    const QString reason = QString::fromUtf8(failure.what());
    const auto as = [&](int number) { return runTimeError(number, reason, statement); };
    const auto refusing = [&](int number) { return as(number).withRefused(columnsIn(reason)); };
    switch (failure.getExtendedErrorCode()) {
    case SQLITE_CONSTRAINT_TRIGGER:
        return as(error::DeleteRefused);
    case SQLITE_CONSTRAINT_NOTNULL:
        return refusing(error::RequiredColumn);
    case SQLITE_CONSTRAINT_CHECK:
    case SQLITE_CONSTRAINT_DATATYPE:
        return refusing(error::DataConversion);
    case SQLITE_IOERR_SHORT_READ: // the file is shorter than it says
        return as(error::DiskOrStore);
    default:
        break;
    }
    switch (failure.getErrorCode()) {
    case SQLITE_FULL:
        return {error::DiskOrStore, stageLost(reason).text(), reason, statement};
    case SQLITE_CONSTRAINT:
        return refusing(error::DuplicateKey);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return as(error::StoreLocked);
    case SQLITE_READONLY:
        return as(error::CannotWrite);
    case SQLITE_NOTADB:
        return as(error::UnrecognizedStore);
    case SQLITE_CORRUPT:
        return as(error::DiskOrStore);
    case SQLITE_ERROR:
        if (reason.startsWith(QLatin1String(SqlErrorPrefix)))
            return as(reason.mid(static_cast<qsizetype>(qstrlen(SqlErrorPrefix))).toInt());
        if (reason == QLatin1String("integer overflow"))
            return as(error::Overflow);
        return as(reason.startsWith(QLatin1String("no such table")) ? error::UnknownTable : error::Syntax);
    default:
        return as(error::StoreUnreadable);
    }
}

} // namespace pontrel
