#include "app/frmLogin.h"

#include "app/ModuleProbes.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Patience.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// An account with the rights named by their numbers.
void addAccount(TestStore& store, const QString& account, const Value& password,
                const QList<int>& rights = {}) {
    Fields fields = {{u"Account", account}, {u"Password", password}};
    for (const int number : rights)
        fields.append({u"f%1"_s.arg(number), true});
    insertRow(store.database(), u"syst02"_s, fields);
}

void removeAccounts(TestStore& store) {
    store.database().execute(u"delete * from syst02"_s);
}

/// Types into the dialog as a user does and presses "確定".
PromptAnswers::Action logInAs(const QString& account, const QString& password) {
    return [account, password](QWidget& dialog) {
        auto& name = control<QLineEdit>(dialog, u"txtUserName"_s);
        auto& secret = control<QLineEdit>(dialog, u"txtPassword"_s);
        name.clear();
        secret.clear();
        QTest::keyClicks(&name, account);
        QTest::keyClicks(&secret, password);
        click(control(dialog, u"cmdOK"_s));
    };
}

const PromptAnswers::Action GoodLogin = logInAs(u"good"_s, u"right"_s);

QList<bool> flags() {
    return {gF1, gF2, gF3, gF4, gF5, gF6, gF7, gF8};
}

/// A shell before its login: the main window locked, nobody logged in.
class LockedShell : public Shell {
  public:
    explicit LockedShell(const TestStore& store) : Shell(store) {
        setAllRights(false);
        gAccount.clear();
        LockToolbar();
    }
};

} // namespace

class frmLoginTest : public QObject {
    Q_OBJECT

  private:
    ModuleProbes probes_;

  private Q_SLOTS:
    void captionsAreToTheCharacter();
    void accessKeysLeadToTheBoxes();
    void everyControlIsNamedAndReached();
    void aGoodLoginSetsAccountAndRightsAndUnlocks();
    void aGoodLoginClosesTheSharedConnection();
    void accountsThatDifferInCaseAreTwo();
    void accountAndPasswordAreComparedExactly_data();
    void accountAndPasswordAreComparedExactly();
    void anUnknownUserGetsTheMessageOfAWrongPassword();
    void aFailedLoginSelectsThePasswordAndStays();
    void aFailedLoginLeavesTheValuesOfTheLastRow();
    void thereIsNoCountOfAttempts();
    void anEmptyTableGivesTheMessage();
    void aLoginWithoutAnyRightIsGood();
    void aUserWithoutTheEighthRightDoesNotReachTheAccounts();
    void enterMovesOnAndDoesNotLogIn();
    void aNullBehindTheRightRowIsNeverRead();
};

void frmLoginTest::captionsAreToTheCharacter() {
    const frmLogin login;
    QCOMPARE(login.objectName(), u"frmLogin"_s);
    QCOMPARE(login.windowTitle(), u"登入"_s);
    QVERIFY(login.isModal());
    QCOMPARE(control<QLabel>(login, u"lblLabels(0)"_s).text(), u"使用者名稱(&U):"_s);
    QCOMPARE(control<QLabel>(login, u"lblLabels(1)"_s).text(), u"密碼(&P):"_s);
    QCOMPARE(control<QPushButton>(login, u"cmdOK"_s).text(), u"確定"_s);
    QCOMPARE(control<QPushButton>(login, u"cmdCancel"_s).text(), u"取消"_s);
    QCOMPARE(control<QLineEdit>(login, u"txtUserName"_s).text(), QString());
    auto& password = control<QLineEdit>(login, u"txtPassword"_s);
    QCOMPARE(password.echoMode(), QLineEdit::Password);
    password.setText(u"abc"_s);
    QCOMPARE(password.displayText(), u"***"_s);
}

void frmLoginTest::accessKeysLeadToTheBoxes() {
    frmLogin login;
    login.show();
    QVERIFY(QTest::qWaitForWindowActive(&login, PatienceMs));
    QTest::keyClick(&login, Qt::Key_P, Qt::AltModifier);
    QVERIFY(control(login, u"txtPassword"_s).hasFocus());
    QTest::keyClick(&login, Qt::Key_U, Qt::AltModifier);
    QVERIFY(control(login, u"txtUserName"_s).hasFocus());
}

void frmLoginTest::everyControlIsNamedAndReached() {
    frmLogin login;
    login.show();
    QVERIFY(QTest::qWaitForWindowActive(&login, PatienceMs));
    QVERIFY(control(login, u"txtUserName"_s).hasFocus());
    for (const auto* next : {"txtPassword", "cmdOK", "cmdCancel", "txtUserName"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(next));
    }
}

void frmLoginTest::aGoodLoginSetsAccountAndRightsAndUnlocks() {
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s, {2, 5, 8});
    const LockedShell shell(store);
    probes_.registerAll();
    LockToolbar();
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(gAccount, u"good"_s);
    QCOMPARE(flags(), QList<bool>({false, true, false, false, true, false, false, true}));
    QCOMPARE(enabledButtons(), QList<int>({2, 5, 8}));
    QVERIFY(gMDI->Tb().isEnabled());
    QCOMPARE(gMDI->windowTitle(), IdleCaption);
    QVERIFY(gMDI->isVisible());
}

void frmLoginTest::aGoodLoginClosesTheSharedConnection() {
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s);
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, [](QWidget& dialog) {
        QVERIFY(gDbOpen);
        GoodLogin(dialog);
    });
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(!gDbOpen);
    QVERIFY(!gDatabase);
    QVERIFY(!gRecordset.isOpen());
}

void frmLoginTest::accountsThatDifferInCaseAreTwo() {
    TestStore store;
    removeAccounts(store);
    addAccount(store, u"ABC"_s, u"one"_s, {1});
    addAccount(store, u"abc"_s, u"two"_s, {2});
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logInAs(u"ABC"_s, u"two"_s));
    answers.expectMsgBox();
    answers.expect(u"frmLogin"_s, logInAs(u"abc"_s, u"two"_s));
    frmLogin().showModal();
    QCOMPARE(gAccount, u"abc"_s);
    QCOMPARE(flags(), QList<bool>({false, true, false, false, false, false, false, false}));
    answers.expect(u"frmLogin"_s, logInAs(u"ABC"_s, u"one"_s));
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gAccount, u"ABC"_s);
    QCOMPARE(flags(), QList<bool>({true, false, false, false, false, false, false, false}));
}

void frmLoginTest::accountAndPasswordAreComparedExactly_data() {
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("password");
    QTest::addRow("a blank behind the account") << u"good "_s << u"right"_s;
    QTest::addRow("a blank before the account") << u" good"_s << u"right"_s;
    QTest::addRow("a blank behind the password") << u"good"_s << u"right "_s;
    QTest::addRow("another case in the password") << u"good"_s << u"Right"_s;
    QTest::addRow("another case in the account") << u"Good"_s << u"right"_s;
    QTest::addRow("no password") << u"good"_s << QString();
    QTest::addRow("nothing at all") << QString() << QString();
    QTest::addRow("the password of another account") << u"good"_s << u"secret"_s;
    QTest::addRow("a pattern") << u"*"_s << u"*"_s;
    QTest::addRow("an apostrophe") << u"x' or '1'='1"_s << u"x' or '1'='1"_s;
}

void frmLoginTest::accountAndPasswordAreComparedExactly() {
    QFETCH(const QString, account);
    QFETCH(const QString, password);
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s);
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logInAs(account, password));
    answers.expectMsgBox();
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gAccount, u"good"_s);
}

void frmLoginTest::anUnknownUserGetsTheMessageOfAWrongPassword() {
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s);
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logInAs(u"nobody"_s, u"right"_s));
    answers.expectMsgBox();
    answers.expect(u"frmLogin"_s, logInAs(u"good"_s, u"wrong"_s));
    answers.expectMsgBox();
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    for (const int message : {1, 3}) {
        QCOMPARE(answers.seen().at(message).title, u"登入"_s);
        QCOMPARE(answers.seen().at(message).text, u"密碼錯誤,請重新輸入!"_s);
        QCOMPARE(answers.seen().at(message).buttons, QStringList{u"確定"_s});
    }
}

void frmLoginTest::aFailedLoginSelectsThePasswordAndStays() {
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s);
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logInAs(u"good"_s, u"wrong"_s));
    answers.expectMsgBox();
    answers.expect(u"frmLogin"_s, [](QWidget& dialog) {
        const auto& password = control<QLineEdit>(dialog, u"txtPassword"_s);
        QTRY_VERIFY_WITH_TIMEOUT(password.hasFocus(), PatienceMs);
        QCOMPARE(password.selectedText(), u"wrong"_s);
        QCOMPARE(control<QLineEdit>(dialog, u"txtUserName"_s).text(), u"good"_s);
        QVERIFY(gDbOpen);
        QVERIFY(!gMDI->Tb().isEnabled());
        // What is typed now replaces the wrong one.
        QTest::keyClicks(QApplication::focusWidget(), u"right"_s);
        click(control(dialog, u"cmdOK"_s));
    });
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(gMDI->Tb().isEnabled());
}

void frmLoginTest::aFailedLoginLeavesTheValuesOfTheLastRow() {
    TestStore store;
    removeAccounts(store);
    addAccount(store, u"good"_s, u"right"_s, {1});
    addAccount(store, u"zoe"_s, u"last"_s, {3, 4});
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logInAs(u"good"_s, u"wrong"_s));
    answers.expect(u"MsgBox"_s, [](QWidget& box) {
        QCOMPARE(gAccount, u"zoe"_s);
        QCOMPARE(flags(), QList<bool>({false, false, true, true, false, false, false, false}));
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gAccount, u"good"_s);
    QCOMPARE(flags(), QList<bool>({true, false, false, false, false, false, false, false}));
}

void frmLoginTest::thereIsNoCountOfAttempts() {
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s);
    const LockedShell shell(store);
    PromptAnswers answers;
    for (int attempt = 0; attempt < 12; ++attempt) {
        answers.expect(u"frmLogin"_s, logInAs(u"good"_s, u"wrong"_s));
        answers.expectMsgBox();
    }
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gAccount, u"good"_s);
}

void frmLoginTest::anEmptyTableGivesTheMessage() {
    TestStore store;
    removeAccounts(store);
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, GoodLogin);
    answers.expectMsgBox();
    answers.expect(u"frmLogin"_s, [&store](QWidget& dialog) {
        addAccount(store, u"good"_s, u"right"_s);
        GoodLogin(dialog);
    });
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().at(1).text, u"密碼錯誤,請重新輸入!"_s);
    QCOMPARE(gAccount, u"good"_s);
}

void frmLoginTest::aLoginWithoutAnyRightIsGood() {
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s);
    const LockedShell shell(store);
    probes_.registerAll();
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().size(), 1);
    QVERIFY(gMDI->Tb().isEnabled());
    QCOMPARE(enabledButtons(), QList<int>());
    QVERIFY(gMDI->systemMenu().has(SystemMenu::Close));
}

void frmLoginTest::aUserWithoutTheEighthRightDoesNotReachTheAccounts() {
    TestStore store;
    removeAccounts(store);
    addAccount(store, u"good"_s, u"right"_s, {1, 2, 3, 4, 5, 6, 7});
    const LockedShell shell(store);
    probes_.registerAll();
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(enabledButtons(), QList<int>({1, 2, 3, 4, 5, 6, 7}));
    click(button(8));
    QVERIFY(!moduleWindow(8));
    QCOMPARE(answers.trouble(), QString());
}

void frmLoginTest::enterMovesOnAndDoesNotLogIn() {
    TestStore store;
    addAccount(store, u"good"_s, u"right"_s);
    const LockedShell shell(store);
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        PromptAnswers answers;
        answers.expect(u"frmLogin"_s, [enter](QWidget& dialog) {
            auto& name = control<QLineEdit>(dialog, u"txtUserName"_s);
            QTest::keyClicks(&name, u"good"_s);
            QTest::keyClick(&name, enter);
            QVERIFY(control(dialog, u"txtPassword"_s).hasFocus());
            QTest::keyClicks(QApplication::focusWidget(), u"right"_s);
            QTest::keyClick(QApplication::focusWidget(), enter);
            QVERIFY(control(dialog, u"cmdOK"_s).hasFocus());
            QVERIFY(dialog.isVisible());
            QVERIFY(gDbOpen);
            QTest::keyClick(QApplication::focusWidget(), enter);
            QVERIFY(!dialog.isVisible());
        });
        frmLogin().showModal();
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(gAccount, u"good"_s);
    }
}

void frmLoginTest::aNullBehindTheRightRowIsNeverRead() {
    TestStore store;
    removeAccounts(store);
    addAccount(store, u"good"_s, u"right"_s);
    addAccount(store, u"zoe"_s, Value());
    const LockedShell shell(store);
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, GoodLogin);
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(gAccount, u"good"_s);
}

int main(int argc, char** argv) {
    return runTests<frmLoginTest>(argc, argv);
}

#include "frmLoginTest.moc"
