#include "app/EnterAsTab.h"
#include "app/Prompts.h"
#include "app/controls/TDBTime.h"
#include "store/DataSource.h"
#include "support/AppSupport.h"
#include "support/Patience.h"
#include "support/TestStore.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// A window with the time box and a box after it.
struct TimeForm : QWidget {
    TDBTime time;
    QLineEdit next;
    TimeForm() {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&time);
        rows->addWidget(&next);
        time.setFocus();
        show();
    }
    [[nodiscard]] bool waitActive() { return QTest::qWaitForWindowActive(this, PatienceMs); }
    void leave() { QTest::keyClick(&time, Qt::Key_Tab); }
};

/// A store of time slots with one whose morning starts at 08:30, and the box bound to that column.
struct SlotForm : TimeForm {
    TestStore store;
    DataSource source;
    SlotForm() {
        store.database().execute(u"insert into Base04(TimeNo,TimeName,StdT1)values('A','早班',#08:30:15#)"_s);
        source.setDatabaseName(store.path());
        source.setRecordSource(u"Base04"_s);
        source.bind(&time, "value", u"StdT1"_s);
        source.Refresh();
    }
    [[nodiscard]] QList<Value> stored() {
        QList<Value> times;
        Recordset rows = store.database().openRecordset(u"select StdT1 from Base04 order by TimeNo"_s);
        for (; !rows.AtEOF(); rows.MoveNext())
            times << rows.field(u"StdT1"_s);
        return times;
    }
};

} // namespace

class controlsTimeTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void typedDigitsStandAroundTheColon();
    void secondsStandWhereTheyAreWanted();
    void secondsLeftOutAreNone_data();
    void secondsLeftOutAreNone();
    void aBlankBoxIsNoTime();
    void takesTimesFromAProperty_data();
    void takesTimesFromAProperty();
    void lettersAreRefused();
    void fullWidthDigitsBecomePlain();
    void inputMethodDigitsBecomePlain();
    void pastedDigitsBecomePlain();
    void aSingleDigitBeforeTheColonIsAnHour_data();
    void aSingleDigitBeforeTheColonIsAnHour();
    void whatIsNoTimeGoesBackOnLeaving_data();
    void whatIsNoTimeGoesBackOnLeaving();
    void whatIsNoTimeGoesBackOnEnter();
    void whatIsNoTimeIsNeverTheValue();
    void anEmptiedBoxStaysEmptyAfterHalfATime();
    void aTimeOvertypedHalfwayGoesBackToTheFirst();
    void changedTellsEachOtherTimeOnce();
    void clearTellsAChangeOnlyWhereThereWasATime();
    void enterMovesOnOnlyWhereThePageWantsIt();
    void typingIntoAFullBoxReplacesIt();
    void clickIntoABlankBoxStartsAtTheHour();
    void aReadOnlyBoxTakesNothing();
    void aBoundBoxShowsAndSavesItsColumn();
    void unseenSecondsOutliveASave();
    void anEmptiedBoundBoxSavesNull();
    void halfATimeIsNotSaved();
    void aNewRowStartsWithoutATime();
    void isAsWideAsItsMask();
    void tellsItsTimeToAssistiveTechnology();
};

void controlsTimeTest::typedDigitsStandAroundTheColon() {
    TimeForm form;
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.time, u"0830"_s);
    QCOMPARE(form.time.displayText(), u"08:30"_s);
    QCOMPARE(form.time.time(), QTime(8, 30));
}

void controlsTimeTest::secondsStandWhereTheyAreWanted() {
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setTime({17, 5, 9});
    form.time.setShowSeconds(true);
    QCOMPARE(form.time.displayText(), u"17:05:09"_s);
    QCOMPARE(form.time.time(), QTime(17, 5, 9));
    form.time.clear();
    QCOMPARE(form.time.displayText(), u"__:__:__"_s);
    form.time.home(false);
    QTest::keyClicks(&form.time, u"083015"_s);
    QCOMPARE(form.time.time(), QTime(8, 30, 15));
}

void controlsTimeTest::secondsLeftOutAreNone_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<int>("beeps");
    QTest::newRow("hour and minute") << u"0830"_s << u"08:30:00"_s << QTime(8, 30) << 0;
    QTest::newRow("all three") << u"083015"_s << u"08:30:15"_s << QTime(8, 30, 15) << 0;
    QTest::newRow("half the seconds") << u"08301"_s << u"__:__:__"_s << QTime() << 1;
    QTest::newRow("an hour alone") << u"08"_s << u"__:__:__"_s << QTime() << 1;
    QTest::newRow("a sign for a number") << u"①830"_s << u"__:__:__"_s << QTime() << 1;
    QTest::newRow("no such hour") << u"2530"_s << u"__:__:__"_s << QTime() << 1;
}

void controlsTimeTest::secondsLeftOutAreNone() {
    QFETCH(const QString, typed);
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setShowSeconds(true);
    form.time.home(false);
    QInputMethodEvent phrase;
    phrase.setCommitString(typed);
    QApplication::sendEvent(&form.time, &phrase);
    int beeps = 0;
    setBell([&beeps] { ++beeps; });
    form.leave();
    setBell({});
    QTEST(form.time.displayText(), "shown");
    QTEST(form.time.time(), "time");
    QTEST(beeps, "beeps");
}

void controlsTimeTest::aBlankBoxIsNoTime() {
    const TDBTime time;
    QCOMPARE(time.displayText(), u"__:__"_s);
    QVERIFY(time.isNull());
    QVERIFY(!time.time().isValid());
    QVERIFY(!time.value().isValid());
}

void controlsTimeTest::takesTimesFromAProperty_data() {
    QTest::addColumn<QVariant>("given");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QVariant>("held");
    const QTime morning(8, 30);
    QTest::newRow("a time") << QVariant(morning) << u"08:30"_s << QVariant(morning);
    QTest::newRow("midnight") << QVariant(QTime(0, 0)) << u"00:00"_s << QVariant(QTime(0, 0));
    QTest::newRow("the last minute") << QVariant(QTime(23, 59)) << u"23:59"_s << QVariant(QTime(23, 59));
    QTest::newRow("a time with seconds")
        << QVariant(QTime(8, 30, 15)) << u"08:30"_s << QVariant(QTime(8, 30, 15));
    QTest::newRow("a date with a time")
        << QVariant(QDateTime(QDate(2001, 3, 5), morning)) << u"08:30"_s << QVariant(morning);
    QTest::newRow("the text of a time") << QVariant(u"8:30"_s) << u"08:30"_s << QVariant(morning);
    QTest::newRow("a text that is no time") << QVariant(u"24:00"_s) << u"__:__"_s << QVariant();
    QTest::newRow("the text of a date") << QVariant(u"2001/3/5"_s) << u"__:__"_s << QVariant();
    QTest::newRow("an invalid time") << QVariant(QTime()) << u"__:__"_s << QVariant();
    QTest::newRow("nothing") << QVariant() << u"__:__"_s << QVariant();
}

void controlsTimeTest::takesTimesFromAProperty() {
    QFETCH(QVariant, given);
    TDBTime time;
    time.setTime({12, 34});
    time.setProperty("value", given);
    QTEST(time.displayText(), "shown");
    QTEST(time.property("value"), "held");
}

void controlsTimeTest::lettersAreRefused() {
    TimeForm form;
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.time, u"0a8 -3/p0"_s);
    QVERIFY(!form.time.displayText().contains(u'a'));
    QVERIFY(!form.time.displayText().contains(u'p'));
    form.time.clear();
    form.time.home(false);
    QTest::keyClicks(&form.time, u"0a8h3m0"_s);
    QCOMPARE(form.time.time(), QTime(8, 30));
}

void controlsTimeTest::fullWidthDigitsBecomePlain() {
    TimeForm form;
    QVERIFY(form.waitActive());
    for (const QChar digit : u"０８：３０"_s) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(digit));
        QCoreApplication::sendEvent(&form.time, &press);
    }
    QCOMPARE(form.time.displayText(), u"08:30"_s);
    QCOMPARE(form.time.time(), QTime(8, 30));
}

void controlsTimeTest::inputMethodDigitsBecomePlain() {
    TimeForm form;
    QVERIFY(form.waitActive());
    QInputMethodEvent commit;
    commit.setCommitString(u"０８３０"_s);
    QCoreApplication::sendEvent(&form.time, &commit);
    QCOMPARE(form.time.displayText(), u"08:30"_s);
    QCOMPARE(form.time.time(), QTime(8, 30));
}

void controlsTimeTest::pastedDigitsBecomePlain() {
    TimeForm form;
    QVERIFY(form.waitActive());
    QApplication::clipboard()->setText(u"１７:０５"_s);
    form.time.home(false);
    QTest::keySequence(&form.time, QKeySequence::Paste);
    QCOMPARE(form.time.displayText(), u"17:05"_s);
    QCOMPARE(form.time.time(), QTime(17, 5));
}

void controlsTimeTest::aSingleDigitBeforeTheColonIsAnHour_data() {
    QTest::addColumn<bool>("seconds");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QTime>("time");
    QTest::newRow("as it is said") << false << u"8:30"_s << QTime(8, 30);
    QTest::newRow("with both digits") << false << u"08:30"_s << QTime(8, 30);
    QTest::newRow("afternoon") << false << u"17:30"_s << QTime(17, 30);
    QTest::newRow("with a full-width colon") << false << u"8：30"_s << QTime(8, 30);
    QTest::newRow("and a minute before the second colon") << true << u"8:5:30"_s << QTime(8, 5, 30);
}

void controlsTimeTest::aSingleDigitBeforeTheColonIsAnHour() {
    QFETCH(bool, seconds);
    QFETCH(QString, typed);
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setShowSeconds(seconds);
    form.time.home(false);
    for (const QChar character : typed) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
        QCoreApplication::sendEvent(&form.time, &press);
    }
    QTEST(form.time.time(), "time");
}

void controlsTimeTest::whatIsNoTimeGoesBackOnLeaving_data() {
    QTest::addColumn<QTime>("before");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const QTime morning(8, 30);
    QTest::newRow("an hour past the day over a time") << morning << u"25:00"_s << u"08:30"_s;
    QTest::newRow("24:00 over a time") << morning << u"24:00"_s << u"08:30"_s;
    QTest::newRow("a minute past the hour over a time") << morning << u"08:60"_s << u"08:30"_s;
    QTest::newRow("an hour alone over a time") << morning << u"12:__"_s << u"08:30"_s;
    QTest::newRow("half an hour over a time") << morning << u"1_:30"_s << u"08:30"_s;
    QTest::newRow("an hour past the day over nothing") << QTime() << u"25:00"_s << u"__:__"_s;
    QTest::newRow("an hour alone over nothing") << QTime() << u"08:__"_s << u"__:__"_s;
    QTest::newRow("half a minute over nothing") << QTime() << u"08:3_"_s << u"__:__"_s;
}

void controlsTimeTest::whatIsNoTimeGoesBackOnLeaving() {
    QFETCH(QTime, before);
    QFETCH(QString, typed);
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setTime(before);
    form.time.selectAll();
    QTest::keyClick(&form.time, Qt::Key_1); // typed over what stood there, not emptied first
    form.time.setText(typed.replace(u'_', u' '));
    QCOMPARE(form.time.time(), before);
    form.leave();
    QVERIFY(form.next.hasFocus());
    QTEST(form.time.displayText(), "shown");
    QCOMPARE(form.time.time(), before);
}

void controlsTimeTest::whatIsNoTimeGoesBackOnEnter() {
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setTime({8, 30});
    form.time.home(false);
    QTest::keyClicks(&form.time, u"25"_s);
    QCOMPARE(form.time.displayText(), u"25:30"_s);
    QTest::keyClick(&form.time, Qt::Key_Return);
    QCOMPARE(form.time.displayText(), u"08:30"_s);
    QVERIFY(form.time.hasFocus());
}

void controlsTimeTest::whatIsNoTimeIsNeverTheValue() {
    TimeForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy changes(&form.time, &TDBTime::changed);
    for (const char digit : {'2', '9', '3'}) {
        QTest::keyClick(&form.time, digit);
        QVERIFY(form.time.isNull());
    }
    QCOMPARE(form.time.displayText(), u"29:3_"_s);
    QCOMPARE(changes.count(), 0);
}

void controlsTimeTest::anEmptiedBoxStaysEmptyAfterHalfATime() {
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setTime({8, 30});
    form.time.selectAll();
    QTest::keyClick(&form.time, Qt::Key_Delete);
    QVERIFY(form.time.isNull());
    form.time.home(false);
    QTest::keyClicks(&form.time, u"12"_s);
    form.leave();
    QVERIFY(form.time.isNull());
    QCOMPARE(form.time.displayText(), u"__:__"_s);
}

void controlsTimeTest::aTimeOvertypedHalfwayGoesBackToTheFirst() {
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setTime({8, 30});
    form.time.home(false);
    QTest::keyClick(&form.time, Qt::Key_1);
    QCOMPARE(form.time.time(), QTime(18, 30));
    QTest::keyClick(&form.time, Qt::Key_Backspace);
    QCOMPARE(form.time.displayText(), u"_8:30"_s);
    form.leave();
    QCOMPARE(form.time.time(), QTime(8, 30));
}

void controlsTimeTest::changedTellsEachOtherTimeOnce() {
    TimeForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy changes(&form.time, &TDBTime::changed);
    QTest::keyClicks(&form.time, u"083"_s);
    QCOMPARE(changes.count(), 0);
    QTest::keyClick(&form.time, Qt::Key_0);
    QCOMPARE(changes.count(), 1);
    form.time.setTime({8, 30});
    QCOMPARE(changes.count(), 1);
    form.time.setTime({8, 30, 59}); // another time, though it looks the same
    QCOMPARE(changes.count(), 2);
    form.leave();
    QCOMPARE(changes.count(), 2);
    QCOMPARE(form.time.time(), QTime(8, 30, 59));
}

void controlsTimeTest::clearTellsAChangeOnlyWhereThereWasATime() {
    TDBTime time;
    const QSignalSpy changes(&time, &TDBTime::changed);
    time.clear();
    QCOMPARE(changes.count(), 0);
    time.setTime({8, 30});
    time.clear();
    QCOMPARE(changes.count(), 2);
    QVERIFY(time.isNull());
}

void controlsTimeTest::enterMovesOnOnlyWhereThePageWantsIt() {
    TimeForm form;
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.time, u"08"_s);
    QTest::keyClick(&form.time, Qt::Key_Return);
    QVERIFY(form.time.hasFocus());
    EnterAsTab::install(form);
    form.time.home(false);
    QTest::keyClicks(&form.time, u"08"_s);
    QTest::keyClick(&form.time, Qt::Key_Return);
    QVERIFY(form.next.hasFocus());
    QVERIFY(form.time.isNull());
    form.time.setFocus();
    QTest::keyClicks(&form.time, u"0830"_s);
    QTest::keyClick(&form.time, Qt::Key_Enter, Qt::KeypadModifier);
    QVERIFY(form.next.hasFocus());
    QCOMPARE(form.time.time(), QTime(8, 30));
}

void controlsTimeTest::typingIntoAFullBoxReplacesIt() {
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setTime({8, 30});
    form.next.setFocus();
    QTest::keyClick(&form.next, Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(form.time.hasFocus());
    QTest::keyClicks(&form.time, u"1745"_s);
    QCOMPARE(form.time.time(), QTime(17, 45));
}

void controlsTimeTest::clickIntoABlankBoxStartsAtTheHour() {
    TimeForm form;
    QVERIFY(form.waitActive());
    form.next.setFocus();
    QTest::mouseClick(&form.time, Qt::LeftButton, Qt::NoModifier, form.time.rect().center());
    QTest::keyClicks(&form.time, u"0830"_s);
    QCOMPARE(form.time.time(), QTime(8, 30));
}

void controlsTimeTest::aReadOnlyBoxTakesNothing() {
    TimeForm form;
    QVERIFY(form.waitActive());
    form.time.setReadOnly(true);
    form.time.setTime({8, 30});
    QTest::keyClicks(&form.time, u"9:45"_s);
    QTest::keyClick(&form.time, Qt::Key_Delete);
    form.leave();
    QCOMPARE(form.time.displayText(), u"08:30"_s);
}

void controlsTimeTest::aBoundBoxShowsAndSavesItsColumn() {
    SlotForm form;
    QVERIFY(form.waitActive());
    QCOMPARE(form.time.displayText(), u"08:30"_s);
    form.source.Edit();
    form.time.home(false);
    QTest::keyClicks(&form.time, u"0915"_s);
    form.source.Update();
    QCOMPARE(form.stored(), QList<Value>{QTime(9, 15)});
    QCOMPARE(form.time.time(), QTime(9, 15));
}

void controlsTimeTest::unseenSecondsOutliveASave() {
    SlotForm form;
    QVERIFY(form.waitActive());
    form.source.Edit();
    form.leave();
    form.source.Update();
    QCOMPARE(form.stored(), QList<Value>{QTime(8, 30, 15)});
}

void controlsTimeTest::anEmptiedBoundBoxSavesNull() {
    SlotForm form;
    QVERIFY(form.waitActive());
    form.source.Edit();
    form.time.selectAll();
    QTest::keyClick(&form.time, Qt::Key_Delete);
    form.source.Update();
    QCOMPARE(form.stored(), QList<Value>{Value()});
    QCOMPARE(form.time.displayText(), u"__:__"_s);
}

void controlsTimeTest::halfATimeIsNotSaved() {
    SlotForm form;
    QVERIFY(form.waitActive());
    form.source.Edit();
    form.time.home(false);
    QTest::keyClicks(&form.time, u"25"_s);
    form.source.Update();
    QCOMPARE(form.stored(), QList<Value>{QTime(8, 30, 15)});
    QCOMPARE(form.time.displayText(), u"08:30"_s);
}

void controlsTimeTest::aNewRowStartsWithoutATime() {
    SlotForm form;
    QVERIFY(form.waitActive());
    QLineEdit code;
    form.source.bind(&code, "text", u"TimeNo"_s);
    form.source.AddNew();
    QVERIFY(form.time.isNull());
    code.setText(u"B"_s);
    QTest::keyClicks(&form.time, u"2359"_s);
    form.source.Update();
    QCOMPARE(form.stored(), QList<Value>({QTime(8, 30, 15), QTime(23, 59)}));
    form.source.AddNew();
    code.setText(u"C"_s);
    form.source.Update();
    QCOMPARE(form.stored(), QList<Value>({QTime(8, 30, 15), QTime(23, 59), Value()}));
}

void controlsTimeTest::isAsWideAsItsMask() {
    TDBTime time;
    const int narrow = time.sizeHint().width();
    QVERIFY(narrow > time.fontMetrics().horizontalAdvance(u"00:00"_s));
    QVERIFY(narrow < QLineEdit().sizeHint().width());
    time.setShowSeconds(true);
    QVERIFY(time.sizeHint().width() > narrow);
    QVERIFY(time.minimumSizeHint() == time.sizeHint());
}

void controlsTimeTest::tellsItsTimeToAssistiveTechnology() {
    TimeForm form;
    form.time.setTime({8, 30});
    const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&form.time);
    QVERIFY(seen);
    QCOMPARE(seen->role(), QAccessible::EditableText);
    QCOMPARE(seen->text(QAccessible::Value), u"08:30"_s);
}

int main(int argc, char** argv) {
    return pontrel::test::runTests<controlsTimeTest>(argc, argv);
}

#include "controlsTimeTest.moc"
