#pragma once

#include "rules/reports/Selection.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace pontrel {

/// The tabs of the report window, by their indexes.
enum class ReportTab { Basic, Roster, Attendance, Leave, WriteOff, Overtime };

/// Which controls of its tab are enabled, or shown, while a report's option is on. The numbers are bits, of
/// value 1 for index 0.
struct ReportFields {
    unsigned masks = ~0U;
    unsigned masksLeft = 0; ///< Those that stay as they were.
    unsigned combos = ~0U;
    bool list = true;
    bool listCaption = true; ///< Shown.
    bool punchMarks = false; ///< Shown.

    [[nodiscard]] bool mask(int index) const { return (masks >> index & 1U) != 0; }
    [[nodiscard]] bool leavesMask(int index) const { return (masksLeft >> index & 1U) != 0; }
    [[nodiscard]] bool combo(int index) const { return (combos >> index & 1U) != 0; }
};

/// What has to be worked out before a report runs.
enum class Preparation { None, Headcount, EmployeeSums, WriteOffCounts, WriteOffDetail };

/// A report of the catalogue.
struct Report {
    QString code; ///< Of its template, in the case of the file's name.
    ReportTab tab;
    int option; ///< Index of its option button on the tab.
    QString caption;
    std::optional<QString> formula; ///< As joinFormula() reads it; absent: what is stored stays.
    Preparation preparation = Preparation::None;
    ReportFields fields;
};

/// All reports, by tab and option.
[[nodiscard]] const std::vector<Report>& reports();

/// The report of that option; null where there is none.
[[nodiscard]] const Report* findReport(ReportTab tab, int option);

/// The report of that code, in any case of letters; null where there is none.
[[nodiscard]] const Report* findReport(QStringView code);

/// What the boxes of a range ask for.
enum class RangeKind { ShiftClass, Unit, Employee, WorkType, Month, WriteOffCount };

/// A range on a tab: one box, or two that stand side by side, and what they show at first.
struct ReportRange {
    RangeKind kind;
    int combo; ///< Index of the first box.
    QString caption;
    QStringList defaults; ///< One for each box.
};
[[nodiscard]] const std::vector<ReportRange>& reportRanges(ReportTab tab);

/// The statement of the codes and names that the boxes of a range offer; empty where they offer none.
[[nodiscard]] QString choicesStatement(RangeKind kind);

/// The numbers that a box offers where nothing in the store is offered; empty for other boxes. Others may be
/// typed.
[[nodiscard]] QStringList numberChoices(RangeKind kind);

/// An entry of a list from which several can be selected: code, a blank, name.
struct ListEntry {
    QString text;
    bool selected = true;
};

inline constexpr std::size_t MostLeaveTypes = 51;
inline constexpr std::size_t MostWriteOffReasons = 31;

/// For each position of a list the first two characters of its entry where that is selected, else an empty
/// text; always `most` texts. Throws error 9 where an entry behind them is selected.
[[nodiscard]] QStringList selectedCodes(const std::vector<ListEntry>& list, std::size_t most);

/// What is chosen on a tab of the report window, without its controls; texts as the controls hold them.
struct ReportChoice {
    ReportTab tab = ReportTab::Basic;
    int option = 0;             ///< The first option button that is on.
    int clickedOption = 0;      ///< The option that the last click stored: it names C04 to C06.
    int punchMark = 0;          ///< Index of the punch mark that is on, from 0 to 4.
    std::array<QDate, 4> dates; ///< Of the date controls; one that is empty is no valid date.
    std::array<QString, 2> masks;
    QStringList combos;
    std::vector<ListEntry> list;          ///< Leave types or write-off reasons.
    std::array<QString, 2> writeOffUnits; ///< The unit range of the tab of write-offs, which D05 reads too.
};

/// A choice with the texts that the boxes of the tab show at first, and nothing in its dates and lists.
[[nodiscard]] ReportChoice defaultChoice(ReportTab tab, int option);

/// What a print hands to the report engine.
struct ReportCall {
    QString code;
    std::optional<SelectionFormula> formula; ///< Absent: the stored one stays.
};

/// The code and the selection formula of the report that is chosen. Throws error 9 for a list with too many
/// entries, and 6 for a month beyond 16 bits. An apostrophe in a code is none here: it breaks the formula,
/// which the engine tells when it runs.
[[nodiscard]] ReportCall reportCall(const ReportChoice& choice);

/// A named value as the engine takes it: "Title='...'" and its index.
struct NamedValue {
    int index;
    QString text;
    friend bool operator==(const NamedValue&, const NamedValue&) = default;
};

/// Indexes of the named values.
namespace named {
inline constexpr int Title = 0;
inline constexpr int Sdate = 1;
inline constexpr int Edate = 2;
inline constexpr int Att = 3;
inline constexpr int Cushion = 4;
inline constexpr int Delay = 5;
inline constexpr int Earlier = 6;
inline constexpr int Absent = 7;
inline constexpr int Employee = 8; ///< Whom D06 is about: code and name.
} // namespace named

/// Joins a name and its value as the engine takes them; an apostrophe in the value stays.
[[nodiscard]] NamedValue namedValue(int index, const QString& value);

/// The values that every print sets: those of the two masks, and none on the tab of basic reports.
[[nodiscard]] std::vector<NamedValue> periodValues(const ReportChoice& choice);

} // namespace pontrel
