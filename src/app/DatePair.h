#pragma once

#include <QDate>
#include <QObject>
#include <QString>

#include <optional>

class QWidget;

namespace pontrel {

class FocusWatch;
class TDBDate;
class TDBMask;

/// The two controls of a date pair.
struct DateFields {
    TDBMask* mask = nullptr;
    TDBDate* date = nullptr;
};

/// Makes them, of these object names, for a field that is spoken of by that name. The mask is as wide as a
/// date needs.
[[nodiscard]] DateFields makeDateFields(QWidget* parent, const QString& maskName, const QString& dateName,
                                        const QString& spokenName);

/// In what the date pairs of the windows differ.
struct DatePairRules {
    int markBase = 0;          ///< Added to the pair's index for its bad-date mark; 0 leaves no mark,
                               ///< and those of others alone.
    bool anyMark = false;      ///< A mark of any pair of the form counts as this one's.
    bool message = false;      ///< A bad date is told when the mask loses the focus ...
    bool focusBack = false;    ///< ... and the focus put back on it.
    bool emptyFollows = false; ///< An empty mask empties the date control and the other way round.
};

inline constexpr DatePairRules DialogDatePair{100, true, true, true, false};   ///< FrmI1Date, FrmI2Date
inline constexpr DatePairRules EmployeeDatePair{10, false, true, false, true}; ///< Form1
inline constexpr DatePairRules ModuleDatePair{10, false, true, true, false};   ///< Form2, Form4
inline constexpr DatePairRules SilentDatePair{};                               ///< Form5, Form6, Form7

/// A mask and a date control that mirror each other. The mask has the year in the Republic of China calendar
/// in two digits, so dates from 2011 on live in the date control alone and the mask is then blank. The pair
/// works on its form's updating flag and bad-date mark, which must outlive it.
class DatePair : public QObject {
    Q_OBJECT
  public:
    /// The index is the pair's own in its form; the watch is that of the window both controls stand in.
    DatePair(TDBMask* mask, TDBDate* date, int index, const DatePairRules& rules, FocusWatch& watch,
             bool& updating, int& badDateMark);

    /// The day that a mask's value names: six digits of a real day, the first two the year from 1911 on.
    [[nodiscard]] static std::optional<QDate> dateOf(const QString& maskValue);

    /// What the date control writes into the mask: the year minus 1911, month and day; seven characters from
    /// 2011 on.
    [[nodiscard]] static QString maskText(QDate date);

    /// What a change of the date control does. To be called for a row that becomes current as well: its date
    /// may be the one that the control has, beside a mask of which a cancelled edit left something else.
    void DatePairDateChange();

  private:
    void DatePairMaskChange();
    /// What a window does for a day that has been entered, it does when the control with that day is left.
    /// One from 2011 on stands in the date control alone, also where its calendar was opened from the mask.
    void leaveEmptyMask();
    void maskLostFocus();
    void setDateFromMask(QDate date);

    TDBMask* mask_;
    TDBDate* date_;
    int index_;
    DatePairRules rules_;
    bool& updating_;
    int& badDateMark_;
};

} // namespace pontrel
