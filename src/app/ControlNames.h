#pragma once

#include <QString>

namespace pontrel {

/// The object name of a control of an array, such as "Text1(0)".
[[nodiscard]] inline QString indexed(const QString& array, int index) {
    return QStringLiteral("%1(%2)").arg(array).arg(index);
}

/// What a caption says when it is read out: without its colon and the blanks that spread it.
[[nodiscard]] inline QString spoken(QString caption) {
    caption.remove(u' ').remove(QChar(0x3000));
    while (caption.endsWith(u':') || caption.endsWith(QChar(0xff1a)))
        caption.chop(1);
    return caption;
}

} // namespace pontrel
