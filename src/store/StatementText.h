#pragma once

#include <QDate>
#include <QString>

namespace pontrel {

// Values as the statements join them. Whatever a statement does not hold in its own words, typed, picked or
// read from a row or a file, but for a number, enters it through one of these and nowhere else:
//
//     u"Select * from Atte01 where EmpNo = "_s + textLiteral(EmpNo) + u" and UseDate = "_s + dateLiteral(day)
//
// Nothing is escaped. A value that would end its literal, or that makes none, breaks the statement: a syntax
// error (3075) with the value as its technical text. It is thrown where the value is joined, whether or not
// the statement would be good by chance and touch any row, so join right before the statement runs.

/// The text between apostrophes. Throws error 3075 for a text that holds one. A null is joined as empty text:
/// textLiteral(value.joined()).
[[nodiscard]] QString textLiteral(const QString& text);

/// Whether the text would end its literal, for who has to know it ahead of a statement.
[[nodiscard]] bool breaksLiteral(const QString& text);

/// A pattern that every text meets which begins so: "'A*'". Throws as textLiteral() does. The characters "*",
/// "?" and "#" keep their meaning.
[[nodiscard]] QString startLiteral(const QString& start);

/// The date between number signs: "#2001/3/5#". Throws error 3075 for an invalid date, as that of an empty
/// box.
[[nodiscard]] QString dateLiteral(QDate date);

/// The text of a date, a time or both, between number signs as it stands. Throws error 3075 for an empty one
/// and for one that holds a number sign; the statement itself refuses what is no date or time.
[[nodiscard]] QString dateLiteral(const QString& text);

/// A time of day, in seconds from 0 to 86399: "#08:00:00#".
[[nodiscard]] QString timeLiteral(int second);

} // namespace pontrel
