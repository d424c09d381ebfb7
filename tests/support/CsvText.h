#pragma once

#include "support/SavedFiles.h"

#include <QList>

namespace pontrel::test {

/// The fields of comma-separated text, as another program reads them: UTF-8 with its mark, lines ended by
/// CR LF, fields in quotes or bare. Anything else is told in place of the lines.
[[nodiscard]] inline QList<QStringList> csvOf(const QString& path) {
    const QByteArray content = contentOf(path);
    if (!content.startsWith("\xEF\xBB\xBF"))
        return {{QStringLiteral("(no mark)")}};
    const QString text = QString::fromUtf8(content.mid(3));
    QList<QStringList> lines;
    QStringList line;
    for (qsizetype at = 0; at < text.size();) {
        QString field;
        if (text[at] == u'"') {
            for (++at; at < text.size(); ++at) {
                if (text[at] != u'"')
                    field += text[at];
                else if (at + 1 < text.size() && text[at + 1] == u'"')
                    field += text[at++];
                else
                    break;
            }
            ++at; // the quote at its end
        } else {
            while (at < text.size() && text[at] != u',' && text[at] != u'\r')
                field += text[at++];
            if (field.contains(u'"') || field.contains(u'\n'))
                return {{QStringLiteral("(a bare field with a quote or an end of line)")}};
        }
        line += field;
        if (text.mid(at, 1) == u",") {
            ++at;
        } else if (text.mid(at, 2) == u"\r\n") {
            at += 2;
            lines += line;
            line.clear();
        } else {
            return {{QStringLiteral("(neither comma nor end of line behind a field)")}};
        }
    }
    return line.isEmpty() ? lines : QList<QStringList>{{QStringLiteral("(the last line has no end)")}};
}

} // namespace pontrel::test
