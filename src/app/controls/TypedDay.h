#pragma once

#include <QDate>
#include <QString>

class QKeyEvent;

namespace pontrel {

/// The year as it is spoken of in the Republic of China, "民國115年"; those before 1912 as "民國前1年".
[[nodiscard]] QString yearOfRepublic(int year);

/// A day that is typed into an open calendar as mere digits. The first one says how: 1 begins seven digits
/// with the year of the Republic (1150305), 2 eight with that of the common era (20260305). The digits stay
/// when they are all there, for Backspace to go back to; the next one begins anew.
class TypedDay {
  public:
    /// What a key has done.
    enum class Outcome {
        NotMine, ///< The key is none of these: nothing has happened.
        Typing,  ///< More digits are needed, or none is left.
        Day,     ///< day() is the one to go to.
        Wrong    ///< There is no such day, or no day begins so: hint() says it.
    };

    /// Takes digits, Backspace and Escape (while there are digits), T for today, and refuses Enter and Space
    /// while digits are missing.
    [[nodiscard]] Outcome take(const QKeyEvent& key);

    /// Begins anew.
    void clear();

    [[nodiscard]] QDate day() const { return day_; }
    /// What was typed so far and what is wrong with it, or how to type while there is nothing.
    [[nodiscard]] QString hint() const;
    /// Tells that the calendar does not have the day.
    void refuse();

  private:
    [[nodiscard]] Outcome addDigit(QChar digit);
    [[nodiscard]] Outcome removeDigit();
    [[nodiscard]] QDate typed() const;

    QString digits_;
    QString wrong_;
    QDate day_;
};

} // namespace pontrel
