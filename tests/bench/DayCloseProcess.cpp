#include "bench/DayCloseProcess.h"

#include <QElapsedTimer>
#include <QJsonDocument>

#include <stdexcept>

namespace pontrel::test {

namespace {

constexpr int LongestSilence = 60'000;

QJsonObject parsed(QByteArray line) {
    const bool whole = line.endsWith('\n');
    line.chop(whole ? 1 : 0);
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!whole || !document.isObject())
        throw std::runtime_error("day_close answered no line of JSON: " + line.toStdString());
    return document.object();
}

} // namespace

DayCloseProcess::DayCloseProcess(const QString& programFolder, const QStringList& actions) {
    process_.start(QStringLiteral(PONTREL_DAY_CLOSE), QStringList{programFolder} + actions);
    if (!process_.waitForStarted(LongestSilence))
        throw std::runtime_error("day_close does not start: " + process_.errorString().toStdString());
}

DayCloseProcess::~DayCloseProcess() {
    if (process_.state() != QProcess::NotRunning)
        kill();
}

void DayCloseProcess::send(const QString& line) {
    process_.write(line.toUtf8() + '\n');
    if (process_.bytesToWrite() > 0 && !process_.waitForBytesWritten(LongestSilence))
        throw std::runtime_error("day_close does not read its input");
}

std::optional<QJsonObject> DayCloseProcess::answerWithin(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!process_.canReadLine()) {
        const qint64 left = milliseconds - timer.elapsed();
        if (left <= 0 || !process_.waitForReadyRead(static_cast<int>(left)))
            break;
    }
    return process_.canReadLine() ? std::optional(parsed(process_.readLine())) : std::nullopt;
}

QJsonObject DayCloseProcess::answer() {
    const auto given = answerWithin(LongestSilence);
    if (!given)
        throw std::runtime_error("day_close gives no answer; its errors: " +
                                 process_.readAllStandardError().toStdString());
    return *given;
}

QJsonObject DayCloseProcess::ask(const QString& action) {
    send(action);
    return answer();
}

void DayCloseProcess::kill() {
    process_.kill();
    process_.waitForFinished(LongestSilence);
}

DayCloseEnd DayCloseProcess::end() {
    process_.closeWriteChannel();
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(LongestSilence))
        throw std::runtime_error("day_close does not end");
    DayCloseEnd end;
    end.crashed = process_.exitStatus() == QProcess::CrashExit;
    end.status = end.crashed ? -1 : process_.exitCode();
    while (!process_.atEnd())
        end.answers += parsed(process_.readLine());
    end.errors = QString::fromUtf8(process_.readAllStandardError());
    return end;
}

DayCloseEnd runDayClose(const QString& programFolder, const QStringList& actions) {
    return DayCloseProcess(programFolder, actions).end();
}

QJsonObject withoutSeconds(QJsonObject answer) {
    const QJsonValue seconds = answer.take(QStringLiteral("seconds"));
    if (!seconds.isDouble() || seconds.toDouble() < 0 || seconds.toDouble() > LongestSilence / 1000.0)
        throw std::runtime_error("no seconds in " + shown(answer).toStdString());
    return answer;
}

QString shown(const QJsonObject& object) {
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace pontrel::test
