#include "app/Clerk.h"
#include "windows/master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

/// The window of basic data without a code yet, over two employees, and a clerk without a mouse.
class ClerkFixture : public EmployeeFixture {
  public:
    ClerkFixture() {
        for (const QString& table : {u"Base01"_s, u"Base02"_s, u"Base03"_s, u"Base05"_s})
            database().execute(u"delete * from "_s + table);
        addPlain(2);
        open();
        clerk_ = std::make_unique<Clerk>(mainWindow());
    }
    [[nodiscard]] Clerk& clerk() { return *clerk_; }

    /// Reaches the boxes one after the other and types over what they hold.
    [[nodiscard]] bool fillAll(const QList<std::pair<QString, QString>>& boxes) {
        return std::all_of(boxes.begin(), boxes.end(),
                           [this](const auto& each) { return clerk_->fill(each.first, each.second); });
    }

  private:
    std::unique_ptr<Clerk> clerk_;
};

} // namespace

/// What a clerk does with a new employee, from his unit to his first day of punches, by keyboard alone.
class EmployeeClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNewEmployeeFromUnitToFirstDay();

  private:
    static void enterUnit(ClerkFixture& fixture);
    static void enterSlot(ClerkFixture& fixture);
    static void enterClass(ClerkFixture& fixture);
    static void enterEmployee(ClerkFixture& fixture);
    static void findAndEdit(ClerkFixture& fixture);
    static void importFirstDay(ClerkFixture& fixture);

    /// The employee as entered.
    static Fields entered() {
        return {{u"EmpNo", u"20001"},
                {u"EmpName", u"林大同"},
                {u"Sex", true},
                {u"IdNo", u"A123456789"},
                {u"UnitNo", u"1000"},
                {u"ClsNo", u"D01"},
                {u"SuitNo", u"1"},
                {u"Birth", QDate(1970, 12, 31)},
                {u"ArriveDate", QDate(2001, 3, 1)},
                {u"IniArrDate", QDate(1995, 7, 1)},
                {u"BreakY", 15},
                {u"SoldierY", 22},
                {u"ThisYearHD", 14.0},
                {u"ThisYearLeft", 14.0},
                {u"Telephone", u"0223456789"}};
    }
};

void EmployeeClerkTest::enterUnit(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.turnTo(fixture.tabs(), 1));
    QVERIFY(clerk.press(u"CtrlCmd1(0)"_s));
    QCOMPARE(clerk.focused(), u"Text2(0)"_s);
    clerk.write(u"1000"_s);
    clerk.key(Qt::Key_Return);
    QVERIFY(clerk.fill(u"Text2(1)"_s, u"會計課"_s));
    QVERIFY(clerk.press(u"CtrlCmd1(4)"_s));
    QCOMPARE(rowsOf(fixture.database(), u"Base02"_s), QStringList{u"1000|會計課"_s});
}

void EmployeeClerkTest::enterSlot(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.turnTo(fixture.tabs(), 3));
    QVERIFY(clerk.press(u"CtrlCmd3(0)"_s));
    QCOMPARE(clerk.focused(), u"Text4(0)"_s);
    QVERIFY(fixture.fillAll({{u"Text4(0)"_s, u"A"_s}, {u"Text4(1)"_s, u"日班"_s}}));
    // The options are one stop of Tab; the arrow keys go through them.
    QVERIFY(clerk.reach(u"OptCT(0)"_s));
    clerk.key(Qt::Key_Right, 4);
    QCOMPARE(clerk.focused(), u"OptCT(4)"_s);
    clerk.key(Qt::Key_Space);
    for (int position = 0; position < 4; ++position)
        QVERIFY(clerk.press(u"CheckT(%1)"_s.arg(position)));
    QVERIFY(fixture.fillAll({{u"TDBTime1(0)"_s, u"070000"_s},
                             {u"TDBTime1(2)"_s, u"080000"_s},
                             {u"TDBTime1(3)"_s, u"120000"_s},
                             {u"TDBTime1(6)"_s, u"123000"_s},
                             {u"TDBTime1(1)"_s, u"123100"_s},
                             {u"TDBTime1(4)"_s, u"130000"_s},
                             {u"TDBTime1(5)"_s, u"170000"_s},
                             {u"TDBTime1(7)"_s, u"230000"_s}}));
    QVERIFY(clerk.reach(u"Combo1"_s));
    clerk.key(Qt::Key_Home);
    clerk.key(Qt::Key_Down);
    clerk.key(Qt::Key_Up);
    QVERIFY(fixture.fillAll({{u"Text4(2)"_s, u"0"_s},
                             {u"Text4(3)"_s, u"5"_s},
                             {u"Text4(4)"_s, u"25"_s},
                             {u"Text4(5)"_s, u"10"_s},
                             {u"Text4(10)"_s, u"5"_s},
                             {u"Text4(9)"_s, u"25"_s},
                             {u"Text4(8)"_s, u"10"_s}}));
    QVERIFY(clerk.press(u"CtrlCmd3(4)"_s));
    TestStore other;
    addSlot(other.database(), u"A"_s, {{u"TimeName", u"日班"}});
    QCOMPARE(rowsOf(fixture.database(), u"Base04"_s), rowsOf(other.database(), u"Base04"_s));
}

void EmployeeClerkTest::enterClass(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.turnTo(fixture.tabs(), 4));
    QVERIFY(clerk.press(u"CtrlCmd4(0)"_s));
    QCOMPARE(clerk.focused(), u"Text5(0)"_s);
    QVERIFY(fixture.fillAll({{u"Text5(0)"_s, u"D01"_s},
                             {u"Text5(1)"_s, u"常日班"_s},
                             {u"Text5(2)"_s, u"A"_s},
                             {u"Text5(3)"_s, u"5"_s},
                             {u"Text5(4)"_s, u"2"_s}}));
    QVERIFY(clerk.press(u"CtrlCmd4(4)"_s));
    QCOMPARE(rowsOf(fixture.database(), u"Base05"_s),
             QStringList{expectedRow(u"Base05"_s, {{u"ClsNo", u"D01"},
                                                   {u"ClassName", u"常日班"},
                                                   {u"TimeNo1", u"A"},
                                                   {u"TimeDay1", 5},
                                                   {u"TimeRest1", 2}})});
}

void EmployeeClerkTest::enterEmployee(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.turnTo(fixture.tabs(), 5));
    QVERIFY(clerk.press(Add));
    QCOMPARE(clerk.focused(), text6(0));
    clerk.write(u"20001"_s);
    clerk.key(Qt::Key_Return);
    QCOMPARE(clerk.focused(), text6(1));
    QVERIFY(fixture.fillAll({{text6(1), u"林大同"_s}, {text6(2), u"A123456789"_s}}));
    QVERIFY(clerk.press(u"Check2"_s));
    QVERIFY(fixture.fillAll({{u"TDBMask1(0)"_s, u"591231"_s},
                             {u"TDBMask1(1)"_s, u"900301"_s},
                             {text6(3), u"1000"_s},
                             {text6(4), u"D01"_s},
                             {text6(7), u"1"_s}}));
    QCOMPARE(fixture.shown({u"Label12"_s, u"Label13"_s}), QStringList({u"會計課"_s, u"常日班"_s}));
    QVERIFY(clerk.turnTo(fixture.pages(), 1));
    QVERIFY(fixture.fillAll(
        {{text6(9), u"15"_s}, {text6(10), u"1"_s}, {text6(11), u"10"_s}, {text6(13), u"14"_s}}));
    QVERIFY(clerk.fill(u"TDBMask1(3)"_s, u"840701"_s));
    QVERIFY(clerk.turnTo(fixture.pages(), 2));
    QVERIFY(clerk.fill(text6(15), u"0223456789"_s));
    QVERIFY(clerk.press(Save));
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.employees(),
             QStringList({employeeRow(EmployeeFixture::plain(1)), employeeRow(EmployeeFixture::plain(2)),
                          employeeRow(entered())}));
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    QCOMPARE(fixture.pages().currentIndex(), 0);
}

void EmployeeClerkTest::findAndEdit(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.press(First));
    QCOMPARE(fixture.code(), u"10001"_s);
    bool chosen = false;
    fixture.answers.expect(u"QFrmEmpNO"_s, [&chosen](QWidget& dialog) {
        Clerk atDialog(dialog);
        chosen = atDialog.fill(u"Text1"_s, u"2"_s) && atDialog.press(u"Command1(0)"_s);
    });
    QVERIFY(clerk.press(Query));
    QVERIFY(chosen);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.code(), u"20001"_s);
    QVERIFY(clerk.press(Modify));
    QVERIFY(clerk.fill(text6(1), u"Lin"_s));
    QVERIFY(clerk.press(Save));
    QCOMPARE(fixture.employees().constLast(), employeeRow(with(entered(), {u"EmpName", u"Lin"})));
    QVERIFY(clerk.press(Leave));
    QVERIFY(!moduleWindow(1));
}

void EmployeeClerkTest::importFirstDay(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    addRoster(fixture.database(), u"20001"_s, Day, u"A"_s);
    const QString file = fixture.store.writePunchFile(
        u"20010305.txt"_s, punchLine("20001", Day, QTime(7, 55)) + punchLine("20001", Day, QTime(12, 5)) +
                               punchLine("20001", Day, QTime(12, 50)) +
                               punchLine("20001", Day, QTime(17, 3)));
    OpenToolWindow(3);
    QVERIFY(clerk.reach(u"CtrlCmd0(0)"_s));
    fixture.answers.expectFile(file).expectMsgBox();
    clerk.key(Qt::Key_Space);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"2001/03/05資料已轉入成功!!"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Atte02"_s), QStringList{dailyRow(u"20001"_s, Day, u"A"_s,
                                                                           {{u"Time1", QTime(7, 55)},
                                                                            {u"FT1", true},
                                                                            {u"Time2", QTime(12, 5)},
                                                                            {u"FT2", true},
                                                                            {u"Time3", QTime(12, 50)},
                                                                            {u"FT3", true},
                                                                            {u"Time4", QTime(17, 3)},
                                                                            {u"FT4", true}})});
    QCOMPARE(shownRows(control<TDBGrid>(*moduleWindow(3), u"TDBG1"_s)).constFirst(),
             u"20001|Lin|2001/3/5|07:55|255|001"_s);
    // And the employee is as he was: the import has given his leaving date back.
    QCOMPARE(fixture.employees().constLast(), employeeRow(with(entered(), {u"EmpName", u"Lin"})));
}

void EmployeeClerkTest::aNewEmployeeFromUnitToFirstDay() {
    ClerkFixture fixture;
    for (const auto& step : {enterUnit, enterSlot, enterClass, enterEmployee, findAndEdit, importFirstDay}) {
        step(fixture);
        if (QTest::currentTestFailed())
            return;
    }
}

int main(int argc, char** argv) {
    return runTests<EmployeeClerkTest>(argc, argv);
}

#include "EmployeeClerkTest.moc"
