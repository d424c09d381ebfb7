// pontrel-setup: what the icon of the desktop starts. It sets up a program folder where there is none yet,
// brings it up to date and starts the program there.

#include "CommandLine.h"
#include "app/Application.h"
#include "app/DesktopColors.h"
#include "app/Habits.h"
#include "app/Prompts.h"
#include "app/Zoom.h"
#include "folder/LayOut.h"
#include "folder/Refusal.h"
#include "setup/FirstStart.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <optional>
#include <unistd.h>

namespace {

using namespace pontrel;
using namespace Qt::StringLiterals;
using tools::print;

/// Lays a folder out without asking or starting anything, for scripts.
int layOutOnly(const MasterCopy& from, const QString& folder) {
    try {
        const LaidOut done = layOut(from, folder);
        for (const QString& name : done.kept)
            print(stdout, u"%1 has been edited and stays; the newer one lies beside it, as %1.new."_s.arg(
                              QDir(folder).filePath(name)));
        return 0;
    } catch (const Refusal& refusal) {
        print(stderr, u"The program folder cannot be laid out: %1 %2"_s.arg(refusal.path, refusal.technical));
        return 1;
    }
}

/// Becomes the program of the folder. Returns where the machine refuses.
void become(const QString& folder) {
    QByteArray program = QFile::encodeName(folder + u"/pontrel"_s);
    char* arguments[] = {program.data(), nullptr};
    ::execv(program.constData(), arguments);
}

int setUpAndStart(char** arguments, const MasterCopy& from) {
    // Where both are offered: only under X11 may a window choose its own place.
    if (qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
    std::optional<QString> folder;
    {
        Habits::ofUser().keepIn(Habits::userFile());
        const auto application = zoom::startApplication(arguments);
        DesktopColors::follow(*application);
        folder = folderToStart(from);
    }
    if (!folder)
        return 0;
    become(*folder);
    const QString reason = qt_error_string(errno);
    const auto application = zoom::startApplication(arguments);
    DesktopColors::follow(*application);
    MsgBox(u"無法啟動「%1」。\n%2"_s.arg(*folder + u"/pontrel"_s, reason), ProgramTitle, MsgIcon::Critical);
    return 1;
}

QStringList textsOf(int count, char** arguments) {
    QStringList texts;
    for (int index = 0; index < count; ++index)
        texts << QString::fromLocal8Bit(arguments[index]);
    return texts;
}

} // namespace

int main(int count, char** arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Starts Pontrel in the program folder of the user, which it sets up "
                                     u"where there is none yet and else brings\n"
                                     u"up to date."_s);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Shows this text."_s);
    const QCommandLineOption layOut(u"lay-out"_s,
                                    u"Lays out or brings up to date the program and the report templates in "
                                    u"that folder, then ends. A template "
                                    u"that was edited stays, and the newer one is laid beside it."_s,
                                    u"DIR"_s);
    const QCommandLineOption program(u"program"_s, u"Takes that file for the program."_s, u"FILE"_s);
    const QCommandLineOption templates(u"templates"_s, u"Takes the report templates from that folder."_s,
                                       u"DIR"_s);
    parser.addOptions({help, layOut, program, templates});
    const bool understood = parser.parse(textsOf(count, arguments));
    int onlyTheName = 1;
    // For the place of its executable; the windows have an application of their own.
    std::optional<QCoreApplication> console(std::in_place, onlyTheName, arguments);
    if (understood && parser.isSet(help)) {
        print(stdout, parser.helpText());
        return 0;
    }
    if (!understood || !parser.positionalArguments().isEmpty() ||
        (parser.isSet(layOut) && parser.value(layOut).isEmpty())) {
        return tools::refuse(understood ? u"There is nothing else to name."_s : parser.errorText(), parser);
    }
    MasterCopy from = installedCopy();
    if (parser.isSet(program))
        from.program = QDir(parser.value(program)).absolutePath();
    if (parser.isSet(templates))
        from.templates = QDir(parser.value(templates)).absolutePath();
    if (parser.isSet(layOut))
        return layOutOnly(from, QDir(parser.value(layOut)).absolutePath());
    console.reset();
    return setUpAndStart(arguments, from);
}
