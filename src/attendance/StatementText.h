#pragma once

#include "store/Format.h"

#include <QDate>
#include <QString>

namespace pontrel {

/// The date as the statements join it: "#2001/3/5#".
[[nodiscard]] inline QString dateLiteral(QDate date) {
    return u'#' + shortDate(date) + u'#';
}

/// Appends a time of day, in seconds from 0 to 86399, as the statements join it: "#08:00:00#".
inline void appendTimeLiteral(QString& text, int second) {
    const auto appendTwo = [&text](int number) {
        text += QChar(u'0' + number / 10);
        text += QChar(u'0' + number % 10);
    };
    text += u'#';
    appendTwo(second / 3600);
    text += u':';
    appendTwo(second / 60 % 60);
    text += u':';
    appendTwo(second % 60);
    text += u'#';
}

[[nodiscard]] inline QString timeLiteral(int second) {
    QString text;
    appendTimeLiteral(text, second);
    return text;
}

/// The second of the day, 0 to 86399.
[[nodiscard]] inline int secondOfDay(QTime time) {
    return time.msecsSinceStartOfDay() / 1000;
}

} // namespace pontrel
