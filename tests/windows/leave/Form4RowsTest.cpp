#include "windows/leave/Form4Fixture.h"

#include "app/MDI.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString DayGrid = u"TDBGrid1(2)"_s;
const QDate Tuesday(2001, 3, 6);

QString shownDay(const QString& BusNo, QDate day) {
    const QString weekday = day == Monday ? u"一"_s : u"二"_s;
    return u"事假|2001/3/%1|%2|08:00|17:00|8|A|%3"_s.arg(day.day()).arg(weekday, BusNo);
}

/// Three notes, the first and the last of 10001, the last of two days.
void addNotes(Form4Fixture& it) {
    it.addWholeDay(u"101"_s, u"10001"_s, u"03"_s, Monday);
    it.addWholeDay(u"102"_s, u"10002"_s, u"03"_s, Monday);
    it.addWholeDay(u"103"_s, u"10001"_s, u"03"_s, Monday);
    it.addDay(it.day(u"103"_s, u"10001"_s, u"03"_s, Tuesday, QTime(8, 0), QTime(17, 0), 8, u"A"_s));
}

void answerNumber(Form4Fixture& it, const QString& number) {
    it.answers.expect(u"InputBox"_s, [number](QWidget& dialog) {
        typeInto(control<QLineEdit>(dialog, u"InputText"_s), number);
        click(control(dialog, u"Ok"_s));
    });
}

} // namespace

/// The ways from note to note, and the day rows beside them.
class Form4RowsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void allDayRowsAreShownAtFirst();
    void eachWeekdayHasItsCharacter();
    void theDayRowsFollowTheMoves();
    void movesStayAtTheEnds();
    void aDayRowLeadsToItsNote();
    void aDayRowWithoutANoteLeadsNowhere();
    void aNoteBeingEditedIsNotLeft();
    void theDaysOfAnEmployeeAreListedUntilTheNextMove();
    void aNoteIsFoundByItsNumber_data();
    void aNoteIsFoundByItsNumber();
    void aCancelledFindFindsNothing();
    void refreshRunsBothListsAgain();
};

void Form4RowsTest::allDayRowsAreShownAtFirst() {
    Form4Fixture it;
    addNotes(it);
    it.addDay({{u"BusNo", u"900"}});
    it.open(NotesTab);
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:1/3101"_s);
    QCOMPARE(it.shown(DayGrid),
             QStringList({shownDay(u"101"_s, Monday), shownDay(u"102"_s, Monday), shownDay(u"103"_s, Monday),
                          shownDay(u"103"_s, Tuesday), u"|||||||900"_s}));
}

void Form4RowsTest::eachWeekdayHasItsCharacter() {
    Form4Fixture it;
    const QString weekdays = u"日一二三四五六"_s;
    QStringList expected;
    for (int day = 0; day < weekdays.size(); ++day) {
        const int ofMarch = 4 + day; // from a Sunday on
        it.addDay(
            it.day(u"1"_s, u"10001"_s, u"03"_s, {2001, 3, ofMarch}, QTime(8, 0), QTime(17, 0), 8, u"A"_s));
        expected << u"事假|2001/3/%1|%2|08:00|17:00|8|A|1"_s.arg(ofMarch).arg(weekdays.at(day));
    }
    it.open(NotesTab);
    QCOMPARE(it.shown(DayGrid), expected);
}

void Form4RowsTest::theDayRowsFollowTheMoves() {
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    it.press(8);
    QCOMPARE(it.label4(0) + it.panel(1), u"102資料錄:2/3"_s);
    QCOMPARE(it.shown(DayGrid), QStringList{shownDay(u"102"_s, Monday)});
    QCOMPARE(gLeaveValues.BusNo(), u"102"_s);
    it.press(9);
    QCOMPARE(it.shown(DayGrid), QStringList({shownDay(u"103"_s, Monday), shownDay(u"103"_s, Tuesday)}));
    it.press(7);
    QCOMPARE(it.shown(DayGrid), QStringList{shownDay(u"102"_s, Monday)});
    it.press(6);
    QCOMPARE(it.shown(DayGrid), QStringList{shownDay(u"101"_s, Monday)});
    QCOMPARE(it.label4(2), u"王小明"_s);
}

void Form4RowsTest::movesStayAtTheEnds() {
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    it.press(7);
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:1/3101"_s);
    QCOMPARE(it.shown(DayGrid), QStringList{shownDay(u"101"_s, Monday)});
    it.press(9);
    it.press(8);
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:3/3103"_s);
    QCOMPARE(it.shown(DayGrid).size(), 2);
}

void Form4RowsTest::aDayRowLeadsToItsNote() {
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    it.clickRow(DayGrid, 2);
    QCOMPARE(it.panel(1) + it.label4(0) + it.text(u"Text3(0)"_s), u"資料錄:3/310310001"_s);
    QCOMPARE(gLeaveValues.BusNo(), u"103"_s);
    QCOMPARE(it.shown(DayGrid).size(), 4); // the list stays
    it.key(Qt::Key_Up);
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:2/3102"_s);
}

void Form4RowsTest::aDayRowWithoutANoteLeadsNowhere() {
    Form4Fixture it;
    addNotes(it);
    it.addDay(it.day(u"900"_s, u"10001"_s, u"03"_s, Tuesday, QTime(8, 0), QTime(9, 0), 1, u"A"_s));
    it.open(NotesTab);
    it.clickRow(DayGrid, 2);
    it.clickRow(DayGrid, 4);
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:3/3103"_s);
    QCOMPARE(gLeaveValues.BusNo(), u"900"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form4RowsTest::aNoteBeingEditedIsNotLeft() {
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    it.press(1);
    it.type(u"Text3(4)"_s, u"Bank"_s);
    it.clickRow(DayGrid, 1);
    QCOMPARE(it.panel(1) + it.panel(2) + it.label4(0), u"資料錄:1/3修改資料101"_s);
    QCOMPARE(gLeaveValues.BusNo(), u"101"_s);
    it.press(3);
    QCOMPARE(it.text(u"Text3(4)"_s), QString());
}

void Form4RowsTest::theDaysOfAnEmployeeAreListedUntilTheNextMove() {
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    it.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 0);
        clickOk(dialog);
    });
    it.press(u"CmdHD"_s);
    QCOMPARE(it.shown(DayGrid), QStringList({shownDay(u"103"_s, Tuesday), shownDay(u"101"_s, Monday),
                                             shownDay(u"103"_s, Monday)}));
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s); // of the notes
    it.clickRow(DayGrid, 0);
    QCOMPARE(it.label4(0), u"103"_s);
    QCOMPARE(it.shown(DayGrid).size(), 3);
    it.press(7);
    QCOMPARE(it.shown(DayGrid), QStringList{shownDay(u"102"_s, Monday)});
    // A cancel takes who was picked before.
    it.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickCancel(dialog);
    });
    it.press(u"CmdHD"_s);
    QCOMPARE(it.shown(DayGrid).size(), 3);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form4RowsTest::aNoteIsFoundByItsNumber_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("found"); // The note in front afterwards.
    QTest::addColumn<QString>("number");
    QTest::newRow("the number") << u"103"_s << u"103"_s << u"103"_s;
    QTest::newRow("a number at the start of a text") << u" 103 or so"_s << u"103"_s << u"103"_s;
    QTest::newRow("a number that is not there") << u"104"_s << QString() << u"104"_s;
    QTest::newRow("the start of a number") << u"10"_s << QString() << u"10"_s;
    QTest::newRow("no number") << u"note"_s << QString() << u"0"_s;
    QTest::newRow("an apostrophe") << u"'"_s << QString() << u"0"_s;
    QTest::newRow("nothing") << QString() << QString() << u"0"_s;
}

void Form4RowsTest::aNoteIsFoundByItsNumber() {
    QFETCH(const QString, typed);
    QFETCH(const QString, found);
    QFETCH(const QString, number);
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    answerNumber(it, typed);
    if (found.isEmpty())
        it.answers.expectMsgBox();
    it.press(5);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.answers.seen().constFirst().title + it.answers.seen().constFirst().text,
             u"查詢請輸入假單編號:"_s);
    QCOMPARE(it.seen().mid(1),
             found.isEmpty() ? QStringList{u"錯誤訊息|無此假單編號!請重新輸入"_s} : QStringList());
    QCOMPARE(it.label4(0), found.isEmpty() ? u"101"_s : found);
    QCOMPARE(gLeaveValues.BusNo(), number);
    QCOMPARE(it.shown(DayGrid).size(), 4); // the day rows do not follow
}

void Form4RowsTest::aCancelledFindFindsNothing() {
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    it.press(8);
    it.answers.expectClick(u"InputBox"_s, u"Cancel"_s).expectMsgBox();
    it.press(5);
    QCOMPARE(it.seen().constLast(), u"錯誤訊息|無此假單編號!請重新輸入"_s);
    QCOMPARE(it.label4(0) + it.panel(1), u"102資料錄:2/3"_s);
}

void Form4RowsTest::refreshRunsBothListsAgain() {
    Form4Fixture it;
    addNotes(it);
    it.open(NotesTab);
    it.press(9);
    it.addWholeDay(u"104"_s, u"10002"_s, u"03"_s, Monday);
    it.addDay(it.day(u"103"_s, u"10001"_s, u"03"_s, {2001, 3, 7}, QTime(8, 0), QTime(17, 0), 8, u"A"_s));
    QCOMPARE(it.panel(1), u"資料錄:3/3"_s);
    it.press(10);
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:1/4101"_s);
    // Of the note as it was before; the new day has come behind the window's lists.
    QCOMPARE(it.shown(DayGrid), QStringList({shownDay(u"103"_s, Monday), shownDay(u"103"_s, Tuesday),
                                             u"事假|2001/3/7|2001/3/7|08:00|17:00|8|A|103"_s}));
}

int main(int argc, char** argv) {
    return runTests<Form4RowsTest>(argc, argv);
}

#include "Form4RowsTest.moc"
