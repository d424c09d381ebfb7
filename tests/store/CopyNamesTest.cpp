#include "store/SafetyCopy.h"

#include <QTest>

#include <algorithm>

using namespace pontrel;
using namespace Qt::StringLiterals;

namespace {

const QString DayName = u"Pontrel-20261122-093000-day.mdb"_s;

QStringList namesOf(const QList<SafetyCopy>& copies) {
    QStringList names;
    for (const SafetyCopy& copy : copies)
        names += copy.name();
    return names;
}

SafetyCopy copyNamed(const QString& name) {
    const auto copy = SafetyCopy::ofName(name);
    if (!copy)
        qFatal("%s names no copy", qUtf8Printable(name));
    return *copy;
}

} // namespace

/// The names of safety copies, and which of them are kept.
class CopyNamesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNameIsReadToTheCharacter_data();
    void aNameIsReadToTheCharacter();
    void thinningKeepsDaysWeeksAndMonths_data();
    void thinningKeepsDaysWeeksAndMonths();
    void twoYearsOfDailyWorkLeaveWhatIsToBeKept();
};

void CopyNamesTest::aNameIsReadToTheCharacter_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isOne");
    const auto row = [](const char* title, const QString& name, bool isOne) {
        QTest::newRow(title) << name << isOne;
    };
    row("of the day", DayName, true);
    row("before a purge", u"Pontrel-20261122-235959-purge.mdb"_s, true);
    row("before a replaced day", u"Pontrel-20240229-000000-replace.mdb"_s, true);
    row("made by hand", u"Pontrel-20261122-093000-hand.mdb"_s, true);
    row("empty", QString(), false);
    row("the store", u"Pontrel.mdb"_s, false);
    row("an unknown reason", u"Pontrel-20261122-093000-week.mdb"_s, false);
    row("another case", u"pontrel-20261122-093000-day.mdb"_s, false);
    row("a reason in capitals", u"Pontrel-20261122-093000-DAY.mdb"_s, false);
    row("no such day", u"Pontrel-20260229-093000-day.mdb"_s, false);
    row("no such time", u"Pontrel-20261122-240000-day.mdb"_s, false);
    row("blanks among the digits", u"Pontrel-2026 122-093000-day.mdb"_s, false);
    row("wide digits", u"Pontrel-２0261122-093000-day.mdb"_s, false);
    row("something in front", u"xPontrel-20261122-093000-day.mdb"_s, false);
    row("something behind", DayName + u'~', false);
    row("a line feed behind", DayName + u'\n', false);
    row("a folder in front", u"a/"_s + DayName, false);
    row("still being copied", u".copying-"_s + DayName, false);
    row("another mark between day and time", u"Pontrel-20261122_093000-day.mdb"_s, false);
    row("no reason", u"Pontrel-20261122-093000.mdb"_s, false);
}

void CopyNamesTest::aNameIsReadToTheCharacter() {
    QFETCH(const QString, name);
    QFETCH(const bool, isOne);
    const auto copy = SafetyCopy::ofName(name);
    QCOMPARE(copy.has_value(), isOne);
    if (copy)
        QCOMPARE(copy->name(), name);
}

void CopyNamesTest::thinningKeepsDaysWeeksAndMonths_data() {
    QTest::addColumn<QStringList>("copies");
    QTest::addColumn<QStringList>("superfluous");
    const auto named = [](const QStringList& moments) {
        QStringList names;
        for (const QString& moment : moments)
            names += u"Pontrel-%1.mdb"_s.arg(moment);
        return names;
    };
    const auto row = [&](const char* title, const QStringList& copies, const QStringList& superfluous) {
        QTest::newRow(title) << named(copies) << named(superfluous);
    };
    row("none", {}, {});
    row("the only one, however old", {u"19990101-080000-day"_s}, {});
    row("all of a day", {u"20261122-080000-day"_s, u"20261122-090000-purge"_s, u"20261122-090001-purge"_s},
        {});
    row("seven days with copies, years apart",
        {u"20190107-080000-day"_s, u"20200107-080000-day"_s, u"20210107-080000-day"_s,
         u"20220107-080000-day"_s, u"20230107-080000-day"_s, u"20240107-080000-day"_s,
         u"20250107-080000-day"_s},
        {});
    // 2026-11-16 is a Monday.
    row("of the eighth day back its week's newest, which is its month's as well, stays",
        {u"20261114-080000-day"_s, u"20261115-080000-day"_s, u"20261115-090000-purge"_s,
         u"20261116-080000-day"_s, u"20261117-080000-day"_s, u"20261118-080000-day"_s,
         u"20261119-080000-day"_s, u"20261120-080000-day"_s, u"20261121-080000-day"_s,
         u"20261122-080000-day"_s},
        {u"20261115-080000-day"_s, u"20261114-080000-day"_s});
    row("a copy dated ahead is a day like another",
        {u"20261101-080000-day"_s, u"20261102-080000-day"_s, u"20991231-080000-day"_s}, {});
    row("of those before actions the newest three a day, and all others",
        {u"20261121-080000-day"_s, u"20261121-090000-replace"_s, u"20261122-080000-day"_s,
         u"20261122-090000-replace"_s, u"20261122-091000-purge"_s, u"20261122-092000-hand"_s,
         u"20261122-093000-replace"_s, u"20261122-094000-purge"_s, u"20261122-095000-replace"_s,
         u"20261122-095900-hand"_s},
        {u"20261122-091000-purge"_s, u"20261122-090000-replace"_s});
}

void CopyNamesTest::thinningKeepsDaysWeeksAndMonths() {
    QFETCH(const QStringList, copies);
    QFETCH(const QStringList, superfluous);
    QList<SafetyCopy> all;
    for (const QString& name : copies)
        all += copyNamed(name);
    QCOMPARE(namesOf(superfluousAmong(all)), superfluous);
    std::reverse(all.begin(), all.end());
    QCOMPARE(namesOf(superfluousAmong(all)), superfluous);
}

/// A copy each working day, a purge each month's first, thinned after each: what is left after two years.
void CopyNamesTest::twoYearsOfDailyWorkLeaveWhatIsToBeKept() {
    QList<SafetyCopy> kept;
    const QDate last(2026, 11, 20); // a Friday
    for (QDate day(2024, 11, 4); day <= last; day = day.addDays(1)) {
        if (day.dayOfWeek() > 5)
            continue;
        kept += SafetyCopy{day, QTime(8, 0), CopyReason::Day};
        if (day.day() == 1)
            kept += SafetyCopy{day, QTime(9, 0), CopyReason::Purge};
        for (const SafetyCopy& copy : superfluousAmong(kept))
            kept.removeAll(copy);
    }
    std::reverse(kept.begin(), kept.end());
    QStringList days;
    for (const SafetyCopy& copy : kept)
        days += copy.day.toString(Qt::ISODate);
    const QStringList expected{
        // the last seven days with copies
        u"2026-11-20"_s, u"2026-11-19"_s, u"2026-11-18"_s, u"2026-11-17"_s, u"2026-11-16"_s, u"2026-11-13"_s,
        u"2026-11-12"_s,
        // the Fridays of the weeks before, five weeks in all
        u"2026-11-06"_s, u"2026-10-30"_s, u"2026-10-23"_s,
        // the last working day of each month before, twenty-four months in all
        u"2026-09-30"_s, u"2026-08-31"_s, u"2026-07-31"_s, u"2026-06-30"_s, u"2026-05-29"_s, u"2026-04-30"_s,
        u"2026-03-31"_s, u"2026-02-27"_s, u"2026-01-30"_s, u"2025-12-31"_s, u"2025-11-28"_s, u"2025-10-31"_s,
        u"2025-09-30"_s, u"2025-08-29"_s, u"2025-07-31"_s, u"2025-06-30"_s, u"2025-05-30"_s, u"2025-04-30"_s,
        u"2025-03-31"_s, u"2025-02-28"_s, u"2025-01-31"_s, u"2024-12-31"_s};
    QCOMPARE(days, expected);
}

QTEST_GUILESS_MAIN(CopyNamesTest)
#include "CopyNamesTest.moc"
