#include "app/CalendarForm.h"
#include "app/controls/TDBCalendarModel.h"
#include "store/Clock.h"

#include <QAccessible>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

class controlsCalendarGroupsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void groupsHoldDays();
    void aGroupThatIsNotThereHoldsNothing();
    void aGroupBegunAnewIsEmpty();
    void groupsAreApart();
    void marksTheDaysOfTheGroupShown();
    void marksNoDayWithoutAGroup();
    void todayAndTheSelectedDayAreSeenAlsoInTheGroup();
    void namesTheGroupShown();
    void fitsItsLeastSize();
    void speaksItsDays();
};

void controlsCalendarGroupsTest::init() {
    clock::setSource([] { return QDateTime(Today, QTime(9, 30)); });
}

void controlsCalendarGroupsTest::cleanup() {
    clock::setSource({});
}

void controlsCalendarGroupsTest::groupsHoldDays() {
    CalendarForm form;
    TDBCalendar& calendar = form.calendar;
    calendar.addDay(u"nowork"_s, Holiday);
    calendar.addDay(u"nowork"_s, Holiday);
    calendar.addDay(u"nowork"_s, {1850, 1, 1});
    calendar.addDay(u"nowork"_s, {});
    QCOMPARE(calendar.days(u"nowork"_s), (std::set<QDate>{{1850, 1, 1}, Holiday}));
    QVERIFY(calendar.hasDay(u"nowork"_s, Holiday));
    calendar.removeDay(u"nowork"_s, Holiday);
    QVERIFY(!calendar.hasDay(u"nowork"_s, Holiday));
    calendar.addDay(u"nowork"_s, Holiday);
    calendar.clearDays(u"nowork"_s);
    QCOMPARE(calendar.days(u"nowork"_s), std::set<QDate>());
}

void controlsCalendarGroupsTest::aGroupThatIsNotThereHoldsNothing() {
    TDBCalendar calendar;
    calendar.addDay(u"nowork"_s, Holiday);
    calendar.removeDay(u"nowork"_s, Holiday);
    calendar.clearDays(u"nowork"_s);
    QVERIFY(!calendar.hasDay(u"nowork"_s, Holiday));
    QCOMPARE(calendar.days(u"nowork"_s), std::set<QDate>());
}

void controlsCalendarGroupsTest::aGroupBegunAnewIsEmpty() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.calendar.addDay(u"nowork"_s, Holiday);
    const QColor marked = form.ground(17);
    form.calendar.createGroup(u"nowork"_s, u"放假日"_s);
    QCOMPARE(form.calendar.days(u"nowork"_s), std::set<QDate>());
    QVERIFY(form.ground(17) != marked);
    form.calendar.addDay(u"nowork"_s, Holiday);
    QCOMPARE(form.ground(17), marked);
}

void controlsCalendarGroupsTest::groupsAreApart() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.calendar.createGroup(u"other"_s, u"其他"_s);
    form.calendar.addDay(u"other"_s, Holiday);
    QVERIFY(!form.calendar.hasDay(u"nowork"_s, Holiday));
    QCOMPARE(form.ground(17), form.ground(18));
    form.calendar.showGroup(u"other"_s);
    QVERIFY(form.ground(17) != form.ground(18));
}

void controlsCalendarGroupsTest::marksTheDaysOfTheGroupShown() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    const QColor plain = form.ground(18);
    form.calendar.addDay(u"nowork"_s, Holiday);
    form.calendar.addDay(u"nowork"_s, {2026, 4, 18});
    QVERIFY(form.ground(17) != plain);
    QCOMPARE(form.ground(18), plain);
    // Weekends are days like any other.
    form.calendar.setDate({2026, 3, 14}); // nor does a day selected look like one of the group
    QCOMPARE(form.ground(14), plain);
    QCOMPARE(form.ground(15), plain);
    form.calendar.setDate({2026, 4, 5});
    QCOMPARE(form.ground(17), plain);
    QVERIFY(form.ground(18) != plain);
    form.calendar.clearDays(u"nowork"_s);
    QCOMPARE(form.ground(18), plain);
}

void controlsCalendarGroupsTest::marksNoDayWithoutAGroup() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.calendar.addDay(u"nowork"_s, Holiday);
    form.calendar.showGroup(u"none"_s);
    QCOMPARE(form.ground(17), form.ground(18));
}

void controlsCalendarGroupsTest::todayAndTheSelectedDayAreSeenAlsoInTheGroup() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    form.calendar.setDate({2026, 3, 20});
    const QImage today = form.look(5);
    clock::setSource([] { return QDateTime(Today.addDays(1), QTime(0, 0)); });
    QVERIFY(form.look(5) != today);
    clock::setSource([] { return QDateTime(Today, QTime(9, 30)); });
    form.calendar.addDay(u"nowork"_s, Today);
    const QImage marked = form.look(5);
    QVERIFY(marked != today);
    form.calendar.setDate(Today);
    const QImage selected = form.look(5);
    QVERIFY(selected != marked);
    QCOMPARE(form.ground(5), marked.pixelColor(marked.width() / 8, marked.height() / 2));
    form.next.setFocus();
    const QImage unfocused = form.look(5);
    QVERIFY(unfocused != selected);
    QVERIFY(unfocused != marked);
}

void controlsCalendarGroupsTest::namesTheGroupShown() {
    CalendarForm form;
    const auto& legend = control<QLabel>(form.calendar, u"Group"_s);
    QCOMPARE(legend.text(), u"放假日"_s);
    form.calendar.showGroup(u"none"_s);
    QCOMPARE(legend.text(), QString());
}

void controlsCalendarGroupsTest::fitsItsLeastSize() {
    TDBCalendar calendar;
    calendar.resize(calendar.minimumSizeHint());
    calendar.setDate({2026, 8, 31});
    calendar.show();
    auto& days = control<QTableView>(calendar, u"Days"_s);
    const QRect room = days.viewport()->rect();
    for (int column = 0; column < 7; ++column)
        QVERIFY(room.contains(days.visualRect(days.model()->index(5, column))));
    const QRect place = days.visualRect(days.model()->index(5, 0));
    QVERIFY(place.width() >= days.fontMetrics().horizontalAdvance(u"30"_s) + 8);
    QVERIFY(place.height() >= days.fontMetrics().height());
    const auto& title = control<QLabel>(calendar, u"Month"_s);
    QVERIFY(title.width() >= title.sizeHint().width());
}

void controlsCalendarGroupsTest::speaksItsDays() {
    CalendarForm form;
    form.calendar.addDay(u"nowork"_s, Today);
    const auto text = [&](int row, int column) {
        return form.days().model()->index(row, column).data(Qt::AccessibleTextRole).toString();
    };
    QCOMPARE(text(0, 4), u"2026年3月5日 星期四 放假日 今天"_s);
    QCOMPARE(text(0, 0), u"2026年3月1日 星期日"_s);
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&form.days());
    QVERIFY(table);
    QCOMPARE(table->text(QAccessible::Name), u"2026年3月　民國115年"_s);
    QAccessibleInterface* cell = table->tableInterface()->cellAt(0, 4);
    QVERIFY(cell);
    QCOMPARE(cell->text(QAccessible::Name), u"2026年3月5日 星期四 放假日 今天"_s);
    QVERIFY(cell->state().selected);
    QCOMPARE(controlFaults(form).filter(u"Days"_s), QStringList());
}

int main(int argc, char** argv) {
    return runTests<controlsCalendarGroupsTest>(argc, argv);
}

#include "controlsCalendarGroupsTest.moc"
