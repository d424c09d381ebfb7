#include "store/StoreCheck.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Patience.h"
#include "support/SavedFiles.h"
#include "windows/StartProcess.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// Closes the main window as soon as the look at the store is remembered and no copy is left to be looked
/// through, messages being told and closed.
int closeAfterTheCheck(const QStringList& arguments) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    if (arguments.contains(u"message"_s))
        answers.expect(u"MsgBox"_s, reportAndClose);
    QTimer timer;
    whenIdle(answers, [&timer] {
        QObject::connect(&timer, &QTimer::timeout, &timer, [] {
            if (QFile::exists(gDbPath + u".checked"_s) &&
                uncheckedCopiesOf(gDbPath + u"Pontrel.mdb"_s).isEmpty() && !QApplication::activeModalWidget())
                gMDI->close();
        });
        timer.start(5);
    });
    const int status = start(true);
    if (!answers.trouble().isEmpty())
        writeLine(answers.trouble());
    return status;
}

int standIdleWithCopies(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    whenIdle(answers, [] { writeLine(u"idle"_s); });
    return start(true);
}

int closeWhenIdle(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    whenIdle(answers, [] { gMDI->close(); });
    return start(true);
}

const Scenarios AllScenarios = {{u"closeAfterTheCheck"_s, closeAfterTheCheck},
                                {u"standIdleWithCopies"_s, standIdleWithCopies},
                                {u"closeWhenIdle"_s, closeWhenIdle}};

} // namespace

/// The safety copy of the day, and the look through it.
class StartCopiesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theStoreIsLookedAtOnceADay();
    void theFirstStartOfTheDayMakesACopy();
    void aCopyThatAKillHasLeftIsFinishedByTheNextStart();
    void aCopyThatCannotBeMadeIsToldInALineAndStopsNobody();
    void damageIsToldOnceADayWhenTheProgramStandsIdle();
};

void StartCopiesTest::theStoreIsLookedAtOnceADay() {
    const TestStore store;
    for (int startNumber = 0; startNumber < 2; ++startNumber) {
        OtherProcess program(store.folder(), u"closeAfterTheCheck"_s);
        QCOMPARE(program.waitForEnd(), std::optional(0));
        QCOMPARE(program.lines(), QStringList({LoginLine, u"Main returned"_s}));
        QVERIFY(!program.errors().contains(u"pontrel:"_s));
    }
    QVERIFY(!QFile::exists(checkedCopyOf(store.path())));
    QVERIFY(!isCheckDue(store.path(), QDate::currentDate()) ||
            !isCheckDue(store.path(), QDate::currentDate().addDays(-1))); // midnight may have passed
}

void StartCopiesTest::theFirstStartOfTheDayMakesACopy() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}, {u"Title", u"科員"}});
    const QDate before = QDate::currentDate();
    for (int startNumber = 0; startNumber < 2; ++startNumber) {
        OtherProcess program(store.folder(), u"closeAfterTheCheck"_s);
        QCOMPARE(program.waitForEnd(), std::optional(0));
        QVERIFY2(!program.errors().contains(u"pontrel:"_s), qPrintable(program.errors()));
    }
    const QList<SafetyCopy> copies = safetyCopiesOf(store.path());
    QVERIFY(copies.size() == 1 || QDate::currentDate() != before); // midnight may have passed
    QVERIFY(copies.constLast().reason == CopyReason::Day);
    QVERIFY(copies.constLast().day >= before && copies.constLast().day <= QDate::currentDate());
    Database copy(copyFolderOf(store.path()) + u'/' + copies.constLast().name());
    QCOMPARE(rowsOf(copy, u"Base01"_s), QStringList{u"1|科員"_s});
    QCOMPARE(rowsOf(copy, u"syst02"_s), rowsOf(store.database(), u"syst02"_s));
}

void StartCopiesTest::aCopyThatAKillHasLeftIsFinishedByTheNextStart() {
    const TestStore store;
    const CopyOutcome left =
        copyBytes(store.path(), CopyReason::Purge, CopyPace::AtOnce, [] { return true; });
    QVERIFY(left.copy);
    OtherProcess program(store.folder(), u"standIdleWithCopies"_s);
    QVERIFY(program.waitForLine(u"idle"_s));
    QTRY_VERIFY_WITH_TIMEOUT(uncheckedCopiesOf(store.path()).isEmpty(), PatienceMs);
    QVERIFY(safetyCopiesOf(store.path()).contains(*left.copy));
    QVERIFY(hasCopyOfDay(store.path(), QDate::currentDate()) ||
            hasCopyOfDay(store.path(), QDate::currentDate().addDays(-1))); // midnight may have passed
}

void StartCopiesTest::aCopyThatCannotBeMadeIsToldInALineAndStopsNobody() {
    const TestStore store;
    writeContent(copyFolderOf(store.path()), "a file in its place");
    OtherProcess program(store.folder(), u"closeWhenIdle"_s);
    QCOMPARE(program.waitForEnd(), std::optional(0));
    QCOMPARE(program.lines(), QStringList({LoginLine, u"Main returned"_s}));
    const QStringList told = program.errors().split(u'\n').filter(u"pontrel:"_s);
    QCOMPARE(told.size(), 1);
    QVERIFY2(told.constFirst().contains(u"no safety copy: the folder "_s + copyFolderOf(store.path())),
             qPrintable(told.constFirst()));
    QCOMPARE(contentOf(copyFolderOf(store.path())), QByteArray("a file in its place"));
    // The note goes with the next copy that gets its name.
    const QString note = failedCopyNote(store.path());
    QVERIFY2(note.endsWith(u"no safety copy: the folder %1 cannot be made"_s.arg(copyFolderOf(store.path()))),
             qPrintable(note));
    QVERIFY(QFile::remove(copyFolderOf(store.path())));
    OtherProcess again(store.folder(), u"closeAfterTheCheck"_s);
    QCOMPARE(again.waitForEnd(), std::optional(0));
    QCOMPARE(safetyCopiesOf(store.path()).size(), 1);
    QCOMPARE(failedCopyNote(store.path()), QString());
}

void StartCopiesTest::damageIsToldOnceADayWhenTheProgramStandsIdle() {
    TestStore store;
    {
        Stage stage(store.database());
        for (int row = 0; row < 3000; ++row)
            store.database().execute(u"insert into Base02(UnitNo,Unit) values('%1','%2')"_s.arg(
                QString::number(row), QString(100, u'x')));
        stage.finish();
    }
    QByteArray content = contentOf(store.path());
    content.replace(content.size() - 100'000, 50'000, QByteArray(50'000, '\xa5'));
    writeContent(store.path(), content);
    OtherProcess program(store.folder(), u"closeAfterTheCheck"_s, {u"message"_s});
    QCOMPARE(program.waitForEnd(), std::optional(0));
    QCOMPARE(program.lines(),
             QStringList({LoginLine, u"MsgBox|警告訊息|資料庫檔案已有損壞,請盡快以備份還原並洽程式設計師|0"_s,
                          u"Main returned"_s}));
    QVERIFY(program.errors().contains(u"pontrel: 3049: 資料庫檔案損壞 ("_s + store.path()));
    OtherProcess again(store.folder(), u"closeAfterTheCheck"_s);
    QCOMPARE(again.waitForEnd(), std::optional(0));
    QCOMPARE(again.lines(), QStringList({LoginLine, u"Main returned"_s}));
    QVERIFY(contentOf(store.path()) == content);
    QCOMPARE(safetyCopiesOf(store.path()), QList<SafetyCopy>());
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>());
    QVERIFY(!failedCopyNote(store.path()).isEmpty());
}

int main(int argc, char** argv) {
    return runTests<StartCopiesTest>(argc, argv, AllScenarios);
}

#include "StartCopiesTest.moc"
