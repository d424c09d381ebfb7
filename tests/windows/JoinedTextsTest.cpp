#include "app/LookupFixture.h"
#include "app/LookupProcess.h"
#include "app/TwoLists.h"
#include "app/Window.h"
#include "app/controls/TDBDate.h"
#include "store/statements/Rendering.h"
#include "windows/attendance/Form3Exceptions.h"

#include <QComboBox>
#include <QInputMethodEvent>
#include <QTabWidget>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

// Texts with apostrophes that would leave a statement whole: a condition that every row meets, a second
// change, and the upper end of a range that is met by all.
const QString AnyRow = u"z' or '1"_s;
const QString SecondChange = u"A',EmpNo = '9"_s;
const QString AnyEnd = u"ZZ' or '1"_s;

/// The store that the places work on: two employees on the roster with an exception each. The second one's
/// code is a condition that every row meets.
void fill(TestStore& store) {
    Database& database = store.database();
    addSlot(database, u"A"_s);
    insertRow(database, u"Base05"_s,
              {{u"ClsNo", u"001"}, {u"TimeNo1", u"A"}, {u"TimeDay1", 1}, {u"TimeRest1", 0}});
    for (const QString& EmpNo : {u"00001"_s, AnyRow}) {
        addEmployee(database, EmpNo, {{u"ClsNo", u"001"}, {u"UnitNo", u"10"}});
        addException(database, EmpNo, Day, missingMorning());
        addReadPunch(database, EmpNo, Day, QTime(13, 0));
    }
    database.execute(u"Update Syst01 Set LenEmpNo = 8"_s);
}

// The places, each in a process of its own that starts with the login and ends with the message of the error.
// ---------------------------------------------------------------------------------------------------------

/// Puts a whole text into a box, as an input method does.
void compose(QLineEdit& box, const QString& text) {
    box.setFocus();
    box.selectAll();
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(&box, &event);
}

/// Box and text: the lookup of employees.
int typeIntoLookup(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expect(u"QFrmEmpNO"_s, [&](QWidget& dialog) {
        expectEndMessage(answers);
        compose(control<QLineEdit>(dialog, arguments.at(0)), arguments.at(1));
        writeLine(u"the dialog goes on"_s);
    });
    return runProgram([] { Lookup::ask(LookupKind::QFrmEmpNO, gMDI); });
}

/// The code of the punch query.
int typeAnEmployee(const QStringList& arguments) {
    return runOn(3, 1, [&](Window& form) { compose(control<QLineEdit>(form, u"Text1"_s), arguments.at(0)); });
}

/// Window, tab, button that begins an entry, if any, box and text: a code.
int typeACode(const QStringList& arguments) {
    return runOn(arguments.at(0).toInt(), arguments.at(1).toInt(), [&](Window& form) {
        if (!arguments.at(2).isEmpty())
            click(control(form, arguments.at(2)));
        compose(control<QLineEdit>(form, arguments.at(3)), arguments.at(4));
    });
}

/// The days of an employee picked before, in the leave window.
int listLeaveDays(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(4);
        Window& form = *moduleWindow(4);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(2);
        gPickEmpNo = arguments.at(0);
        click(control(form, u"CmdHD"_s));
    });
}

/// A dialog left by its cancel hands over what was picked before.
int findAnEmployee(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(5);
        gPickEmpNo = arguments.at(0);
        click(control(form, u"CtrlCmd5(5)"_s));
    });
}

/// Window, tab, button, kind and text: a query that is repeated, with what was picked for it.
int queryRows(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expectClick(u"IFrmQuery"_s, u"Command1(1)"_s);
    expectEndMessage(answers);
    return runProgram([&] {
        const int module = arguments.at(0).toInt();
        OpenToolWindow(static_cast<std::int16_t>(module));
        Window& form = *moduleWindow(module);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(arguments.at(1).toInt());
        gQueryKind = arguments.at(3).toInt();
        gDate1 = Day;
        gPickEmpNo = arguments.at(4);
        gPickUnitNo = arguments.at(4);
        click(control(form, arguments.at(2)));
    });
}

/// Tab and grid: a click on the second row, whose leave and write-offs are looked up by its code.
int showTheSecondRow(const QStringList& arguments) {
    return runOn(3, arguments.at(0).toInt(), [&](Window& form) {
        auto& grid = control<TDBGrid>(form, arguments.at(1));
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                          grid.visualRect(grid.model()->index(1, 1)).center());
    });
}

QLineEdit& boxOf(const Window& form, int index) {
    return *control<QComboBox>(form, u"Combo2(%1)"_s.arg(index)).lineEdit();
}

/// Box and text: a bound of the roster's generation.
int generateRoster(const QStringList& arguments) {
    return runOn(2, 1, [&](Window& form) {
        for (const int index : {0, 1})
            control<TDBDate>(form, u"TDBD2(%1)"_s.arg(index)).setDate(Day);
        compose(boxOf(form, arguments.at(0).toInt()), arguments.at(1));
        click(control(form, u"CmdCal"_s));
    });
}

/// Box and text: a bound of the roster's adjustment.
int listRoster(const QStringList& arguments) {
    return runOn(2, 2, [&](Window& form) {
        control<TDBDate>(form, u"TDBD2(4)"_s).setDate(Day);
        compose(boxOf(form, arguments.at(0).toInt()), arguments.at(1));
        click(control(form, u"Command2"_s));
    });
}

/// Entry and slot: a change of the roster.
int adjustRoster(const QStringList& arguments) {
    return runOn(2, 2, [&](Window& form) {
        control<TDBDate>(form, u"TDBD2(4)"_s).setDate(Day);
        control<TwoLists>(form, u"Lists"_s).setEntries({arguments.at(0)});
        click(control(form, u"CMDCTRL(1)"_s));
        click(control(form, u"Option1(1)"_s));
        compose(boxOf(form, 10), arguments.at(1));
        click(control(form, u"Command3"_s));
    });
}

const Scenarios AllScenarios = {
    {u"typeIntoLookup"_s, typeIntoLookup}, {u"typeAnEmployee"_s, typeAnEmployee},
    {u"typeACode"_s, typeACode},           {u"findAnEmployee"_s, findAnEmployee},
    {u"queryRows"_s, queryRows},           {u"showTheSecondRow"_s, showTheSecondRow},
    {u"generateRoster"_s, generateRoster}, {u"listRoster"_s, listRoster},
    {u"adjustRoster"_s, adjustRoster},     {u"listLeaveDays"_s, listLeaveDays},
};

} // namespace

/// Every place of the windows where a text enters a statement, typed, picked or of a row: one with an
/// apostrophe is a run-time error there, which ends the program where no trap is stated, also where the
/// statement would be whole. No row changes. The places of the logic stand in JoinedValuesTest, the
/// ranges of the reports in Form7ErrorTest.
class JoinedTextsTest : public QObject {
    Q_OBJECT

    static void addCodes();
    static void addQueries();

  private Q_SLOTS:
    void anApostropheEndsTheProgram_data();
    void anApostropheEndsTheProgram();
    void aTrapTellsItsOwnMessage_data();
    void aTrapTellsItsOwnMessage();
};

void JoinedTextsTest::addCodes() {
    const auto add = [](const char* of, const QStringList& place) {
        QTest::addRow("%s, %s", of, qPrintable(place.at(3))) << u"typeACode"_s << place;
    };
    // Some boxes hold four characters, two, or one.
    for (int index = 3; index <= 7; ++index)
        add("employee",
            {u"1"_s, u"5"_s, u"CtrlCmd5(0)"_s, u"Text6(%1)"_s.arg(index), index < 7 ? u"'&'"_s : u"'"_s});
    const QString grant = u"CtrlCmd1(0)"_s;
    const QString note = u"CtrlCmd2(0)"_s;
    for (const QStringList& place : {QStringList{u"4"_s, u"1"_s, grant, u"Text2(0)"_s, u"'"_s},
                                     QStringList{u"4"_s, u"1"_s, grant, u"Text2(1)"_s, u"'"_s},
                                     QStringList{u"4"_s, u"2"_s, note, u"Text3(0)"_s, AnyRow},
                                     QStringList{u"4"_s, u"2"_s, note, u"Text3(1)"_s, AnyRow},
                                     QStringList{u"4"_s, u"2"_s, note, u"Text3(2)"_s, u"'"_s},
                                     QStringList{u"4"_s, u"3"_s, u"CmdBat(0)"_s, u"Text8(0)"_s, AnyRow},
                                     QStringList{u"4"_s, u"4"_s, QString(), u"Text5"_s, AnyRow},
                                     QStringList{u"4"_s, u"5"_s, QString(), u"Text4"_s, AnyRow}})
        add("leave", place);
    add("write-offs", {u"5"_s, u"2"_s, u"CtrlCmd2(0)"_s, u"Text5(0)"_s, u"'&'"_s});
    for (int reason = 0; reason < 4; ++reason) {
        add("write-offs", {u"5"_s, u"2"_s, u"CtrlCmd2(0)"_s, u"Text5(%1)"_s.arg(reason + 1), u"'"_s});
        add("write-offs", {u"5"_s, u"1"_s, u"CmdBat(0)"_s, u"Text8(%1)"_s.arg(reason), u"'"_s});
    }
    add("write-offs", {u"5"_s, u"3"_s, QString(), u"Text4"_s, AnyRow});
    add("overtime", {u"6"_s, u"0"_s, u"CtrlCmd0(0)"_s, u"Text1(0)"_s, AnyRow});
    add("overtime", {u"6"_s, u"2"_s, QString(), u"Text5"_s, AnyRow});
    add("overtime", {u"6"_s, u"3"_s, QString(), u"Text4"_s, AnyRow});
}

void JoinedTextsTest::addQueries() {
    const auto add = [](const char* of, const QStringList& button, int kinds) {
        for (int kind = 2; kind <= kinds; ++kind)
            QTest::addRow("query of %s, kind %d", of, kind)
                << u"queryRows"_s << button + QStringList{QString::number(kind), AnyRow};
    };
    add("exceptions", {u"3"_s, u"2"_s, u"CmdCtrl(3)"_s}, 4);
    add("results", {u"3"_s, u"3"_s, u"CmdCtrl(9)"_s}, 4);
    add("write-offs", {u"5"_s, u"2"_s, u"CtrlCmd2(5)"_s}, 3);
    add("overtime", {u"6"_s, u"0"_s, u"CtrlCmd0(5)"_s}, 3);
}

void JoinedTextsTest::anApostropheEndsTheProgram_data() {
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<QStringList>("arguments");
    for (const QString& box : {u"Text1"_s, u"Text2"_s})
        QTest::addRow("lookup, %s", qPrintable(box)) << u"typeIntoLookup"_s << QStringList{box, AnyRow};
    QTest::newRow("punch query") << u"typeAnEmployee"_s << QStringList{u"' or ''='"_s};
    addCodes();
    addQueries();
    QTest::newRow("leave days of an employee") << u"listLeaveDays"_s << QStringList{AnyRow};
    QTest::newRow("search for an employee") << u"findAnEmployee"_s << QStringList{AnyRow};
    QTest::newRow("row of the exceptions") << u"showTheSecondRow"_s << QStringList{u"2"_s, u"TDBG3(0)"_s};
    QTest::newRow("row of the results") << u"showTheSecondRow"_s << QStringList{u"3"_s, u"TDBG3(1)"_s};
    for (const int box : {0, 2})
        QTest::addRow("lower bound of the generation, box %d", box)
            << u"generateRoster"_s << QStringList{QString::number(box), u"0' & '0"_s};
    for (const int box : {1, 3})
        QTest::addRow("upper bound of the generation, box %d", box)
            << u"generateRoster"_s << QStringList{QString::number(box), AnyEnd};
    QTest::newRow("lower bound of the adjustment") << u"listRoster"_s << QStringList{u"8"_s, u"' & '"_s};
    QTest::newRow("upper bound of the adjustment") << u"listRoster"_s << QStringList{u"9"_s, AnyEnd};
    QTest::newRow("entry of the adjustment") << u"adjustRoster"_s << QStringList{AnyRow, u"B"_s};
    QTest::newRow("slot of the adjustment") << u"adjustRoster"_s << QStringList{u"00001"_s, SecondChange};
}

void JoinedTextsTest::anApostropheEndsTheProgram() {
    QFETCH(const QString, scenario);
    QFETCH(const QStringList, arguments);
    TestStore store;
    fill(store);
    const Snapshot before(store.path());
    OtherProcess program(store.folder(), scenario, arguments);
    const std::optional<int> status = program.waitForEnd();
    QCOMPARE(program.lines().join(u'\n'), u"Pontrel|執行階段錯誤 '3075':"_s);
    QCOMPARE(status, std::optional(1));
    QCOMPARE(Snapshot(store.path()).differencesFrom(before), QStringList());
}

void JoinedTextsTest::aTrapTellsItsOwnMessage_data() {
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("text");
    QTest::newRow("first employee of the query") << 4 << u"0' & '0"_s;
    QTest::newRow("last employee of the query") << 5 << AnyEnd;
    QTest::newRow("first slot of the query") << 6 << u"' & '"_s;
    QTest::newRow("last slot of the query") << 7 << AnyEnd;
}

void JoinedTextsTest::aTrapTellsItsOwnMessage() {
    QFETCH(const int, box);
    QFETCH(const QString, text);
    TestStore store;
    fill(store);
    const Shell shell(store);
    OpenToolWindow(2);
    Window& form = *moduleWindow(2);
    control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(1);
    for (const int index : {2, 3})
        control<TDBDate>(form, u"TDBD2(%1)"_s.arg(index)).setDate(Day);
    compose(boxOf(form, box), text);
    PromptAnswers answers;
    answers.expectMsgBox();
    click(control(form, u"CmdQuery"_s));
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().text, u"查無此資料,請重新輸入查詢條件........"_s);
    // The list keeps what it showed.
    QCOMPARE(control<TDBGrid>(form, u"TDBG1"_s).model()->rowCount(), 2);
}

int main(int argc, char** argv) {
    return runTests<JoinedTextsTest>(argc, argv, AllScenarios);
}

#include "JoinedTextsTest.moc"
