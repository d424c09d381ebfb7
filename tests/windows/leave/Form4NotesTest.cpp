#include "support/RefuseDeletes.h"
#include "windows/leave/Form4Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Unfinished = u"警告訊息|終止日期不可小於開始日期,請重新輸入"_s;
const QString Duplicate = u"警告訊息|假單重複!!是否繼續存檔?"_s;
const QString UnknownType = u"錯誤訊息|無此假別代碼,請重新輸入......"_s;
const QString Really = u"確認刪除|確定刪除這筆資料?"_s;
const QString Monday6 = u"900305"_s;
const QString DayGrid = u"TDBGrid1(2)"_s;

} // namespace

/// Leave notes entered, edited and deleted: the note, its day rows, and no balance.
class Form4NotesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNewNoteStartsSigned();
    void aNoteIsSavedWithItsDayRow();
    void aNoteIsSplit_data();
    void aNoteIsSplit();
    void anEndBeforeTheBeginStaysInEdit();
    void anEndTimeBeforeTheBeginWrapsPastMidnight();
    void withoutSlotsTheLastTimesCount();
    void anUnknownTypeIsToldTwiceAndKeepsTheLastFlag();
    void aSecondNoteOnADayIsAskedFor_data();
    void aSecondNoteOnADayIsAskedFor();
    void noTwoNumbersAreReservedAndTheyRunOn();
    void anEditReplacesTheDayRows();
    void anEditIsAskedForOnlyBesideASecondNote_data();
    void anEditIsAskedForOnlyBesideASecondNote();
    void cancelOfAnEditLeavesEverything();
    void aDeleteTakesTheDayRowsWithIt();
    void aDeleteThatIsNotMeantDoesNothing();
    void aRefusedDeleteHasTakenTheDayRows();
    void theLastNoteDeletedLeavesAnEmptyTab();
    void noBalanceMoves();
};

void Form4NotesTest::aNewNoteStartsSigned() {
    Form4Fixture it;
    it.addWholeDay(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    it.open(NotesTab);
    QCOMPARE(it.labels4(2, 8), u"王小明|課長|日班|會計課|正職||事假"_s);
    it.press(0);
    QCOMPARE(it.panel(2) + it.focused(), u"新增資料Text3(0)"_s);
    QCOMPARE(it.tabsOn(), QList<int>{NotesTab});
    QCOMPARE(it.buttonsOn(2), QList<int>({3, 4}));
    QCOMPARE(it.label4(0), FirstNumber);
    QCOMPARE(it.label4(1), u"tester"_s);
    QCOMPARE(it.labels4(9, 10), u"2001/3/2|True"_s);
    QCOMPARE(it.labels4(2, 8), u"||||||"_s);
    QCOMPARE(it.mask(0).value() + it.mask(1).value(), QString());
    QVERIFY(it.time(0).isNull() && it.time(1).isNull());
    QCOMPARE(gLeaveValues.BusNo(), FirstNumber);
    QCOMPARE(it.notes().size(), 1); // nothing is saved yet
}

void Form4NotesTest::aNoteIsSavedWithItsDayRow() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    const QStringList before = it.employees();
    it.open(NotesTab);
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(it.buttonsOn(2), QList<int>({0, 10, 11, 12, 13}));
    it.press(0);
    it.fillNote(u"10001"_s, u"03"_s, Monday6, u"1030"_s, u"1700"_s);
    it.type(u"Text3(1)"_s, u"10002"_s);
    it.type(u"Text3(4)"_s, u"Bank"_s);
    it.press(u"Check2"_s);
    it.press(4);
    Fields saved =
        it.note(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(10, 30), Monday, QTime(17, 0), 0.6);
    saved += Fields{{u"RepEmpNo", u"10002"}, {u"HoliDesc", u"Bank"}, {u"Money", true}};
    QCOMPARE(it.notes(), it.expectedNotes({saved}));
    QCOMPARE(it.days(), it.expectedDays({it.day(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(10, 30),
                                                QTime(17, 0), 6, u"A"_s)}));
    QCOMPARE(it.employees(), before);
    QCOMPARE(it.text(u"Text3(3)"_s), u"0.6"_s);
    QCOMPARE(it.labels4(0, 10),
             u"200103020001|tester|王小明|課長|日班|會計課|正職|陳美惠|事假|2001/3/2|True"_s);
    QCOMPARE(it.panel(1) + it.panel(2), u"資料錄:1/1"_s);
    QCOMPARE(it.buttonsOn(2), QList<int>({0, 1, 2, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    // The lists were made before: the weekday of a new date is the bare date.
    QCOMPARE(it.shown(DayGrid), QStringList{u"事假|2001/3/5|2001/3/5|10:30|17:00|6|A|200103020001"_s});
    QVERIFY(it.seen().isEmpty());
}

void Form4NotesTest::aNoteIsSplit_data() {
    QTest::addColumn<QString>("HoliNo");
    QTest::addColumn<QList<int>>("rostered"); // Days of March.
    QTest::addColumn<int>("first");
    QTest::addColumn<QString>("beginTime");
    QTest::addColumn<int>("last");
    QTest::addColumn<QString>("endTime");
    QTest::addColumn<double>("HoliHours");
    QTest::addColumn<QStringList>("days"); // Day, begin, end, hours and slot.
    const auto add = [](const char* title, const QString& HoliNo, const QList<int>& rostered, int first,
                        const QString& beginTime, int last, const QString& endTime, double HoliHours,
                        const QStringList& days) {
        QTest::newRow(title) << HoliNo << rostered << first << beginTime << last << endTime << HoliHours
                             << days;
    };
    add("a whole day", u"03"_s, {5}, 5, u"0800"_s, 5, u"1700"_s, 1.0, {u"5|08:00|17:00|8|A"_s});
    add("a morning and a bit, rounded up", u"03"_s, {5}, 5, u"0800"_s, 5, u"1015"_s, 0.3,
        {u"5|08:00|10:15|3|A"_s});
    add("wholly after the break, as typed", u"03"_s, {5}, 5, u"1400"_s, 5, u"1730"_s, 0.4,
        {u"5|14:00|17:30|4|A"_s});
    add("three days from noon to noon", u"03"_s, {5, 6, 7}, 5, u"1300"_s, 7, u"1200"_s, 2.0,
        {u"5|13:00|17:00|4|A"_s, u"6|08:00|17:00|8|A"_s, u"7|08:00|12:00|4|A"_s});
    add("two days of half an hour are two hours", u"03"_s, {5, 6}, 5, u"1630"_s, 6, u"0830"_s, 0.2,
        {u"5|16:30|17:00|1|A"_s, u"6|08:00|08:30|1|A"_s});
    add("a day off of a type that leaves them in is 8 hours, whatever was typed", u"08"_s, {}, 5, u"0900"_s,
        5, u"1000"_s, 1.0, {u"5|08:00|17:00|8|"_s});
    add("a day off of a type that leaves them out is none", u"03"_s, {}, 5, u"0900"_s, 5, u"1000"_s, 0.0,
        {u"5|08:00|17:00|0|"_s});
    add("a weekend left out keeps its rows", u"03"_s, {2, 5}, 2, u"0800"_s, 5, u"1700"_s, 2.0,
        {u"2|08:00|17:00|8|A"_s, u"3|08:00|17:00|0|"_s, u"4|08:00|17:00|0|"_s, u"5|08:00|17:00|8|A"_s});
    add("a weekend left in counts by the first slot", u"08"_s, {2, 5}, 2, u"1300"_s, 5, u"1200"_s, 2.0,
        {u"2|13:00|17:00|4|A"_s, u"3|13:00|17:00|4|"_s, u"4|13:00|17:00|4|"_s, u"5|08:00|12:00|4|A"_s});
}

void Form4NotesTest::aNoteIsSplit() {
    QFETCH(const QString, HoliNo);
    QFETCH(const QList<int>, rostered);
    QFETCH(const int, first);
    QFETCH(const QString, beginTime);
    QFETCH(const int, last);
    QFETCH(const QString, endTime);
    QFETCH(const double, HoliHours);
    QFETCH(const QStringList, days);
    Form4Fixture it;
    for (const int day : rostered)
        addRoster(it.database(), u"10001"_s, {2001, 3, day}, u"A"_s);
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, HoliNo, u"9003%1"_s.arg(first, 2, 10, QChar(u'0')), beginTime,
                u"9003%1"_s.arg(last, 2, 10, QChar(u'0')), endTime);
    it.press(4);
    QList<Fields> expected;
    for (const QString& day : days) {
        const QStringList parts = day.split(u'|');
        expected << it.day(FirstNumber, u"10001"_s, HoliNo, {2001, 3, parts.at(0).toInt()},
                           QTime::fromString(parts.at(1), u"hh:mm"), QTime::fromString(parts.at(2), u"hh:mm"),
                           parts.at(3).toInt(), parts.at(4));
    }
    QCOMPARE(it.days(), it.expectedDays(expected));
    QCOMPARE(it.notes(), it.expectedNotes({it.note(FirstNumber, u"10001"_s, HoliNo, {2001, 3, first},
                                                   QTime::fromString(beginTime, u"hhmm"), {2001, 3, last},
                                                   QTime::fromString(endTime, u"hhmm"), HoliHours)}));
    QCOMPARE(it.shown(DayGrid).size(), days.size());
    QVERIFY(it.seen().isEmpty());
}

void Form4NotesTest::anEndBeforeTheBeginStaysInEdit() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"03"_s, Monday6, u"0800"_s, u"900306"_s, u"1700"_s);
    it.date(0).setDate(Monday.addDays(7));
    it.answers.expectMsgBox();
    it.press(4);
    QCOMPARE(it.seen(), QStringList{Unfinished});
    QCOMPARE(it.answers.seen().constFirst().icon, MsgIcon::None);
    QCOMPARE(it.focused() + it.panel(2), u"TDBMask1(1)新增資料"_s);
    QCOMPARE(it.notes() + it.days(), QStringList());
    it.typeDate(1, u"900312"_s); // the same day passes
    it.press(4);
    QCOMPARE(it.notes().size() + it.days().size(), 2);
    QCOMPARE(it.seen().size(), 1);
}

void Form4NotesTest::anEndTimeBeforeTheBeginWrapsPastMidnight() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"03"_s, Monday6, u"2200"_s, u"0600"_s);
    it.press(4);
    QCOMPARE(it.days(), it.expectedDays({it.day(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(22, 0),
                                                QTime(6, 0), 8, u"A"_s)}));
    QCOMPARE(it.text(u"Text3(3)"_s), u"1"_s);
}

void Form4NotesTest::withoutSlotsTheLastTimesCount() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"08"_s, Monday6, u"0800"_s, u"1700"_s);
    it.press(4);
    it.database().execute(u"delete * from Base04"_s);
    it.press(0);
    it.fillNote(u"10002"_s, u"08"_s, Monday6, u"0900"_s, u"1000"_s);
    it.press(4);
    // Rostered, with the slot and the times that the note before was split by.
    QCOMPARE(it.days().constLast(),
             expectedRow(u"Holi04"_s, it.day(u"200103020002"_s, u"10002"_s, u"08"_s, Monday, QTime(9, 0),
                                             QTime(10, 0), 1, u"A"_s)));
}

void Form4NotesTest::anUnknownTypeIsToldTwiceAndKeepsTheLastFlag() {
    Form4Fixture it;
    it.addDay(it.day(u"1"_s, u"10001"_s, u"03"_s, Monday, QTime(8, 0), QTime(9, 0), 1, u"A"_s));
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"03"_s, Monday6, u"0800"_s, u"1700"_s);
    it.at<QLineEdit>(u"Text3(2)"_s).setText(u"77"_s);
    it.answers.expectMsgBox().expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    it.press(4);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList({UnknownType, Duplicate, UnknownType}));
    // As a program starts, no type leaves out days off.
    QCOMPARE(it.days().constLast(),
             expectedRow(u"Holi04"_s, it.day(FirstNumber, u"10001"_s, u"77"_s, Monday, QTime(8, 0),
                                             QTime(17, 0), 8, QString())));
    QCOMPARE(it.label4(8), u"事假"_s); // the name of the type before
    QCOMPARE(it.shown(DayGrid).constFirst().section(u'|', 0, 0), u"77"_s);
}

void Form4NotesTest::aSecondNoteOnADayIsAskedFor_data() {
    QTest::addColumn<bool>("yes");
    QTest::newRow("saved") << true;
    QTest::newRow("dropped") << false;
}

void Form4NotesTest::aSecondNoteOnADayIsAskedFor() {
    QFETCH(const bool, yes);
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.addNote(it.note(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(8, 0), Monday, QTime(12, 0), 0.4));
    it.addDay(it.day(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(8, 0), QTime(12, 0), 4, u"A"_s));
    const QStringList notes = it.notes();
    const QStringList days = it.days();
    it.open(NotesTab);
    it.press(0);
    // The other half of the day, of another type.
    it.fillNote(u"10001"_s, u"04"_s, Monday6, u"1300"_s, u"1700"_s);
    it.answers.expectMsgBox(yes ? MsgAnswer::Yes : MsgAnswer::No);
    it.press(4);
    QCOMPARE(it.seen(), QStringList{Duplicate});
    QCOMPARE(it.answers.seen().constFirst().buttons.size(), 2);
    const QString second = u"200103020002"_s;
    QCOMPARE(it.notes(), yes ? notes + it.expectedNotes({it.note(second, u"10001"_s, u"04"_s, Monday,
                                                                 QTime(13, 0), Monday, QTime(17, 0), 0.4)})
                             : notes);
    QCOMPARE(it.days(), yes ? days + it.expectedDays({it.day(second, u"10001"_s, u"04"_s, Monday,
                                                             QTime(13, 0), QTime(17, 0), 4, u"A"_s)})
                            : days);
    QCOMPARE(it.panel(1) + it.panel(2), yes ? u"資料錄:2/2"_s : u"資料錄:1/1"_s);
    QCOMPARE(it.label4(0), yes ? second : FirstNumber);
    QCOMPARE(it.tabsOn().size(), 6);
}

void Form4NotesTest::noTwoNumbersAreReservedAndTheyRunOn() {
    Form4Fixture it;
    it.addNote(it.wholeNote(u"200103029999"_s, u"10002"_s, u"03"_s, Monday));
    it.open(NotesTab);
    it.press(0);
    QCOMPARE(it.label4(0), u"200103030000"_s);
    it.press(3);
    it.press(0);
    QCOMPARE(it.label4(0), u"200103030000"_s);
    it.fillNote(u"10001"_s, u"03"_s, Monday6, u"0800"_s, u"1700"_s);
    it.press(4);
    QCOMPARE(it.notes().constLast(),
             expectedRow(u"Holi03"_s, it.note(u"200103030000"_s, u"10001"_s, u"03"_s, Monday, QTime(8, 0),
                                              Monday, QTime(17, 0), 0.0)));
    it.press(0);
    QCOMPARE(it.label4(0), u"200103030000"_s); // not found under today's
}

void Form4NotesTest::anEditReplacesTheDayRows() {
    Form4Fixture it;
    for (const int day : {5, 6})
        addRoster(it.database(), u"10001"_s, {2001, 3, day}, u"A"_s);
    it.addWholeDay(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    it.addWholeDay(u"200103010008"_s, u"10002"_s, u"03"_s, Monday);
    const QString other = it.days().constLast();
    it.open(NotesTab);
    it.press(1);
    QCOMPARE(it.panel(2), u"修改資料"_s);
    QCOMPARE(gLeaveValues.BusNo(), u"200103010007"_s);
    it.type(u"Text3(2)"_s, u"04"_s);
    it.typeDate(1, u"900306"_s);
    it.typeTime(0, u"1300"_s);
    it.press(4);
    QCOMPARE(it.notes(), it.expectedNotes({it.note(u"200103010007"_s, u"10001"_s, u"04"_s, Monday,
                                                   QTime(13, 0), {2001, 3, 6}, QTime(17, 0), 1.4),
                                           it.wholeNote(u"200103010008"_s, u"10002"_s, u"03"_s, Monday)}));
    QCOMPARE(it.days(), QStringList{other} +
                            it.expectedDays({it.day(u"200103010007"_s, u"10001"_s, u"04"_s, Monday,
                                                    QTime(13, 0), QTime(17, 0), 4, u"A"_s),
                                             it.day(u"200103010007"_s, u"10001"_s, u"04"_s, {2001, 3, 6},
                                                    QTime(8, 0), QTime(17, 0), 8, u"A"_s)}));
    QCOMPARE(it.shown(DayGrid).size(), 2);
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
    QVERIFY(it.seen().isEmpty()); // its own row is allowed for
}

void Form4NotesTest::anEditIsAskedForOnlyBesideASecondNote_data() {
    QTest::addColumn<bool>("second");
    QTest::addColumn<bool>("yes");
    QTest::newRow("its own row alone") << false << true;
    QTest::newRow("a second note, saved all the same") << true << true;
    QTest::newRow("a second note, dropped") << true << false;
}

void Form4NotesTest::anEditIsAskedForOnlyBesideASecondNote() {
    QFETCH(const bool, second);
    QFETCH(const bool, yes);
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.addWholeDay(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    if (second)
        it.addWholeDay(u"200103010008"_s, u"10001"_s, u"04"_s, Monday);
    const QStringList notes = it.notes();
    it.open(NotesTab);
    it.press(1);
    it.type(u"Text3(4)"_s, u"Bank"_s);
    if (second)
        it.answers.expectMsgBox(yes ? MsgAnswer::Yes : MsgAnswer::No);
    it.press(4);
    QCOMPARE(it.seen(), second ? QStringList{Duplicate} : QStringList());
    QCOMPARE(it.panel(2), QString());
    if (!yes) {
        QCOMPARE(it.notes(), notes);
        QCOMPARE(it.text(u"Text3(4)"_s), QString());
        return;
    }
    Fields saved = it.wholeNote(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    saved << Field{u"HoliDesc", u"Bank"};
    QCOMPARE(it.notes().constFirst(), expectedRow(u"Holi03"_s, saved));
    QCOMPARE(it.days().size(), second ? 2 : 1);
}

void Form4NotesTest::cancelOfAnEditLeavesEverything() {
    Form4Fixture it;
    it.addWholeDay(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    const QStringList before = it.notes() + it.days();
    it.open(NotesTab);
    it.press(1);
    it.type(u"Text3(2)"_s, u"04"_s);
    it.typeDate(0, u"900302"_s);
    it.press(3);
    QCOMPARE(it.notes() + it.days(), before);
    QCOMPARE(it.text(u"Text3(2)"_s) + it.mask(0).value() + it.label4(8), u"03900305事假"_s);
    QCOMPARE(it.panel(2), QString());
}

void Form4NotesTest::aDeleteTakesTheDayRowsWithIt() {
    Form4Fixture it;
    for (const QString& number : {u"200103010007"_s, u"200103010008"_s, u"200103010009"_s})
        it.addWholeDay(number, u"10001"_s, u"03"_s, Monday);
    const QStringList employees = it.employees();
    it.open(NotesTab);
    it.press(8);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(2);
    QCOMPARE(it.seen(), QStringList{Really});
    const QStringList numbers{u"200103010007"_s, u"200103010009"_s};
    QList<Fields> notes;
    QList<Fields> days;
    for (const QString& number : numbers) {
        notes << it.wholeNote(number, u"10001"_s, u"03"_s, Monday);
        days << it.day(number, u"10001"_s, u"03"_s, Monday, QTime(8, 0), QTime(17, 0), 8, u"A"_s);
    }
    QCOMPARE(it.notes(), it.expectedNotes(notes));
    QCOMPARE(it.days(), it.expectedDays(days));
    QCOMPARE(it.employees(), employees);                               // nothing is given back
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:2/2200103010009"_s); // the next one
    QCOMPARE(it.shown(DayGrid), QStringList());
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(2); // behind the last one comes the last
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:1/1200103010007"_s);
}

void Form4NotesTest::aDeleteThatIsNotMeantDoesNothing() {
    Form4Fixture it;
    it.addWholeDay(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    const QStringList before = it.notes() + it.days();
    it.open(NotesTab);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(2);
    QCOMPARE(it.answers.seen().constFirst().icon, MsgIcon::Question);
    QCOMPARE(it.notes() + it.days(), before);
    QCOMPARE(it.shown(DayGrid).size(), 1);
}

void Form4NotesTest::aRefusedDeleteHasTakenTheDayRows() {
    Form4Fixture it;
    it.addWholeDay(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    it.addWholeDay(u"200103010008"_s, u"10001"_s, u"03"_s, Monday);
    refuseDeletes(it.store, "Holi03");
    const QStringList notes = it.notes();
    it.open(NotesTab);
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    it.press(2);
    QCOMPARE(it.seen(), QStringList({Really, u"錯誤訊息|無法刪除資料!"_s}));
    QCOMPARE(it.answers.seen().constLast().icon, MsgIcon::Exclamation);
    QCOMPARE(it.notes(), notes);
    QCOMPARE(it.days(), it.expectedDays({it.day(u"200103010008"_s, u"10001"_s, u"03"_s, Monday, QTime(8, 0),
                                                QTime(17, 0), 8, u"A"_s)}));
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:1/2200103010007"_s);
    QCOMPARE(it.shown(DayGrid).size(), 1); // the other one's
}

void Form4NotesTest::theLastNoteDeletedLeavesAnEmptyTab() {
    Form4Fixture it;
    it.addWholeDay(u"200103010007"_s, u"10001"_s, u"03"_s, Monday);
    it.open(NotesTab);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(2);
    QCOMPARE(it.notes() + it.days() + it.shown(DayGrid), QStringList());
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:1/0"_s);
    QCOMPARE(it.buttonsOn(2), QList<int>({0, 10, 11, 12, 13}));
}

void Form4NotesTest::noBalanceMoves() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    const QStringList before = it.employees();
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"01"_s, Monday6, u"0800"_s, u"1700"_s);
    it.press(4);
    QCOMPARE(it.employees(), before);
    it.press(1);
    it.typeTime(1, u"1200"_s);
    it.press(4);
    QCOMPARE(it.employees(), before);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(2);
    QCOMPARE(it.employees(), before);
    QCOMPARE(it.notes() + it.days(), QStringList());
}

int main(int argc, char** argv) {
    return runTests<Form4NotesTest>(argc, argv);
}

#include "Form4NotesTest.moc"
