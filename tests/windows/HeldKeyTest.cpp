#include "support/LiveProgram.h"
#include "support/Patience.h"
#include "windows/DeleteButtons.h"
#include "windows/attendance/Form3Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

void addPunches(Database& database) {
    for (const int day : {4, 5, 6})
        addReadPunch(database, u"10001"_s, {2001, 3, day}, QTime(8, 0));
}

} // namespace

/// Keys that are held for two seconds on a real keyboard, on every button that deletes.
class HeldKeyTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aHeldKeyAsksAndAnswersNothing_data() { eachDelete(); }
    void aHeldKeyAsksAndAnswersNothing();
    void theAnswerHeldDeletesOneRow_data() { eachDelete(); }
    void theAnswerHeldDeletesOneRow();
    void aHeldKeyPurgesNothing();
    void thePurgeHeldLeavesItsMessage();
    void aKeyReleasedElsewhereAnswersAgain();
    void aHeldBlankIsTypedOnWhereItWasPressed();
    void aHeldEnterMovesOneBoxOn();
    void aHeldPrintKeyLeadsToTheReportsAndPrintsNone();

  private:
    static void eachDelete();
};

void HeldKeyTest::eachDelete() {
    QTest::addColumn<std::size_t>("button");
    QTest::addColumn<Qt::Key>("key");
    for (std::size_t button = 0; button < deleteButtons().size(); ++button)
        QTest::addRow("%s, Enter", qPrintable(deleteButtons().at(button).title)) << button << Qt::Key_Return;
    QTest::newRow("accounts, the other Enter") << std::size_t{0} << Qt::Key_Enter;
    QTest::newRow("accounts, Space") << std::size_t{0} << Qt::Key_Space;
    QTest::newRow("employees, Space") << std::size_t{1} << Qt::Key_Space;
}

namespace {

/// A page of rows with its delete button in focus, and what the store holds of it.
class DeletePage {
  public:
    explicit DeletePage(const DeleteButton& button) : table_(button.table) {
        for (const auto& row : button.rows)
            insertRow(store_.database(), table_, row);
        before_ = rows();
        program_.emplace(store_, button.place);
    }

    [[nodiscard]] LiveProgram& program() { return *program_; }
    [[nodiscard]] QStringList rows() { return rowsOf(*store_.connect(), table_); }
    [[nodiscard]] const QStringList& before() const { return before_; }

  private:
    TestStore store_;
    QString table_;
    QStringList before_;
    std::optional<LiveProgram> program_;
};

} // namespace

void HeldKeyTest::aHeldKeyAsksAndAnswersNothing() {
    QFETCH(const std::size_t, button);
    QFETCH(const Qt::Key, key);
    DeletePage page(deleteButtons().at(button));
    QVERIFY(page.program().hold(key));
    QVERIFY(page.program().waitForFront(u"MsgBox"_s));
    QCOMPARE(page.rows(), page.before());
}

void HeldKeyTest::theAnswerHeldDeletesOneRow() {
    QFETCH(const std::size_t, button);
    QFETCH(const Qt::Key, key);
    DeletePage page(deleteButtons().at(button));
    page.program().input.tap(key);
    QVERIFY(page.program().waitForFront(u"MsgBox"_s));
    page.program().input.tap(Qt::Key_Tab);
    QTRY_COMPARE_WITH_TIMEOUT(page.program().focus(), u"Yes"_s, PatienceMs);
    QVERIFY(page.program().hold(key));
    QVERIFY(page.program().waitForFront(u"MDI"_s));
    QCOMPARE(page.rows(), page.before().mid(1));
}

void HeldKeyTest::aHeldKeyPurgesNothing() {
    TestStore store;
    addPunches(store.database());
    const QStringList before = rowsOf(store.database(), u"Atte01"_s);
    LiveProgram program(store, {3, {}, 0, u"CtrlCmd0(9)"_s});
    QVERIFY(program.hold(Qt::Key_Return));
    QVERIFY(program.waitForFront(u"FrmI1Date"_s));
    QCOMPARE(rowsOf(*store.connect(), u"Atte01"_s), before);
    QCOMPARE(program.focus(), u"TDBMask1(0)"_s);
    // Pressed anew it moves to the date control, and there it stays however long it is held.
    QVERIFY(program.hold(Qt::Key_Return));
    QCOMPARE(program.front(), u"FrmI1Date"_s);
    QCOMPARE(program.focus(), u"TDBDate1(0)"_s);
    QCOMPARE(rowsOf(*store.connect(), u"Atte01"_s), before);
}

void HeldKeyTest::thePurgeHeldLeavesItsMessage() {
    TestStore store;
    addPunches(store.database());
    LiveProgram program(store, {3, {}, 0, u"CtrlCmd0(9)"_s});
    program.input.tap(Qt::Key_Return);
    QVERIFY(program.waitForFront(u"FrmI1Date"_s));
    program.input.tap(Qt::Key_Tab);
    program.input.tap(Qt::Key_Tab);
    QTRY_COMPARE_WITH_TIMEOUT(program.focus(), u"Command1(0)"_s, PatienceMs);
    QVERIFY(program.hold(Qt::Key_Return));
    QVERIFY(program.waitForFront(u"MsgBox"_s));
    QCOMPARE(rowsOf(*store.connect(), u"Atte01"_s), QStringList());
    program.input.tap(Qt::Key_Return);
    QVERIFY(program.waitForFront(u"MDI"_s));
}

void HeldKeyTest::aKeyReleasedElsewhereAnswersAgain() {
    DeletePage page(deleteButtons().front());
    LiveProgram& program = page.program();
    // The key goes up while another program has the keyboard: the dialog never hears of it.
    QWidget other;
    other.setObjectName(u"Other"_s);
    program.input.press(Qt::Key_Return);
    QVERIFY(program.waitForFront(u"MsgBox"_s));
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other, PatienceMs));
    program.input.release(Qt::Key_Return);
    other.close();
    QVERIFY(program.settle());
    QCOMPARE(page.rows(), page.before());
    // Heard again, it presses the button that has the focus: the one that deletes nothing.
    QCOMPARE(program.focus(), u"No"_s);
    program.input.tap(Qt::Key_Return);
    QVERIFY(program.waitForFront(u"MDI"_s));
    QCOMPARE(page.rows(), page.before());
}

void HeldKeyTest::aHeldBlankIsTypedOnWhereItWasPressed() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo"_s, u"1"_s}});
    LiveProgram program(store, {1, {}, 0, u"CtrlCmd0(1)"_s});
    program.input.tap(Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(program.focus(), u"Text1(0)"_s, PatienceMs);
    program.input.tap(Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(program.focus(), u"Text1(1)"_s, PatienceMs);
    QVERIFY(program.hold(Qt::Key_Space));
    program.click(u"MDI"_s, u"CtrlCmd0(4)"_s);
    QVERIFY(program.settle());
    const QString name = rowsOfSelection(*store.connect(), u"Select Title from Base01"_s).constFirst();
    QVERIFY2(name.size() > 1 && name == QString(name.size(), u' '), qUtf8Printable(name));
}

void HeldKeyTest::aHeldEnterMovesOneBoxOn() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo"_s, u"1"_s}});
    const QStringList before = rowsOf(store.database(), u"Base01"_s);
    LiveProgram program(store, {1, {}, 0, u"CtrlCmd0(1)"_s});
    program.input.tap(Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(program.focus(), u"Text1(0)"_s, PatienceMs);
    QVERIFY(program.hold(Qt::Key_Return));
    QCOMPARE(program.focus(), u"Text1(1)"_s);
    QCOMPARE(rowsOf(*store.connect(), u"Base01"_s), before);
}

void HeldKeyTest::aHeldPrintKeyLeadsToTheReportsAndPrintsNone() {
    const TestStore store; // without a template: a print would be told as failed
    LiveProgram program(store, {1});
    program.input.press(Qt::Key_Control);
    QVERIFY(program.hold(Qt::Key_P));
    program.input.release(Qt::Key_Control);
    QTRY_COMPARE_WITH_TIMEOUT(program.opened(), u"Form7"_s, PatienceMs);
    QCOMPARE(program.front(), u"MDI"_s);
    const QString before = program.focus();
    program.input.tap(Qt::Key_Tab); // which a message that is yet to come would take
    QTRY_VERIFY_WITH_TIMEOUT(program.focus() != before, PatienceMs);
    QCOMPARE(program.front(), u"MDI"_s);
}

int main(int argc, char** argv) {
    return runTests<HeldKeyTest>(argc, argv, liveProgram());
}

#include "HeldKeyTest.moc"
