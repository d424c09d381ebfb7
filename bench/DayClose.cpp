#include "DayClose.h"

#include "Measure.h"

#include "store/Format.h"
#include "store/RunTimeError.h"
#include "store/StorePath.h"

#include <QDir>
#include <QElapsedTimer>

namespace pontrel::bench {

namespace {

const QString ImportPrefix = QStringLiteral("import=");
const QString RecalcPrefix = QStringLiteral("recalc=");
const QString Reopen = QStringLiteral("reopen");
const QString ReplacePrefix = QStringLiteral(",replace=");

QDate dateOf(const QString& action) {
    const auto parsed = parseDateTime(action.mid(RecalcPrefix.size()));
    return parsed && !parsed->time.isValid() ? parsed->date : QDate();
}

/// An import's file and whether the day is to be replaced, which it is where nothing is said.
std::pair<QString, bool> fileOf(const QString& action) {
    QString file = action.mid(ImportPrefix.size());
    for (const bool replace : {true, false}) {
        const QString suffix = ReplacePrefix + (replace ? QStringLiteral("yes") : QStringLiteral("no"));
        if (file.endsWith(suffix)) {
            file.chop(suffix.size());
            return {file, replace};
        }
    }
    return {file, true};
}

} // namespace

// The window's part
// ---------------------------------------------------------------------------------------------------

DayCloseHost::DayCloseHost(const QString& store) {
    for (DataSource* source : {&punches_, &exceptions_})
        source->setDatabaseName(store);
    punches_.setRecordSource(QStringLiteral("Atte01"));
    exceptions_.setRecordSource(QStringLiteral("Atte03"));
    punches_.Refresh();
    exceptions_.Refresh();
}

void DayCloseHost::setAnswers(const QString& file, bool replace) {
    file_ = file;
    replace_ = replace;
}

std::optional<QString> DayCloseHost::choosePunchFile(const QString& folder) {
    return QDir::isAbsolutePath(file_) || QFile::exists(file_) ? file_ : QDir(folder).filePath(file_);
}

bool DayCloseHost::confirm(const QString& /*question*/, const QString& /*title*/) {
    return replace_;
}

void DayCloseHost::showPunches(const QString& statement) {
    punches_.refreshUnseen();
    punches_.setRecordSource(statement);
    punches_.Refresh();
}

void DayCloseHost::refreshExceptions() {
    exceptions_.refreshUnseen();
}

void DayCloseHost::showExceptions(const QString& statement) {
    exceptions_.setRecordSource(statement);
    exceptions_.Refresh();
}

// The actions
// ---------------------------------------------------------------------------------------------------------

DayClose::DayClose(const QString& programFolder) : path_(storePathIn(programFolder)) {
    open();
}

void DayClose::open() {
    calculation_.reset();
    host_.reset();
    database_.reset();
    database_ = std::make_unique<Database>(path_);
    host_ = std::make_unique<DayCloseHost>(path_);
    calculation_ = std::make_unique<DailyCalculation>(*database_, *host_);
}

bool DayClose::isAction(const QString& action) {
    if (action.startsWith(ImportPrefix))
        return !fileOf(action).first.isEmpty();
    return action == Reopen || (action.startsWith(RecalcPrefix) && dateOf(action).isValid());
}

QJsonObject DayClose::run(const QString& action) {
    if (!isAction(action))
        return {{QStringLiteral("action"), action},
                {QStringLiteral("finished"), false},
                {QStringLiteral("why"), QStringLiteral("not an action")}};
    QElapsedTimer timer;
    timer.start();
    const double cpuBefore = processorSeconds();
    if (action == Reopen) {
        open();
        QJsonObject result = answer(action, static_cast<double>(timer.nsecsElapsed()) / 1e9, 0);
        result[QStringLiteral("finished")] = true;
        return result;
    }
    const std::int64_t before = database_->statementCount();
    if (action.startsWith(RecalcPrefix)) {
        calculation_->Recalculate(dateOf(action));
    } else {
        const auto [file, replace] = fileOf(action);
        host_->setAnswers(file, replace);
        calculation_->ReadPunchFile();
    }
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    cpu_ = processorSeconds() - cpuBefore;
    QJsonObject result = answer(action, seconds, database_->statementCount() - before);
    result[QStringLiteral("finished")] = calculation_->finished();
    if (const auto& failure = calculation_->lastError()) {
        result[QStringLiteral("why")] = QString::fromUtf8(failure->what());
        result[QStringLiteral("error")] = failure->number();
    }
    return result;
}

QJsonObject DayClose::answer(const QString& action, double seconds, std::int64_t statements) {
    QJsonObject rows;
    for (const char16_t* table :
         {u"AtteTemp", u"Atte01", u"AtteTemp1", u"Atte02", u"Atte03", u"View02", u"Over01"}) {
        const QString name = QString::fromUtf16(table);
        const Rows count = database_->select(QStringLiteral("select count(*) as cnt from ") + name);
        rows[name] = static_cast<qint64>(count.at(0, u"cnt").toInteger());
    }
    return {{QStringLiteral("action"), action},
            {QStringLiteral("seconds"), seconds},
            {QStringLiteral("statements"), static_cast<qint64>(statements)},
            {QStringLiteral("rows"), rows}};
}

} // namespace pontrel::bench
