#include "master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

/// A clerk at the keyboard: every key goes to whatever has the focus, and nothing is clicked.
class Clerk : public EmployeeFixture {
  public:
    Clerk() {
        for (const QString& table : {u"Base01"_s, u"Base02"_s, u"Base03"_s, u"Base05"_s})
            database().execute(u"delete * from "_s + table);
        addPlain(2);
    }

    /// Presses Tab until the control has the focus; false where Tab does not come to it.
    [[nodiscard]] bool reach(const QWidget& control) {
        for (int step = 0; step < 200; ++step) {
            if (mainWindow().focusWidget() == &control)
                return true;
            key(Qt::Key_Tab);
        }
        return false;
    }
    [[nodiscard]] bool reach(const Window& window, const QString& name) {
        return reach(control(window, name));
    }
    [[nodiscard]] bool reach(const QString& name) { return reach(form(), name); }
    /// Reaches a button or check box and presses it.
    [[nodiscard]] bool use(const QString& name) {
        if (!reach(name))
            return false;
        key(Qt::Key_Space);
        return true;
    }
    /// Reaches a box and types; what has no key comes from the input method.
    [[nodiscard]] bool fill(const QString& name, const QString& text) {
        if (!reach(name))
            return false;
        key(Qt::Key_Home);
        if (std::all_of(text.cbegin(), text.cend(), [](QChar each) { return each.unicode() < 0x80; })) {
            keys(text);
            return true;
        }
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(mainWindow().focusWidget(), &event);
        return true;
    }
    [[nodiscard]] bool fillAll(const QList<std::pair<QString, QString>>& boxes) {
        return std::all_of(boxes.begin(), boxes.end(),
                           [this](const auto& each) { return fill(each.first, each.second); });
    }
    /// Goes to a tab by the arrow keys on the headers.
    [[nodiscard]] bool turnTo(const QTabWidget& headers, int index) {
        if (!reach(*headers.tabBar()))
            return false;
        for (int step = 0; step < 6 && headers.currentIndex() != index; ++step)
            key(headers.currentIndex() < index ? Qt::Key_Right : Qt::Key_Left);
        return headers.currentIndex() == index;
    }
};

} // namespace

/// What a clerk does with a new employee, from his unit to his first day of punches, by keyboard alone.
class EmployeeClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNewEmployeeFromUnitToFirstDay();

  private:
    static void enterUnit(Clerk& clerk);
    static void enterSlot(Clerk& clerk);
    static void enterClass(Clerk& clerk);
    static void enterEmployee(Clerk& clerk);
    static void findAndEdit(Clerk& clerk);
    static void importFirstDay(Clerk& clerk);

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

void EmployeeClerkTest::enterUnit(Clerk& clerk) {
    QVERIFY(clerk.turnTo(clerk.tabs(), 1));
    QVERIFY(clerk.use(u"CtrlCmd1(0)"_s));
    QCOMPARE(clerk.focused(), u"Text2(0)"_s);
    clerk.keys(u"1000"_s);
    clerk.key(Qt::Key_Return);
    QVERIFY(clerk.fill(u"Text2(1)"_s, u"會計課"_s));
    QVERIFY(clerk.use(u"CtrlCmd1(4)"_s));
    QCOMPARE(rowsOf(clerk.database(), u"Base02"_s), QStringList{u"1000|會計課"_s});
}

void EmployeeClerkTest::enterSlot(Clerk& clerk) {
    QVERIFY(clerk.turnTo(clerk.tabs(), 3));
    QVERIFY(clerk.use(u"CtrlCmd3(0)"_s));
    QCOMPARE(clerk.focused(), u"Text4(0)"_s);
    QVERIFY(clerk.fillAll({{u"Text4(0)"_s, u"A"_s}, {u"Text4(1)"_s, u"日班"_s}}));
    // The options are one stop of Tab; the arrow keys go through them.
    QVERIFY(clerk.reach(u"OptCT(0)"_s));
    for (int option = 1; option <= 4; ++option)
        clerk.key(Qt::Key_Right);
    QCOMPARE(clerk.focused(), u"OptCT(4)"_s);
    clerk.key(Qt::Key_Space);
    for (int position = 0; position < 4; ++position)
        QVERIFY(clerk.use(u"CheckT(%1)"_s.arg(position)));
    QVERIFY(clerk.fillAll({{u"TDBTime1(0)"_s, u"070000"_s},
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
    QVERIFY(clerk.fillAll({{u"Text4(2)"_s, u"0"_s},
                           {u"Text4(3)"_s, u"5"_s},
                           {u"Text4(4)"_s, u"25"_s},
                           {u"Text4(5)"_s, u"10"_s},
                           {u"Text4(10)"_s, u"5"_s},
                           {u"Text4(9)"_s, u"25"_s},
                           {u"Text4(8)"_s, u"10"_s}}));
    QVERIFY(clerk.use(u"CtrlCmd3(4)"_s));
    TestStore other;
    addSlot(other.database(), u"A"_s, {{u"TimeName", u"日班"}});
    QCOMPARE(rowsOf(clerk.database(), u"Base04"_s), rowsOf(other.database(), u"Base04"_s));
}

void EmployeeClerkTest::enterClass(Clerk& clerk) {
    QVERIFY(clerk.turnTo(clerk.tabs(), 4));
    QVERIFY(clerk.use(u"CtrlCmd4(0)"_s));
    QCOMPARE(clerk.focused(), u"Text5(0)"_s);
    QVERIFY(clerk.fillAll({{u"Text5(0)"_s, u"D01"_s},
                           {u"Text5(1)"_s, u"常日班"_s},
                           {u"Text5(2)"_s, u"A"_s},
                           {u"Text5(3)"_s, u"5"_s},
                           {u"Text5(4)"_s, u"2"_s}}));
    QVERIFY(clerk.use(u"CtrlCmd4(4)"_s));
    QCOMPARE(rowsOf(clerk.database(), u"Base05"_s),
             QStringList{expectedRow(u"Base05"_s, {{u"ClsNo", u"D01"},
                                                   {u"ClassName", u"常日班"},
                                                   {u"TimeNo1", u"A"},
                                                   {u"TimeDay1", 5},
                                                   {u"TimeRest1", 2}})});
}

void EmployeeClerkTest::enterEmployee(Clerk& clerk) {
    QVERIFY(clerk.turnTo(clerk.tabs(), 5));
    QVERIFY(clerk.use(Add));
    QCOMPARE(clerk.focused(), text6(0));
    clerk.keys(u"20001"_s);
    clerk.key(Qt::Key_Return);
    QCOMPARE(clerk.focused(), text6(1));
    QVERIFY(clerk.fillAll({{text6(1), u"林大同"_s}, {text6(2), u"A123456789"_s}}));
    QVERIFY(clerk.use(u"Check2"_s));
    QVERIFY(clerk.fillAll({{u"TDBMask1(0)"_s, u"591231"_s},
                           {u"TDBMask1(1)"_s, u"900301"_s},
                           {text6(3), u"1000"_s},
                           {text6(4), u"D01"_s},
                           {text6(7), u"1"_s}}));
    QCOMPARE(clerk.shown({u"Label12"_s, u"Label13"_s}), QStringList({u"會計課"_s, u"常日班"_s}));
    QVERIFY(clerk.turnTo(clerk.pages(), 1));
    // Text is typed before the 0 that stands in these boxes.
    for (const auto& [box, text] : {std::pair{9, u"15"_s}, {10, u"1"_s}, {11, u"10"_s}, {13, u"14"_s}}) {
        QVERIFY(clerk.reach(text6(box)));
        clerk.key(Qt::Key_A, Qt::ControlModifier);
        clerk.keys(text);
    }
    QVERIFY(clerk.fill(u"TDBMask1(3)"_s, u"840701"_s));
    QVERIFY(clerk.turnTo(clerk.pages(), 2));
    QVERIFY(clerk.fill(text6(15), u"0223456789"_s));
    QVERIFY(clerk.use(Save));
    QVERIFY(clerk.answers.seen().isEmpty());
    QCOMPARE(clerk.employees(),
             QStringList({employeeRow(EmployeeFixture::plain(1)), employeeRow(EmployeeFixture::plain(2)),
                          employeeRow(entered())}));
    QCOMPARE(clerk.panel(1), u"資料錄:3/3"_s);
    QCOMPARE(clerk.pages().currentIndex(), 0);
}

void EmployeeClerkTest::findAndEdit(Clerk& clerk) {
    QVERIFY(clerk.use(First));
    QCOMPARE(clerk.code(), u"10001"_s);
    clerk.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        // The search box of the code, then by Tab to the button.
        QWindow* window = dialog.windowHandle();
        for (int step = 0; step < 20 && dialog.focusWidget()->objectName() != u"Text1"_s; ++step)
            QTest::keyClick(window, Qt::Key_Tab);
        QTest::keyClick(window, '2');
        for (int step = 0; step < 20 && dialog.focusWidget()->objectName() != u"Command1(0)"_s; ++step)
            QTest::keyClick(window, Qt::Key_Tab);
        QTest::keyClick(window, Qt::Key_Space);
    });
    QVERIFY(clerk.use(Query));
    QCOMPARE(clerk.answers.trouble(), QString());
    QCOMPARE(clerk.code(), u"20001"_s);
    QVERIFY(clerk.use(Modify));
    QVERIFY(clerk.reach(text6(1)));
    clerk.key(Qt::Key_A, Qt::ControlModifier);
    clerk.keys(u"Lin"_s);
    QVERIFY(clerk.use(Save));
    QCOMPARE(clerk.employees().constLast(), employeeRow(with(entered(), {u"EmpName", u"Lin"})));
    QVERIFY(clerk.use(Leave));
    QVERIFY(!moduleWindow(1));
}

void EmployeeClerkTest::importFirstDay(Clerk& clerk) {
    addRoster(clerk.database(), u"20001"_s, Day, u"A"_s);
    const QString file = clerk.store.writePunchFile(
        u"20010305.txt"_s, punchLine("20001", Day, QTime(7, 55)) + punchLine("20001", Day, QTime(12, 5)) +
                               punchLine("20001", Day, QTime(12, 50)) +
                               punchLine("20001", Day, QTime(17, 3)));
    OpenToolWindow(3);
    QVERIFY(clerk.reach(*moduleWindow(3), u"CtrlCmd0(0)"_s));
    clerk.answers.expectFile(file).expectMsgBox();
    clerk.key(Qt::Key_Space);
    QCOMPARE(clerk.answers.trouble(), QString());
    QCOMPARE(clerk.answers.seen().constLast().text, u"2001/03/05資料已轉入成功!!"_s);
    QCOMPARE(rowsOf(clerk.database(), u"Atte02"_s), QStringList{dailyRow(u"20001"_s, Day, u"A"_s,
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
    QCOMPARE(clerk.employees().constLast(), employeeRow(with(entered(), {u"EmpName", u"Lin"})));
}

void EmployeeClerkTest::aNewEmployeeFromUnitToFirstDay() {
    Clerk clerk;
    clerk.open();
    for (const auto& step : {enterUnit, enterSlot, enterClass, enterEmployee, findAndEdit, importFirstDay}) {
        step(clerk);
        if (QTest::currentTestFailed())
            return;
    }
}

int main(int argc, char** argv) {
    return runTests<EmployeeClerkTest>(argc, argv);
}

#include "EmployeeClerkTest.moc"
