#include "app/LookupProcess.h"
#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The batch for all, on the day as the mask takes it, which may be none.
int runBatch(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expectMsgBox(MsgAnswer::Yes);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(5);
        Window& form = *moduleWindow(5);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(Batch);
        click(control(form, u"CmdBat(0)"_s));
        control<TDBMask>(form, u"TDBMask1(0)"_s).setValue(arguments.at(0));
        click(control(form, u"CMDCTRL(1)"_s));
        click(control(form, u"CmdBat(1)"_s));
    });
}

/// Code and day of an entry, as they are typed.
int saveEntry(const QStringList& arguments) {
    return runOn(5, Entries, [&](Window& form) {
        click(control(form, u"CtrlCmd2(0)"_s));
        control<QLineEdit>(form, u"Text5(0)"_s).setText(arguments.at(0));
        control<TDBMask>(form, u"TDBMask1(1)"_s).setValue(arguments.at(1));
        click(control(form, u"CtrlCmd2(4)"_s));
    });
}

} // namespace

/// The run-time errors of the write-off window, each in a process of its own that ends. Apostrophes in its
/// boxes stand in JoinedTextsTest.
class Form5EndTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anEmptyDateBreaksTheBatch();
    void anEmployeeWithAnApostropheKeepsTheRowsBefore();
    void anEntryThatTheKeyRefusesEndsTheProgram_data();
    void anEntryThatTheKeyRefusesEndsTheProgram();
};

void Form5EndTest::anEmptyDateBreaksTheBatch() {
    TestStore store;
    addWriteOffPeople(store.database());
    addWriteOff(store.database(), u"10001"_s, Day, u"02"_s, {}, {}, {});
    const QStringList before = rowsOf(store.database(), u"Canc02"_s);
    OtherProcess program(store.folder(), u"runBatch"_s, {QString()});
    QCOMPARE(faultOfEnd(program, error::Syntax), QString());
    QCOMPARE(rowsOf(store.database(), u"Canc02"_s), before);
}

void Form5EndTest::anEmployeeWithAnApostropheKeepsTheRowsBefore() {
    TestStore store;
    addWriteOffPeople(store.database());
    addEmployee(store.database(), u"2000'"_s);
    addEmployee(store.database(), u"30000"_s);
    addWriteOff(store.database(), u"10001"_s, Day, u"02"_s, {}, {}, {});
    addWriteOff(store.database(), u"30000"_s, Day, u"02"_s, {}, {}, {});
    OtherProcess program(store.folder(), u"runBatch"_s, {u"900305"_s});
    QCOMPARE(faultOfEnd(program, error::Syntax), QString());
    QCOMPARE(rowsOfSelection(store.database(), u"select EmpNo,CnlNo1 from Canc02"_s),
             QStringList({u"10001|"_s, u"10002|"_s, u"30000|02"_s}));
}

void Form5EndTest::anEntryThatTheKeyRefusesEndsTheProgram_data() {
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<int>("number");
    QTest::addRow("a day that he has an entry for")
        << QStringList{u"10001"_s, u"900305"_s} << error::DuplicateKey;
    QTest::addRow("no employee") << QStringList{{}, u"900306"_s} << error::RequiredColumn;
    QTest::addRow("no day") << QStringList{u"10001"_s, {}} << error::RequiredColumn;
}

void Form5EndTest::anEntryThatTheKeyRefusesEndsTheProgram() {
    QFETCH(const QStringList, typed);
    QFETCH(const int, number);
    TestStore store;
    addWriteOffPeople(store.database());
    addWriteOff(store.database(), u"10001"_s, Day, u"02"_s, {}, {}, {});
    const QStringList before = rowsOf(store.database(), u"Canc02"_s);
    OtherProcess program(store.folder(), u"saveEntry"_s, typed);
    QCOMPARE(faultOfEnd(program, number), QString());
    QCOMPARE(rowsOf(store.database(), u"Canc02"_s), before);
}

int main(int argc, char** argv) {
    return runTests<Form5EndTest>(argc, argv, {{u"runBatch"_s, runBatch}, {u"saveEntry"_s, saveEntry}});
}

#include "Form5EndTest.moc"
