#include "app/LookupProcess.h"
#include "windows/leave/Form4Fixture.h"

#include <SQLiteCpp/SQLiteCpp.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

void fill(const Window& form, const QString& name, const QString& text) {
    control(form, name).setFocus();
    typeInto(control<QLineEdit>(form, name), text);
}

/// Saves a note of Monday; the argument's control is left empty, without one none is.
int saveANote(const QStringList& arguments) {
    clock::setSource([] { return QDateTime(Today, QTime(9, 10, 12)); });
    return runOn(4, NotesTab, [&](Window& form) {
        click(control(form, u"CtrlCmd2(0)"_s));
        const QList<std::pair<QString, QString>> entries{
            {u"Text3(0)"_s, u"10001"_s},   {u"Text3(2)"_s, u"08"_s},        {u"TDBTime1(0)"_s, u"0800"_s},
            {u"TDBTime1(1)"_s, u"1700"_s}, {u"TDBMask1(0)"_s, u"900305"_s}, {u"TDBMask1(1)"_s, u"900305"_s}};
        for (const auto& [name, text] : entries) {
            if (!arguments.contains(name))
                fill(form, name, text);
        }
        // What the others have filled.
        control(form, u"Text3(4)"_s).setFocus();
        if (arguments.contains(u"TDBMask1(1)"_s))
            control<TDBDate>(form, u"TDBDate1(1)"_s).setDate({});
        if (arguments.contains(u"TDBTime1(0)"_s))
            control<TDBTime>(form, u"TDBTime1(0)"_s).clear();
        if (arguments.contains(u"TDBTime1(1)"_s))
            control<TDBTime>(form, u"TDBTime1(1)"_s).clear();
        click(control(form, u"CtrlCmd2(4)"_s));
    });
}

/// Runs a batch of Monday for everybody.
int runABatch(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expectMsgBox(MsgAnswer::Yes);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(4);
        Window& form = *moduleWindow(4);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(BatchTab);
        click(control(form, u"CmdBat(0)"_s));
        click(control(form, u"CMDCTRL(1)"_s));
        control<TDBDate>(form, u"TDBDate1(2)"_s).setDate(Monday);
        fill(form, u"TDBTime1(2)"_s, u"0800"_s);
        fill(form, u"TDBTime1(3)"_s, u"1700"_s);
        fill(form, u"Text8(0)"_s, arguments.at(0));
        click(control(form, u"CmdBat(1)"_s));
    });
}

} // namespace

/// The run-time errors of the leave window, each in a process of its own that ends.
class Form4EndTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anEmptyDateOrTimeEndsTheSaveBeforeAnythingIsWritten_data();
    void anEmptyDateOrTimeEndsTheSaveBeforeAnythingIsWritten();
    void aSaveThatTheStoreRefusesLeavesTheDayRows();
    void aSaveBehindTheLastNumberLeavesTheDayRows();
    void aBatchEndsAtANullBalanceWithWhatWasDone();
    void aNegativeCodeLengthEndsTheBatchBeforeAnythingIsWritten();
};

void Form4EndTest::anEmptyDateOrTimeEndsTheSaveBeforeAnythingIsWritten_data() {
    QTest::addColumn<QString>("left");
    for (const QString& name : {u"TDBMask1(0)"_s, u"TDBMask1(1)"_s, u"TDBTime1(0)"_s, u"TDBTime1(1)"_s})
        QTest::newRow(qPrintable(name)) << name;
}

void Form4EndTest::anEmptyDateOrTimeEndsTheSaveBeforeAnythingIsWritten() {
    QFETCH(const QString, left);
    const Form4Fixture it;
    OtherProcess program(it.store.folder(), u"saveANote"_s, {left});
    QCOMPARE(faultOfEnd(program, error::InvalidNull), QString());
    QCOMPARE(it.notes() + it.days(), QStringList());
}

void Form4EndTest::aSaveThatTheStoreRefusesLeavesTheDayRows() {
    const Form4Fixture it;
    SQLite::Database(it.store.path().toStdString(), SQLite::OPEN_READWRITE)
        .exec("CREATE TRIGGER Full BEFORE INSERT ON Holi03 BEGIN SELECT RAISE(ABORT, 'no more'); END");
    OtherProcess program(it.store.folder(), u"saveANote"_s, {u"nothing"_s});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(it.notes(), QStringList());
    QCOMPARE(it.days().size(), 1);
    QVERIFY(it.days().constFirst().endsWith(u"|10001|08|2001-03-05|08:00:00|17:00:00|8|"_s));
}

void Form4EndTest::aBatchEndsAtANullBalanceWithWhatWasDone() {
    Form4Fixture it; // whose second employee has no figures
    OtherProcess program(it.store.folder(), u"runABatch"_s, {u"01"_s});
    QCOMPARE(faultOfEnd(program, error::InvalidNull), QString());
    QCOMPARE(it.notes().size(), 1);
    QCOMPARE(it.days().size(), 1);
    QVERIFY(it.days().constFirst().endsWith(u"|10001|01|2001-03-05|08:00:00|17:00:00|0|"_s));
}

void Form4EndTest::aSaveBehindTheLastNumberLeavesTheDayRows() {
    Form4Fixture it;
    it.addNote(it.wholeNote(u"200103029999"_s, u"10002"_s, u"03"_s, Monday));
    it.addNote(it.wholeNote(u"200103030000"_s, u"10002"_s, u"03"_s, Monday)); // which is offered again
    const QStringList notes = it.notes();
    OtherProcess program(it.store.folder(), u"saveANote"_s, {u"nothing"_s});
    QCOMPARE(faultOfEnd(program, error::DuplicateKey), QString());
    QCOMPARE(it.notes(), notes);
    QCOMPARE(it.days(), it.expectedDays({it.day(u"200103030000"_s, u"10001"_s, u"08"_s, Monday, QTime(8, 0),
                                                QTime(17, 0), 8, QString())}));
}

void Form4EndTest::aNegativeCodeLengthEndsTheBatchBeforeAnythingIsWritten() {
    Form4Fixture it;
    it.database().execute(u"Update Syst01 Set LenEmpNo = -1"_s);
    OtherProcess program(it.store.folder(), u"runABatch"_s, {u"01"_s}); // which the window opens with
    QCOMPARE(faultOfEnd(program, 5), QString());
    QCOMPARE(it.notes() + it.days(), QStringList());
    QCOMPARE(it.employees(), it.expected(u"Base06"_s, {it.first(), it.second()}));
}

int main(int argc, char** argv) {
    return runTests<Form4EndTest>(argc, argv, {{u"saveANote"_s, saveANote}, {u"runABatch"_s, runABatch}});
}

#include "Form4EndTest.moc"
