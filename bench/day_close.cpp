// day_close DIR ACTION...: what the attendance window's read button and recalculation run, without the
// window. DIR is a program folder. With "-" in place of the actions they are read from standard input, one a
// line, and each is answered before the next is read. Each answer is one line of JSON.

#include "DayClose.h"

#include "store/RunTimeError.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <cstdio>
#include <iostream>
#include <string>

namespace {

using pontrel::bench::DayClose;

void answer(DayClose& day, const QString& action) {
    const QByteArray line = QJsonDocument(day.run(action)).toJson(QJsonDocument::Compact);
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

int fail(const QString& message) {
    std::fprintf(stderr, "day_close: %s\n", qUtf8Printable(message));
    return 2;
}

int run(const QStringList& arguments) {
    if (arguments.size() < 3)
        return fail(QStringLiteral(
            "DIR and at least one action, or -, are needed: import=FILE, import=FILE,replace=no, "
            "recalc=DATE, reopen"));
    const QStringList actions = arguments.mid(2);
    const bool fromInput = actions == QStringList{QStringLiteral("-")};
    if (!fromInput)
        for (const QString& action : actions)
            if (!DayClose::isAction(action))
                return fail(QStringLiteral("not an action: ") + action);
    DayClose day(arguments[1]);
    if (!fromInput) {
        for (const QString& action : actions)
            answer(day, action);
        return 0;
    }
    for (std::string line; std::getline(std::cin, line);)
        if (const QString action = QString::fromStdString(line).trimmed(); !action.isEmpty())
            answer(day, action);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        return run(QCoreApplication::arguments());
    } catch (const pontrel::RunTimeError& failure) {
        return fail(QString::fromUtf8(failure.what()));
    }
}
