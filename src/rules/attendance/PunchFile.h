#pragma once

#include "store/StatementForm.h"
#include "store/Value.h"

#include <QByteArray>
#include <QDate>
#include <QFile>
#include <QLatin1String>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace pontrel {

/// The text "yyyy/mm/dd" of the day that a punch file's name tells, unchecked: of the last twelve characters
/// of its path, which should read "yyyymmdd.txt", the first eight.
[[nodiscard]] QString fileDayText(const QString& path);

/// The day of that text. Throws error 13 where it is not all digits and a real day from the year 100 on.
[[nodiscard]] QDate fileDay(const QString& dayText);

/// One line of a punch file, cut into its fields of fixed width. A shorter line is filled on the left with
/// zeros.
class PunchLine {
  public:
    static constexpr qsizetype Width = 34;

    /// Takes the line's characters without its end; what stands beyond the width is not looked at.
    void assign(const char* characters, qsizetype length);

    [[nodiscard]] QLatin1String card() const { return field(0, 12); }
    [[nodiscard]] QLatin1String year() const { return field(12, 4); }
    [[nodiscard]] QLatin1String month() const { return field(16, 2); }
    [[nodiscard]] QLatin1String day() const { return field(18, 2); }
    [[nodiscard]] QLatin1String time() const { return field(20, 6); } ///< "hhmmss", unchecked.
    [[nodiscard]] QLatin1String classCode() const { return field(26, 3); }
    [[nodiscard]] QLatin1String lineCode() const { return field(29, 2); }
    [[nodiscard]] QLatin1String ReaderID() const { return field(31, 3); }

  private:
    [[nodiscard]] QLatin1String field(qsizetype from, int width) const {
        return QLatin1String(characters_.data() + from, width);
    }

    std::array<char, static_cast<std::size_t>(Width)> characters_{};
};

/// The lines of a punch file, one byte a character, read piece by piece however long file and lines are. A
/// line ends with LF or CR LF; a last line without an end counts.
class PunchFile {
  public:
    /// Opens the file, without waiting. Throws error 53 where there is none, 75 where it cannot be read or is
    /// no regular file: a pipe, a device, a folder.
    explicit PunchFile(const QString& path);

    /// Reads the next line; false behind the last one. Throws error 75.
    [[nodiscard]] bool readLine(PunchLine& line);

  private:
    [[nodiscard]] bool fillBuffer();

    QString path_;
    QFile file_;
    QByteArray buffer_;
    qsizetype position_ = 0;
};

/// A card swipe as it goes into the punches. The views live as long as the line that it was read from, and
/// its reader.
struct Punch {
    QLatin1String EmpNo;
    const PunchLine* line = nullptr;
    QLatin1String classCode;

    /// The statements that add a punch to Atte01 and to AtteTemp, for the values of each.
    [[nodiscard]] static const StatementForm& intoPunches();
    [[nodiscard]] static const StatementForm& intoStaging();
    /// EmpNo, UseDate, UseTime, class and ReaderID. Throws error 3075 for an invalid date or time.
    [[nodiscard]] std::array<Value, 5> values() const;
};

/// Reads swipes out of the lines and gives the one behind a function key the key's class.
class PunchReader {
  public:
    enum class SameReader { NotAsked, Required };

    PunchReader(std::int16_t LenEmpNo, std::uint8_t IntervalSec, SameReader sameReader);

    /// The swipe of the line, nothing where it is none. A key line is remembered for the next swipe. Throws
    /// error 13 where a key is pending and one of the two times is none, 5 for a negative LenEmpNo.
    [[nodiscard]] std::optional<Punch> take(const PunchLine& line);

  private:
    [[nodiscard]] QLatin1String employeeOf(const PunchLine& line) const;
    void takeKey(const PunchLine& line);
    void rememberReader(const PunchLine& line);
    [[nodiscard]] bool keyApplies(const PunchLine& line) const;

    std::int16_t LenEmpNo_;
    std::uint8_t IntervalSec_;
    SameReader sameReader_;
    bool pending_ = false;
    QByteArray pendingTime_;
    QByteArray pendingClass_;
    std::array<char, 3> lastReader_{};
    bool anyLine_ = false;
};

} // namespace pontrel
