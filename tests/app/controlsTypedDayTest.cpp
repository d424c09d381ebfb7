#include "app/CalendarForm.h"
#include "app/DatePair.h"
#include "app/FocusWatch.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TypedDay.h"
#include "store/Clock.h"

#include <QAbstractItemView>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString HowTo = u"鍵入 1150305 或 20260305，T 今天"_s;

/// A date control with its mask, and a box behind them.
struct PairForm : QWidget {
    bool updating = false;
    int mark = 0;
    DateFields fields = makeDateFields(this, u"TDBMask1(0)"_s, u"TDBDate1(0)"_s, u"日期"_s);
    QLineEdit next;
    FocusWatch watch{this};

    PairForm() {
        auto* rows = new QVBoxLayout(this);
        for (QWidget* each : std::initializer_list<QWidget*>{fields.mask, fields.date, &next})
            rows->addWidget(each);
        new DatePair(fields.mask, fields.date, 0, ModuleDatePair, watch, updating, mark);
        fields.mask->setFocus();
        show();
    }
    [[nodiscard]] QCalendarWidget* calendar() const { return fields.date->calendar(); }
    [[nodiscard]] bool isCalendarShown() const { return calendar() && calendar()->isVisible(); }
    /// Opens the calendar by a key in the mask.
    void openFromMask(Qt::Key key = Qt::Key_F4, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QVERIFY(QTest::qWaitForWindowActive(this, PatienceMs));
        QTest::keyClick(fields.mask, key, modifiers);
        QTRY_VERIFY_WITH_TIMEOUT(isCalendarShown(), PatienceMs);
    }
    void press(Qt::Key key) const { QTest::keyClick(calendar()->window()->windowHandle(), key); }
    void type(const QString& digits) const {
        for (const QChar each : digits)
            QTest::keyClick(calendar()->window()->windowHandle(), each.toLatin1());
    }
    [[nodiscard]] QString shown(const QString& label) const {
        return control<QLabel>(*calendar()->window(), label).text();
    }
};

void typeInto(const CalendarForm& form, const QString& digits) {
    for (const QChar each : digits)
        QTest::keyClick(&form.days(), each.toLatin1());
}

QString hintOf(const CalendarForm& form) {
    return control<QLabel>(form.calendar, u"Typed"_s).text();
}

} // namespace

/// Days typed in digits into an open calendar: the one that drops down and that of the days off.
class controlsTypedDayTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        clock::setSource([] { return QDateTime(Today, QTime(9, 30)); });
    }
    void cleanup() { clock::setSource({}); }
    void aDayIsChosenAsQuicklyAsTyped_data();
    void aDayIsChosenAsQuicklyAsTyped();
    void digitsThatNameNoDayAreTold_data();
    void digitsThatNameNoDayAreTold();
    void anUnfinishedDayIsNotChosen();
    void backspaceAndEscapeTakeDigitsBack();
    void theNextDigitBeginsAnew();
    void tGoesToToday();
    void movingForgetsWhatWasTyped();
    void theMouseForgetsWhatWasTyped();
    void openingAgainBeginsAnew();
    void theHeadShowsTheYearOfTheRepublic();
    void altDownOpensFromTheMaskToo();
    void theDaysOffGoThereAndPickNothing();
    void theDaysOffRefuseWhatTheyDoNotHave();
};

void controlsTypedDayTest::aDayIsChosenAsQuicklyAsTyped_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QString>("mask");
    QTest::newRow("the Republic's year") << u"1150305"_s << QDate(2026, 3, 5) << QString();
    QTest::newRow("the common era") << u"20260305"_s << QDate(2026, 3, 5) << QString();
    QTest::newRow("the first of three digits") << u"1000101"_s << QDate(2011, 1, 1) << QString();
    QTest::newRow("the last that the mask holds") << u"20101231"_s << QDate(2010, 12, 31) << u"991231"_s;
    QTest::newRow("a leap day") << u"1130229"_s << QDate(2024, 2, 29) << QString();
}

void controlsTypedDayTest::aDayIsChosenAsQuicklyAsTyped() {
    QFETCH(const QString, digits);
    QFETCH(const QDate, day);
    PairForm form;
    form.openFromMask();
    form.type(digits);
    QCOMPARE(form.calendar()->selectedDate(), day);
    QCOMPARE(form.fields.date->date(), QDate()); // not before it is chosen
    form.press(Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!form.isCalendarShown(), PatienceMs);
    QCOMPARE(form.fields.date->date(), day);
    QTEST(form.fields.mask->value(), "mask");
    QCOMPARE(form.mark, 0);
    // The control that holds the day is the one to be left.
    QTRY_VERIFY_WITH_TIMEOUT(form.fields.mask->value().isEmpty() ? form.fields.date->hasFocus()
                                                                 : form.fields.mask->hasFocus(),
                             PatienceMs);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (form.fields.mask->value().isEmpty())
        QVERIFY(form.next.hasFocus());
    else
        QVERIFY(form.fields.date->hasFocus());
}

void controlsTypedDayTest::digitsThatNameNoDayAreTold_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("hint");
    QTest::newRow("no such day") << u"1150230"_s << u"115/02/30 沒有這一天"_s;
    QTest::newRow("no such month") << u"20261301"_s << u"2026/13/01 沒有這一天"_s;
    QTest::newRow("no leap year") << u"1150229"_s << u"115/02/29 沒有這一天"_s;
    QTest::newRow("another first digit") << u"9"_s << u"請由 1（民國 7 位）或 2（西元 8 位）開始"_s;
}

void controlsTypedDayTest::digitsThatNameNoDayAreTold() {
    QFETCH(const QString, digits);
    PairForm form;
    form.openFromMask();
    form.type(digits);
    QTEST(form.shown(u"Typed"_s), "hint");
    QCOMPARE(form.calendar()->selectedDate(), Today);
    QVERIFY(form.isCalendarShown());
}

void controlsTypedDayTest::anUnfinishedDayIsNotChosen() {
    PairForm form;
    form.openFromMask();
    form.type(u"11503"_s);
    QCOMPARE(form.shown(u"Typed"_s), u"115/03/__"_s);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        form.press(key);
        QCOMPARE(form.shown(u"Typed"_s), u"115/03/__ 日期還沒有輸入完"_s);
    }
    QVERIFY(form.isCalendarShown());
    QCOMPARE(form.fields.date->date(), QDate());
    form.type(u"17"_s);
    form.press(Qt::Key_Space);
    QTRY_VERIFY_WITH_TIMEOUT(!form.isCalendarShown(), PatienceMs);
    QCOMPARE(form.fields.date->date(), QDate(2026, 3, 17));
}

void controlsTypedDayTest::backspaceAndEscapeTakeDigitsBack() {
    PairForm form;
    form.openFromMask();
    form.type(u"1150318"_s);
    form.press(Qt::Key_Backspace);
    QCOMPARE(form.shown(u"Typed"_s), u"115/03/1_"_s);
    form.type(u"9"_s);
    QCOMPARE(form.calendar()->selectedDate(), QDate(2026, 3, 19));
    form.press(Qt::Key_Escape);
    QCOMPARE(form.shown(u"Typed"_s), HowTo);
    QVERIFY(form.isCalendarShown());
    form.press(Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(!form.isCalendarShown(), PatienceMs);
    QCOMPARE(form.fields.date->date(), QDate());
}

void controlsTypedDayTest::theNextDigitBeginsAnew() {
    PairForm form;
    form.openFromMask();
    form.type(u"1150318"_s);
    form.type(u"20251224"_s);
    QCOMPARE(form.calendar()->selectedDate(), QDate(2025, 12, 24));
    QCOMPARE(form.shown(u"Typed"_s), u"2025/12/24"_s);
}

void controlsTypedDayTest::tGoesToToday() {
    PairForm form;
    form.openFromMask();
    form.type(u"1121231"_s);
    form.press(Qt::Key_T);
    QCOMPARE(form.calendar()->selectedDate(), Today);
    form.press(Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!form.isCalendarShown(), PatienceMs);
    QCOMPARE(form.fields.date->date(), Today);
}

void controlsTypedDayTest::movingForgetsWhatWasTyped() {
    PairForm form;
    form.openFromMask();
    form.type(u"115"_s);
    form.press(Qt::Key_Right);
    QCOMPARE(form.shown(u"Typed"_s), HowTo);
    form.press(Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!form.isCalendarShown(), PatienceMs);
    QCOMPARE(form.fields.date->date(), Today.addDays(1));
}

void controlsTypedDayTest::theMouseForgetsWhatWasTyped() {
    PairForm form;
    form.openFromMask();
    form.type(u"115"_s);
    click(*form.calendar()->findChild<QToolButton*>(u"qt_calendar_nextmonth"_s));
    QCOMPARE(form.shown(u"Typed"_s), HowTo);
    form.type(u"115"_s);
    auto* days = form.calendar()->findChild<QAbstractItemView*>();
    QTest::mousePress(days->viewport(), Qt::LeftButton, {},
                      days->viewport()->rect().bottomRight() - QPoint(2, 2));
    QCOMPARE(form.shown(u"Typed"_s), HowTo);
}

void controlsTypedDayTest::openingAgainBeginsAnew() {
    PairForm form;
    form.openFromMask();
    form.type(u"115"_s);
    form.press(Qt::Key_Right);
    form.type(u"115"_s);
    form.fields.date->hidePopup();
    form.openFromMask();
    QCOMPARE(form.shown(u"Typed"_s), HowTo);
}

void controlsTypedDayTest::theHeadShowsTheYearOfTheRepublic() {
    PairForm form;
    form.openFromMask();
    QCOMPARE(form.shown(u"YearOfRepublic"_s), u"民國115年"_s);
    form.type(u"20101231"_s);
    QCOMPARE(form.shown(u"YearOfRepublic"_s), u"民國99年"_s);
    form.fields.date->hidePopup();
    form.fields.date->setDate({1911, 12, 31});
    form.openFromMask();
    QCOMPARE(form.shown(u"YearOfRepublic"_s), u"民國前1年"_s);
}

void controlsTypedDayTest::altDownOpensFromTheMaskToo() {
    PairForm form;
    form.openFromMask(Qt::Key_Down, Qt::AltModifier);
    form.press(Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(!form.isCalendarShown(), PatienceMs);
    QTest::keyClick(form.fields.mask, Qt::Key_Down); // without it nothing opens
    QVERIFY(!form.isCalendarShown());
}

void controlsTypedDayTest::theDaysOffGoThereAndPickNothing() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    QCOMPARE(hintOf(form), HowTo);
    typeInto(form, u"1140228"_s);
    QCOMPARE(form.calendar.date(), QDate(2025, 2, 28));
    QCOMPARE(form.title(), u"2025年2月　民國114年"_s);
    QCOMPARE(hintOf(form), u"114/02/28"_s);
    QCOMPARE(form.days().accessibleDescription(), u"114/02/28"_s);
    typeInto(form, u"20"_s);
    QTest::keyClick(&form.days(), Qt::Key_Return);
    QCOMPARE(hintOf(form), u"20__/__/__ 日期還沒有輸入完"_s);
    QCOMPARE(form.picks, QList<QDate>());
    typeInto(form, u"260305"_s);
    QCOMPARE(form.picks, QList<QDate>());
    QTest::keyClick(&form.days(), Qt::Key_Return);
    QCOMPARE(form.picks, QList<QDate>{QDate(2026, 3, 5)});
    typeInto(form, u"t"_s);
    QCOMPARE(form.calendar.date(), Today);
}

void controlsTypedDayTest::theDaysOffRefuseWhatTheyDoNotHave() {
    CalendarForm form;
    QVERIFY(form.waitActive());
    typeInto(form, u"21010101"_s);
    QCOMPARE(form.calendar.date(), Today);
    QCOMPARE(hintOf(form), u"2101/01/01 這裡沒有這一天"_s);
    QTest::keyClick(&form.days(), Qt::Key_Return);
    QCOMPARE(form.picks, QList<QDate>());
}

int main(int argc, char** argv) {
    return runTests<controlsTypedDayTest>(argc, argv);
}

#include "controlsTypedDayTest.moc"
