#include "app/LookupProcess.h"
#include "windows/master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

constexpr int EmployeesTab = 5;

int typeAnApostrophe(const QStringList&) {
    return runOn(1, EmployeesTab, [](Window& form) {
        click(control(form, Add));
        control(form, text6(3)).setFocus();
        QTest::keyClicks(&control(form, text6(3)), u"'"_s);
    });
}

int typeMonths(const QStringList& arguments) {
    return runOn(1, EmployeesTab, [&arguments](Window& form) {
        click(control(form, Add));
        clickHeader(control<QTabWidget>(form, u"SSTab2"_s), 1);
        for (int index = 0; index < 2; ++index) {
            auto& box = control<QLineEdit>(form, text6(arguments.at(0).toInt() + index));
            click(box);
            typeInto(box, arguments.at(1 + index));
        }
        click(control(form, text6(12)));
    });
}

int saveRefused(const QStringList& arguments) {
    return runOn(1, EmployeesTab, [&arguments](Window& form) {
        click(control(form, arguments.at(0) == u"add"_s ? Add : Modify));
        if (!arguments.at(1).isEmpty())
            clickHeader(control<QTabWidget>(form, u"SSTab2"_s), 1);
        auto& box = control<QLineEdit>(form, arguments.at(1).isEmpty() ? text6(0) : arguments.at(1));
        click(box);
        typeInto(box, arguments.at(2));
        click(control(form, Save));
    });
}

int queryAnApostrophe(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) { clickCancel(dialog); });
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        clickHeader(control<QTabWidget>(form, u"SSTab1"_s), 5);
        gPickEmpNo = u"O'Neil"_s;
        click(control(form, Query));
    });
}

/// Writes whether the pointer is an hourglass over the message of the end.
int computeUnderTheHourglass(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expect(u"MsgBox"_s, [](QWidget& box) {
        writeLine(hourglass() ? u"hourglass"_s : u"arrow"_s);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    return runProgram([] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        clickHeader(control<QTabWidget>(form, u"SSTab1"_s), 5);
        writeLine(hourglass() ? u"hourglass"_s : u"arrow"_s);
        click(control(form, Entitlement));
    });
}

int computeEntitlement(const QStringList&) {
    return runOn(1, EmployeesTab, [](Window& form) { click(control(form, Entitlement)); });
}

} // namespace

/// The run-time errors of the employees' tab, each in a process of its own that ends.
class EmployeeEndTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anApostropheEndsTheProgram();
    void monthsBeyondSixteenBitsEndTheProgram_data();
    void monthsBeyondSixteenBitsEndTheProgram();
    void aRefusedSaveEndsTheProgram_data();
    void aRefusedSaveEndsTheProgram();
    void queryOfAnApostropheEndsTheProgram();
    void entitlementRunsUnderTheHourglass();
    void aNullEndsTheProgram_data();
    void aNullEndsTheProgram();
};

void EmployeeEndTest::anApostropheEndsTheProgram() {
    TestStore store;
    OtherProcess program(store.folder(), u"typeAnApostrophe"_s);
    QCOMPARE(faultOfEnd(program, error::Syntax), QString());
    QCOMPARE(rowsOf(store.database(), u"Base06"_s), QStringList());
}

void EmployeeEndTest::monthsBeyondSixteenBitsEndTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addRow("broken service") << QStringList{u"8"_s, u"2730"_s, u"8"_s};
    QTest::addRow("military service") << QStringList{u"10"_s, u"0"_s, u"32768"_s};
    QTest::addRow("far below") << QStringList{u"8"_s, u"-2731"_s, u"3"_s};
}

void EmployeeEndTest::monthsBeyondSixteenBitsEndTheProgram() {
    QFETCH(const QStringList, arguments);
    TestStore store;
    OtherProcess program(store.folder(), u"typeMonths"_s, arguments);
    QCOMPARE(faultOfEnd(program, error::Overflow), QString());
    QCOMPARE(rowsOf(store.database(), u"Base06"_s), QStringList());
}

void EmployeeEndTest::aRefusedSaveEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("number");
    const QString grant = text6(13);
    QTest::addRow("a new row with a code that is there")
        << QStringList{u"add"_s, {}, u"10002"_s} << error::DuplicateKey;
    QTest::addRow("a row given a code that is there")
        << QStringList{u"modify"_s, {}, u"10002"_s} << error::DuplicateKey;
    QTest::addRow("a new row without a code") << QStringList{u"add"_s, {}, {}} << error::RequiredColumn;
    QTest::addRow("a row whose code is emptied") << QStringList{u"modify"_s, {}, {}} << error::RequiredColumn;
    QTest::addRow("a grant that is no number")
        << QStringList{u"modify"_s, grant, u"many"_s} << error::DataConversion;
}

void EmployeeEndTest::aRefusedSaveEndsTheProgram() {
    QFETCH(const QStringList, arguments);
    QFETCH(const int, number);
    TestStore store;
    const Fields one = fullEmployee(u"10001"_s);
    const Fields two{{u"EmpNo", u"10002"}};
    for (const Fields& row : {one, two})
        insertRow(store.database(), u"Base06"_s, row);
    OtherProcess program(store.folder(), u"saveRefused"_s, arguments);
    QCOMPARE(faultOfEnd(program, number), QString());
    QCOMPARE(rowsOf(store.database(), u"Base06"_s), QStringList({employeeRow(one), employeeRow(two)}));
}

void EmployeeEndTest::queryOfAnApostropheEndsTheProgram() {
    TestStore store;
    insertRow(store.database(), u"Base06"_s, EmployeeFixture::plain(1));
    OtherProcess program(store.folder(), u"queryAnApostrophe"_s);
    QCOMPARE(faultOfEnd(program, error::Syntax), QString());
}

void EmployeeEndTest::entitlementRunsUnderTheHourglass() {
    TestStore store;
    insertRow(store.database(), u"Base06"_s, fullEmployee(u"10001"_s));
    addGrant(store.database(), u"03"_s, 6);
    store.database().execute(u"update Holi02 set HoliDays = null"_s);
    OtherProcess program(store.folder(), u"computeUnderTheHourglass"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({u"arrow"_s, u"hourglass"_s}));
}

void EmployeeEndTest::aNullEndsTheProgram_data() {
    QTest::addColumn<QString>("change");
    QTest::addRow("in a grant") << u"update Holi02 set HoliDays = null where HoliNo = '03'"_s;
    QTest::addRow("in the scheme of a later employee")
        << u"update Base06 set SuitNo = null where EmpNo = '10002'"_s;
    QTest::addRow("in his seniority") << u"update Base06 set HoliExper = null where EmpNo = '10002'"_s;
}

void EmployeeEndTest::aNullEndsTheProgram() {
    QFETCH(const QString, change);
    TestStore store;
    for (const QString& EmpNo : {u"10001"_s, u"10002"_s})
        insertRow(store.database(), u"Base06"_s, fullEmployee(EmpNo));
    addGrant(store.database(), u"01"_s, 21);
    addGrant(store.database(), u"03"_s, 6);
    store.database().execute(change);
    OtherProcess program(store.folder(), u"computeEntitlement"_s);
    QCOMPARE(faultOfEnd(program, error::InvalidNull), QString());
    // What was written before it stays: the first employee has the annual leave.
    QCOMPARE(rowsOfSelection(store.database(), u"select EmpNo,ThisYearHD,ThisYearLeft from Base06"_s),
             QStringList({u"10001|21|21"_s, u"10002|14|11.25"_s}));
}

int main(int argc, char** argv) {
    return runTests<EmployeeEndTest>(argc, argv,
                                     {{u"typeAnApostrophe"_s, typeAnApostrophe},
                                      {u"typeMonths"_s, typeMonths},
                                      {u"saveRefused"_s, saveRefused},
                                      {u"queryAnApostrophe"_s, queryAnApostrophe},
                                      {u"computeUnderTheHourglass"_s, computeUnderTheHourglass},
                                      {u"computeEntitlement"_s, computeEntitlement}});
}

#include "EmployeeEndTest.moc"
