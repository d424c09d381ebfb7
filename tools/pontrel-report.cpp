// pontrel-report: what is done with reports without a display.

#include "paper/TemplateReader.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <optional>

namespace {

using namespace pontrel;

/// The command line cannot be understood; a template with a fault ends with 1.
constexpr int UsageStatus = 2;

void print(FILE* stream, const QString& text) {
    std::fputs(text.toUtf8().constData(), stream);
    std::fputc('\n', stream);
}

/// Reads each template and tells its fault, or that it has none.
int check(const QStringList& paths) {
    int status = 0;
    for (const QString& path : paths) {
        try {
            const paper::Template layout = paper::readTemplate(path);
            print(stdout, QStringLiteral("%1: %2 %3").arg(path, layout.code, layout.caption));
        } catch (const RunTimeError& failure) {
            print(stderr, failure.text());
            if (!failure.technical().isEmpty())
                print(stderr, failure.technical());
            status = 1;
        }
    }
    return status;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("check FILE...   Reads report templates and tells their faults by file, line and "
                       "character."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Shows this text."));
    parser.addOption(help);
    parser.addPositionalArgument(QStringLiteral("check"), QStringLiteral("What to do."));
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("A template."),
                                 QStringLiteral("FILE..."));
    const bool understood = parser.parse(application.arguments());
    if (understood && parser.isSet(help)) {
        print(stdout, parser.helpText());
        return 0;
    }
    QStringList words = parser.positionalArguments();
    if (understood && words.size() > 1 && words.takeFirst() == u"check")
        return check(words);
    print(stderr,
          (understood ? QStringLiteral("Say what to do: check, and which files.") : parser.errorText()) +
              QStringLiteral("\n\n") + parser.helpText());
    return UsageStatus;
}
