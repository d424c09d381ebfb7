#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QStringList All = {u"10001|王小明|2001/3/5|01||||tester|"_s, u"10001|王小明|2001/3/6||02|||tester|"_s,
                         u"10002|陳美惠|2001/3/5||||A12|tester|"_s};

/// The tab of the entries over three rows.
class QueryFixture : public Form5Fixture {
  public:
    QueryFixture() {
        addPeople();
        addEntries();
        open(Entries);
    }
    [[nodiscard]] QStringList list() const { return shown(u"TDBG1(0)"_s); }
};

} // namespace

/// What the query of the entries shows, and for how long.
class Form5QueryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aQueryStaysUntilTheNextRefresh_data();
    void aQueryStaysUntilTheNextRefresh();
    void aUnitLeavesTheListAsItIs();
    void aCancelledDialogRepeatsTheLastKind();
    void aBatchShowsTheWholeTableAgain_data();
    void aBatchShowsTheWholeTableAgain();
    void aCancelledDateIsASearchedDay_data();
    void aCancelledDateIsASearchedDay();
    void theRowsComeInTheOrderOfTheirKind_data();
    void theRowsComeInTheOrderOfTheirKind();
};

void Form5QueryTest::aQueryStaysUntilTheNextRefresh_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("all") << 0 << QStringList({u"10001/2001/3/5"_s, u"10001/2001/3/6"_s, u"10002/2001/3/5"_s});
    QTest::newRow("a day") << 1 << QStringList({u"10001/2001/3/5"_s, u"10002/2001/3/5"_s});
    QTest::newRow("a day of an employee") << 2 << QStringList{u"10002/2001/3/5"_s};
    QTest::newRow("an employee") << 3 << QStringList{u"10002/2001/3/5"_s};
}

void Form5QueryTest::aQueryStaysUntilTheNextRefresh() {
    QFETCH(const int, kind);
    QFETCH(const QStringList, found);
    QueryFixture it;
    const auto shown = [&it] {
        QStringList rows;
        for (const QString& row : it.shown(u"TDBG1(0)"_s))
            rows << row.section(u'|', 0, 0) + u'/' + row.section(u'|', 2, 2);
        return rows;
    };
    it.expectKind(kind);
    if (kind == 1 || kind == 2)
        it.expectDate(u"900305"_s);
    if (kind >= 2)
        it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(shown(), found);
    QCOMPARE(it.panel(1), u"資料錄:1/%1"_s.arg(found.size()));
    // An edit and a move leave it; the next refresh brings all.
    it.press(u"CtrlCmd2(1)"_s);
    it.press(u"CtrlCmd2(3)"_s);
    it.press(u"CtrlCmd2(9)"_s);
    QCOMPARE(shown(), found);
    it.press(u"CtrlCmd2(10)"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s);
}

void Form5QueryTest::aUnitLeavesTheListAsItIs() {
    QueryFixture it;
    it.expectKind(3);
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
    it.expectKind(4);
    it.expectDate(u"900305"_s);
    it.answers.expect(u"QFrmUnitNo"_s, clickOk);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
    QCOMPARE(it.text(u"Text5(0)"_s), u"10002"_s);
}

void Form5QueryTest::aCancelledDialogRepeatsTheLastKind() {
    QueryFixture it;
    gQueryKind = 3;
    gPickEmpNo = u"10001"_s;
    it.answers.expectClick(u"IFrmQuery"_s, u"Command1(1)"_s);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
}

void Form5QueryTest::aBatchShowsTheWholeTableAgain_data() {
    QTest::addColumn<MsgAnswer>("answer");
    QTest::addColumn<QStringList>("listed");
    QTest::newRow("carried out") << MsgAnswer::Yes
                                 << QStringList({u"10001|王小明|2001/3/5|01||||clerk|2001/3/6 09:10"_s,
                                                 All.at(1),
                                                 u"10002|陳美惠|2001/3/5|01||||clerk|2001/3/6 09:10"_s});
    QTest::newRow("given up") << MsgAnswer::No << All;
}

void Form5QueryTest::aBatchShowsTheWholeTableAgain() {
    QFETCH(const MsgAnswer, answer);
    QFETCH(const QStringList, listed);
    QueryFixture it;
    it.expectKind(3);
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.list(), All.mid(2));
    it.clickTab(Batch);
    it.press(u"CmdBat(0)"_s);
    it.typeDate(0, u"900305"_s);
    it.type(u"Text8(0)"_s, u"01"_s);
    it.press(u"CMDCTRL(1)"_s);
    it.answers.expectMsgBox(answer);
    it.press(u"CmdBat(1)"_s);
    it.clickTab(Entries);
    QCOMPARE(it.list(), listed);
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5QueryTest::aCancelledDateIsASearchedDay_data() {
    QTest::addColumn<int>("kind");
    QTest::newRow("a day") << 1;
    QTest::newRow("a day of an employee") << 2;
}

void Form5QueryTest::aCancelledDateIsASearchedDay() {
    QFETCH(const int, kind);
    QueryFixture it;
    const auto ask = [&it, kind] {
        it.expectKind(kind);
        it.expectDateCancelled();
        if (kind == 2)
            it.expectPick(u"QFrmEmpNO"_s, 0);
        it.press(u"CtrlCmd2(5)"_s);
    };
    ask();
    QCOMPARE(gDate1, QDate(2038, 1, 1));
    QCOMPARE(it.list(), QStringList());
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd2"_s), QList<int>({0, 5, 10, 11, 12, 13}));
    it.press(u"CtrlCmd2(10)"_s);
    QCOMPARE(it.list(), All);
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd2"_s), QList<int>({0, 1, 2, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    // An entry of that day is found.
    addWriteOff(it.database(), u"10001"_s, {2038, 1, 1}, {}, {}, u"01"_s, {});
    ask();
    QCOMPARE(it.list(), QStringList{u"10001|王小明|2038/1/1|||01||tester|"_s});
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5QueryTest::theRowsComeInTheOrderOfTheirKind_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("found");
    const QString early = u"10001|王小明|2000/12/31|02||||tester|"_s;
    const QString lower = u"a1|a1|2001/3/5|||01||tester|"_s;
    const QString upper = u"B2|B2|2001/3/5||01|||tester|"_s;
    // Codes as text, whatever their case; dates as dates.
    QTest::newRow("a day, by employee") << 1 << QStringList{All.at(0), All.at(2), lower, upper};
    QTest::newRow("a day of an employee") << 2 << QStringList{All.at(0)};
    QTest::newRow("an employee, by date") << 3 << QStringList{early, All.at(0), All.at(1)};
    QTest::newRow("a day and a unit, as before") << 4 << QStringList{early} + All + QStringList{lower, upper};
}

void Form5QueryTest::theRowsComeInTheOrderOfTheirKind() {
    QFETCH(const int, kind);
    QFETCH(const QStringList, found);
    Form5Fixture it;
    it.addPeople();
    // The last ones first.
    addWriteOff(it.database(), u"B2"_s, Day, {}, u"01"_s, {}, {});
    addWriteOff(it.database(), u"a1"_s, Day, {}, {}, u"01"_s, {});
    addWriteOff(it.database(), u"10002"_s, Day, {}, {}, {}, u"A12"_s);
    addWriteOff(it.database(), u"10001"_s, Day.addDays(1), {}, u"02"_s, {}, {});
    addWriteOff(it.database(), u"10001"_s, Day, u"01"_s, {}, {}, {});
    addWriteOff(it.database(), u"10001"_s, {2000, 12, 31}, u"02"_s, {}, {}, {});
    it.open(Entries);
    it.expectKind(kind);
    if (kind != 3)
        it.expectDate(u"900305"_s);
    if (kind == 2 || kind == 3)
        it.expectPick(u"QFrmEmpNO"_s, 0);
    if (kind == 4)
        it.answers.expect(u"QFrmUnitNo"_s, clickOk);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.shown(u"TDBG1(0)"_s), found);
    QCOMPARE(it.panel(1), u"資料錄:1/%1"_s.arg(found.size()));
    QCOMPARE(it.text(u"Text5(0)"_s) + u'|' + it.label(u"Label4(96)"_s), u"10001|王小明"_s);
    QCOMPARE(it.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form5QueryTest>(argc, argv);
}

#include "Form5QueryTest.moc"
