#include "faults/Workload.h"

#include "bench/DayCloseProcess.h"
#include "bench/Organisation.h"
#include "rules/attendance/DailyCalculation.h"
#include "store/Format.h"
#include "store/NewStore.h"
#include "store/StorePath.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/FakeHost.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRandomGenerator>

#include <algorithm>
#include <stdexcept>

namespace pontrel::test {

namespace {

const QString Sentinel = QStringLiteral("2038-01-01");
const QStringList Slots{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"),
                        QStringLiteral("5")};

void copyFile(const QString& from, const QString& to) {
    if (QFile::exists(to) && !QFile::remove(to))
        throw std::runtime_error("cannot remove " + to.toStdString());
    if (!QFile::copy(from, to))
        throw std::runtime_error("cannot copy to " + to.toStdString());
}

void addOvertimeSwipes(const QString& path, int employees, QDate day) {
    QFile file(path);
    if (!file.open(QIODevice::Append))
        throw std::runtime_error("cannot write " + path.toStdString());
    for (int number = 10; number <= employees; number += 10)
        for (const QTime time : {QTime(21, 0), QTime(23, number % 60)})
            file.write(punchLine(QByteArray::number(number), day, time, "081"));
}

/// A column of a row, counted from 0.
QString fieldOf(const QString& row, int column) {
    return row.section(QStringLiteral(": "), 1).section(u'|', column, column);
}

bool isOf(const QString& row, std::initializer_list<const char16_t*> tables) {
    return std::any_of(tables.begin(), tables.end(), [&row](const char16_t* table) {
        return row.startsWith(QString::fromUtf16(table) + u':');
    });
}

Border border(const QString& name, QStringList rows) {
    rows.sort();
    return {name, rows};
}

void verifyDifferent(const QList<Border>& borders) {
    for (qsizetype place = 0; place < borders.size(); ++place)
        if (placeAmong(borders, borders[place].rows) != place)
            throw std::runtime_error("two stages leave the same rows");
}

} // namespace

QString storePath(const QString& programFolder) {
    return storePathIn(programFolder);
}

quint32 changesOf(const QString& programFolder) {
    QFile file(storePath(programFolder));
    if (!file.open(QIODevice::ReadOnly) || !file.seek(24))
        return 0;
    quint32 changes = 0;
    for (const char byte : file.read(4))
        changes = changes << 8 | static_cast<unsigned char>(byte);
    return changes;
}

QList<double> momentsOf(int pieces, quint32 seed) {
    QRandomGenerator random(seed);
    QList<double> moments;
    for (int piece = 0; piece < pieces; ++piece)
        moments += (piece + random.generateDouble()) / pieces;
    return moments;
}

QStringList storeRows(const QString& programFolder) {
    Database database(storePath(programFolder));
    return dumpDailyTables(database);
}

QString integrityOf(const QString& programFolder) {
    SQLite::Database engine(storePath(programFolder).toStdString(), SQLite::OPEN_READWRITE);
    return QString::fromStdString(engine.execAndGet("PRAGMA integrity_check").getString());
}

bool hasJournal(const QString& programFolder) {
    // Until the stage's end has begun, zeros stand where the mark of a valid journal will.
    QFile journal(storePath(programFolder) + QStringLiteral("-journal"));
    return journal.open(QIODevice::ReadOnly) && journal.read(1) == "\xd9";
}

qsizetype placeAmong(const QList<Border>& borders, QStringList rows) {
    rows.sort();
    for (qsizetype place = 0; place < borders.size(); ++place)
        if (borders[place].rows == rows)
            return place;
    return -1;
}

Workload::Workload(int employees) {
    if (!folder_.isValid())
        throw std::runtime_error("no temporary folder");
    const QString fresh = folder_.filePath(QStringLiteral("fresh"));
    const QString imported = folder_.filePath(QStringLiteral("imported"));
    const bench::Organisation organisation{employees, day_, 1};
    createStore(storePath(fresh), {folder_.path(), QStringLiteral("tester"), QStringLiteral("secret")});
    {
        Database database(storePath(fresh));
        organisation.create(database);
    }
    punchFile_ = organisation.writePunchFile(folder_.path(), day_);
    addOvertimeSwipes(punchFile_, employees, day_);
    layOut(imported);
    const DayCloseEnd end = runDayClose(imported, {action()});
    if (end.status != 0 || end.answers.size() != 1 ||
        !end.answers[0].value(QStringLiteral("finished")).toBool())
        throw std::runtime_error("the undisturbed import does not finish: " + end.errors.toStdString());
    importedRows_ = storeRows(imported);
    findImportBorders(storeRows(fresh));
}

QString Workload::action() const {
    return QStringLiteral("import=") + punchFile_;
}

void Workload::layOut(const QString& programFolder) const {
    QDir().mkpath(programFolder + QStringLiteral("/DB"));
    QFile::remove(storePath(programFolder) + QStringLiteral("-journal"));
    copyFile(storePath(folder_.filePath(QStringLiteral("fresh"))), storePath(programFolder));
}

void Workload::layOutImported(const QString& programFolder) const {
    layOut(programFolder);
    copyFile(storePath(folder_.filePath(QStringLiteral("imported"))), storePath(programFolder));
}

void Workload::excuse(const QString& programFolder) {
    Database database(storePath(programFolder));
    Stage stage(database);
    const Rows exceptions = database.select(QStringLiteral("Select EmpNo,UseDate from Atte03"));
    for (std::size_t row = 0; row < exceptions.count(); row += 2) {
        const QString EmpNo = exceptions.at(row, u"EmpNo").toText();
        const QDate day = exceptions.at(row, u"UseDate").toDate();
        database.execute(QStringLiteral("delete * from Canc02 where EmpNo='%1' and CnlDate=#%2#")
                             .arg(EmpNo, shortDate(day)));
        const QString code = QStringLiteral("01");
        addWriteOff(database, EmpNo, day, code, code, code, code);
    }
    stage.finish();
}

/// Each employee has one slot, so that the rows of a slot are those of its employees, and no slot changes
/// what another one has made.
void Workload::findImportBorders(const QStringList& before) {
    QHash<QString, QString> slotOf;
    for (const QString& row : importedRows_)
        if (isOf(row, {u"AtteTemp1"}))
            slotOf[fieldOf(row, 0)] = fieldOf(row, 2);
    const auto upTo = [&](bool file, bool overtime, const QString& lastSlot) {
        QStringList rows;
        for (const QString& row : importedRows_) {
            const QString employee = fieldOf(row, 0);
            if ((isOf(row, {u"AtteTemp", u"Atte01"}) && file) || (isOf(row, {u"Over01"}) && overtime) ||
                (isOf(row, {u"AtteTemp1", u"View02", u"Atte02", u"Atte03"}) && slotOf[employee] <= lastSlot))
                rows += row;
            else if (isOf(row, {u"Base06"}))
                rows += QStringLiteral("Base06: ") + employee + u'|' + Sentinel;
        }
        return rows;
    };
    importBorders_ = {border(QStringLiteral("nothing"), before),
                      border(QStringLiteral("sentinel"), upTo(false, false, {})),
                      border(QStringLiteral("file"), upTo(true, false, {})),
                      border(QStringLiteral("overtime"), upTo(true, true, {}))};
    for (const QString& slot : Slots)
        importBorders_ += border(QStringLiteral("slot ") + slot, upTo(true, true, slot));
    importBorders_ += border(QStringLiteral("end"), importedRows_);
    verifyDifferent(importBorders_);
}

QList<Border> Workload::recalculationBorders(const QString& programFolder) const {
    const QStringList before = storeRows(programFolder);
    QStringList reset;
    Database database(storePath(programFolder));
    FakeHost host(&database);
    host.onCall = [&](const QString& call) {
        // The hourglass comes between the first stage and the slots.
        if (call == QStringLiteral("hourglass"))
            reset = storeRows(programFolder);
    };
    DailyCalculation calculation(database, host);
    calculation.Recalculate(day_);
    if (!calculation.finished())
        throw std::runtime_error("the undisturbed recalculation does not finish");
    const QStringList after = storeRows(programFolder);
    QList<Border> borders{border(QStringLiteral("nothing"), before), border(QStringLiteral("reset"), reset)};
    for (const QString& slot : Slots) {
        const auto isWorkedOut = [&slot](const QString& row) {
            return isOf(row, {u"AtteTemp1", u"Atte02", u"Atte03"}) && fieldOf(row, 2) <= slot;
        };
        QStringList rows;
        std::copy_if(after.begin(), after.end(), std::back_inserter(rows), isWorkedOut);
        std::remove_copy_if(reset.begin(), reset.end(), std::back_inserter(rows), isWorkedOut);
        borders += border(QStringLiteral("slot ") + slot, rows);
    }
    if (placeAmong(borders, after) != borders.size() - 1)
        throw std::runtime_error("the last slot is not the end of the recalculation");
    verifyDifferent(borders);
    return borders;
}

} // namespace pontrel::test
