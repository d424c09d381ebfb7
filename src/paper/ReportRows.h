#pragma once

#include "paper/Template.h"
#include "rules/reports/Selection.h"
#include "store/Value.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

struct sqlite3_stmt;

namespace pontrel::paper {

/// Texts, each kept once. Those that differ in the case of A to Z alone are kept apart and know of each
/// other.
class TextPool {
  public:
    TextPool();
    TextPool(TextPool&&) = default;
    TextPool& operator=(TextPool&&) = default;

    /// The place of a text in UTF-8; `likely` is a place to look at first.
    [[nodiscard]] std::int32_t place(std::string_view text, std::int32_t likely);
    [[nodiscard]] QStringView text(std::int32_t place) const {
        const std::size_t at = static_cast<std::size_t>(place);
        // An empty text is no null, also where there are no others.
        if (starts_[at] == starts_[at + 1])
            return QStringView(u"");
        return QStringView(texts_.data() + starts_[at], texts_.data() + starts_[at + 1]);
    }
    /// The same for all texts that the store takes for equal.
    [[nodiscard]] std::int32_t alike(std::int32_t place) const {
        return alike_[static_cast<std::size_t>(place)];
    }
    /// Gives up what only place() needs.
    void close();

  private:
    [[nodiscard]] std::int32_t find(QStringView text) const;
    [[nodiscard]] std::int32_t add(QStringView text);
    void grow();

    std::vector<char16_t> texts_;
    std::vector<std::size_t> starts_{0}; ///< One more than there are texts.
    std::vector<std::int32_t> alike_;
    std::vector<std::int32_t> slots_; ///< Hash table of places; -1 is free.
    std::vector<char16_t> incoming_;
};

/// The date-time of a number of milliseconds since the first Julian day, as ReportRows keeps one.
[[nodiscard]] QDateTime fromDayMilliseconds(double milliseconds);

/// The records of a report in the template's order: one typed vector for each field. A date is its Julian
/// day, a time its second of the day, a text its place in a pool.
class ReportRows {
  public:
    /// Reads the records that the template speaks of and the selection is true of, in one statement, over a
    /// connection that changes nothing and is closed at the end. Throws RunTimeError as a store that cannot
    /// be read does.
    [[nodiscard]] static ReportRows read(const QString& dataFile, const Template& layout,
                                         const Selection& selection);

    /// The statement that read() runs.
    [[nodiscard]] static QByteArray statement(const Template& layout, const Selection& selection);

    [[nodiscard]] std::size_t count() const { return count_; }

    [[nodiscard]] bool isNull(std::size_t row, int field) const;
    [[nodiscard]] Value value(std::size_t row, int field) const;
    /// Equal as the store takes them: nulls are, and texts that differ in the case of A to Z alone.
    [[nodiscard]] bool same(std::size_t one, std::size_t other, int field) const;

    // Quick readers, of values that are not null.

    /// A number, a truth value as 0 or 1, a date or time as its number.
    [[nodiscard]] double number(std::size_t row, int field) const;
    /// A text, or what a column of dates or times holds in place of one; empty for any other value.
    [[nodiscard]] QStringView text(std::size_t row, int field) const;
    /// Equal for values that are the same, different for others of the field.
    [[nodiscard]] std::int64_t identity(std::size_t row, int field) const;

  private:
    static constexpr std::int32_t Null = std::numeric_limits<std::int32_t>::min();
    /// At most this, a number of a date or time is a place in the pool, counted down: the store can hold a
    /// text there that is no date. Other whole numbers down to it are kept wide.
    static constexpr std::int32_t MostForeign = -1'000'000'000;

    struct Stored {
        ColumnType type = ColumnType::Text;
        bool wide = false;               ///< Kept in real: numbers with fractions, date-times, large numbers.
        std::vector<std::int32_t> whole; ///< Numbers or places.
        std::vector<double> real;        ///< A null is not a number.

        void add(std::int32_t number) { wide ? real.push_back(number) : whole.push_back(number); }
        void addNull();
        void addWide(double number);
    };
    void addText(Stored& column, std::string_view text);
    void add(Stored& column, sqlite3_stmt* statement, int index);

    std::vector<Stored> columns_;
    TextPool pool_;
    std::size_t count_ = 0;
};

} // namespace pontrel::paper
