#include "windows/leave/Form4Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Number = u"200103010007"_s;
const QString DayGrid = u"TDBGrid1(2)"_s;
const QString Duplicate = u"警告訊息|假單重複!!是否繼續存檔?"_s;

} // namespace

/// Leave notes that are edited, are of nobody, or take their codes and times from elsewhere.
class Form4EditsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anEditSignsTheNoteAnew();
    void noAtTheQuestionOfAnEditLeavesTheDayRows();
    void aNoteOfNobodyIsSaved();
    void aChosenDateBringsTheTimesOfTheOwnSlot();
    void aLookupCancelledAfterTheMessageTakesTheEarlierPick_data();
    void aLookupCancelledAfterTheMessageTakesTheEarlierPick();
    void anUnknownSubstituteIsToldOnce();
    void theLeastLeaveOfTheSettingsIsNotRead();
};

void Form4EditsTest::anEditSignsTheNoteAnew() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    const Fields note = it.wholeNote(Number, u"10001"_s, u"03"_s, Monday);
    it.addNote(with(with(with(note, {u"Account", u"other"}),
                         {u"TransDate", QDateTime(QDate(2001, 3, 1), QTime(8, 7, 6))}),
                    {u"TransType", false}));
    it.addDay(it.day(Number, u"10001"_s, u"03"_s, Monday, QTime(8, 0), QTime(17, 0), 8, u"A"_s));
    it.open(NotesTab);
    QCOMPARE(it.label4(1) + u'|' + it.labels4(9, 10), u"other|2001/3/1 08:07:06|False"_s);
    it.press(1);
    QCOMPARE(it.label4(1) + u'|' + it.labels4(9, 10), u"other|2001/3/1 08:07:06|False"_s); // by the save
    it.type(u"Text3(4)"_s, u"Bank"_s);
    it.press(4);
    QCOMPARE(it.notes(), it.expectedNotes({note + Fields{{u"HoliDesc", u"Bank"}}}));
    QCOMPARE(it.label4(1) + u'|' + it.labels4(9, 10), u"tester|2001/3/2|True"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form4EditsTest::noAtTheQuestionOfAnEditLeavesTheDayRows() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.addWholeDay(Number, u"10001"_s, u"03"_s, Monday);
    it.addWholeDay(u"200103010008"_s, u"10001"_s, u"04"_s, Monday);
    const QStringList notes = it.notes();
    const QStringList days = it.days();
    it.open(NotesTab);
    it.press(1);
    it.type(u"Text3(2)"_s, u"01"_s);
    it.typeTime(1, u"1200"_s);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(4);
    QCOMPARE(it.seen(), QStringList{Duplicate});
    QCOMPARE(it.notes(), notes);
    QCOMPARE(it.days(), days);
    QCOMPARE(it.text(u"Text3(2)"_s) + it.label4(8) + it.time(1).time().toString(u"hhmm"_s), u"03事假1700"_s);
    QCOMPARE(it.shown(DayGrid).size(), 2);
    QCOMPARE(it.panel(1) + it.panel(2), u"資料錄:1/2"_s);
    QCOMPARE(it.tabsOn().size(), 6);
}

void Form4EditsTest::aNoteOfNobodyIsSaved() {
    Form4Fixture it;
    it.addWholeDay(Number, u"10001"_s, u"08"_s, Monday);
    gPickEmpNo = u"77777"_s; // who has been deleted since
    it.open(NotesTab);
    const QString balances = it.labels4(11, 22);
    it.press(0);
    it.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s);
    it.press(u"Search(2)"_s);
    QCOMPARE(it.text(u"Text3(0)"_s), u"77777"_s);
    it.type(u"Text3(2)"_s, u"08"_s);
    it.typeDate(0, u"900305"_s);
    it.typeTime(0, u"0900"_s);
    it.typeDate(1, u"900305"_s);
    it.typeTime(1, u"1000"_s);
    it.press(4);
    QCOMPARE(it.seen(), QStringList{u"QFrmEmpNO"_s});
    QCOMPARE(it.notes(), it.expectedNotes({it.wholeNote(Number, u"10001"_s, u"08"_s, Monday),
                                           it.note(FirstNumber, u"77777"_s, u"08"_s, Monday, QTime(9, 0),
                                                   Monday, QTime(10, 0), 1.0)}));
    QCOMPARE(it.days().mid(1), it.expectedDays({it.day(FirstNumber, u"77777"_s, u"08"_s, Monday, QTime(8, 0),
                                                       QTime(17, 0), 8, QString())}));
    // All of the employee before, whose row came up once more on the way.
    QCOMPARE(it.labels4(2, 8), u"王小明|課長|日班|會計課|正職||產假"_s);
    QCOMPARE(it.labels4(11, 22), balances);
    QCOMPARE(it.panel(1), u"資料錄:2/2"_s);
}

void Form4EditsTest::aChosenDateBringsTheTimesOfTheOwnSlot() {
    Form4Fixture it;
    addSlot(it.database(), u"B"_s, {{u"StdT1", QTime(9, 30)}, {u"StdT4", QTime(18, 30)}});
    addRoster(it.database(), u"10002"_s, Monday, u"B"_s);
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(0)"_s, u"10002"_s);
    for (const int end : {0, 1}) {
        it.typeTime(end, u"1012"_s);
        it.date(end).setFocus();
        it.date(end).setDate(Monday);
        QCOMPARE(it.time(end).time(), QTime(10, 12));
        it.key(Qt::Key_Return);
    }
    QCOMPARE(it.time(0).time(), QTime(9, 30));
    QCOMPARE(it.time(1).time(), QTime(18, 30));
    QVERIFY(it.seen().isEmpty());
}

void Form4EditsTest::aLookupCancelledAfterTheMessageTakesTheEarlierPick_data() {
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("lookup");
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("name");
    QTest::addColumn<QString>("earlier");
    QTest::addColumn<QString>("shown"); // The code and its name.
    const auto add = [](const char* title, const QString& box, const QString& lookup, const QString& word,
                        int name, const QString& earlier, const QString& shown) {
        QTest::newRow(title) << box << lookup << word << name << earlier << shown;
    };
    add("an employee, nobody picked before", u"Text3(0)"_s, u"QFrmEmpNO"_s, u"員工"_s, 2, {}, {});
    add("an employee, one picked before", u"Text3(0)"_s, u"QFrmEmpNO"_s, u"員工"_s, 2, u"10002"_s,
        u"10002陳美惠"_s);
    add("a type, none picked before", u"Text3(2)"_s, u"QFrmHoliNo"_s, u"假別"_s, 8, {}, {});
    add("a type, one picked before", u"Text3(2)"_s, u"QFrmHoliNo"_s, u"假別"_s, 8, u"04"_s, u"04病假"_s);
}

void Form4EditsTest::aLookupCancelledAfterTheMessageTakesTheEarlierPick() {
    QFETCH(const QString, box);
    QFETCH(const QString, lookup);
    QFETCH(const QString, word);
    QFETCH(const int, name);
    QFETCH(const QString, earlier);
    QFETCH(const QString, shown);
    Form4Fixture it;
    (lookup == u"QFrmEmpNO" ? gPickEmpNo : gPickHoliNo) = earlier;
    it.open(NotesTab);
    it.press(0);
    it.type(box, u"77"_s);
    it.answers.expectMsgBox().expect(lookup, [](QWidget& dialog) { clickCancel(dialog); });
    it.key(Qt::Key_Return);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList({u"警告訊息|無此【%1代碼】,請重新輸入"_s.arg(word), lookup}));
    QCOMPARE(it.text(box) + it.label4(name), shown);
    // Nobody is kept in the box.
    it.at(box).setFocus();
    it.key(Qt::Key_Tab);
    QVERIFY(it.focused() != box);
    QCOMPARE(it.seen().size(), 2);
}

void Form4EditsTest::anUnknownSubstituteIsToldOnce() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.addWholeDay(Number, u"10001"_s, u"03"_s, Monday);
    it.open(NotesTab);
    it.press(1);
    it.type(u"Text3(1)"_s, u"9"_s);
    it.answers.expectMsgBox();
    it.press(4);
    it.press(4); // which the message has held up
    QCOMPARE(it.notes(), it.expectedNotes({it.wholeNote(Number, u"10001"_s, u"03"_s, Monday) +
                                           Fields{{u"RepEmpNo", u"9"}}}));
    // In the next edit nobody has typed him.
    it.press(1);
    it.at(u"Text3(1)"_s).setFocus();
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"Text3(2)"_s);
    QCOMPARE(it.seen(), QStringList{u"警告訊息|無此【員工代碼】,請重新輸入"_s});
    QCOMPARE(it.answers.trouble(), QString());
}

void Form4EditsTest::theLeastLeaveOfTheSettingsIsNotRead() {
    Form4Fixture it;
    it.database().execute(u"Update Syst01 Set HoliMin = 30"_s);
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"03"_s, u"900305"_s, u"0800"_s, u"0930"_s);
    it.press(4);
    QCOMPARE(it.notes(), it.expectedNotes({it.note(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(8, 0),
                                                   Monday, QTime(9, 30), 0.2)}));
    QCOMPARE(it.days(), it.expectedDays({it.day(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(8, 0),
                                                QTime(9, 30), 2, u"A"_s)}));
}

int main(int argc, char** argv) {
    return runTests<Form4EditsTest>(argc, argv);
}

#include "Form4EditsTest.moc"
