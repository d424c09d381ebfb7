#include "app/SafetyCopies.h"
#include "store/Clock.h"
#include "store/HeldFile.h"
#include "store/StoreCheck.h"
#include "support/Patience.h"
#include "support/SavedFiles.h"
#include "windows/attendance/Form3Fixture.h"

#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString ReadButton = u"CtrlCmd0(0)"_s;

/// The copies of the store, looked through or not.
QList<SafetyCopy> copiesOf(const QString& store) {
    return safetyCopiesOf(store) + uncheckedCopiesOf(store);
}

/// Damages rows of a table that no window has open.
void damage(TestStore& store) {
    {
        Stage stage(store.database());
        for (int row = 0; row < 3000; ++row)
            store.database().execute(u"insert into Holi02(SuitNo) values('%1')"_s.arg(row, 100));
        stage.finish();
    }
    QByteArray content = contentOf(store.path());
    content.replace(content.size() - 100'000, 50'000, QByteArray(50'000, '\xa5'));
    writeContent(store.path(), content);
}

/// The damage has been found, and time for the message has come and gone: a timer that was started first and
/// is the shorter one fires first.
void awaitTurnOfMessage(const QString& store) {
    QTRY_VERIFY_WITH_TIMEOUT(!failedCopyNote(store).isEmpty(), PatienceMs);
    bool hasPassed = false;
    QTimer::singleShot(300, qApp, [&hasPassed] { hasPassed = true; });
    QTRY_VERIFY_WITH_TIMEOUT(hasPassed, PatienceMs);
}

QStringList messagesOf(const PromptAnswers& answers) {
    QStringList texts;
    for (const SeenPrompt& prompt : answers.seen())
        if (prompt.objectName == u"MsgBox")
            texts += prompt.text;
    return texts;
}

} // namespace

/// Safety copies of the store before what cannot be undone.
class Form3CopiesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
    }
    void cleanup() { clock::setSource({}); }

    void aPurgeMakesACopyBeforeThePunchesGo();
    void aPurgeGoesOnWithoutACopyWhereNoneCanBeMade();
    void aReplacedDayMakesACopyBehindTheYes();
    void aDayThatIsNotReplacedMakesNone();
    void aNewDayMakesNone();
    void copiesInARowAreAllLookedThrough();
    void whatTheEndCutsOffIsTakenUpByTheNextStart();
    void whatIsLeftIsTakenUpThoughTheDayHasItsCopy();
    void whatAnotherProcessLooksThroughIsNoFailure();
    void damageIsToldWhenNothingIsOpen_data();
    void damageIsToldWhenNothingIsOpen();
};

void Form3CopiesTest::aPurgeMakesACopyBeforeThePunchesGo() {
    Form3Fixture fixture;
    fixture.addPunches();
    const QString store = fixture.store.path();
    const QStringList before = rowsOf(fixture.database(), u"Atte01"_s);
    SafetyCopies copies(store);
    fixture.open();
    // The copy comes behind the dialog, and its bytes are all there before the message.
    fixture.answers.expect(u"FrmI1Date"_s, [&store](QWidget& dialog) {
        QCOMPARE(copiesOf(store), QList<SafetyCopy>());
        click(control(dialog, u"Command1(1)"_s));
    });
    fixture.answers.expect(u"MsgBox"_s, [&store](QWidget& dialog) {
        QCOMPARE(copiesOf(store).size(), 1);
        QVERIFY(!hourglass());
        dialog.close();
    });
    fixture.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(!gMDI->findChild<QLabel*>(u"Notice"_s));
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList());
    const SafetyCopy expected{QDate(2026, 3, 5), QTime(9, 30), CopyReason::Purge};
    QTRY_COMPARE_WITH_TIMEOUT(safetyCopiesOf(store), QList<SafetyCopy>{expected}, PatienceMs);
    Database copy(copyFolderOf(store) + u'/' + expected.name());
    QCOMPARE(rowsOf(copy, u"Atte01"_s), before);
    QVERIFY(before.size() == 4);
}

void Form3CopiesTest::aPurgeGoesOnWithoutACopyWhereNoneCanBeMade() {
    Form3Fixture fixture;
    fixture.addPunches();
    writeContent(copyFolderOf(fixture.store.path()), "a file in its place");
    const SafetyCopies copies(fixture.store.path());
    fixture.open();
    fixture.expectDateCancelled();
    QString told;
    fixture.answers.expect(u"MsgBox"_s, [&told](QWidget& box) {
        const auto& line = control<QLabel>(*gMDI, u"Notice"_s);
        if (line.isVisible() && line.window() == gMDI)
            told = line.text();
        QVERIFY(box.isActiveWindow());
        QCOMPARE(line.focusPolicy(), Qt::NoFocus);
        click(*qobject_cast<QMessageBox*>(&box)->button(QMessageBox::Ok));
    });
    fixture.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"2038/1/1前之打卡資料已清除完畢!!"_s);
    QCOMPARE(told, u"無法製作安全備份，請檢查磁碟空間或洽系統管理者"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList());
}

void Form3CopiesTest::aReplacedDayMakesACopyBehindTheYes() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    fixture.addPunches();
    addPunch(database, u"10001"_s, Form3Fixture::PunchDay, QTime(8, 0));
    const QString store = fixture.store.path();
    const QStringList before = dumpDailyTables(database);
    SafetyCopies copies(store);
    fixture.open();
    fixture.answers.expectFile(fixture.store.writePunchFile(u"20010305.txt"_s, QByteArray()));
    fixture.answers.expect(u"MsgBox"_s, [&store](QWidget& dialog) {
        QCOMPARE(copiesOf(store), QList<SafetyCopy>());
        click(*qobject_cast<QMessageBox*>(&dialog)->button(QMessageBox::Yes));
    });
    fixture.answers.expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(rowsOf(database, u"Atte01"_s).size(), 2);
    QVERIFY(!hourglass());
    const SafetyCopy expected{QDate(2026, 3, 5), QTime(9, 30), CopyReason::Replace};
    QTRY_COMPARE_WITH_TIMEOUT(safetyCopiesOf(store), QList<SafetyCopy>{expected}, PatienceMs);
    Database copy(copyFolderOf(store) + u'/' + expected.name());
    QStringList held = dumpDailyTables(copy);
    // The import has begun: it holds the employees' leaving dates for its time.
    QCOMPARE(held.filter(u"2038-01-01"_s).size(), 2);
    QCOMPARE(held.replaceInStrings(u"2038-01-01"_s, u"null"_s), before);
}

void Form3CopiesTest::aDayThatIsNotReplacedMakesNone() {
    Form3Fixture fixture;
    fixture.addPunches();
    const QStringList before = rowsOf(fixture.database(), u"Atte01"_s);
    const SafetyCopies copies(fixture.store.path());
    fixture.open();
    fixture.answers.expectFile(fixture.store.writePunchFile(u"20010305.txt"_s, QByteArray()));
    fixture.answers.expectMsgBox(MsgAnswer::No).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), before);
    QCOMPARE(copiesOf(fixture.store.path()), QList<SafetyCopy>());
}

void Form3CopiesTest::aNewDayMakesNone() {
    Form3Fixture fixture;
    fixture.addPunches();
    const SafetyCopies copies(fixture.store.path());
    fixture.open();
    fixture.answers.expectFile(fixture.store.writePunchFile(u"20010307.txt"_s, QByteArray())).expectMsgBox();
    fixture.press(ReadButton);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s).size(), 4);
    QCOMPARE(copiesOf(fixture.store.path()), QList<SafetyCopy>());
}

void Form3CopiesTest::copiesInARowAreAllLookedThrough() {
    const TestStore store;
    SafetyCopies copies(store.path());
    for (int copy = 0; copy < 5; ++copy)
        SafetyCopies::before(CopyReason::Hand); // of which all are kept
    QTRY_COMPARE_WITH_TIMEOUT(safetyCopiesOf(store.path()).size(), 5, PatienceMs);
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>());
    // And one more when the thread has long been through.
    SafetyCopies::before(CopyReason::Hand);
    QTRY_COMPARE_WITH_TIMEOUT(safetyCopiesOf(store.path()).size(), 6, PatienceMs);
}

void Form3CopiesTest::whatTheEndCutsOffIsTakenUpByTheNextStart() {
    TestStore store;
    {
        Stage stage(store.database());
        for (int row = 0; row < 20'000; ++row)
            store.database().execute(u"insert into Holi02(SuitNo) values('%1')"_s.arg(row));
        stage.finish();
    }
    {
        const SafetyCopies copies(store.path());
        SafetyCopies::before(CopyReason::Purge);
    }
    QCOMPARE(copiesOf(store.path()).size(), 1);
    SafetyCopies::before(CopyReason::Purge); // nobody is there to make one
    QCOMPARE(copiesOf(store.path()).size(), 1);
    SafetyCopies copies(store.path());
    copies.start();
    QTRY_COMPARE_WITH_TIMEOUT(safetyCopiesOf(store.path()).size(), 2, PatienceMs);
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>());
    QVERIFY(hasCopyOfDay(store.path(), QDate(2026, 3, 5)));
}

void Form3CopiesTest::whatIsLeftIsTakenUpThoughTheDayHasItsCopy() {
    const TestStore store;
    const auto toTheEnd = [] { return true; };
    for (const CopyReason reason : {CopyReason::Day, CopyReason::Purge})
        QVERIFY(copyBytes(store.path(), reason, CopyPace::AtOnce, toTheEnd).copy);
    SafetyCopies copies(store.path());
    copies.start();
    QTRY_COMPARE_WITH_TIMEOUT(safetyCopiesOf(store.path()).size(), 2, PatienceMs);
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>());
}

/// Of two copies the first is held by somebody else; when the second has been told of, the first has, too.
void Form3CopiesTest::whatAnotherProcessLooksThroughIsNoFailure() {
    const TestStore store;
    const auto toTheEnd = [] { return true; };
    QList<SafetyCopy> made;
    for (const CopyReason reason : {CopyReason::Purge, CopyReason::Day}) {
        const CopyOutcome outcome = copyBytes(store.path(), reason, CopyPace::AtOnce, toTheEnd);
        QVERIFY(outcome.copy);
        made += *outcome.copy;
    }
    const HeldFile held(copyFolderOf(store.path()) + u"/.unchecked-"_s + made[0].name(),
                        HeldFile::Open::Existing);
    QVERIFY(held.held());
    SafetyCopies copies(store.path());
    copies.start();
    QTRY_VERIFY_WITH_TIMEOUT(!isCheckDue(store.path(), QDate(2026, 3, 5)), PatienceMs);
    QCOMPARE(failedCopyNote(store.path()), QString());
    QCOMPARE(safetyCopiesOf(store.path()), QList<SafetyCopy>{made[1]});
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>{made[0]});
}

void Form3CopiesTest::damageIsToldWhenNothingIsOpen_data() {
    QTest::addColumn<QString>("open");
    for (const char* open : {"a window", "a dialog", "a menu"})
        QTest::newRow(open) << QString::fromLatin1(open);
}

/// A key that is meant for what is open would dismiss the message unread. Told once, it is not told again
/// that day, by the next start neither.
void Form3CopiesTest::damageIsToldWhenNothingIsOpen() {
    QFETCH(const QString, open);
    Form3Fixture fixture;
    const QString store = fixture.store.path();
    damage(fixture.store);
    fixture.open();
    QDialog dialog(&fixture.mainWindow());
    dialog.setObjectName(u"Other"_s);
    dialog.setModal(true);
    QMenu menu(&fixture.mainWindow());
    menu.addAction(u"an entry"_s);
    if (open == u"a dialog") {
        fixture.answers.expectAndLeave(u"Other"_s, [](QWidget&) {});
        dialog.show();
    }
    if (open == u"a menu")
        menu.popup(fixture.mainWindow().mapToGlobal(QPoint(10, 10)));
    if (open != u"a window")
        fixture.form().unload();
    {
        SafetyCopies copies(store);
        SafetyCopies::before(CopyReason::Hand);
        awaitTurnOfMessage(store);
        QCOMPARE(messagesOf(fixture.answers), QStringList());
        fixture.answers.expectMsgBox();
        if (open == u"a window")
            fixture.form().unload();
        dialog.close();
        menu.close();
        const QStringList told{u"資料庫檔案已有損壞,請盡快以備份還原並洽程式設計師"_s};
        QTRY_COMPARE_WITH_TIMEOUT(messagesOf(fixture.answers), told, PatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(!isCheckDue(store, QDate(2026, 3, 5)), PatienceMs);
    }
    QVERIFY(QFile::remove(QFileInfo(store).path() + u"/.copy-failed"_s));
    SafetyCopies nextStart(store);
    nextStart.start();
    awaitTurnOfMessage(store);
    QCOMPARE(messagesOf(fixture.answers).size(), 1);
    QCOMPARE(fixture.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form3CopiesTest>(argc, argv);
}

#include "Form3CopiesTest.moc"
