#include "app/LookupProcess.h"
#include "windows/overtime/Form6Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// Date, begin, end and hours of the batch, as they are typed.
int runBatch(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expectMsgBox(MsgAnswer::Yes);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(6);
        Window& form = *moduleWindow(6);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(1);
        click(control(form, u"CmdBat(0)"_s));
        control<TDBMask>(form, u"TDBMask1(0)"_s).setValue(arguments.at(0));
        for (int index : {2, 3})
            control<TDBTime>(form, u"overTime(%1)"_s.arg(index)).setValue(arguments.at(index - 1));
        control<QLineEdit>(form, u"Text8(1)"_s).setText(arguments.at(3));
        click(control(form, u"CMDCTRL(1)"_s));
        click(control(form, u"CmdBat(1)"_s));
    });
}

/// Hours of an entry.
int saveEntry(const QStringList& arguments) {
    return runOn(6, 0, [&](Window& form) {
        click(control(form, entry::Add));
        control<QLineEdit>(form, u"Text1(4)"_s).setText(arguments.at(0));
        click(control(form, entry::Save));
    });
}

} // namespace

/// The run-time errors of the overtime window, each in a process of its own that ends. Apostrophes in its
/// boxes stand in JoinedTextsTest.
class Form6EndTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void whatBreaksTheBatchEndsTheProgram_data();
    void whatBreaksTheBatchEndsTheProgram();
    void anEmployeeWithAnApostropheKeepsTheRowsBefore();
    void hoursThatAreNoNumberEndTheProgram();
};

void Form6EndTest::whatBreaksTheBatchEndsTheProgram_data() {
    QTest::addColumn<QStringList>("typed");
    QTest::addRow("an empty date") << QStringList{{}, u"18:00"_s, u"20:00"_s, u"2"_s};
    QTest::addRow("an empty begin") << QStringList{u"990301"_s, {}, u"20:00"_s, u"2"_s};
    QTest::addRow("an empty end") << QStringList{u"990301"_s, u"18:00"_s, {}, u"2"_s};
    QTest::addRow("empty hours") << QStringList{u"990301"_s, u"18:00"_s, u"20:00"_s, {}};
    QTest::addRow("hours that are no number") << QStringList{u"990301"_s, u"18:00"_s, u"20:00"_s, u"two"_s};
    QTest::addRow("hours that would be reckoned")
        << QStringList{u"990301"_s, u"18:00"_s, u"20:00"_s, u"1+1"_s};
}

void Form6EndTest::whatBreaksTheBatchEndsTheProgram() {
    QFETCH(const QStringList, typed);
    TestStore store;
    addOvertimePeople(store.database());
    OtherProcess program(store.folder(), u"runBatch"_s, typed);
    QCOMPARE(faultOfEnd(program, error::Syntax), QString());
    QCOMPARE(rowsOf(store.database(), u"Over01"_s), QStringList());
}

void Form6EndTest::anEmployeeWithAnApostropheKeepsTheRowsBefore() {
    TestStore store;
    addOvertimePeople(store.database());
    addEmployee(store.database(), u"2000'"_s);
    addEmployee(store.database(), u"30000"_s);
    OtherProcess program(store.folder(), u"runBatch"_s, {u"990301"_s, u"18:00"_s, u"20:00"_s, u"2"_s});
    QCOMPARE(faultOfEnd(program, error::Syntax), QString());
    QCOMPARE(rowsOfSelection(store.database(), u"select EmpNo,OverHours from Over01"_s),
             QStringList({u"10001|2"_s, u"10002|2"_s, u"10003|2"_s}));
}

void Form6EndTest::hoursThatAreNoNumberEndTheProgram() {
    TestStore store;
    OtherProcess program(store.folder(), u"saveEntry"_s, {u"two"_s});
    QCOMPARE(faultOfEnd(program, error::DataConversion), QString());
    QCOMPARE(rowsOf(store.database(), u"Over01"_s), QStringList());
}

int main(int argc, char** argv) {
    return runTests<Form6EndTest>(argc, argv, {{u"runBatch"_s, runBatch}, {u"saveEntry"_s, saveEntry}});
}

#include "Form6EndTest.moc"
