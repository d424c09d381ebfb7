#include "windows/system/FrmPswFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Add = u"CtrlCmd(0)"_s;
const QString Edit = u"CtrlCmd(1)"_s;
const QString Delete = u"CtrlCmd(2)"_s;
const QString Cancel = u"CtrlCmd(3)"_s;
const QString Save = u"CtrlCmd(4)"_s;
const QString Next = u"CtrlCmd(7)"_s;
const QString Last = u"CtrlCmd(8)"_s;
const QString Leave = u"CtrlCmd(9)"_s;
const QString Account = u"text1(0)"_s;
const QString Password = u"text1(1)"_s;

const QString TesterRow = u"tester|secret|True|True|True|True|True|True|True|True"_s;

int saveAnAccount(const QStringList& arguments) {
    return runInChild(u"FrmPsw"_s, [&arguments](Window& form) {
        click(control(form, Add));
        QTest::keyClicks(&control(form, Account), arguments.constFirst());
        QTest::keyClicks(&control(form, Password), u"other"_s);
        click(control(form, Save));
    });
}

const Scenarios AllScenarios = {{u"saveAnAccount"_s, saveAnAccount}};

} // namespace

class FrmPswTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theFirstAccountOfAnEmptyTable();
    void captionsAreToTheCharacter();
    void buttonsFollowTheTableOfStates();
    void editAreaIsOnOnlyDuringAnEdit();
    void thePasswordShowsAsStars();
    void everyRightIsItsColumn();
    void aNewAccountIsSaved();
    void aShortOrEmptyPasswordIsSavedAsItIs();
    void accountsThatDifferInCaseAreTwo();
    void movesGoThroughTheAccounts();
    void deleteEndsOnTheLastAccount();
    void aRefusedDeleteTells();
    void leaveIsOnInEveryStateAndDropsTheEdit();
    void leavingClosesTheConnectionAndKeepsTheToolbarLocked();
    void theLastUserOfTheRightMayTakeItFromHimself();
    void theLastUserOfTheRightMayDeleteHimself();
    void aChangeTakesEffectAtTheNextLogin();
    void aRefusedSaveEndsTheProgram_data();
    void aRefusedSaveEndsTheProgram();
    void aFailedOpenLeavesTheFlagUntilTheNextWindow();
    void enterMovesOn();
    void everyControlIsNamedAndReached();
    void itFillsThePlaceOfAModuleWindow();
};

void FrmPswTest::theFirstAccountOfAnEmptyTable() {
    FrmPswFixture fixture;
    fixture.database().execute(u"delete * from syst02"_s);
    fixture.open();
    QCOMPARE(fixture.buttonsOn(), QList<int>({0, 9}));
    QCOMPARE(fixture.text(Account), QString());
    fixture.press(Add);
    fixture.type(Account, u"chief"_s);
    fixture.type(Password, u"word"_s);
    QTest::keyClick(&fixture.right(7), Qt::Key_Space);
    fixture.press(Save);
    QCOMPARE(fixture.accounts(), QStringList{u"chief|word|False|False|False|False|False|False|False|True"_s});
    QCOMPARE(fixture.buttonsOn(), QList<int>({0, 1, 2, 5, 6, 7, 8, 9}));
}

void FrmPswTest::captionsAreToTheCharacter() {
    FrmPswFixture fixture;
    fixture.open();
    QCOMPARE(fixture.form().windowTitle(), u"權限管理"_s);
    QCOMPARE(fixture.at<QLabel>(u"Caption"_s).text(), u"權限管理"_s);
    QCOMPARE(fixture.at<QLabel>(u"lblLabels(0)"_s).text(), u"使用者名稱:"_s);
    QCOMPARE(fixture.at<QLabel>(u"lblLabels(1)"_s).text(), u"密碼:"_s);
    QCOMPARE(fixture.at<QGroupBox>(u"Frame1"_s).title(), u"權限設定"_s);
    QStringList rights;
    for (int index = 0; index < 8; ++index)
        rights << fixture.right(index).text();
    QCOMPARE(rights, QStringList({u"基本設定"_s, u"制度管理"_s, u"出勤管理"_s, u"差假管理"_s, u"註銷管理"_s,
                                  u"加班管理"_s, u"報表列印"_s, u"系統管理"_s}));
    QCOMPARE(fixture.barCaptions(), QStringList({u"新增資料"_s, u"修改"_s, u"刪除"_s, u"取消"_s, u"存檔"_s,
                                                 u"首筆"_s, u"上一筆"_s, u"下一筆"_s, u"末筆"_s, u"離開"_s}));
    QVERIFY(!QApplication::activeModalWidget());
}

void FrmPswTest::buttonsFollowTheTableOfStates() {
    FrmPswFixture fixture;
    fixture.open();
    QCOMPARE(fixture.buttonsOn(), QList<int>({0, 1, 2, 5, 6, 7, 8, 9}));
    fixture.press(Edit);
    QCOMPARE(fixture.buttonsOn(), QList<int>({3, 4, 9}));
    fixture.press(Cancel);
    fixture.press(Add);
    QCOMPARE(fixture.buttonsOn(), QList<int>({3, 4, 9}));
    fixture.press(Cancel);
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.accounts(), QStringList());
    QCOMPARE(fixture.buttonsOn(), QList<int>({0, 9}));
}

void FrmPswTest::editAreaIsOnOnlyDuringAnEdit() {
    FrmPswFixture fixture;
    fixture.open();
    const auto areas = [&fixture] {
        return QList<bool>{fixture.at(Account).isEnabled(), fixture.at(Password).isEnabled(),
                           fixture.at(u"Frame1"_s).isEnabled()};
    };
    QCOMPARE(areas(), QList<bool>({false, false, false}));
    for (const QString& button : {Edit, Add}) {
        fixture.press(button);
        QCOMPARE(areas(), QList<bool>({true, true, true}));
        QVERIFY(fixture.at(Account).hasFocus());
        fixture.press(Cancel);
        QCOMPARE(areas(), QList<bool>({false, false, false}));
    }
}

void FrmPswTest::thePasswordShowsAsStars() {
    FrmPswFixture fixture;
    fixture.open();
    QCOMPARE(fixture.text(Password), u"secret"_s);
    QCOMPARE(fixture.at<QLineEdit>(Password).displayText(), u"******"_s);
    QCOMPARE(fixture.at<QLineEdit>(Account).displayText(), u"tester"_s);
}

void FrmPswTest::everyRightIsItsColumn() {
    FrmPswFixture fixture;
    fixture.open();
    for (int index = 0; index < 8; ++index) {
        fixture.press(Edit);
        QTest::keyClick(&fixture.right(index), Qt::Key_Space);
        fixture.press(Save);
        QStringList cells = TesterRow.split(u'|');
        cells[2 + index] = u"False"_s;
        QCOMPARE(fixture.accounts(), QStringList{cells.join(u'|')});
        fixture.press(Edit);
        QTest::keyClick(&fixture.right(index), Qt::Key_Space);
        fixture.press(Save);
        QCOMPARE(fixture.accounts(), QStringList{TesterRow});
    }
}

void FrmPswTest::aNewAccountIsSaved() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.press(Add);
    QCOMPARE(fixture.text(Account), QString());
    QCOMPARE(fixture.rights(), QList<bool>(8, false));
    fixture.type(Account, u"clerk"_s);
    fixture.type(Password, u"Pass 1"_s);
    QTest::keyClick(&fixture.right(2), Qt::Key_Space);
    fixture.press(Save);
    QCOMPARE(fixture.accounts(),
             QStringList({u"clerk|Pass 1|False|False|True|False|False|False|False|False"_s, TesterRow}));
    QCOMPARE(fixture.text(Account), u"clerk"_s);
    fixture.press(Leave);
    fixture.logIn(u"clerk"_s, u"Pass 1"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(gF3 && !gF1 && !gF8);
}

void FrmPswTest::aShortOrEmptyPasswordIsSavedAsItIs() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.press(Edit);
    fixture.type(Password, u"a"_s);
    fixture.press(Save);
    QVERIFY(fixture.accounts().constFirst().startsWith(u"tester|a|"_s));
    fixture.press(Edit);
    fixture.at<QLineEdit>(Password).clear();
    fixture.press(Save);
    QVERIFY(fixture.accounts().constFirst().startsWith(u"tester|null|"_s));
}

void FrmPswTest::accountsThatDifferInCaseAreTwo() {
    FrmPswFixture fixture;
    fixture.open();
    for (const QString& account : {u"abc"_s, u"ABC"_s}) {
        fixture.press(Add);
        fixture.type(Account, account);
        fixture.type(Password, account);
        fixture.press(Save);
    }
    const QString none = u"|False|False|False|False|False|False|False|False"_s;
    QCOMPARE(fixture.accounts(), QStringList({u"ABC|ABC"_s + none, u"abc|abc"_s + none, TesterRow}));
}

void FrmPswTest::movesGoThroughTheAccounts() {
    FrmPswFixture fixture;
    fixture.addAccount(u"alpha"_s, u"1"_s);
    fixture.addAccount(u"zeta"_s, u"3"_s);
    fixture.open();
    QCOMPARE(fixture.text(Account), u"alpha"_s);
    for (const auto& [button, account] : QList<QPair<QString, QString>>{{u"CtrlCmd(6)"_s, u"alpha"_s},
                                                                        {Next, u"tester"_s},
                                                                        {Next, u"zeta"_s},
                                                                        {Next, u"zeta"_s},
                                                                        {u"CtrlCmd(6)"_s, u"tester"_s},
                                                                        {u"CtrlCmd(5)"_s, u"alpha"_s},
                                                                        {Last, u"zeta"_s}}) {
        fixture.press(button);
        QCOMPARE(fixture.text(Account), account);
    }
    QCOMPARE(fixture.rights(), QList<bool>(8, false));
}

void FrmPswTest::deleteEndsOnTheLastAccount() {
    FrmPswFixture fixture;
    fixture.addAccount(u"alpha"_s, u"1"_s);
    fixture.addAccount(u"zeta"_s, u"3"_s);
    fixture.open();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().text, u"確定刪除這筆資料?"_s);
    QCOMPARE(fixture.accounts(),
             QStringList({TesterRow, u"zeta|3|False|False|False|False|False|False|False|False"_s}));
    QCOMPARE(fixture.text(Account), u"zeta"_s);
}

void FrmPswTest::aRefusedDeleteTells() {
    FrmPswFixture fixture;
    fixture.addAccount(u"alpha"_s, u"1"_s);
    fixture.open();
    fixture.database().execute(u"delete * from syst02 where Account = 'alpha'"_s);
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().title, u"錯誤訊息"_s);
    QCOMPARE(fixture.answers.seen().constLast().text, u"無法刪除資料!"_s);
    QCOMPARE(fixture.accounts(), QStringList{TesterRow});
}

void FrmPswTest::leaveIsOnInEveryStateAndDropsTheEdit() {
    FrmPswFixture fixture;
    for (const QString& button : {Edit, Add}) {
        fixture.open();
        fixture.press(button);
        fixture.type(Account, u"other"_s);
        fixture.press(Leave);
        QCOMPARE(fixture.answers.trouble(), QString());
        QVERIFY(!fixture.isOpen());
        QCOMPARE(fixture.accounts(), QStringList{TesterRow});
    }
}

void FrmPswTest::leavingClosesTheConnectionAndKeepsTheToolbarLocked() {
    FrmPswFixture fixture;
    fixture.open();
    QVERIFY(gDbOpen);
    fixture.press(Leave);
    QVERIFY(!gDbOpen);
    QVERIFY(moduleWindow(8) && moduleWindow(8)->isVisible());
    QVERIFY(!gMDI->Tb().isEnabled());
    QCOMPARE(enabledButtons(), QList<int>{8});
    QCOMPARE(gMDI->windowTitle(), u"系統管理"_s);
    QVERIFY(moduleWindow(8)->isAncestorOf(QApplication::focusWidget()));
    fixture.open();
    QVERIFY(fixture.isOpen() && gDbOpen);
    QCOMPARE(fixture.text(Account), u"tester"_s);
}

void FrmPswTest::theLastUserOfTheRightMayTakeItFromHimself() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.press(Edit);
    QTest::keyClick(&fixture.right(7), Qt::Key_Space);
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.accounts(), QStringList{u"tester|secret|True|True|True|True|True|True|True|False"_s});
    fixture.press(Leave);
    click(control(*moduleWindow(8), u"CmdSet(3)"_s));
    QVERIFY(enabledButtons().contains(8)); // in the running program
    fixture.logIn(u"tester"_s, u"secret"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(enabledButtons(), QList<int>({1, 2, 3, 4, 5, 6, 7}));
}

void FrmPswTest::theLastUserOfTheRightMayDeleteHimself() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.accounts(), QStringList());
    fixture.press(Leave);
    // Nobody is known any more, until someone puts a row into the table by hand.
    fixture.answers.expect(u"frmLogin"_s, FrmPswFixture::typed(u"tester"_s, u"secret"_s)).expectMsgBox();
    fixture.answers.expect(u"frmLogin"_s, [&fixture](QWidget& dialog) {
        fixture.addAccount(u"rescue"_s, u"1"_s);
        FrmPswFixture::typed(u"rescue"_s, u"1"_s)(dialog);
    });
    frmLogin().showModal();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gAccount, u"rescue"_s);
}

void FrmPswTest::aChangeTakesEffectAtTheNextLogin() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.press(Edit);
    for (int index = 0; index < 8; ++index)
        QTest::keyClick(&fixture.right(index), Qt::Key_Space);
    fixture.type(Password, u"newer"_s);
    fixture.press(Save);
    QVERIFY(gF1 && gF2 && gF3 && gF4 && gF5 && gF6 && gF7 && gF8);
    fixture.press(Leave);
    click(control(*moduleWindow(8), u"CmdSet(3)"_s));
    QCOMPARE(enabledButtons().size(), 8);
    fixture.logIn(u"tester"_s, u"newer"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(enabledButtons(), QList<int>());
}

void FrmPswTest::aRefusedSaveEndsTheProgram_data() {
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("number");
    QTest::addRow("a repeated account") << u"tester"_s << u"3022"_s;
    QTest::addRow("an empty account") << QString() << u"3314"_s;
}

void FrmPswTest::aRefusedSaveEndsTheProgram() {
    QFETCH(const QString, account);
    QFETCH(const QString, number);
    TestStore store;
    OtherProcess program(store.folder(), u"saveAnAccount"_s, {account});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤 '%1':"_s.arg(number)),
             qUtf8Printable(lines.constFirst()));
    QCOMPARE(rowsOf(store.database(), u"syst02"_s), QStringList{TesterRow});
}

void FrmPswTest::aFailedOpenLeavesTheFlagUntilTheNextWindow() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.press(Leave);
    OpenDB();
    const QString folder = gDbPath;
    gDbPath = u"/nowhere/DB/"_s;
    fixture.answers.expectMsgBox();
    fixture.open();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QVERIFY(fixture.isOpen());
    QVERIFY(gOpenFailed);
    gDbPath = folder;
    fixture.press(Leave);
    click(control(*moduleWindow(8), u"CmdSet(3)"_s));
    QVERIFY(gOpenFailed);
    click(test::button(2));
    QVERIFY(!moduleWindow(2));
    QCOMPARE(fixture.probes.log(2).loads, 1);
    QVERIFY(!gOpenFailed);
}

void FrmPswTest::enterMovesOn() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.press(Add);
    for (const auto* next : {"text1(1)", "Check1(0)", "Check1(1)"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(next));
    }
    QCOMPARE(fixture.rights(), QList<bool>(8, false));
}

void FrmPswTest::everyControlIsNamedAndReached() {
    FrmPswFixture fixture;
    fixture.open();
    fixture.press(Edit);
    QStringList order;
    do {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != order.constFirst() && order.size() < 20);
    QCOMPARE(order, QStringList({Account, Password, u"Check1(0)"_s, u"Check1(1)"_s, u"Check1(2)"_s,
                                 u"Check1(3)"_s, u"Check1(4)"_s, u"Check1(5)"_s, u"Check1(6)"_s,
                                 u"Check1(7)"_s, Save, Cancel, Leave}));
}

void FrmPswTest::itFillsThePlaceOfAModuleWindow() {
    FrmPswFixture fixture;
    fixture.open();
    QCOMPARE(fixture.form().size(), QSize(574, 418));
}

int main(int argc, char** argv) {
    return runTests<FrmPswTest>(argc, argv, AllScenarios);
}

#include "FrmPswTest.moc"
