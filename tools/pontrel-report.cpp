// pontrel-report: what is done with reports without a display.

#include "CommandLine.h"
#include "ReportPrint.h"
#include "paper/TemplateReader.h"

#include <QCommandLineParser>
#include <QGuiApplication>

#include <cstdio>
#include <optional>

namespace {

using namespace pontrel;
using namespace Qt::StringLiterals;
using tools::print;

const QString Description =
    u"check FILE...   Reads report templates and tells their faults by file, line and character.\n"
    "print CODE      Prints a report into a file, such as\n"
    "                print C02 --from 2026-01-01 --to 2026-01-31 --unit 1000..2000 --output C02.pdf"_s;

void tell(const RunTimeError& failure) {
    print(stderr, failure.text());
    if (!failure.technical().isEmpty())
        print(stderr, failure.technical());
}

/// What Qt finds missing on a machine without a desktop is no fault of the report's.
void withoutWarnings(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        print(stderr, text);
}

/// Reads each template and tells its fault, or that it has none.
int check(const QStringList& paths) {
    int status = 0;
    for (const QString& path : paths) {
        try {
            const paper::Template layout = paper::readTemplate(path);
            print(stdout, QStringLiteral("%1: %2 %3").arg(path, layout.code, layout.caption));
        } catch (const RunTimeError& failure) {
            tell(failure);
            status = 1;
        }
    }
    return status;
}

int printOne(const QString& code, const QCommandLineParser& parser) {
    try {
        print(stdout, tools::printReport(code, parser));
        return 0;
    } catch (const tools::UsageFault& fault) {
        print(stderr, fault.text);
        return tools::UsageStatus;
    } catch (const RunTimeError& failure) {
        tell(failure);
        return 1;
    }
}

} // namespace

int main(int argc, char* argv[]) {
    // Pages are measured and painted without a display, whatever the machine has.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(withoutWarnings);
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(Description);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Shows this text."_s);
    parser.addOption(help);
    tools::addPrintOptions(parser);
    parser.addPositionalArgument(u"COMMAND"_s, u"check or print."_s);
    parser.addPositionalArgument(u"WHAT"_s, u"The templates, or the report's code."_s, u"WHAT..."_s);
    if (!parser.parse(application.arguments()))
        return tools::refuse(parser.errorText(), parser);
    if (parser.isSet(help)) {
        print(stdout, parser.helpText());
        return 0;
    }
    QStringList words = parser.positionalArguments();
    const QString command = words.isEmpty() ? QString() : words.takeFirst();
    if (command == u"check" && !words.isEmpty() && parser.optionNames().isEmpty())
        return check(words);
    if (command == u"print" && words.size() == 1)
        return printOne(words.first(), parser);
    return tools::refuse(u"Say what to do: check, and which files; or print, and which report."_s, parser);
}
