#include "demo/Chance.h"
#include "demo/Demo.h"
#include "demo/Plan.h"

#include <algorithm>
#include <iterator>

namespace pontrel {

using namespace demo;

namespace {

constexpr int Minute = 60;
constexpr int Hour = 60 * Minute;

/// Lines of the file that stay together, placed by the second of the day.
struct Entry {
    int second;
    QByteArray lines;
};

/// What a swipe on a reader leaves besides time and card.
struct Reader {
    const char* number;
    const char* punchClass;
};

int secondOf(QTime time) {
    return QTime(0, 0).secsTo(time);
}

/// A line of the file: card 12 places, date 8, time 6, class 3, kind of line 2, reader 3.
QByteArray line(int card, QDate day, int second, const char* punchClass, const char* kind,
                const char* reader) {
    const QTime time = QTime(0, 0).addSecs(second);
    return QByteArray::number(card).rightJustified(12, '0') +
           day.toString(QStringLiteral("yyyyMMdd")).toLatin1() +
           time.toString(QStringLiteral("HHmmss")).toLatin1() + punchClass + kind + reader + "\r\n";
}

/// The day of one employee at the readers.
class PersonDay {
  public:
    PersonDay(const Employee& employee, QDate day)
        : employee_(employee)
        , day_(day)
        , slot_(rosteredSlot(employee, day))
        , chance_(static_cast<std::uint32_t>(employee.number * 100 + day.day()))
        , reader_(QStringView(employee.unit) >= u"6000" && QStringView(employee.unit) < u"8000"
                      ? Reader{"002", "000"}
                      : Reader{"001", "255"}) {}

    [[nodiscard]] std::vector<Entry> entries() {
        if (!slot_ || day_ < employee_.arrived || (employee_.left.isValid() && day_ > employee_.left))
            return {};
        chooseSwipes();
        for (std::size_t position = 0; position < 4; ++position)
            if (wanted_[position])
                swipeAt(position);
        const bool inProduction = QStringView(employee_.unit).startsWith(u"6") && slot_->code != u'N';
        if (inProduction && !leaveOn(employee_.number, day_) && chance_.perMille(90))
            workOvertime();
        if (chance_.perMille(12))
            goOutOnDuty();
        return std::move(entries_);
    }

  private:
    void chooseSwipes() {
        wanted_ = slot_->required;
        if (slot_->code == u'C')
            wanted_[3] = true; // Swipes on leaving too, though nothing asks for it.
        if (slot_->cardType == 0)
            wanted_[0] = chance_.below(3) == 0;
        if (slot_->code == u'N') {
            const TimeSlot* before = day_ > FirstDay ? rosteredSlot(employee_, day_.addDays(-1)) : nullptr;
            wanted_[3] = before && before->code == u'N';
        }
        if (const LeaveNote* note = leaveOn(employee_.number, day_)) {
            quiet_ = true;
            const bool comesAndGoes = QStringView(note->leaveType) == u"14";
            for (std::size_t position = 0; position < 4; ++position) {
                const bool morning = position < 2;
                const bool away = note->part == LeavePart::WholeDay
                                      ? !comesAndGoes || position == 1 || position == 2
                                      : morning == (note->part == LeavePart::Morning);
                wanted_[position] = wanted_[position] && !away;
            }
        }
        for (const WriteOff& entry : writeOffs())
            if (entry.day == day_ && std::ranges::count(entry.employees, employee_.number) > 0) {
                quiet_ = true;
                for (std::size_t position = 0; position < 4; ++position)
                    wanted_[position] = wanted_[position] && entry.reasons[position].isNull();
            }
    }

    void swipeAt(std::size_t position) {
        const bool arriving = position == 0 || position == 2;
        int second = usualSecond(position);
        const int mishap = quiet_ ? 1000 : chance_.below(1000);
        const int standard = secondOf(slot_->standard[position]);
        if (arriving) {
            if (mishap < 18)
                return;
            if (mishap < 33)
                second = standard + (slot_->morning.cushion + chance_.between(1, 20)) * Minute;
            else if (mishap < 60)
                second = standard + chance_.between(1, 4) * Minute;
            else if (mishap < 66)
                second = standard + chance_.between(35, 75) * Minute;
        } else {
            if (mishap < 14)
                return;
            if (mishap < 22)
                second = standard - chance_.between(3, 20) * Minute;
        }
        second += chance_.below(Minute);
        if (position == 0)
            arrived_ = second;
        add(second, line(employee_.number, day_, second, reader_.punchClass, "07", reader_.number));
        if (chance_.perMille(60)) {
            const int again =
                second + chance_.below(9); // Once more to be sure; it may be the very same second.
            add(again, line(employee_.number, day_, again, reader_.punchClass, "07", reader_.number));
        }
    }

    /// When a person without mishap swipes, to the minute.
    int usualSecond(std::size_t position) {
        const int standard = secondOf(slot_->standard[position]);
        const bool flexible = slot_->elstType == 1 || slot_->elstType == 2 || slot_->elstType == 4;
        switch (position) {
        case 0:
            return standard + (flexible ? chance_.between(-25, 25) : -chance_.between(2, 24)) * Minute;
        case 1: {
            // Nobody leaves for noon before the four hours that a morning has to have, or when noon is over.
            const int second = standard + chance_.between(0, 8) * Minute;
            const int fourHours = arrived_ + 4 * Hour + chance_.between(1, 4) * Minute;
            return arrived_ < 0 ? second
                                : std::clamp(fourHours, second, secondOf(slot_->latestMorning) - Minute);
        }
        case 2:
            return standard - chance_.between(2, 18) * Minute;
        default: {
            const int second = standard + chance_.between(0, 25) * Minute;
            return slot_->elstType == 1 && arrived_ >= 0 ? std::max(second, arrived_ + 9 * Hour) : second;
        }
        }
    }

    /// A function key pressed and the swipe that follows it a few seconds later.
    void swipeAfterKey(int key, int second) {
        const int swipe = second + chance_.between(3, 9);
        add(second, line(key, day_, second, "000", "42", reader_.number) +
                        line(employee_.number, day_, swipe, reader_.punchClass, "07", reader_.number));
    }

    void workOvertime() {
        const int begin =
            secondOf(slot_->standard[3]) + chance_.between(30, 45) * Minute + chance_.below(Minute);
        const int end = begin + chance_.between(70, 190) * Minute;
        swipeAfterKey(1, begin);
        if (chance_.perMille(120))
            swipeAfterKey(1, begin + chance_.between(2, 5) * Minute);
        if (chance_.perMille(200)) // Forgets to swipe at the end.
            return;
        if (chance_.perMille(250)) // A reader that is itself set to overtime tells the class without a key.
            add(end, line(employee_.number, day_, end, "081", "07", "003"));
        else
            swipeAfterKey(1, end);
    }

    void goOutOnDuty() { swipeAfterKey(2, 10 * Hour + chance_.below(Hour)); }

    void add(int second, const QByteArray& lines) { entries_.push_back({second, lines}); }

    const Employee& employee_;
    QDate day_;
    const TimeSlot* slot_;
    Chance chance_;
    Reader reader_;
    std::array<bool, 4> wanted_{};
    bool quiet_ = false; ///< A day with leave or a write-off has no further mishap.
    int arrived_ = -1;
    std::vector<Entry> entries_;
};

/// Lines that belong to nobody: what a reader tells of itself, a visitor's card, a line cut off by a lost
/// connection.
void addStrayLines(QDate day, std::vector<Entry>& entries) {
    Chance chance(static_cast<std::uint32_t>(day.day()));
    entries.push_back({5 * Hour, line(0, day, 5 * Hour, "000", "11", "001")});
    const int visit = chance.between(9, 15) * Hour + chance.below(Hour);
    entries.push_back({visit, line(99901, day, visit, "255", "07", "001")});
    if (chance.below(3) == 0) {
        const int cut = chance.between(9, 15) * Hour + chance.below(Hour);
        entries.push_back({cut, line(10026, day, cut, "000", "07", "002").left(20) + "\r\n"});
    }
}

QByteArray punchesOf(QDate day) {
    std::vector<Entry> entries;
    for (const Employee& employee : employees()) {
        std::vector<Entry> own = PersonDay(employee, day).entries();
        std::ranges::move(own, std::back_inserter(entries));
    }
    addStrayLines(day, entries);
    std::ranges::stable_sort(entries, {}, &Entry::second);
    QByteArray content;
    for (const Entry& entry : entries)
        content += entry.lines;
    return content;
}

} // namespace

std::vector<DemoPunchFile> demoPunchFiles() {
    std::vector<DemoPunchFile> files;
    for (QDate day = FirstDay; day <= LastDay; day = day.addDays(1))
        if (!isWeekend(day))
            files.push_back(
                {day.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral(".txt"), punchesOf(day)});
    return files;
}

} // namespace pontrel
