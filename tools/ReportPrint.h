#pragma once

#include <QCommandLineParser>
#include <QString>

namespace pontrel::tools {

/// The command line asks for something that cannot be; the text says what.
struct UsageFault {
    QString text;
};

/// Adds what a report can be asked for: its ranges, its output, the program's folder.
void addPrintOptions(QCommandLineParser& parser);

/// Prints the report of that code as the options ask, and returns a line that tells what was made. Throws
/// UsageFault, and RunTimeError where store or template cannot be read or the file not be written.
[[nodiscard]] QString printReport(const QString& code, const QCommandLineParser& parser);

} // namespace pontrel::tools
