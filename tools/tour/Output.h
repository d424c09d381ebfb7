#pragma once

#include <QString>

#include <cstdio>

namespace pontrel::tour {

/// Writes a line in UTF-8, whatever the machine's language, and at once.
inline void print(const QString& line, FILE* stream = stdout) {
    std::fputs(line.toUtf8().append('\n').constData(), stream);
    std::fflush(stream);
}

} // namespace pontrel::tour
