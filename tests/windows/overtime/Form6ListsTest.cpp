#include "windows/overtime/Form6Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString List = u"TDBG1(0)"_s;
const QString Totals = u"TDBG1(1)"_s;
const QString Unknown = u"警告訊息|無此【員工代碼】,請重新輸入|確定"_s;

/// Overtime of two employees: three days of the one, the last of them with everything filled, one of the
/// other.
class ListsFixture : public Form6Fixture {
  public:
    explicit ListsFixture(int tab) {
        add(evening(u"10001"_s, 1, 1));
        add(evening(u"10002"_s, 5, 4));
        Fields whole = evening(u"10001"_s, 31, 3);
        whole += {{u"Memo", u"月結"},
                  {u"Rest", true},
                  {u"Account", u"clerk"},
                  {u"TransDate", QDateTime(QDate(2010, 4, 1), QTime(9, 8, 7))}};
        add(whole);
        add(with(evening(u"10001"_s, 15, 2), {u"Draw", true}));
        open(tab);
    }
    /// Asks for the total of the period by the masks.
    void total(const QString& first, const QString& last) {
        typeDate(2, first);
        typeDate(3, last);
    }
};

} // namespace

/// The list of one employee, and his totals.
class Form6ListsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theListHasItsColumns();
    void enterListsTheEmployeeLatestFirst();
    void theLookupListsAtOnce();
    void anUnknownEmployeeIsToldOnTheList();
    void anEmptyListIsNoFault();
    void theFlagIsTheWindows();
    void aDateMaskLeavesTheFlag();
    void onlyACodeThatChangesClearsTheFlag();
    void theCodeOfARowSetsNoFlag();
    void anEmptyEntryLeavesTheFlag();
    void namesAreThoseOfTheQuery();
    void totalsHaveTheirColumns();
    void theTotalIsClosedAtBothEnds_data();
    void theTotalIsClosedAtBothEnds();
    void anyKeyInTheLastDateAsksAnew();
    void theFirstDateAloneAsksNothing();
    void datesFrom2011OnAreAskedInTheCalendar();
    void masksStandWhileTheyAreTyped();
    void theLookupGoesOnToTheDates();
    void anUnknownEmployeeIsToldOnTheTotals();
};

void Form6ListsTest::theListHasItsColumns() {
    ListsFixture it(2);
    QCOMPARE(shownCaptions(it.at<TDBGrid>(List)).join(u' '),
             u"補休 請領 員工碼 姓名 加班日期 開始 結束 時數 登錄人員 實際登錄時間"_s);
    // At first all overtime, names not yet put in place of the codes.
    QCOMPARE(it.shown(List), QStringList({u"-|-|10001|10001|2010/3/1|18:00|19:00|1||"_s,
                                          u"-|-|10002|10002|2010/3/5|18:00|22:00|4||"_s,
                                          u"v|-|10001|10001|2010/3/31|18:00|21:00|3|clerk|2010/4/1 09:08"_s,
                                          u"-|v|10001|10001|2010/3/15|18:00|20:00|2||"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/4"_s);
}

void Form6ListsTest::enterListsTheEmployeeLatestFirst() {
    ListsFixture it(2);
    it.type(u"Text5"_s, u"10001"_s);
    QCOMPARE(it.label(u"Label4(96)"_s), u"王小明"_s);
    QCOMPARE(it.shown(List).size(), 4); // until Enter
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(List), QStringList({u"v|-|10001|王小明|2010/3/31|18:00|21:00|3|clerk|2010/4/1 09:08"_s,
                                          u"-|v|10001|王小明|2010/3/15|18:00|20:00|2||"_s,
                                          u"-|-|10001|王小明|2010/3/1|18:00|19:00|1||"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(it.focused(), u"Text5"_s);
}

void Form6ListsTest::theLookupListsAtOnce() {
    ListsFixture it(2);
    it.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    it.press(u"Search(1)"_s);
    QCOMPARE(it.text(u"Text5"_s), u"10002"_s);
    QCOMPARE(it.shown(List), QStringList{u"-|-|10002|陳美惠|2010/3/5|18:00|22:00|4||"_s});
    QCOMPARE(it.focused(), u"Text5"_s);
}

void Form6ListsTest::anUnknownEmployeeIsToldOnTheList() {
    ListsFixture it(2);
    it.type(u"Text5"_s, u"10001"_s);
    it.key(Qt::Key_Return);
    it.type(u"Text5"_s, u"77777"_s);
    QCOMPARE(it.label(u"Label4(96)"_s), u"王小明"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{Unknown});
    QCOMPARE(it.shown(List).size(), 3);
    QCOMPARE(it.focused(), u"Text5"_s);
}

void Form6ListsTest::anEmptyListIsNoFault() {
    ListsFixture it(2);
    it.type(u"Text5"_s, u"10003"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(List), QStringList());
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    QVERIFY(it.answers.seen().isEmpty());
}

void Form6ListsTest::theFlagIsTheWindows() {
    ListsFixture it(2);
    it.type(u"Text5"_s, u"77777"_s);
    it.clickTab(3);
    it.type(u"Text4"_s, u"10002"_s); // a code that is known
    it.clickTab(2);
    click(it.at(u"Text5"_s));
    it.key(Qt::Key_Return);
    QVERIFY(it.answers.seen().isEmpty());
    QCOMPARE(it.shown(List), QStringList());
    it.clickTab(3);
    it.type(u"Text4"_s, u"88888"_s);
    it.clickTab(2);
    click(it.at(u"Text5"_s));
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{Unknown});
}

void Form6ListsTest::aDateMaskLeavesTheFlag() {
    ListsFixture it(3);
    it.type(u"Text4"_s, u"77777"_s);
    it.total(u"990301"_s, u"990331"_s);
    QCOMPARE(it.shown(Totals), QStringList());
    click(it.at(u"Text4"_s));
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{Unknown});
    QCOMPARE(it.focused(), u"Text4"_s);
}

void Form6ListsTest::onlyACodeThatChangesClearsTheFlag() {
    ListsFixture it(0);
    it.press(entry::Last); // the second of two rows of the same employee
    it.clickTab(2);
    it.type(u"Text5"_s, u"77777"_s);
    it.clickTab(1);
    it.press(u"CmdBat(0)"_s);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(u"CmdBat(1)"_s);
    it.clickTab(0);
    it.press(entry::Modify);
    it.press(entry::Cancel);
    it.press(u"CtrlCmd0(7)"_s); // to the other row of his
    QCOMPARE(it.text(u"Text1(0)"_s) + it.panel(1), u"10001資料錄:3/4"_s);
    it.clickTab(2);
    click(it.at(u"Text5"_s));
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen().mid(1), QStringList{Unknown});
    it.clickTab(0);
    it.press(u"CtrlCmd0(7)"_s); // to somebody else
    it.clickTab(2);
    click(it.at(u"Text5"_s));
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen().size(), 2);
    QCOMPARE(it.shown(List), QStringList());
    QCOMPARE(it.answers.trouble(), QString());
}

void Form6ListsTest::theCodeOfARowSetsNoFlag() {
    ListsFixture it(2);
    it.add(Form6Fixture::evening(u"77777"_s, 20, 1));
    it.type(u"Text5"_s, u"10002"_s);
    it.clickTab(0);
    it.press(entry::Refresh);
    it.press(entry::Last);
    QCOMPARE(it.text(u"Text1(0)"_s), u"77777"_s);
    it.clickTab(2);
    click(it.at(u"Text5"_s));
    it.key(Qt::Key_Return);
    QVERIFY(it.answers.seen().isEmpty());
    QCOMPARE(it.shown(List).size(), 1);
}

void Form6ListsTest::anEmptyEntryLeavesTheFlag() {
    Form6Fixture it;
    it.open(2);
    it.type(u"Text5"_s, u"77777"_s);
    it.clickTab(0);
    it.press(entry::Add); // of which the code stays empty
    it.press(entry::Cancel);
    it.clickTab(2);
    click(it.at(u"Text5"_s));
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{Unknown});
}

void Form6ListsTest::namesAreThoseOfTheQuery() {
    ListsFixture it(2);
    const QString rename = u"update Base06 set EmpName ='%1' where EmpNo ='10002'"_s;
    const QString row = u"-|-|10002|%1|2010/3/5|18:00|22:00|4||"_s;
    it.type(u"Text5"_s, u"10002"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(List), QStringList{row.arg(u"陳美惠"_s)});
    it.database().execute(rename.arg(u"陳美玉"_s));
    QCOMPARE(it.shown(List), QStringList{row.arg(u"陳美惠"_s)});
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(List), QStringList{row.arg(u"陳美玉"_s)});
    it.clickTab(3);
    it.type(u"Text4"_s, u"10002"_s);
    it.total(u"990301"_s, u"990331"_s);
    QCOMPARE(it.shown(Totals), QStringList{u"10002|陳美玉|4"_s});
    it.database().execute(rename.arg(u"陳美珠"_s));
    click(it.mask(3));
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(Totals), QStringList{u"10002|陳美珠|4"_s});
}

void Form6ListsTest::totalsHaveTheirColumns() {
    ListsFixture it(3);
    QCOMPARE(shownCaptions(it.at<TDBGrid>(Totals)), QStringList({u"員工碼"_s, u"姓名"_s, u"加班總時數"_s}));
    // At first all overtime, of which there is no total.
    QCOMPARE(it.shown(Totals),
             QStringList({u"10001|10001|"_s, u"10002|10002|"_s, u"10001|10001|"_s, u"10001|10001|"_s}));
}

void Form6ListsTest::theTotalIsClosedAtBothEnds_data() {
    QTest::addColumn<QString>("EmpNo");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QStringList>("rows");
    const QString one = u"10001"_s;
    QTest::addRow("the month, rest and draw alike")
        << one << u"990301"_s << u"990331"_s << QStringList{u"10001|王小明|6"_s};
    QTest::addRow("one day less at its end")
        << one << u"990301"_s << u"990330"_s << QStringList{u"10001|王小明|3"_s};
    QTest::addRow("one day less at its beginning")
        << one << u"990302"_s << u"990331"_s << QStringList{u"10001|王小明|5"_s};
    QTest::addRow("a single day") << one << u"990315"_s << u"990315"_s << QStringList{u"10001|王小明|2"_s};
    QTest::addRow("no overtime in it") << one << u"990316"_s << u"990330"_s << QStringList();
    QTest::addRow("the end before the beginning") << one << u"990331"_s << u"990301"_s << QStringList();
    QTest::addRow("somebody without any") << u"10003"_s << u"990301"_s << u"990331"_s << QStringList();
}

void Form6ListsTest::theTotalIsClosedAtBothEnds() {
    QFETCH(const QString, EmpNo);
    QFETCH(const QString, first);
    QFETCH(const QString, last);
    QFETCH(const QStringList, rows);
    ListsFixture it(3);
    it.type(u"Text4"_s, EmpNo);
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"TDBMask1(2)"_s);
    it.keys(first);
    it.typeDate(3, last);
    QCOMPARE(it.shown(Totals), rows);
    QCOMPARE(it.panel(1), u"資料錄:1/%1"_s.arg(rows.size()));
}

void Form6ListsTest::anyKeyInTheLastDateAsksAnew() {
    ListsFixture it(3);
    it.type(u"Text4"_s, u"10001"_s);
    it.total(u"990301"_s, u"990331"_s);
    it.type(u"Text4"_s, u"10002"_s);
    QCOMPARE(it.shown(Totals), QStringList{u"10001|王小明|6"_s});
    click(it.mask(3));
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(Totals), QStringList{u"10002|陳美惠|4"_s});
}

void Form6ListsTest::theFirstDateAloneAsksNothing() {
    ListsFixture it(3);
    it.type(u"Text4"_s, u"10001"_s);
    it.typeDate(2, u"990301"_s);
    click(it.mask(3));
    it.key(Qt::Key_Return); // while the other is empty
    QCOMPARE(it.shown(Totals).size(), 4);
    it.typeDate(3, u"990331"_s);
    QCOMPARE(it.shown(Totals), QStringList{u"10001|王小明|6"_s});
    it.typeDate(2, u"990331"_s);
    QCOMPARE(it.shown(Totals), QStringList{u"10001|王小明|6"_s});
}

void Form6ListsTest::datesFrom2011OnAreAskedInTheCalendar() {
    ListsFixture it(3);
    it.add({{u"EmpNo", u"10001"}, {u"OverDate", QDate(2012, 5, 6)}, {u"OverHours", 7}});
    it.type(u"Text4"_s, u"10001"_s);
    it.date(2).setDate({2012, 5, 6});
    QCOMPARE(it.shown(Totals).size(), 4);
    it.date(3).setDate({2012, 5, 6});
    QCOMPARE(it.mask(3).value(), QString());
    QCOMPARE(it.shown(Totals), QStringList{u"10001|王小明|7"_s});
}

void Form6ListsTest::masksStandWhileTheyAreTyped() {
    ListsFixture it(3);
    it.type(u"Text4"_s, u"10001"_s);
    it.total(u"990301"_s, u"990331"_s);
    // Each key asks, and the date of the mask before stays the date control's.
    click(it.mask(3));
    it.key(Qt::Key_Home);
    it.keys(u"9904"_s);
    QCOMPARE(it.mask(3).displayText(), u"99/04/31"_s);
    QCOMPARE(it.date(3).date(), QDate(2010, 3, 31));
    it.keys(u"15"_s);
    QCOMPARE(it.mask(3).displayText(), u"99/04/15"_s);
    QCOMPARE(it.date(3).date(), QDate(2010, 4, 15));
    it.emptyMask(3);
    QCOMPARE(it.mask(3).value(), QString());
    QCOMPARE(it.shown(Totals), QStringList{u"10001|王小明|6"_s});
}

void Form6ListsTest::theLookupGoesOnToTheDates() {
    ListsFixture it(3);
    it.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    it.press(u"Search(2)"_s);
    QCOMPARE(it.text(u"Text4"_s) + it.label(u"Label4(97)"_s), u"10002陳美惠"_s);
    QCOMPARE(it.focused(), u"TDBMask1(2)"_s);
}

void Form6ListsTest::anUnknownEmployeeIsToldOnTheTotals() {
    ListsFixture it(3);
    it.type(u"Text4"_s, u"77777"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{Unknown});
    QCOMPARE(it.focused(), u"Text4"_s);
    // Left otherwise he is not told of.
    it.key(Qt::Key_Tab);
    QCOMPARE(it.focused(), u"TDBMask1(2)"_s);
    QCOMPARE(it.answers.seen().size(), 1);
}

int main(int argc, char** argv) {
    return runTests<Form6ListsTest>(argc, argv);
}

#include "Form6ListsTest.moc"
