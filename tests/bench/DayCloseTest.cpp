#include "bench/DayCloseProcess.h"

#include "rules/attendance/DailyCalculation.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <functional>
#include <memory>
#include <optional>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

/// A slot and two employees on it.
void addPeople(Database& database) {
    Stage stage(database);
    addSlot(database, u"A"_s);
    for (const QString& EmpNo : {u"00001"_s, u"00002"_s}) {
        addEmployee(database, EmpNo);
        addRoster(database, EmpNo, Day, u"A"_s);
    }
    stage.finish();
}

/// The first employee comes 20 minutes late and works two hours over, the second does not come.
QByteArray dayFile() {
    return punchLine("00001", Day, QTime(8, 20)) + punchLine("00001", Day, QTime(12, 0)) +
           punchLine("00001", Day, QTime(13, 0)) + punchLine("00001", Day, QTime(17, 0)) +
           punchLine("00001", Day, QTime(19, 0), "081") + punchLine("00001", Day, QTime(21, 0), "081");
}

/// The same work over a store of its own, in this process: what day_close must do and tell.
class Twin {
  public:
    Twin() {
        store_.holdOpen();
        addPeople(database());
    }

    [[nodiscard]] Database& database() { return store_.database(); }
    [[nodiscard]] const DailyCalculation& calculation() const { return *calculation_; }
    [[nodiscard]] QStringList rows() { return dumpDailyTables(database()); }

    QJsonObject import(const QString& action, const QString& file, bool replace = true) {
        host_.punchFile = file;
        host_.answer = replace;
        return answer(action, [this] { calculation_->ReadPunchFile(); });
    }
    QJsonObject recalculate(const QString& action, QDate day) {
        return answer(action, [this, day] { calculation_->Recalculate(day); });
    }
    QJsonObject reopen() {
        calculation_.emplace(database(), host_);
        return {
            {u"action"_s, u"reopen"_s}, {u"finished"_s, true}, {u"statements"_s, 0}, {u"rows"_s, counts()}};
    }

  private:
    QJsonObject answer(const QString& action, const std::function<void()>& routine) {
        const qint64 before = database().statementCount();
        routine();
        QJsonObject told{{u"action"_s, action},
                         {u"finished"_s, calculation_->finished()},
                         {u"statements"_s, static_cast<qint64>(database().statementCount() - before)},
                         {u"rows"_s, counts()}};
        if (const auto& failure = calculation_->lastError()) {
            told[u"error"_s] = failure->number();
            told[u"why"_s] = QString::fromUtf8(failure->what());
        }
        return told;
    }
    QJsonObject counts() {
        QJsonObject rows;
        for (const QString& table :
             {u"AtteTemp"_s, u"Atte01"_s, u"AtteTemp1"_s, u"Atte02"_s, u"Atte03"_s, u"View02"_s, u"Over01"_s})
            rows[table] = rowsOf(database(), table).size();
        return rows;
    }

    TestStore store_;
    FakeHost host_;
    std::optional<DailyCalculation> calculation_{std::in_place, store_.database(), host_};
};

QJsonObject counts(int AtteTemp, int Atte01, int AtteTemp1, int Atte02, int Atte03, int View02, int Over01) {
    return {{u"AtteTemp"_s, AtteTemp}, {u"Atte01"_s, Atte01}, {u"AtteTemp1"_s, AtteTemp1},
            {u"Atte02"_s, Atte02},     {u"Atte03"_s, Atte03}, {u"View02"_s, View02},
            {u"Over01"_s, Over01}};
}

} // namespace

/// The program that closes a day without a window, in processes of its own.
class DayCloseTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStore> store_;
    std::unique_ptr<Twin> twin_;
    QString file_;
    QString action_; ///< The one that reads the file.

    [[nodiscard]] QStringList rows() { return dumpDailyTables(store_->database()); }

    /// Runs the actions and compares exit and answers with what is expected of them.
    void verifyRun(const QStringList& actions, const QList<QJsonObject>& expected) {
        const DayCloseEnd end = runDayClose(store_->folder(), actions);
        QCOMPARE(end.errors, QString());
        QVERIFY(!end.crashed);
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers.size(), expected.size());
        for (qsizetype index = 0; index < expected.size(); ++index)
            QCOMPARE(shown(withoutSeconds(end.answers[index])), shown(expected[index]));
    }

    /// A run that refuses to begin: status 2, a sentence, and a store as it was.
    void verifyRefused(const QStringList& actions, const QString& sentence) {
        const QByteArray before = contentOf(store_->path());
        const DayCloseEnd end = runDayClose(store_->folder(), actions);
        QVERIFY(!end.crashed);
        QCOMPARE(end.status, 2);
        QCOMPARE(end.answers, QList<QJsonObject>());
        QCOMPARE(end.errors, u"day_close: "_s + sentence + u'\n');
        QVERIFY(contentOf(store_->path()) == before);
    }

  private Q_SLOTS:
    void init() {
        store_ = std::make_unique<TestStore>();
        twin_ = std::make_unique<Twin>();
        addPeople(store_->database());
        file_ = store_->writePunchFile(u"20010305.txt"_s, dayFile());
        action_ = u"import="_s + file_;
    }

    void anImportDoesAndTellsWhatTheReadButtonDoes() {
        const QJsonObject expected = twin_->import(action_, file_);
        QVERIFY(expected[u"finished"_s].toBool() && expected[u"statements"_s].toInteger() > 0);
        QCOMPARE(expected[u"rows"_s].toObject(), counts(6, 6, 2, 2, 2, 2, 1));
        verifyRun({action_}, {expected});
        QCOMPARE(rows(), twin_->rows());
    }

    void severalActionsRunInOneProcessInTheirOrder() {
        const QStringList actions{action_, u"recalc=2001/3/5"_s, u"reopen"_s, action_ + u",replace=no"_s};
        const QList<QJsonObject> expected{twin_->import(actions[0], file_),
                                          twin_->recalculate(actions[1], Day), twin_->reopen(),
                                          twin_->import(actions[3], file_, false)};
        verifyRun(actions, expected);
        QCOMPARE(rows(), twin_->rows());
    }

    void whetherTheDayIsReplacedIsYesUnlessTheActionSaysNo_data() {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("replaced");
        QTest::newRow("nothing said") << QString() << true;
        QTest::newRow("yes") << u",replace=yes"_s << true;
        QTest::newRow("no") << u",replace=no"_s << false;
    }
    void whetherTheDayIsReplacedIsYesUnlessTheActionSaysNo() {
        QFETCH(QString, suffix);
        QFETCH(bool, replaced);
        const QString action = action_ + suffix;
        // The first time the day is new: no question is asked.
        verifyRun({action}, {twin_->import(action, file_, replaced)});
        const QStringList first = rowsOf(store_->database(), u"Atte01"_s);
        QCOMPARE(first.size(), 6);
        store_->writePunchFile(u"20010305.txt"_s, punchLine("00002", Day, QTime(7, 55)));
        verifyRun({action}, {twin_->import(action, file_, replaced)});
        const QStringList second{u"00002|2001-03-05|07:55:00|255|001"_s};
        QCOMPARE(rowsOf(store_->database(), u"Atte01"_s), replaced ? second : first);
        QCOMPARE(rows(), twin_->rows());
    }

    void aRecalculationTakesItsDayInAnyFormOfADate_data() {
        QTest::addColumn<QString>("date");
        QTest::newRow("strokes, single digits") << u"2001/3/5"_s;
        QTest::newRow("strokes, two digits") << u"2001/03/05"_s;
        QTest::newRow("hyphens") << u"2001-03-05"_s;
        QTest::newRow("a month in letters") << u"2001-Mar-05"_s;
    }
    void aRecalculationTakesItsDayInAnyFormOfADate() {
        QFETCH(QString, date);
        const QString action = u"recalc="_s + date;
        verifyRun({action_}, {twin_->import(action_, file_)});
        for (Database* database : {&store_->database(), &twin_->database()})
            addWriteOff(*database, u"00002"_s, Day, u"01"_s, u"01"_s, u"01"_s, u"01"_s);
        const QJsonObject expected = twin_->recalculate(action, Day);
        QCOMPARE(expected[u"rows"_s].toObject(), counts(6, 6, 2, 2, 1, 2, 1));
        verifyRun({action}, {expected});
        QCOMPARE(rows(), twin_->rows());
    }

    void aDashReadsActionsAndAnswersEachBeforeTheNext() {
        DayCloseProcess process(store_->folder());
        QCOMPARE(shown(withoutSeconds(process.ask(action_))), shown(twin_->import(action_, file_)));
        // What happens to the store between two lines is seen by the second.
        for (Database* database : {&store_->database(), &twin_->database()})
            addLeaveDay(*database, u"00002"_s, Day, u"01"_s, QTime(8, 0), QTime(17, 0));
        const QString recalculation = u"recalc=2001/3/5"_s;
        QCOMPARE(shown(withoutSeconds(process.ask(recalculation))),
                 shown(twin_->recalculate(recalculation, Day)));
        QCOMPARE(rowsOfSelection(store_->database(), u"Select EmpNo from Atte03"_s), QStringList{u"00001"_s});
        const DayCloseEnd end = process.end();
        QVERIFY(!end.crashed);
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers, QList<QJsonObject>());
        QCOMPARE(end.errors, QString());
        QCOMPARE(rows(), twin_->rows());
    }

    void linesThatComeTogetherAreAnsweredInOrderAndEmptyOnesNotAtAll() {
        DayCloseProcess process(store_->folder());
        process.send(action_ + u"\n\n  \nrecalc=2001/3/5\r\nnonsense\nreopen"_s);
        QCOMPARE(shown(withoutSeconds(process.answer())), shown(twin_->import(action_, file_)));
        QCOMPARE(shown(withoutSeconds(process.answer())),
                 shown(twin_->recalculate(u"recalc=2001/3/5"_s, Day)));
        QCOMPARE(
            shown(process.answer()),
            shown({{u"action"_s, u"nonsense"_s}, {u"finished"_s, false}, {u"why"_s, u"not an action"_s}}));
        QCOMPARE(shown(withoutSeconds(process.answer())), shown(twin_->reopen()));
        const DayCloseEnd end = process.end();
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers, QList<QJsonObject>());
        QCOMPARE(rows(), twin_->rows());
    }

    void nothingIsSaidWhereNoActionComes() {
        const DayCloseEnd end = DayCloseProcess(store_->folder()).end();
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers, QList<QJsonObject>());
        QCOMPARE(end.errors, QString());
    }

    void reopeningForgetsThatARecalculationWasDone_data() {
        QTest::addColumn<bool>("reopened");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QStringList>("exceptions");
        // An import after a recalculation puts the new state in place of the old, one without does not.
        QTest::newRow("the window stays open") << false << u"00002|True|False"_s << QStringList{u"00001"_s};
        QTest::newRow("the window is opened again")
            << true << u"00002|False|True"_s << QStringList{u"00001"_s, u"00002"_s};
    }
    void reopeningForgetsThatARecalculationWasDone() {
        QFETCH(bool, reopened);
        QFETCH(QString, result);
        DayCloseProcess process(store_->folder());
        QVERIFY(process.ask(action_)[u"finished"_s].toBool());
        QVERIFY(process.ask(u"recalc=2001/3/6"_s)[u"finished"_s].toBool());
        if (reopened)
            QVERIFY(process.ask(u"reopen"_s)[u"finished"_s].toBool());
        addLeaveDay(store_->database(), u"00002"_s, Day, u"01"_s, QTime(8, 0), QTime(17, 0));
        QVERIFY(process.ask(action_ + u",replace=no"_s)[u"finished"_s].toBool());
        QCOMPARE(process.end().status, 0);
        QCOMPARE(
            rowsOfSelection(store_->database(), u"Select EmpNo,FH1,Expt from Atte02 Where EmpNo = '00002'"_s),
            QStringList{result});
        QTEST(rowsOfSelection(store_->database(), u"Select EmpNo from Atte03"_s), "exceptions");
    }

    void anActionThatEndsSilentlyIsToldAndIsNoFailureOfTheProgram_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("error");
        QTest::newRow("a file name that is no day") << u"20010230.txt"_s << dayFile() << error::TypeMismatch;
        QTest::newRow("a line whose date is none") << u"20010305.txt"_s << dayFile() + "0000007000\n"
                                                   << error::Syntax;
        QTest::newRow("two overtime swipes of the same second")
            << u"20010305.txt"_s << dayFile() + punchLine("00001", Day, QTime(21, 0), "081", "07", "002")
            << error::NoCurrentRecord;
        QTest::newRow("another answer than yes or no")
            << u"20010305.txt,replace=maybe"_s << dayFile() << error::TypeMismatch;
    }
    void anActionThatEndsSilentlyIsToldAndIsNoFailureOfTheProgram() {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        const QString file = store_->writePunchFile(name, content);
        const QString action = u"import="_s + file;
        const QJsonObject expected = twin_->import(action, file);
        QVERIFY(!expected[u"finished"_s].toBool());
        QTEST(expected[u"error"_s].toInt(), "error");
        verifyRun({action, u"reopen"_s}, {expected, twin_->reopen()});
        QCOMPARE(rows(), twin_->rows());
    }

    void aFileThatIsNotThereIsToldAfterTheDayWasCleared() {
        const QString missing = store_->folder() + u"/gone/20010305.txt"_s;
        const QString action = u"import="_s + missing;
        const QList<QJsonObject> expected{twin_->import(action_, file_), twin_->import(action, missing)};
        QCOMPARE(expected[1][u"error"_s].toInt(), error::FileNotFound);
        QCOMPARE(expected[1][u"rows"_s].toObject(), counts(0, 0, 0, 0, 0, 0, 0));
        verifyRun({action_, action}, expected);
        QCOMPARE(rows(), twin_->rows());
    }

    void aFilesNameMayHoldWhatTheActionsUseThemselves_data() {
        QTest::addColumn<QString>("folder");
        QTest::newRow("blanks and commas") << u"a, b ,c"_s;
        QTest::newRow("an answer in the middle") << u"x,replace=no"_s;
        QTest::newRow("an equals sign and quotes") << u"a=b 'c' \"d\""_s;
        QTest::newRow("Han characters") << u"差勤 打卡"_s;
        QTest::newRow("a blank in front") << u" punches"_s;
    }
    void aFilesNameMayHoldWhatTheActionsUseThemselves() {
        QFETCH(QString, folder);
        QVERIFY(QDir(store_->punchFolder()).mkpath(folder));
        const QString file = store_->writePunchFile(folder + u"/20010305.txt"_s, dayFile());
        const QString action = u"import="_s + file;
        verifyRun({action}, {twin_->import(action, file)});
        // The same in a line of standard input, with the answer told.
        DayCloseProcess process(store_->folder());
        const QString again = action + u",replace=yes"_s;
        QCOMPARE(shown(withoutSeconds(process.ask(again))), shown(twin_->import(again, file)));
        QCOMPARE(process.end().status, 0);
        QCOMPARE(rows(), twin_->rows());
    }

    void aNameWithoutAFolderIsLookedForInThePunchFolder() {
        const QString action = u"import=20010305.txt"_s;
        verifyRun({action}, {twin_->import(action, file_)});
        QCOMPARE(rows(), twin_->rows());
    }

    void whatIsNoActionIsRefusedBeforeAnyIsRun_data() {
        QTest::addColumn<QString>("action");
        for (const char* action : {"export=20010305.txt", "import", "import=", "import=,replace=no", "recalc",
                                   "recalc=", "recalc=2001/2/30", "recalc=20010305", "recalc=2001/3/5 08:00",
                                   "recalc=08:00", "Reopen", "reopen ", "-", ""})
            QTest::addRow("\"%s\"", action) << QString::fromLatin1(action);
    }
    void whatIsNoActionIsRefusedBeforeAnyIsRun() {
        QFETCH(QString, action);
        verifyRefused({action_, action}, u"not an action: "_s + action);
    }

    void actionsAreNeeded() {
        verifyRefused({}, u"DIR and at least one action, or -, are needed: import=FILE, "
                          "import=FILE,replace=no, recalc=DATE, reopen"_s);
    }

    void aFolderWithoutAStoreIsToldAndStaysAsItIs() {
        const QTemporaryDir folder;
        for (const QStringList& actions : {QStringList{action_}, QStringList{u"-"_s}}) {
            const DayCloseEnd end = runDayClose(folder.path(), actions);
            QVERIFY(!end.crashed);
            QCOMPARE(end.status, 2);
            QCOMPARE(end.answers, QList<QJsonObject>());
            QCOMPARE(
                end.errors,
                u"day_close: 3024: 找不到資料庫檔案 (%1/DB/Pontrel.mdb: No such file or directory)\n"_s.arg(
                    folder.path()));
            QVERIFY(QDir(folder.path()).isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(DayCloseTest)
#include "DayCloseTest.moc"
