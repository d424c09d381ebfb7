#include "app/CalendarForm.h"
#include "app/EnterAsTab.h"
#include "store/Clock.h"

#include <QSignalSpy>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

class controlsCalendarTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void opensOnToday();
    void weeksStartOnSunday();
    void everyDayStandsUnderItsWeekday_data();
    void everyDayStandsUnderItsWeekday();
    void showsMonthAndYearOfBothCalendars_data();
    void showsMonthAndYearOfBothCalendars();
    void aClickPicksTheDay();
    void twoClicksPickTwice();
    void enterPicksTheSelectedDay();
    void spacePicksAsEnterDoes();
    void aKeyHeldDownPicksOnce();
    void enterPicksAlsoWhereEnterIsTab();
    void aPressDraggedElsewhereOnlyMoves();
    void aClickBesideTheMonthDoesNothing();
    void aRightClickPicksNothing();
    void keysOnlyMove_data();
    void keysOnlyMove();
    void buttonsOnlyMove_data();
    void buttonsOnlyMove();
    void aDayReachedByNavigationIsPickedTheSameWay();
    void staysWithinItsYears_data();
    void staysWithinItsYears();
    void anInvalidDateDoesNothing();
    void tellsOtherDaysAndMonths();
    void tabLeavesTheDays();
};

void controlsCalendarTest::init() {
    clock::setSource([] { return QDateTime(Today, QTime(9, 30)); });
}

void controlsCalendarTest::cleanup() {
    clock::setSource({});
}

void controlsCalendarTest::opensOnToday() {
    const CalendarForm form;
    QCOMPARE(form.calendar.date(), Today);
    QCOMPARE(form.days().currentIndex().data().toString(), u"5"_s);
    QCOMPARE(form.picks, QList<QDate>());
}

void controlsCalendarTest::weeksStartOnSunday() {
    const CalendarForm form;
    QString header;
    for (int column = 0; column < 7; ++column)
        header += form.days().model()->headerData(column, Qt::Horizontal).toString();
    QCOMPARE(header, u"日一二三四五六"_s);
}

void controlsCalendarTest::everyDayStandsUnderItsWeekday_data() {
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<QList<QStringList>>("weeks");
    QTest::newRow("a month from Sunday on, in four weeks")
        << 2026 << 2
        << QList<QStringList>{{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s},
                              {u"8"_s, u"9"_s, u"10"_s, u"11"_s, u"12"_s, u"13"_s, u"14"_s},
                              {u"15"_s, u"16"_s, u"17"_s, u"18"_s, u"19"_s, u"20"_s, u"21"_s},
                              {u"22"_s, u"23"_s, u"24"_s, u"25"_s, u"26"_s, u"27"_s, u"28"_s},
                              {u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s},
                              {u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}};
    QTest::newRow("a month from Saturday on, in six weeks")
        << 2026 << 8
        << QList<QStringList>{{u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u"1"_s},
                              {u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s},
                              {u"9"_s, u"10"_s, u"11"_s, u"12"_s, u"13"_s, u"14"_s, u"15"_s},
                              {u"16"_s, u"17"_s, u"18"_s, u"19"_s, u"20"_s, u"21"_s, u"22"_s},
                              {u"23"_s, u"24"_s, u"25"_s, u"26"_s, u"27"_s, u"28"_s, u"29"_s},
                              {u"30"_s, u"31"_s, u""_s, u""_s, u""_s, u""_s, u""_s}};
    QTest::newRow("February of a leap year")
        << 1912 << 2
        << QList<QStringList>{{u""_s, u""_s, u""_s, u""_s, u"1"_s, u"2"_s, u"3"_s},
                              {u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s, u"9"_s, u"10"_s},
                              {u"11"_s, u"12"_s, u"13"_s, u"14"_s, u"15"_s, u"16"_s, u"17"_s},
                              {u"18"_s, u"19"_s, u"20"_s, u"21"_s, u"22"_s, u"23"_s, u"24"_s},
                              {u"25"_s, u"26"_s, u"27"_s, u"28"_s, u"29"_s, u""_s, u""_s},
                              {u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}};
}

void controlsCalendarTest::everyDayStandsUnderItsWeekday() {
    QFETCH(int, year);
    QFETCH(int, month);
    CalendarForm form;
    form.calendar.setDate({year, month, 1});
    QList<QStringList> weeks;
    for (int row = 0; row < 6; ++row) {
        QStringList week;
        for (int column = 0; column < 7; ++column)
            week << form.days().model()->index(row, column).data().toString();
        weeks << week;
    }
    QTEST(weeks, "weeks");
}

void controlsCalendarTest::showsMonthAndYearOfBothCalendars_data() {
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("title");
    QTest::newRow("this year") << QDate(2026, 3, 5) << u"2026年3月　民國115年"_s;
    QTest::newRow("the first year") << QDate(1912, 1, 1) << u"1912年1月　民國1年"_s;
    QTest::newRow("the year before it") << QDate(1911, 12, 31) << u"1911年12月　民國前1年"_s;
    QTest::newRow("the last year") << QDate(2100, 12, 31) << u"2100年12月　民國189年"_s;
}

void controlsCalendarTest::showsMonthAndYearOfBothCalendars() {
    QFETCH(QDate, date);
    CalendarForm form;
    form.calendar.setDate(date);
    QTEST(form.title(), "title");
    QTEST(form.days().accessibleName(), "title");
}

void controlsCalendarTest::aClickPicksTheDay() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.clickDay(17);
    QCOMPARE(form.picks, QList<QDate>{Holiday});
    QCOMPARE(form.calendar.date(), Holiday);
}

void controlsCalendarTest::twoClicksPickTwice() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.clickDay(17);
    form.clickDay(17);
    QCOMPARE(form.picks, QList<QDate>({Holiday, Holiday}));
    // Also where they come fast enough for a double click.
    const QPoint place = form.days().viewport()->mapTo(&form, form.placeOf(18));
    QTest::mouseDClick(form.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCoreApplication::processEvents();
    QCOMPARE(form.picks.mid(2), QList<QDate>({{2026, 3, 18}, {2026, 3, 18}}));
}

void controlsCalendarTest::enterPicksTheSelectedDay() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.press(Qt::Key_Return);
    form.press(Qt::Key_Right);
    form.press(Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(form.picks, QList<QDate>({Today, Today.addDays(1)}));
}

void controlsCalendarTest::spacePicksAsEnterDoes() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.press(Qt::Key_Space);
    QCOMPARE(form.calendar.date(), Today);
    form.press(Qt::Key_Right);
    form.press(Qt::Key_Space, Qt::ControlModifier);
    form.press(Qt::Key_Space);
    QCOMPARE(form.picks, QList<QDate>({Today, Today.addDays(1)}));
}

void controlsCalendarTest::aKeyHeldDownPicksOnce() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
    for (QKeyEvent* event : {&press, &again, &again})
        QCoreApplication::sendEvent(&form.days(), event);
    QCOMPARE(form.picks, QList<QDate>{Today});
}

void controlsCalendarTest::enterPicksAlsoWhereEnterIsTab() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    EnterAsTab::install(form);
    form.press(Qt::Key_Return);
    QCOMPARE(form.picks, QList<QDate>{Today});
    QVERIFY(form.days().hasFocus());
}

void controlsCalendarTest::aPressDraggedElsewhereOnlyMoves() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    QWidget* viewport = form.days().viewport();
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, form.placeOf(17));
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, form.placeOf(24));
    QCOMPARE(form.picks, QList<QDate>());
    QCOMPARE(form.calendar.date().month(), 3);
}

void controlsCalendarTest::aClickBesideTheMonthDoesNothing() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.calendar.setDate({2026, 8, 12});
    const QPoint before = form.days().visualRect(form.days().model()->index(0, 0)).center();
    const QPoint after = form.days().visualRect(form.days().model()->index(5, 6)).center();
    for (const QPoint place : {before, after})
        QTest::mouseClick(form.days().viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(form.picks, QList<QDate>());
    QCOMPARE(form.calendar.date(), QDate(2026, 8, 12));
    form.press(Qt::Key_Right);
    QCOMPARE(form.calendar.date(), QDate(2026, 8, 13));
}

void controlsCalendarTest::aRightClickPicksNothing() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    QTest::mouseClick(form.days().viewport(), Qt::RightButton, Qt::NoModifier, form.placeOf(17));
    QCOMPARE(form.picks, QList<QDate>());
}

void controlsCalendarTest::keysOnlyMove_data() {
    QTest::addColumn<QDate>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("withControl");
    QTest::addColumn<QDate>("to");
    const QDate last(2001, 1, 31);
    QTest::newRow("Left a day back") << last << int(Qt::Key_Left) << false << QDate(2001, 1, 30);
    QTest::newRow("Right into the next month") << last << int(Qt::Key_Right) << false << QDate(2001, 2, 1);
    QTest::newRow("Left into the month before")
        << QDate(2001, 2, 1) << int(Qt::Key_Left) << false << QDate(2001, 1, 31);
    QTest::newRow("Right past a week's end")
        << QDate(2001, 1, 6) << int(Qt::Key_Right) << false << QDate(2001, 1, 7);
    QTest::newRow("Up a week back") << last << int(Qt::Key_Up) << false << QDate(2001, 1, 24);
    QTest::newRow("Down into the next month") << last << int(Qt::Key_Down) << false << QDate(2001, 2, 7);
    QTest::newRow("Home to the first") << last << int(Qt::Key_Home) << false << QDate(2001, 1, 1);
    QTest::newRow("End to the last") << QDate(2001, 2, 7) << int(Qt::Key_End) << false << QDate(2001, 2, 28);
    QTest::newRow("Page Up a month back") << last << int(Qt::Key_PageUp) << false << QDate(2000, 12, 31);
    QTest::newRow("Page Down to a shorter month's last day")
        << last << int(Qt::Key_PageDown) << false << QDate(2001, 2, 28);
    QTest::newRow("Ctrl+Page Up a year back") << last << int(Qt::Key_PageUp) << true << QDate(2000, 1, 31);
    QTest::newRow("Ctrl+Page Down from a leap day")
        << QDate(2000, 2, 29) << int(Qt::Key_PageDown) << true << QDate(2001, 2, 28);
}

void controlsCalendarTest::keysOnlyMove() {
    QFETCH(QDate, from);
    QFETCH(int, key);
    QFETCH(bool, withControl);
    QFETCH(QDate, to);
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.calendar.setDate(from);
    form.press(static_cast<Qt::Key>(key), withControl ? Qt::ControlModifier : Qt::NoModifier);
    QCOMPARE(form.calendar.date(), to);
    QCOMPARE(form.days().currentIndex().data().toString(), QString::number(to.day()));
    QVERIFY(form.title().startsWith(u"%1年%2月"_s.arg(to.year()).arg(to.month())));
    QCOMPARE(form.picks, QList<QDate>());
}

void controlsCalendarTest::buttonsOnlyMove_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QDate>("to");
    QTest::newRow("the year before") << u"PreviousYear"_s << QDate(2025, 3, 5);
    QTest::newRow("the month before") << u"PreviousMonth"_s << QDate(2026, 2, 5);
    QTest::newRow("the next month") << u"NextMonth"_s << QDate(2026, 4, 5);
    QTest::newRow("the next year") << u"NextYear"_s << QDate(2027, 3, 5);
}

void controlsCalendarTest::buttonsOnlyMove() {
    QFETCH(QString, button);
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.next.setFocus();
    click(control<QToolButton>(form.calendar, button));
    QTEST(form.calendar.date(), "to");
    QCOMPARE(form.picks, QList<QDate>());
    QVERIFY(form.next.hasFocus());
}

void controlsCalendarTest::aDayReachedByNavigationIsPickedTheSameWay() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    click(control<QToolButton>(form.calendar, u"NextMonth"_s));
    form.clickDay(30);
    form.press(Qt::Key_Right);
    form.press(Qt::Key_Return);
    QCOMPARE(form.picks, QList<QDate>({{2026, 4, 30}, {2026, 5, 1}}));
}

void controlsCalendarTest::staysWithinItsYears_data() {
    QTest::addColumn<QDate>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<QDate>("to");
    const QDate first(1911, 1, 1);
    const QDate last(2100, 12, 31);
    QTest::newRow("a day before the first") << first << int(Qt::Key_Left) << first;
    QTest::newRow("a month before the first") << QDate(1911, 1, 20) << int(Qt::Key_PageUp) << first;
    QTest::newRow("a day after the last") << last << int(Qt::Key_Right) << last;
    QTest::newRow("a month after the last") << QDate(2100, 12, 5) << int(Qt::Key_PageDown) << last;
    QTest::newRow("code before the first") << QDate(1900, 5, 5) << 0 << first;
    QTest::newRow("code after the last") << QDate(2101, 1, 1) << 0 << last;
}

void controlsCalendarTest::staysWithinItsYears() {
    QFETCH(QDate, from);
    QFETCH(int, key);
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.calendar.setDate(from);
    if (key != 0)
        form.press(static_cast<Qt::Key>(key));
    QTEST(form.calendar.date(), "to");
}

void controlsCalendarTest::anInvalidDateDoesNothing() {
    TDBCalendar calendar;
    calendar.setDate({});
    QCOMPARE(calendar.date(), Today);
}

void controlsCalendarTest::tellsOtherDaysAndMonths() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    QSignalSpy days(&form.calendar, &TDBCalendar::dateChanged);
    QSignalSpy months(&form.calendar, &TDBCalendar::monthChanged);
    form.calendar.setDate(Today);
    form.clickDay(5);
    QCOMPARE(days.count(), 0);
    form.press(Qt::Key_Right);
    QCOMPARE(days.takeFirst(), QVariantList{QDate(2026, 3, 6)});
    QCOMPARE(months.count(), 0);
    form.press(Qt::Key_PageDown);
    QCOMPARE(days.takeFirst(), QVariantList{QDate(2026, 4, 6)});
    QCOMPARE(months.takeFirst(), QVariantList({2026, 4}));
    form.calendar.setDate({2027, 4, 6});
    QCOMPARE(months.takeFirst(), QVariantList({2027, 4}));
    QCOMPARE(days.count(), 1);
}

void controlsCalendarTest::tabLeavesTheDays() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    QVERIFY(form.days().hasFocus());
    form.press(Qt::Key_Tab);
    QVERIFY(form.next.hasFocus());
    form.press(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(form.days().hasFocus());
}

int main(int argc, char** argv) {
    return runTests<controlsCalendarTest>(argc, argv);
}

#include "controlsCalendarTest.moc"
