#include "rules/attendance/PunchWindows.h"

#include <QTest>

using namespace pontrel;
using namespace Qt::StringLiterals;

namespace {

/// Minutes of "hh:mm", which may pass 24:00 or be negative.
int minutes(const QString& text) {
    const bool negative = text.startsWith(u'-');
    const QStringList parts = text.mid(negative ? 1 : 0).split(u':');
    const int count = parts.at(0).toInt() * 60 + parts.at(1).toInt();
    return negative ? -count : count;
}

QString clockText(int minute) {
    const int size = qAbs(minute);
    return (minute < 0 ? u"-"_s : u""_s) +
           u"%1:%2"_s.arg(size / 60, 2, 10, QChar(u'0')).arg(size % 60, 2, 10, QChar(u'0'));
}

/// All windows as "position lower-upper".
QStringList shown(const PunchWindows& windows) {
    QStringList lines;
    for (const PunchWindow& window : windows.all())
        lines += u"%1 %2 to %3"_s.arg(window.position).arg(clockText(window.lower), clockText(window.upper));
    return lines;
}

/// A day whose windows do not meet, with other allowances in the afternoon than in the morning.
SlotTimes daySlot(int ElstType, int CardType) {
    SlotTimes slot;
    slot.TimeNo = u"A"_s;
    slot.ElstType = static_cast<std::uint8_t>(ElstType);
    slot.CardType = static_cast<std::uint8_t>(CardType);
    slot.StrIn1 = minutes(u"07:00"_s);
    slot.StdT1 = minutes(u"08:00"_s);
    slot.StdT2 = minutes(u"12:00"_s);
    slot.EndOut2 = minutes(u"12:20"_s);
    slot.StrIn3 = minutes(u"12:40"_s);
    slot.StdT3 = minutes(u"13:00"_s);
    slot.StdT4 = minutes(u"17:00"_s);
    slot.EndOut4 = minutes(u"18:00"_s);
    slot.ElstMin = 30;
    slot.Cushion = 5;
    slot.Delay = 20;
    slot.Earlier = 10;
    slot.Cushion1 = 7;
    slot.Delay1 = 11;
    slot.Earlier1 = 13;
    return slot;
}

/// All four standard times shortly before midnight, so that sums pass it.
SlotTimes lateSlot(int ElstType, int CardType) {
    SlotTimes slot = daySlot(ElstType, CardType);
    slot.StrIn1 = slot.StrIn3 = minutes(u"23:00"_s);
    slot.StdT1 = slot.StdT2 = slot.StdT3 = slot.StdT4 = minutes(u"23:50"_s);
    slot.EndOut2 = slot.EndOut4 = minutes(u"23:58"_s);
    return slot;
}

/// All four standard times shortly after midnight, so that differences pass it backwards.
SlotTimes earlySlot(int ElstType, int CardType) {
    SlotTimes slot = daySlot(ElstType, CardType);
    slot.StrIn1 = slot.StrIn3 = 0;
    slot.StdT1 = slot.StdT2 = slot.StdT3 = slot.StdT4 = minutes(u"00:04"_s);
    slot.EndOut2 = slot.EndOut4 = minutes(u"01:00"_s);
    return slot;
}

bool isListed(int ElstType, int CardType) {
    switch (ElstType) {
    case 0:
        return true;
    case 1:
        return CardType >= 1 && CardType <= 4;
    case 2:
    case 4:
        return CardType == 4;
    case 3:
        return CardType == 3 || CardType == 4;
    default:
        return false;
    }
}

} // namespace

/// The windows in which punches count, by kind of elasticity and number of punches.
class PunchWindowsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void eachBoundBelongsToItsWindow_data() {
        QTest::addColumn<int>("ElstType");
        QTest::addColumn<int>("CardType");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("lower");
        QTest::addColumn<QString>("upper");
        const auto add = [](int ElstType, int CardType, int position, const char16_t* lower,
                            const char16_t* upper) {
            QTest::addRow("kind %d, %d punches, position %d", ElstType, CardType, position)
                << ElstType << CardType << position << QString::fromUtf16(lower) << QString::fromUtf16(upper);
        };
        for (const int CardType : {0, 1, 2, 3, 4, 5, 255}) {
            add(0, CardType, 1, u"07:00", u"08:25");
            add(0, CardType, 2, u"11:45", u"12:20");
            add(0, CardType, 3, u"12:40", u"13:18");
            add(0, CardType, 4, u"16:40", u"18:00");
        }
        for (const int CardType : {1, 2, 3, 4})
            add(1, CardType, 1, u"07:00", u"08:30");
        add(2, 4, 1, u"07:00", u"08:30");
        add(2, 4, 2, u"12:00", u"12:20");
        add(2, 4, 3, u"12:40", u"13:18");
        add(2, 4, 4, u"16:47", u"18:00");
        add(3, 3, 1, u"07:00", u"08:05");
        add(3, 3, 3, u"12:40", u"13:30");
        add(3, 3, 4, u"16:30", u"18:00");
        add(3, 4, 1, u"07:00", u"08:05");
        add(3, 4, 2, u"11:55", u"12:20");
        add(3, 4, 3, u"12:40", u"13:30");
        add(3, 4, 4, u"16:30", u"18:00");
        add(4, 4, 1, u"07:00", u"08:30");
        add(4, 4, 2, u"11:30", u"12:20");
        add(4, 4, 3, u"12:40", u"13:30");
        add(4, 4, 4, u"16:30", u"18:00");
    }
    void eachBoundBelongsToItsWindow() {
        QFETCH(int, ElstType);
        QFETCH(int, CardType);
        QFETCH(int, position);
        QFETCH(QString, lower);
        QFETCH(QString, upper);
        const PunchWindows windows(daySlot(ElstType, CardType));
        QCOMPARE(windows.positionOf(minutes(lower) - 1), 0);
        QCOMPARE(windows.positionOf(minutes(lower)), position);
        QCOMPARE(windows.positionOf(minutes(lower) + 1), position);
        QCOMPARE(windows.positionOf(minutes(upper) - 1), position);
        QCOMPARE(windows.positionOf(minutes(upper)), position);
        QCOMPARE(windows.positionOf(minutes(upper) + 1), 0);
    }

    void theWindowsOfADayAreTheseAndNoOthers_data() {
        QTest::addColumn<int>("ElstType");
        QTest::addColumn<int>("CardType");
        QTest::addColumn<QStringList>("windows");
        QTest::newRow("no elasticity") << 0 << 2
                                       << QStringList{u"1 07:00 to 08:25"_s, u"2 11:45 to 12:20"_s,
                                                      u"3 12:40 to 13:18"_s, u"4 16:40 to 18:00"_s};
        QTest::newRow("at least eight hours takes the arrival alone")
            << 1 << 4 << QStringList{u"1 07:00 to 08:30"_s};
        QTest::newRow("an elastic morning") << 2 << 4
                                            << QStringList{u"1 07:00 to 08:30"_s, u"2 12:00 to 12:20"_s,
                                                           u"3 12:40 to 13:18"_s, u"4 16:47 to 18:00"_s};
        QTest::newRow("an elastic afternoon of three punches")
            << 3 << 3 << QStringList{u"1 07:00 to 08:05"_s, u"3 12:40 to 13:30"_s, u"4 16:30 to 18:00"_s};
        QTest::newRow("an elastic afternoon of four punches")
            << 3 << 4
            << QStringList{u"1 07:00 to 08:05"_s, u"2 11:55 to 12:20"_s, u"3 12:40 to 13:30"_s,
                           u"4 16:30 to 18:00"_s};
        QTest::newRow("both halves elastic") << 4 << 4
                                             << QStringList{u"1 07:00 to 08:30"_s, u"2 11:30 to 12:20"_s,
                                                            u"3 12:40 to 13:30"_s, u"4 16:30 to 18:00"_s};
    }
    void theWindowsOfADayAreTheseAndNoOthers() {
        QFETCH(int, ElstType);
        QFETCH(int, CardType);
        QTEST(shown(PunchWindows(daySlot(ElstType, CardType))), "windows");
    }

    /// fmt(x) of a negative time shows its size; sums past 24:00 wrap only where fmt stands.
    void sumsPastMidnightWrapOnlyWhereTheyAreFormatted_data() {
        QTest::addColumn<int>("ElstType");
        QTest::addColumn<int>("CardType");
        QTest::addColumn<QStringList>("windows");
        QTest::newRow("no elasticity: position 1 wraps, position 3 does not")
            << 0 << 4
            << QStringList{u"1 23:00 to 00:15"_s, u"2 23:35 to 23:58"_s, u"3 23:00 to 24:08"_s,
                           u"4 23:30 to 23:58"_s};
        QTest::newRow("at least eight hours does not wrap") << 1 << 1 << QStringList{u"1 23:00 to 24:20"_s};
        QTest::newRow("an elastic morning wraps positions 1 and 3")
            << 2 << 4
            << QStringList{u"1 23:00 to 00:20"_s, u"2 23:50 to 23:58"_s, u"3 23:00 to 00:08"_s,
                           u"4 23:37 to 23:58"_s};
        QTest::newRow("an elastic afternoon does not wrap")
            << 3 << 4
            << QStringList{u"1 23:00 to 23:55"_s, u"2 23:45 to 23:58"_s, u"3 23:00 to 24:20"_s,
                           u"4 23:20 to 23:58"_s};
        QTest::newRow("both halves elastic do not wrap")
            << 4 << 4
            << QStringList{u"1 23:00 to 24:20"_s, u"2 23:20 to 23:58"_s, u"3 23:00 to 24:20"_s,
                           u"4 23:20 to 23:58"_s};
    }
    void sumsPastMidnightWrapOnlyWhereTheyAreFormatted() {
        QFETCH(int, ElstType);
        QFETCH(int, CardType);
        QTEST(shown(PunchWindows(lateSlot(ElstType, CardType))), "windows");
    }

    void negativeDifferencesShowTheirSizeOnlyWhereTheyAreFormatted_data() {
        QTest::addColumn<int>("ElstType");
        QTest::addColumn<QStringList>("windows");
        QTest::newRow("no elasticity: position 2 shows its size, position 4 does not")
            << 0
            << QStringList{u"1 00:00 to 00:29"_s, u"2 00:11 to 01:00"_s, u"3 00:00 to 00:22"_s,
                           u"4 -00:16 to 01:00"_s};
        QTest::newRow("an elastic morning: position 4 shows its size")
            << 2
            << QStringList{u"1 00:00 to 00:34"_s, u"2 00:04 to 01:00"_s, u"3 00:00 to 00:22"_s,
                           u"4 00:09 to 01:00"_s};
        QTest::newRow("an elastic afternoon: neither does")
            << 3
            << QStringList{u"1 00:00 to 00:09"_s, u"2 -00:01 to 01:00"_s, u"3 00:00 to 00:34"_s,
                           u"4 -00:26 to 01:00"_s};
        QTest::newRow("both halves elastic: neither does")
            << 4
            << QStringList{u"1 00:00 to 00:34"_s, u"2 -00:26 to 01:00"_s, u"3 00:00 to 00:34"_s,
                           u"4 -00:26 to 01:00"_s};
    }
    void negativeDifferencesShowTheirSizeOnlyWhereTheyAreFormatted() {
        QFETCH(int, ElstType);
        QTEST(shown(PunchWindows(earlySlot(ElstType, 4))), "windows");
    }

    void aWrappedWindowHoldsNoPunchAndAnUnwrappedOneReachesTheEndOfTheDay() {
        const PunchWindows wrapped(lateSlot(2, 4));
        // Position 1 would be 23:00 to 00:20: no minute is at once late and early enough.
        QCOMPARE(wrapped.positionOf(minutes(u"23:00"_s)), 0);
        QCOMPARE(wrapped.positionOf(minutes(u"00:20"_s)), 0);
        QCOMPARE(wrapped.positionOf(minutes(u"23:50"_s)), 2);
        const PunchWindows plain(lateSlot(4, 4));
        QCOMPARE(plain.positionOf(minutes(u"22:59"_s)), 0);
        QCOMPARE(plain.positionOf(minutes(u"23:00"_s)), 1);
        QCOMPARE(plain.positionOf(minutes(u"23:59"_s)), 1);
        QCOMPARE(plain.positionOf(minutes(u"00:10"_s)), 0);
        const PunchWindows negative(earlySlot(4, 4));
        QCOMPARE(negative.positionOf(0), 1);
        QCOMPARE(negative.positionOf(minutes(u"00:35"_s)), 2);
    }

    void aSlotOverMidnightTakesItsEndInTheMorningAndItsStartAtNight() {
        SlotTimes slot = daySlot(0, 4);
        slot.StrIn1 = minutes(u"21:00"_s);
        slot.StdT1 = minutes(u"22:00"_s);
        slot.StdT2 = minutes(u"02:00"_s);
        slot.EndOut2 = minutes(u"02:20"_s);
        slot.StrIn3 = minutes(u"02:40"_s);
        slot.StdT3 = minutes(u"03:00"_s);
        slot.StdT4 = minutes(u"06:00"_s);
        slot.EndOut4 = minutes(u"07:00"_s);
        const PunchWindows windows(slot);
        QCOMPARE(shown(windows), (QStringList{u"1 21:00 to 22:25"_s, u"2 01:45 to 02:20"_s,
                                              u"3 02:40 to 03:18"_s, u"4 05:40 to 07:00"_s}));
        QCOMPARE(windows.positionOf(minutes(u"21:58"_s)), 1);
        QCOMPARE(windows.positionOf(minutes(u"02:00"_s)), 2);
        QCOMPARE(windows.positionOf(minutes(u"02:58"_s)), 3);
        QCOMPARE(windows.positionOf(minutes(u"06:10"_s)), 4);
    }

    void theFirstWindowThatHoldsThePunchDecides() {
        SlotTimes slot = daySlot(0, 4);
        slot.EndOut2 = slot.EndOut4;
        const PunchWindows windows(slot);
        QCOMPARE(windows.positionOf(minutes(u"13:00"_s)), 2);
        QCOMPARE(windows.positionOf(minutes(u"17:00"_s)), 2);
    }

    void combinationsThatAreNotListedTakeNoPunch() {
        int listed = 0;
        for (int ElstType = 0; ElstType <= 255; ++ElstType) {
            for (int CardType = 0; CardType <= 255; ++CardType) {
                const PunchWindows windows(daySlot(ElstType, CardType));
                QCOMPARE(!windows.all().empty(), isListed(ElstType, CardType));
                listed += windows.all().empty() ? 0 : 1;
                if (windows.all().empty())
                    for (int minute = 0; minute < 1440; minute += 5)
                        QCOMPARE(windows.positionOf(minute), 0);
            }
        }
        QCOMPARE(listed, 256 + 4 + 1 + 2 + 1);
    }

    void wrappedMinutesAreASizeWithinADay() {
        QCOMPARE(wrappedMinutes(0), 0);
        QCOMPARE(wrappedMinutes(1439), 1439);
        QCOMPARE(wrappedMinutes(1440), 0);
        QCOMPARE(wrappedMinutes(1450), 10);
        QCOMPARE(wrappedMinutes(-15), 15);
    }
};

QTEST_GUILESS_MAIN(PunchWindowsTest)
#include "PunchWindowsTest.moc"
