#include "app/controls/TDBDate.h"
#include "store/Clock.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QAccessible>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableView>
#include <QVBoxLayout>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

struct DateForm : QWidget {
    TDBDate date;
    QLineEdit next;
    DateForm() {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&date);
        rows->addWidget(&next);
        date.setFocus();
        show();
    }
    [[nodiscard]] bool waitActive() { return QTest::qWaitForWindowActive(this, PatienceMs); }
    [[nodiscard]] bool calendarShown() const { return date.calendar() && date.calendar()->isVisible(); }
};

/// Where a day of the shown month stands in the calendar's table.
QPoint placeOfDay(QCalendarWidget& calendar, int day, QTableView*& table) {
    table = calendar.findChild<QTableView*>(u"qt_calendar_calendarview"_s);
    const QAbstractItemModel* days = table->model();
    bool inMonth = false;
    for (int row = 1; row < days->rowCount(); ++row) {
        for (int column = 0; column < days->columnCount(); ++column) {
            const QModelIndex index = days->index(row, column);
            inMonth = inMonth || index.data().toInt() == 1;
            if (inMonth && index.data().toInt() == day)
                return table->visualRect(index).center();
        }
    }
    return {};
}

} // namespace

class controlsDateTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void showsItsDateInFull();
    void mayBeEmpty();
    void takesDatesFromAProperty_data();
    void takesDatesFromAProperty();
    void takesNoTyping();
    void movesByTheKeyboard_data();
    void movesByTheKeyboard();
    void keysFillAnEmptyOneWithToday();
    void deleteEmptiesOnlyWhereItMay();
    void opensAndChoosesByTheKeyboard_data();
    void opensAndChoosesByTheKeyboard();
    void opensAndChoosesByTheMouse();
    void escapeLeavesTheCalendarWithoutAChoice();
    void aSecondClickClosesTheCalendar();
    void anEmptyOneOpensOnToday();
    void theWheelDoesNothing();
    void enterMovesOn();
    void tellsItsDateToAssistiveTechnology();
};

void controlsDateTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void controlsDateTest::cleanup() {
    clock::setSource({});
}

void controlsDateTest::showsItsDateInFull() {
    TDBDate date;
    date.setDate({2026, 3, 5});
    QCOMPARE(date.currentText(), u"2026/03/05"_s);
}

void controlsDateTest::mayBeEmpty() {
    TDBDate date;
    QVERIFY(date.value().isNull());
    QCOMPARE(date.currentText(), QString());
    const QSignalSpy changes(&date, &TDBDate::changed);
    date.setDate({2001, 1, 31});
    date.setDate({});
    QCOMPARE(changes.count(), 2);
    QVERIFY(date.value().isNull());
    QVERIFY(!date.date().isValid());
    QCOMPARE(date.currentText(), QString());
    date.setDate({});
    QCOMPARE(changes.count(), 2);
}

void controlsDateTest::takesDatesFromAProperty_data() {
    QTest::addColumn<QVariant>("given");
    QTest::addColumn<QVariant>("held");
    const QDate day(2001, 1, 31);
    QTest::newRow("a date") << QVariant(day) << QVariant(day);
    QTest::newRow("a date with a time") << QVariant(QDateTime(day, QTime(8, 0))) << QVariant(day);
    QTest::newRow("the text of a date") << QVariant(u"2001/1/31"_s) << QVariant(day);
    QTest::newRow("the text of the sentinel") << QVariant(u"2038-01-01"_s) << QVariant(QDate(2038, 1, 1));
    QTest::newRow("a text that is no date") << QVariant(u"2001/2/30"_s) << QVariant();
    QTest::newRow("nothing") << QVariant() << QVariant();
}

void controlsDateTest::takesDatesFromAProperty() {
    QFETCH(QVariant, given);
    TDBDate date;
    date.setDate({1999, 9, 9});
    date.setProperty("value", given);
    QTEST(date.property("value"), "held");
}

void controlsDateTest::takesNoTyping() {
    DateForm form;
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    QTest::keyClicks(&form.date, u"1999/12/31abc"_s);
    QCOMPARE(form.date.currentText(), u"2001/01/31"_s);
    QVERIFY(!form.calendarShown());
}

void controlsDateTest::movesByTheKeyboard_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("withControl");
    QTest::addColumn<QDate>("then");
    QTest::newRow("Down a day on") << int(Qt::Key_Down) << false << QDate(2001, 2, 1);
    QTest::newRow("Up a day back") << int(Qt::Key_Up) << false << QDate(2001, 1, 30);
    QTest::newRow("Page Down to the next month's last day")
        << int(Qt::Key_PageDown) << false << QDate(2001, 2, 28);
    QTest::newRow("Page Up a month back") << int(Qt::Key_PageUp) << false << QDate(2000, 12, 31);
    QTest::newRow("Ctrl+Page Down a year on") << int(Qt::Key_PageDown) << true << QDate(2002, 1, 31);
    QTest::newRow("Ctrl+Page Up a year back") << int(Qt::Key_PageUp) << true << QDate(2000, 1, 31);
}

void controlsDateTest::movesByTheKeyboard() {
    QFETCH(int, key);
    QFETCH(bool, withControl);
    DateForm form;
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    QTest::keyClick(&form.date, static_cast<Qt::Key>(key),
                    withControl ? Qt::ControlModifier : Qt::NoModifier);
    QTEST(form.date.date(), "then");
}

void controlsDateTest::keysFillAnEmptyOneWithToday() {
    DateForm form;
    QVERIFY(form.waitActive());
    QTest::keyClick(&form.date, Qt::Key_Down);
    QCOMPARE(form.date.date(), QDate(2026, 3, 5));
}

void controlsDateTest::deleteEmptiesOnlyWhereItMay() {
    DateForm form;
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    form.date.setClearable(false);
    QTest::keyClick(&form.date, Qt::Key_Delete);
    QCOMPARE(form.date.date(), QDate(2001, 1, 31));
    form.date.setClearable(true);
    QTest::keyClick(&form.date, Qt::Key_Delete);
    QVERIFY(form.date.value().isNull());
}

void controlsDateTest::opensAndChoosesByTheKeyboard_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("withAlt");
    QTest::addColumn<int>("choosing");
    QTest::newRow("F4") << int(Qt::Key_F4) << false << int(Qt::Key_Return);
    QTest::newRow("the blank") << int(Qt::Key_Space) << false << int(Qt::Key_Return);
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << true << int(Qt::Key_Enter);
    QTest::newRow("the blank alone") << int(Qt::Key_Space) << false << int(Qt::Key_Space);
}

void controlsDateTest::opensAndChoosesByTheKeyboard() {
    QFETCH(int, key);
    QFETCH(bool, withAlt);
    QFETCH(int, choosing);
    DateForm form;
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    QTest::keyClick(&form.date, static_cast<Qt::Key>(key), withAlt ? Qt::AltModifier : Qt::NoModifier);
    QTRY_VERIFY_WITH_TIMEOUT(form.calendarShown(), PatienceMs);
    QCOMPARE(form.date.calendar()->selectedDate(), QDate(2001, 1, 31));
    QWindow* popup = form.date.calendar()->window()->windowHandle();
    QTest::keyClick(popup, Qt::Key_Left);
    QTest::keyClick(popup, Qt::Key_Up);
    QTest::keyClick(popup, static_cast<Qt::Key>(choosing));
    QTRY_VERIFY_WITH_TIMEOUT(!form.calendarShown(), PatienceMs);
    QCOMPARE(form.date.date(), QDate(2001, 1, 23));
    QVERIFY(form.date.hasFocus());
}

void controlsDateTest::opensAndChoosesByTheMouse() {
    DateForm form;
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    QTest::mouseClick(&form.date, Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(form.calendarShown(), PatienceMs);
    QTableView* table = nullptr;
    const QPoint place = placeOfDay(*form.date.calendar(), 17, table);
    QVERIFY(!place.isNull());
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTRY_VERIFY_WITH_TIMEOUT(!form.calendarShown(), PatienceMs);
    QCOMPARE(form.date.date(), QDate(2001, 1, 17));
}

void controlsDateTest::escapeLeavesTheCalendarWithoutAChoice() {
    DateForm form;
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    QTest::keyClick(&form.date, Qt::Key_F4);
    QTRY_VERIFY_WITH_TIMEOUT(form.calendarShown(), PatienceMs);
    QWindow* popup = form.date.calendar()->window()->windowHandle();
    QTest::keyClick(popup, Qt::Key_Left);
    QTest::keyClick(popup, Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(!form.calendarShown(), PatienceMs);
    QCOMPARE(form.date.date(), QDate(2001, 1, 31));
    QVERIFY(form.isVisible());
}

void controlsDateTest::aSecondClickClosesTheCalendar() {
    DateForm form;
    QVERIFY(form.waitActive());
    test::click(form.date);
    QTRY_VERIFY_WITH_TIMEOUT(form.calendarShown(), PatienceMs);
    test::click(form.date);
    QTRY_VERIFY_WITH_TIMEOUT(!form.calendarShown(), PatienceMs);
    QTest::qWait(50); // time for the click to be carried out once more
    QVERIFY(!form.calendarShown());
    test::click(form.date);
    QTRY_VERIFY_WITH_TIMEOUT(form.calendarShown(), PatienceMs);
}

void controlsDateTest::anEmptyOneOpensOnToday() {
    DateForm form;
    QVERIFY(form.waitActive());
    QTest::keyClick(&form.date, Qt::Key_F4);
    QTRY_VERIFY_WITH_TIMEOUT(form.calendarShown(), PatienceMs);
    QCOMPARE(form.date.calendar()->selectedDate(), QDate(2026, 3, 5));
    QVERIFY(form.date.value().isNull());
}

void controlsDateTest::theWheelDoesNothing() {
    DateForm form;
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    const QPointF middle = form.date.rect().center();
    QWheelEvent turn(middle, form.date.mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&form.date, &turn);
    QCOMPARE(form.date.date(), QDate(2001, 1, 31));
    QCOMPARE(form.date.currentText(), u"2001/01/31"_s);
}

void controlsDateTest::enterMovesOn() {
    DateForm form;
    QVERIFY(form.waitActive());
    QTest::keyClick(&form.date, Qt::Key_Return);
    QVERIFY(form.next.hasFocus());
}

void controlsDateTest::tellsItsDateToAssistiveTechnology() {
    DateForm form;
    form.date.setDate({2026, 3, 5});
    const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&form.date);
    QVERIFY(seen);
    QCOMPARE(seen->role(), QAccessible::ComboBox);
    QCOMPARE(seen->text(QAccessible::Value), u"2026/03/05"_s);
}

int main(int argc, char** argv) {
    return pontrel::test::runTests<controlsDateTest>(argc, argv);
}

#include "controlsDateTest.moc"
