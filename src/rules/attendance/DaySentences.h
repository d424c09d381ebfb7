#pragma once

#include "rules/attendance/DayAccount.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace pontrel {

/// A minute as a time of day, "08:00"; one before 0 or behind 1439 names the day that it falls on.
[[nodiscard]] QString minuteText(int minute);

/// What was decided, with its figures.
[[nodiscard]] QString sentenceOf(const DayStep& step);
[[nodiscard]] QString sentenceOf(const DayRemark& remark);

/// A column of a result row as the user knows it, and what a row holds in it.
[[nodiscard]] QString columnCaption(std::size_t place);
[[nodiscard]] QString cellText(std::size_t place, const DayRow& row);

/// What the row holds of a position, 1 to 4: the time, minutes, cover and the mark of a fault.
[[nodiscard]] QString positionText(DayRow row, int position);

/// A part of an account, as it is shown, copied and printed.
struct DaySection {
    QString heading;
    QStringList lines;
};

/// The account in its sections, none of them empty: the day and what has changed since, how it was judged,
/// what the row holds, what a recalculation would do.
[[nodiscard]] std::vector<DaySection> sectionsOf(const DayAccount& account);

/// The sections as a text of lines, each below its heading.
[[nodiscard]] QString bodyText(const DayAccount& account);

/// The same below the title.
[[nodiscard]] QString plainText(const DayAccount& account);

/// The employee and day that the account is about, in a line.
[[nodiscard]] QString titleOf(const DayAccount& account);

} // namespace pontrel
