#pragma once

#include <QCommandLineParser>
#include <QString>

#include <cstdio>

// What the programs of the command line have in common.

namespace pontrel::tools {

/// A program ends with this status where its command line cannot be understood; where it can and is not
/// done, with 1.
inline constexpr int UsageStatus = 2;

/// Writes a line in UTF-8, whatever the machine's language.
inline void print(FILE* stream, const QString& text) {
    std::fputs(text.toUtf8().append('\n').constData(), stream);
}

/// Tells why the command line cannot be understood, and what it can be. Returns UsageStatus.
[[nodiscard]] inline int refuse(const QString& why, const QCommandLineParser& parser) {
    print(stderr, why + QStringLiteral("\n\n") + parser.helpText());
    return UsageStatus;
}

} // namespace pontrel::tools
