#include "windows/leave/Form4BatchFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString NoType = u"警告訊息|無此【假別代碼】,請重新輸入"_s;

/// The lone employee 10001, at work on Monday, with days of sick leave left.
class LoneFixture : public Form4BatchFixture {
  public:
    LoneFixture() {
        addRoster(database(), u"10001"_s, Monday, u"A"_s);
        database().execute(u"delete * from Base06"_s);
        insertRow(database(), u"Base06"_s, healthy());
    }
    [[nodiscard]] static Fields healthy() {
        return with(with(first(), {u"SickUse", 1.0}), {u"SickLeft", 29.0});
    }
};

} // namespace

/// What a leave batch leaves behind, on the screen and in the balances, and what its boxes tell.
class Form4BatchEndsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void itIsShutHoweverItEnds_data();
    void itIsShutHoweverItEnds();
    void eachGroupIsCharged_data();
    void eachGroupIsCharged();
    void theHoursOfTheLastOneStay();
    void aBadDateIsToldAndKeepsTheFocus();
    void aLookupCancelledAfterTheMessageTakesTheEarlierPick_data();
    void aLookupCancelledAfterTheMessageTakesTheEarlierPick();
};

void Form4BatchEndsTest::itIsShutHoweverItEnds_data() {
    QTest::addColumn<QString>("HoliNo");
    QTest::addColumn<bool>("employees");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<QStringList>("told");
    QTest::addColumn<int>("notes");
    const QString nobody = u"錯誤訊息|請選擇員工代碼...."_s;
    QTest::newRow("run") << u"08"_s << true << true << QStringList() << 2;
    QTest::newRow("answered by No") << u"08"_s << true << false << QStringList() << 0;
    QTest::newRow("refused") << u"08"_s << false << true << QStringList{nobody, BatchNotSaved} << 0;
    QTest::newRow("stopped by a balance") << u"04"_s << true << true << QStringList{BatchTooMuch} << 0;
}

void Form4BatchEndsTest::itIsShutHoweverItEnds() {
    QFETCH(const QString, HoliNo);
    QFETCH(const bool, employees);
    QFETCH(const bool, yes);
    QFETCH(const QStringList, told);
    QFETCH(const int, notes);
    Form4BatchFixture it; // whose first employee has less than no sick leave left
    it.open(BatchTab);
    QCOMPARE(it.shut(), u"shut"_s);
    it.begin();
    QCOMPARE(it.shut(), QString());
    it.fill(HoliNo, u"0800"_s, u"1700"_s);
    if (!employees)
        it.press(u"CMDCTRL(3)"_s);
    it.answers.expectMsgBox(yes ? MsgAnswer::Yes : MsgAnswer::No);
    for (int message = 0; message < told.size(); ++message)
        it.answers.expectMsgBox();
    it.press(u"CmdBat(1)"_s);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList{BatchQuestion} + told);
    QCOMPARE(it.notes().size(), notes);
    QCOMPARE(it.days().size(), notes);
    QCOMPARE(it.shut(), u"shut"_s);
    it.press(u"StbTool(8)"_s); // which leads out again
    QVERIFY(!it.isOpen());
}

void Form4BatchEndsTest::eachGroupIsCharged_data() {
    QTest::addColumn<QString>("HoliNo");
    QTest::addColumn<Fields>("charged");
    const auto charged = [](const Field& use, const Field& left) {
        return with(with(LoneFixture::healthy(), use), left);
    };
    QTest::newRow("what was kept of last year")
        << u"02"_s << charged({u"LastYearUse", 1.5}, {u"LastYearLeft", 1.3});
    QTest::newRow("leave") << u"03"_s << charged({u"LeaveUse", 3.0}, {u"LeaveLeft", 11.0});
    QTest::newRow("sick leave") << u"04"_s << charged({u"SickUse", 2.0}, {u"SickLeft", 28.0});
}

void Form4BatchEndsTest::eachGroupIsCharged() {
    QFETCH(const QString, HoliNo);
    QFETCH(const Fields, charged);
    LoneFixture it;
    it.open(BatchTab);
    it.begin();
    it.fill(HoliNo, u"0800"_s, u"1700"_s);
    it.run();
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
    QCOMPARE(it.employees(), it.expected(u"Base06"_s, {charged}));
    QCOMPARE(it.notes(), it.expectedNotes({it.batchNote(FirstNumber, u"10001"_s, HoliNo, 1.0)}));
    QCOMPARE(it.days(), it.expectedDays({it.wholeDay(FirstNumber, u"10001"_s, HoliNo, 8, u"A"_s)}));
}

void Form4BatchEndsTest::theHoursOfTheLastOneStay() {
    Form4BatchFixture it;
    addSlot(it.database(), u"B"_s, {{u"StdT2", QTime(12, 0)}, {u"StdT3", QTime(12, 30)}}); // a short break
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    addRoster(it.database(), u"10002"_s, Monday, u"B"_s);
    it.open(BatchTab);
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1700"_s);
    it.run();
    const QString next = u"200103020002"_s;
    QCOMPARE(it.notes(), it.expectedNotes({it.batchNote(FirstNumber, u"10001"_s, u"08"_s, 1.0),
                                           it.batchNote(next, u"10002"_s, u"08"_s, 1.1)}));
    QCOMPARE(it.text(u"Text8(1)"_s), u"1.1"_s);
}

void Form4BatchEndsTest::aBadDateIsToldAndKeepsTheFocus() {
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    it.typeDate(2, u"901345"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{u"警告訊息|日期格式輸入錯誤,請重新輸入"_s});
    QCOMPARE(it.focused(), u"TDBMask1(2)"_s);
    QVERIFY(!it.date(2).date().isValid() && it.time(2).isNull() && it.time(3).isNull());
    it.typeDate(2, u"900305"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.date(2).date(), Monday);
    QCOMPARE(it.seen().size(), 1);
}

void Form4BatchEndsTest::aLookupCancelledAfterTheMessageTakesTheEarlierPick_data() {
    QTest::addColumn<QString>("earlier");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("a type") << u"03"_s << u"03事假"_s;
}

void Form4BatchEndsTest::aLookupCancelledAfterTheMessageTakesTheEarlierPick() {
    QFETCH(const QString, earlier);
    QFETCH(const QString, shown);
    Form4BatchFixture it;
    gPickHoliNo = earlier;
    it.open(BatchTab);
    it.begin();
    it.type(u"Text8(0)"_s, u"77"_s);
    it.answers.expectMsgBox().expect(u"QFrmHoliNo"_s, [](QWidget& dialog) { clickCancel(dialog); });
    it.key(Qt::Key_Return);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList({NoType, u"QFrmHoliNo"_s}));
    QCOMPARE(it.text(u"Text8(0)"_s) + it.label(u"Label40"_s), shown);
    QCOMPARE(it.focused(), u"Text8(1)"_s);
    it.key(Qt::Key_Return); // Enter leads on to the saving
    QCOMPARE(it.focused(), u"CmdBat(1)"_s);
}

int main(int argc, char** argv) {
    return runTests<Form4BatchEndsTest>(argc, argv);
}

#include "Form4BatchEndsTest.moc"
