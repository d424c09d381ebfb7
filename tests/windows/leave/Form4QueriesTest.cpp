#include "windows/leave/Form4Fixture.h"

#include "support/TableTakenAway.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString NoEmployee = u"警告訊息|無此【員工代碼】,請重新輸入"_s;
const QString NoteGrid = u"TDBGrid1(3)"_s;
const QString HoursGrid = u"TDBGrid2"_s;

/// Leave of 10001: 8 and 5 hours of type 03 and 3 of type 01, within the week; more without and of others.
void addLeave(Form4Fixture& it) {
    const auto add = [&it](const QString& EmpNo, const QString& HoliNo, int day, int hours) {
        it.addDay(it.day(u"1"_s, EmpNo, HoliNo, {2001, 3, day}, QTime(8, 0), QTime(17, 0), hours, u"A"_s));
    };
    add(u"10001"_s, u"03"_s, 5, 8);
    add(u"10001"_s, u"03"_s, 9, 5);
    add(u"10001"_s, u"01"_s, 7, 3);
    add(u"10001"_s, u"77"_s, 7, 3); // of no known type
    add(u"10001"_s, u"03"_s, 4, 1);
    add(u"10001"_s, u"03"_s, 10, 1);
    add(u"10002"_s, u"04"_s, 7, 8);
}

} // namespace

/// The tabs that ask what leave there was.
class Form4QueriesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theNotesOfAnEmployeeAreListed();
    void anUnknownEmployeeIsToldOnEnter_data();
    void anUnknownEmployeeIsToldOnEnter();
    void anEmployeeWithoutNotesHasAnEmptyList();
    void aFailureIsToldAndTheWindowStays();
    void aLookupFillsTheCode_data();
    void aLookupFillsTheCode();
    void enterWithoutACodeListsNobody();
    void hoursAreSummedUpByType();
    void hoursAreSummedUpBeforeTheyAreDays();
    void aPeriodBehindTheMasksIsChosen();
    void onlyTheLastDayAsks();
    void withoutAFirstDayNothingIsAsked();
    void aBadLastDayAsksNothing();
    void aBadFirstDayIsTold();
    void anEditElsewhereLeavesTheMark();
};

void Form4QueriesTest::theNotesOfAnEmployeeAreListed() {
    Form4Fixture it;
    it.addNote(it.wholeNote(u"101"_s, u"10001"_s, u"03"_s, Monday));
    it.addNote(it.wholeNote(u"102"_s, u"10002"_s, u"03"_s, Monday));
    it.addNote(it.wholeNote(u"103"_s, u"10001"_s, u"01"_s, Monday));
    Fields latest = it.wholeNote(u"104"_s, u"10001"_s, u"04"_s, {2001, 3, 6});
    latest << Field{u"Money", true} << Field{u"HoliDesc", u"感冒"};
    it.addNote(latest);
    it.open(BrowseTab);
    QCOMPARE(it.captions(NoteGrid), QStringList({u"請領"_s, u"假單編號"_s, u"假別"_s, u"請假開始"_s,
                                                 QString(), u"請假結束"_s, QString(), u"天數"_s, u"說明"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/4"_s);
    it.type(u"Text5"_s, u"10001"_s);
    QCOMPARE(it.label4(96), u"王小明"_s);
    QCOMPARE(it.shown(NoteGrid).size(), 4);
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(NoteGrid), QStringList({u"v|104|病假|2001/3/6|08:00|2001/3/6|17:00|1|感冒"_s,
                                              u"-|103|休假|2001/3/5|08:00|2001/3/5|17:00|1|"_s,
                                              u"-|101|事假|2001/3/5|08:00|2001/3/5|17:00|1|"_s}));
    QCOMPARE(it.panel(1) + it.focused(), u"資料錄:1/3Text5"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form4QueriesTest::anUnknownEmployeeIsToldOnEnter_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("name");
    QTest::newRow("browse") << int(BrowseTab) << u"Text5"_s << 96;
    QTest::newRow("hours") << int(HoursTab) << u"Text4"_s << 97;
}

void Form4QueriesTest::anUnknownEmployeeIsToldOnEnter() {
    QFETCH(const int, tab);
    QFETCH(const QString, box);
    QFETCH(const int, name);
    Form4Fixture it;
    it.addNote(it.wholeNote(u"101"_s, u"10001"_s, u"03"_s, Monday));
    it.open(tab);
    const QString counter = it.panel(1);
    it.type(box, u"10001"_s);
    it.type(box, u"9"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{NoEmployee});
    QCOMPARE(it.focused() + it.label4(name), box + u"王小明"_s);
    QCOMPARE(it.panel(1), counter);
    it.key(Qt::Key_Tab); // to leave it is not told
    QCOMPARE(it.answers.trouble(), QString());
}

void Form4QueriesTest::anEmployeeWithoutNotesHasAnEmptyList() {
    Form4Fixture it;
    it.addNote(it.wholeNote(u"101"_s, u"10001"_s, u"03"_s, Monday));
    it.open(BrowseTab);
    it.type(u"Text5"_s, u"10002"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(NoteGrid), QStringList());
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
}

void Form4QueriesTest::aFailureIsToldAndTheWindowStays() {
    Form4Fixture it;
    it.addNote(it.wholeNote(u"101"_s, u"10001"_s, u"03"_s, Monday));
    it.open(BrowseTab);
    it.type(u"Text5"_s, u"10001"_s);
    {
        const TableTakenAway away(it.store.path(), "Holi03");
        it.answers.expectMsgBox();
        it.key(Qt::Key_Return);
    }
    QCOMPARE(it.seen(), QStringList{u"異常警告|資料庫開啟異常,請洽程式設計師"_s});
    QVERIFY(!gOpenFailed && !it.form().isUnloaded());
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(NoteGrid).size(), 1);
}

void Form4QueriesTest::aLookupFillsTheCode_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("name");
    QTest::newRow("browse") << int(BrowseTab) << u"Search(6)"_s << u"Text5"_s << 96;
    QTest::newRow("hours") << int(HoursTab) << u"Search(7)"_s << u"Text4"_s << 97;
}

void Form4QueriesTest::aLookupFillsTheCode() {
    QFETCH(const int, tab);
    QFETCH(const QString, button);
    QFETCH(const QString, box);
    QFETCH(const int, name);
    Form4Fixture it;
    it.open(tab);
    it.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    it.press(button);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.text(box) + it.label4(name), u"10002陳美惠"_s);
    QCOMPARE(it.at<QPushButton>(button).text(), u"查詢"_s);
}

void Form4QueriesTest::enterWithoutACodeListsNobody() {
    Form4Fixture it;
    it.addNote(it.wholeNote(u"101"_s, u"10001"_s, u"03"_s, Monday));
    it.open(BrowseTab);
    it.at(u"Text5"_s).setFocus();
    it.key(Qt::Key_Return);
    QVERIFY(it.seen().isEmpty()); // a box that nobody has typed into
    QCOMPARE(it.shown(NoteGrid), QStringList());
    QCOMPARE(it.panel(1) + it.focused() + it.label4(96), u"資料錄:1/0Text5"_s);
}

void Form4QueriesTest::hoursAreSummedUpByType() {
    Form4Fixture it;
    addLeave(it);
    it.open(HoursTab);
    QCOMPARE(it.captions(HoursGrid), QStringList({u"假別"_s, u"假別名稱"_s, u"請假總日數"_s}));
    it.type(u"Text4"_s, u"10001"_s);
    QCOMPARE(it.label4(97), u"王小明"_s);
    it.typeDate(3, u"900305"_s);
    it.typeDate(4, u"900309"_s);
    // 13 hours are one day and five.
    QCOMPARE(it.shown(HoursGrid), QStringList({u"01|休假|0.3"_s, u"03|事假|1.5"_s}));
    QVERIFY(it.seen().isEmpty());
}

void Form4QueriesTest::hoursAreSummedUpBeforeTheyAreDays() {
    Form4Fixture it;
    for (const int day : {5, 6})
        it.addDay(it.day(u"1"_s, u"10001"_s, u"03"_s, {2001, 3, day}, QTime(8, 0), QTime(14, 0), 5, u"A"_s));
    it.open(HoursTab);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(3, u"900305"_s);
    it.typeDate(4, u"900306"_s);
    QCOMPARE(it.shown(HoursGrid), QStringList{u"03|事假|1.2"_s});
}

void Form4QueriesTest::aPeriodBehindTheMasksIsChosen() {
    Form4Fixture it;
    it.addDay(it.day(u"1"_s, u"10001"_s, u"03"_s, {2026, 3, 5}, QTime(8, 0), QTime(17, 0), 8, u"A"_s));
    it.open(HoursTab);
    it.type(u"Text4"_s, u"10001"_s);
    it.date(3).setDate({2026, 3, 1});
    QCOMPARE(it.shown(HoursGrid).size(), 5); // the types, as at first
    it.date(4).setDate({2026, 3, 31});
    QCOMPARE(it.shown(HoursGrid), QStringList{u"03|事假|1"_s});
    it.date(4).setDate({2026, 3, 4});
    QCOMPARE(it.shown(HoursGrid), QStringList());
}

void Form4QueriesTest::onlyTheLastDayAsks() {
    Form4Fixture it;
    addLeave(it);
    it.open(HoursTab);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(3, u"900305"_s);
    it.typeDate(4, u"900309"_s);
    const QStringList shown = it.shown(HoursGrid);
    it.typeDate(3, u"900308"_s);
    QCOMPARE(it.shown(HoursGrid), shown);
    it.type(u"Text4"_s, u"10002"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(HoursGrid), shown);
    it.typeDate(4, u"900309"_s); // the same day, typed again
    QCOMPARE(it.shown(HoursGrid), QStringList());
    it.typeDate(3, u"900301"_s);
    it.typeDate(4, u"900331"_s);
    QCOMPARE(it.shown(HoursGrid), QStringList{u"04|病假|1"_s});
}

void Form4QueriesTest::withoutAFirstDayNothingIsAsked() {
    Form4Fixture it;
    addLeave(it);
    it.open(HoursTab);
    it.type(u"Text4"_s, u"10001"_s);
    const QStringList shown = it.shown(HoursGrid);
    it.typeDate(4, u"900309"_s);
    QCOMPARE(it.shown(HoursGrid), shown);
    QVERIFY(it.seen().isEmpty());
}

void Form4QueriesTest::aBadLastDayAsksNothing() {
    Form4Fixture it;
    addLeave(it);
    it.open(HoursTab);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(3, u"900305"_s);
    it.typeDate(4, u"901399"_s);
    QCOMPARE(it.shown(HoursGrid).size(), 5);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{u"警告訊息|日期格式輸入錯誤,請重新輸入"_s});
    QCOMPARE(it.focused(), u"TDBMask1(4)"_s);
}

void Form4QueriesTest::aBadFirstDayIsTold() {
    Form4Fixture it;
    addLeave(it);
    it.open(HoursTab);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(3, u"901399"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{u"警告訊息|日期格式輸入錯誤,請重新輸入"_s});
    QCOMPARE(it.focused(), u"TDBMask1(3)"_s);
    QVERIFY(!it.date(3).date().isValid());
    QCOMPARE(it.shown(HoursGrid).size(), 5);
}

void Form4QueriesTest::anEditElsewhereLeavesTheMark() {
    Form4Fixture it;
    it.open(BrowseTab);
    it.type(u"Text5"_s, u"9"_s);
    it.clickTab(TypesTab);
    for (const int button : {1, 3, 0, 3}) // edit and cancel, add and cancel
        it.press(button);
    it.clickTab(BrowseTab);
    it.at(u"Text5"_s).setFocus();
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{NoEmployee});
    QCOMPARE(it.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form4QueriesTest>(argc, argv);
}

#include "Form4QueriesTest.moc"
