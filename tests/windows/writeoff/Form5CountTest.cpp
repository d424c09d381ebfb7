#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate First(2001, 3, 1);
const QDate Last(2001, 3, 31);

/// The tab of the counts, with entries of two people.
class CountFixture : public Form5Fixture {
  public:
    CountFixture() {
        addPeople();
        addWriteOff(database(), u"10001"_s, First, u"01"_s, u"01"_s, {}, u"02"_s);
        addWriteOff(database(), u"10001"_s, Last, u"01"_s, {}, {}, {});
        addWriteOff(database(), u"10001"_s, {2001, 4, 1}, u"A12"_s, {}, {}, {});
        addWriteOff(database(), u"10002"_s, Day, u"02"_s, u"02"_s, u"02"_s, u"02"_s);
    }
    /// The count that stands there from before.
    void addEarlierCount() {
        insertRow(database(), u"View01"_s, {{u"EmpNo", u"10009"}, {u"CnlNo", u"01"}, {u"CnlTimes", 7}});
    }
    [[nodiscard]] QString count(const QString& EmpNo, const QString& CnlNo, int CnlTimes, QDate first = First,
                                QDate last = Last) const {
        return expectedRow(u"View01"_s, {{u"EmpNo", EmpNo},
                                         {u"BegDate", first},
                                         {u"EndDate", last},
                                         {u"CnlNo", CnlNo},
                                         {u"CnlTimes", CnlTimes}});
    }
    [[nodiscard]] QStringList grid() const { return shown(u"TDBG1(1)"_s); }
    [[nodiscard]] QStringList view() { return rows(u"View01"_s); }
};

} // namespace

/// The tab of the counts.
class Form5CountTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theLastCountShowsAsItIs();
    void aWholeEndDateCounts();
    void aReasonOnAllFourSwipesCountsFour();
    void anyKeyInTheEndDateCountsAnew();
    void aBadEndDateCountsNothing();
    void aDateChosenBeyondTheMaskCounts();
    void aBeginBehindTheEndEmptiesTheView();
    void anEmptyBeginEmptiesTheView();
    void aBeginThatIsNoDateAnyMoreEmptiesTheView_data();
    void aBeginThatIsNoDateAnyMoreEmptiesTheView();
    void withoutAnEmployeeNothingIsLeft();
    void anEmployeeWithoutEntriesLeavesNothing();
    void anUnknownEmployeeIsNotTold();
    void theLookupMovesOn();
    void movesInTheListLeaveTheMasks();
};

void Form5CountTest::theLastCountShowsAsItIs() {
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    QCOMPARE(shownCaptions(it.at<TDBGrid>(u"TDBG1(1)"_s)).join(u'|'), u"員工碼|姓名|註銷原因|註銷次數"_s);
    // Names come with a count.
    QCOMPARE(it.grid(), QStringList{u"10009|10009|01|7"_s});
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
    QVERIFY(it.at(u"Text4"_s).isEnabled());
}

void Form5CountTest::aWholeEndDateCounts() {
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    QCOMPARE(it.label(u"Label4(97)"_s), u"王小明"_s);
    it.typeDate(2, u"900301"_s);
    it.key(Qt::Key_Return);
    const QStringList before = it.view();
    it.typeDate(3, u"90033"_s);
    QCOMPARE(it.view(), before);
    it.keys(u"1"_s);
    // Both ends count.
    QCOMPARE(it.view(), QStringList({it.count(u"10001"_s, u"01"_s, 3), it.count(u"10001"_s, u"02"_s, 1)}));
    QCOMPARE(it.grid(), QStringList({u"10001|王小明|忘記刷卡|3"_s, u"10001|王小明|公出|1"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
    QCOMPARE(it.focused(), u"TDBMask1(3)"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"TDBDate1(3)"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form5CountTest::aReasonOnAllFourSwipesCountsFour() {
    CountFixture it;
    it.open(Counts);
    it.type(u"Text4"_s, u"10002"_s);
    it.typeDate(2, u"900305"_s);
    it.typeDate(3, u"900305"_s);
    QCOMPARE(it.view(), QStringList{it.count(u"10002"_s, u"02"_s, 4, Day, Day)});
    QCOMPARE(it.grid(), QStringList{u"10002|陳美惠|公出|4"_s});
}

void Form5CountTest::anyKeyInTheEndDateCountsAnew() {
    CountFixture it;
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(2, u"900301"_s);
    it.typeDate(3, u"900331"_s);
    it.type(u"Text4"_s, u"10002"_s);
    QCOMPARE(it.grid().constFirst(), u"10001|王小明|忘記刷卡|3"_s); // Another employee alone counts nothing.
    it.at(u"TDBMask1(3)"_s).setFocus();
    it.key(Qt::Key_Home);
    QCOMPARE(it.grid(), QStringList{u"10002|陳美惠|公出|4"_s});
    addWriteOff(it.database(), u"10002"_s, Last, u"01"_s, {}, {}, {});
    it.key(Qt::Key_Return);
    QCOMPARE(it.view(), QStringList({it.count(u"10002"_s, u"01"_s, 1), it.count(u"10002"_s, u"02"_s, 4)}));
}

void Form5CountTest::aBadEndDateCountsNothing() {
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(2, u"900301"_s);
    const QStringList before = it.view();
    it.typeDate(3, u"900231"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.view(), before);
    QVERIFY(it.seen().isEmpty());
}

void Form5CountTest::aDateChosenBeyondTheMaskCounts() {
    CountFixture it;
    addWriteOff(it.database(), u"10001"_s, {2024, 3, 5}, u"A12"_s, {}, {}, {});
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    it.date(2).setDate({2024, 1, 1});
    QCOMPARE(it.view(), QStringList());
    it.date(3).setDate({2024, 12, 31});
    QCOMPARE(it.view(), QStringList{it.count(u"10001"_s, u"A12"_s, 1, {2024, 1, 1}, {2024, 12, 31})});
    QCOMPARE(it.grid(), QStringList{u"10001|王小明|卡鐘故障|1"_s});
    QCOMPARE(it.mask(2).value() + it.mask(3).value(), QString());
}

void Form5CountTest::aBeginBehindTheEndEmptiesTheView() {
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(2, u"900331"_s);
    it.typeDate(3, u"900301"_s);
    QCOMPARE(it.view() + it.grid(), QStringList());
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
}

void Form5CountTest::anEmptyBeginEmptiesTheView() {
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(3, u"900331"_s);
    QCOMPARE(it.view() + it.grid(), QStringList());
    QVERIFY(it.seen().isEmpty());
}

void Form5CountTest::aBeginThatIsNoDateAnyMoreEmptiesTheView_data() {
    QTest::addColumn<QString>("begin");
    QTest::newRow("blank") << QString();
    QTest::newRow("no such day") << u"900231"_s;
    QTest::newRow("half typed") << u"9003"_s;
}

void Form5CountTest::aBeginThatIsNoDateAnyMoreEmptiesTheView() {
    QFETCH(const QString, begin);
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(2, u"900301"_s);
    it.typeDate(3, u"900331"_s);
    QVERIFY(!it.view().isEmpty());
    it.typeDate(2, begin);
    it.typeDate(3, u"900331"_s);
    QCOMPARE(it.view() + it.grid(), QStringList());
}

void Form5CountTest::withoutAnEmployeeNothingIsLeft() {
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    it.typeDate(2, u"900301"_s);
    it.typeDate(3, u"900331"_s);
    QCOMPARE(it.view() + it.grid(), QStringList());
}

void Form5CountTest::anEmployeeWithoutEntriesLeavesNothing() {
    CountFixture it;
    it.addEarlierCount();
    it.open(Counts);
    it.type(u"Text4"_s, u"10003"_s);
    QCOMPARE(it.label(u"Label4(97)"_s), u"周雅婷"_s);
    it.typeDate(2, u"900301"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
    it.typeDate(3, u"900331"_s);
    QCOMPARE(it.view() + it.grid(), QStringList());
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form5CountTest::anUnknownEmployeeIsNotTold() {
    CountFixture it;
    addWriteOff(it.database(), u"x9"_s, Day, u"01"_s, {}, {}, {});
    it.open(Counts);
    it.type(u"Text4"_s, u"X9"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"TDBMask1(2)"_s);
    it.keys(u"900301"_s);
    it.typeDate(3, u"900331"_s);
    // As it was typed; without a name the code shows.
    QCOMPARE(it.view(), QStringList{it.count(u"X9"_s, u"01"_s, 1)});
    QCOMPARE(it.grid(), QStringList{u"X9|X9|忘記刷卡|1"_s});
    QVERIFY(it.seen().isEmpty());
}

void Form5CountTest::theLookupMovesOn() {
    CountFixture it;
    it.open(Counts);
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(u"Search(1)"_s);
    QCOMPARE(it.text(u"Text4"_s) + it.label(u"Label4(97)"_s) + it.focused(), u"10002陳美惠TDBMask1(2)"_s);
}

void Form5CountTest::movesInTheListLeaveTheMasks() {
    CountFixture it;
    it.open(Counts);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(2, u"900301"_s);
    it.typeDate(3, u"900331"_s);
    it.typeDate(2, u"9004"_s);
    const QStringList before = it.view();
    auto& grid = it.at<TDBGrid>(u"TDBG1(1)"_s);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                      grid.visualRect(grid.model()->index(1, 0)).center());
    QCOMPARE(it.panel(1), u"資料錄:2/2"_s);
    QCOMPARE(it.mask(2).value(), u"9004"_s);
    QCOMPARE(it.view(), before);
}

int main(int argc, char** argv) {
    return runTests<Form5CountTest>(argc, argv);
}

#include "Form5CountTest.moc"
