#include "support/LiveProgram.h"
#include "support/Patience.h"
#include "windows/StartProcess.h"

#include <QMessageBox>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// Starts the program and answers the message that it is running.
int startAgain(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, reportAndClose);
    return start();
}

Scenarios allScenarios() {
    Scenarios scenarios = liveProgram();
    scenarios.insert({u"startAgain"_s, startAgain});
    return scenarios;
}

} // namespace

/// What a second start does to the program that runs, on a real display.
class SecondStartTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theFirstComesToTheFront_data();
    void theFirstComesToTheFront();
};

void SecondStartTest::theFirstComesToTheFront_data() {
    QTest::addColumn<bool>("inADialog");
    QTest::newRow("a window") << false;
    QTest::newRow("a dialog") << true;
}

void SecondStartTest::theFirstComesToTheFront() {
    QFETCH(const bool, inADialog);
    const TestStore store;
    LiveProgram program(store, {3, {}, 0, u"CtrlCmd0(1)"_s});
    const QString front = inADialog ? u"FrmI1Date"_s : u"MDI"_s;
    if (inADialog)
        program.input.tap(Qt::Key_Return);
    QVERIFY(program.waitForFront(front));
    QWidget other;
    other.resize(700, 600); // over all of it
    other.move(QGuiApplication::primaryScreen()->geometry().center() - other.rect().center());
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other, PatienceMs));
    OtherProcess second(store.folder(), u"startAgain"_s);
    QCOMPARE(second.waitForEnd(), std::optional(0));
    QCOMPARE(second.lines().constFirst(), u"MsgBox|Pontrel|本程式執行中！|1"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!other.isActiveWindow(), PatienceMs);
    QVERIFY(program.settle()); // what is typed goes to it
    QCOMPARE(program.front(), front);
}

int main(int argc, char** argv) {
    return runTests<SecondStartTest>(argc, argv, allScenarios());
}

#include "SecondStartTest.moc"
