#include "app/Clerk.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/leave/Form4Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int PeopleOfBatch = 20;

/// The day of an employee whose leave covers the missing morning.
Fields covered() {
    return {{u"Time3", QTime(12, 50)},
            {u"FT3", true},
            {u"Time4", QTime(17, 3)},
            {u"FT4", true},
            {u"FH1", true},
            {u"FH2", true}};
}

} // namespace

/// What a clerk does with leave by keyboard alone.
class LeaveClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anExceptionIsAnsweredByALeaveNote();
    void twentyPeopleGetAnAfternoon();

  private:
    static void enterNote(Form4Fixture& it, Clerk& clerk);
};

void LeaveClerkTest::enterNote(Form4Fixture& it, Clerk& clerk) {
    QVERIFY(clerk.press(u"CtrlCmd2(0)"_s));
    QCOMPARE(clerk.focused(), u"Text3(0)"_s);
    clerk.write(u"10001"_s);
    clerk.key(Qt::Key_Return, 2); // past the substitute
    clerk.write(u"03"_s);
    clerk.key(Qt::Key_Return);
    QCOMPARE(it.labels4(2, 8), u"王小明|課長|日班|會計課|正職||事假"_s);
    clerk.write(u"900305"_s);
    clerk.key(Qt::Key_Return, 3); // past calendar and time, which are right
    QCOMPARE(clerk.focused() + it.mask(1).value(), u"TDBMask1(1)900305"_s);
    clerk.key(Qt::Key_Return, 2);
    QCOMPARE(clerk.focused(), u"TDBTime1(1)"_s);
    QCOMPARE(it.time(0).time(), QTime(8, 0));
    QCOMPARE(it.time(1).time(), QTime(17, 0));
    clerk.write(u"1200"_s);
    QVERIFY(clerk.fill(u"Text3(4)"_s, u"Bank"_s));
    QVERIFY(clerk.press(u"CtrlCmd2(4)"_s));
    Fields saved = it.note(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(8, 0), Monday, QTime(12, 0), 0.4);
    saved << Field{u"HoliDesc", u"Bank"};
    QCOMPARE(it.notes(), it.expectedNotes({saved}));
    QCOMPARE(it.days(), it.expectedDays({it.day(FirstNumber, u"10001"_s, u"03"_s, Monday, QTime(8, 0),
                                                QTime(12, 0), 4, u"A"_s)}));
}

void LeaveClerkTest::anExceptionIsAnsweredByALeaveNote() {
    Form4Fixture it;
    for (const QString& EmpNo : {u"10001"_s, u"10002"_s})
        addException(it.database(), EmpNo, Monday, missingMorning());
    const QStringList employees = it.employees();
    it.open(TypesTab);
    it.form().unload();
    OpenToolWindow(3);
    Clerk clerk(it.mainWindow());
    QVERIFY(clerk.turnTo(control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s), 2));
    QCOMPARE(shownRows(control<TDBGrid>(*moduleWindow(3), u"TDBG3(0)"_s)).size(), 2);
    QVERIFY(clerk.press(u"CmdCtrl(0)"_s));
    QCOMPARE(it.tabs().currentIndex(), int(NotesTab));
    enterNote(it, clerk);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(clerk.press(u"CtrlCmd2(13)"_s));
    QVERIFY(moduleWindow(3));
    it.answers
        .expect(u"FrmI1Date"_s,
                [](QWidget& dialog) {
                    QTest::keyClicks(dialog.focusWidget(), u"900305"_s);
                    Clerk atDialog(dialog);
                    QVERIFY(atDialog.press(u"Command1(0)"_s));
                })
        .expectMsgBox();
    QVERIFY(clerk.press(u"CmdCtrl(5)"_s));
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList({u"FrmI1Date"_s, u"警告訊息|2001/3/5異常處理已完成!!"_s}));
    // It is gone from the exceptions, and answered in the results.
    QCOMPARE(it.rows(u"Atte03"_s), QStringList{dailyRow(u"10002"_s, Monday, u"A"_s, missingMorning())});
    QCOMPARE(it.rows(u"Atte02"_s), QStringList({dailyRow(u"10001"_s, Monday, u"A"_s, covered()),
                                                dailyRow(u"10002"_s, Monday, u"A"_s, missingMorning())}));
    QCOMPARE(shownRows(control<TDBGrid>(*moduleWindow(3), u"TDBG3(0)"_s)),
             QStringList{u"2001/3/5|10002|陳美惠|A|||12:50|17:03|0|||0"_s});
    QCOMPARE(it.employees(), employees); // no balance has moved
}

void LeaveClerkTest::twentyPeopleGetAnAfternoon() {
    Form4Fixture it;
    it.database().execute(u"delete * from Base06"_s);
    QList<Fields> charged;
    QList<Fields> notes;
    QList<Fields> days;
    for (int person = 1; person <= PeopleOfBatch; ++person) {
        const QString EmpNo = QString::number(10000 + person);
        const QString BusNo = QString::number(200103020000 + person);
        const Fields employee{{u"EmpNo", EmpNo},
                              {u"EmpName", u"員工"},
                              {u"ThisYearHD", 7.0},
                              {u"ThisYearUse", 1.4},
                              {u"ThisYearLeft", 5.4}};
        insertRow(it.database(), u"Base06"_s, employee);
        addRoster(it.database(), EmpNo, Monday, u"A"_s);
        charged << with(with(employee, {u"ThisYearUse", 2.0}), {u"ThisYearLeft", 5.0});
        Fields note = it.note(BusNo, EmpNo, u"01"_s, Monday, QTime(13, 0), Monday, QTime(17, 0), 0.4);
        notes << with(note, {u"TransDate", QDateTime(Today, QTime(9, 10, 12))});
        days << it.day(BusNo, EmpNo, u"01"_s, Monday, QTime(13, 0), QTime(17, 0), 4, u"A"_s);
    }
    it.open(TypesTab);
    Clerk clerk(it.mainWindow());
    QVERIFY(clerk.turnTo(it.tabs(), BatchTab));
    QVERIFY(clerk.press(u"CmdBat(0)"_s));
    QCOMPARE(clerk.focused(), u"List1"_s);
    clerk.key(Qt::Key_Down); // the first entry, then the others
    clerk.key(Qt::Key_Return);
    QCOMPARE(it.label(u"Label3(1)"_s), u"1"_s);
    QVERIFY(clerk.press(u"CMDCTRL(1)"_s));
    QCOMPARE(it.label(u"Label3(0)"_s) + u'|' + it.label(u"Label3(1)"_s), u"0|20"_s);
    QVERIFY(clerk.fill(u"TDBMask1(2)"_s, u"900305"_s));
    clerk.key(Qt::Key_Return, 2); // past the calendar
    QCOMPARE(clerk.focused(), u"TDBTime1(2)"_s);
    clerk.write(u"1300"_s);
    QVERIFY(clerk.fill(u"Text8(0)"_s, u"01"_s));
    it.answers.expectMsgBox(MsgAnswer::Yes);
    QVERIFY(clerk.press(u"CmdBat(1)"_s));
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.notes(), it.expectedNotes(notes));
    QCOMPARE(it.days(), it.expectedDays(days));
    QCOMPARE(it.employees(), it.expected(u"Base06"_s, charged));
    QVERIFY(clerk.turnTo(it.tabs(), HoursTab));
    QVERIFY(clerk.fill(u"Text4"_s, u"10020"_s));
    QVERIFY(clerk.fill(u"TDBMask1(3)"_s, u"900301"_s));
    QVERIFY(clerk.fill(u"TDBMask1(4)"_s, u"900331"_s));
    QCOMPARE(it.shown(u"TDBGrid2"_s), QStringList{u"01|休假|0.4"_s});
}

int main(int argc, char** argv) {
    return runTests<LeaveClerkTest>(argc, argv);
}

#include "LeaveClerkTest.moc"
