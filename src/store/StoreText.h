#pragma once

#include "store/Value.h"

#include <QString>

#include <string>

namespace pontrel {

/// Dates and times as the store holds them: "YYYY-MM-DD", "HH:MM:SS", or both with a blank between.
[[nodiscard]] std::string storeText(QDate date);
[[nodiscard]] std::string storeText(QTime time);
[[nodiscard]] std::string storeText(const QDateTime& both);

/// The longest of them, of any date that there is, with room to spare.
inline constexpr int MostStoreText = 24;

/// The same without memory of its own: writes to a text with room for MostStoreText and returns its end.
[[nodiscard]] char* appendStoreText(char* text, QDate date);
[[nodiscard]] char* appendStoreText(char* text, QTime time);

/// The key under which codes are the same that the store takes for the same: in any case of A to Z.
[[nodiscard]] QString foldedCode(QString code);

/// Reads what the store holds in a column of that type; a text that is no such date or time stays a text.
[[nodiscard]] Value readStoreText(const char* text, int length, ColumnType type);

/// The value as a column of that type takes it: quoted dates and numbers are read, a date-time loses what the
/// column does not hold; what cannot be read becomes null.
[[nodiscard]] Value convertFor(const Value& value, ColumnType type);

/// The value as it is compared with a column of that type: as above, but a date keeps its time of day and a
/// time its date, unless that is BaseDate. A number is true as a boolean where it is not 0.
[[nodiscard]] Value convertCompared(const Value& value, ColumnType type);

} // namespace pontrel
