#include "store/SafetyCopy.h"

#include "store/Clock.h"
#include "support/Dump.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const auto ToTheEnd = [] { return true; };
const QString DayName = u"Pontrel-20261122-093000-day.mdb"_s;

QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

QStringList namesOf(const QList<SafetyCopy>& copies) {
    QStringList names;
    for (const SafetyCopy& copy : copies)
        names += copy.name();
    return names;
}

SafetyCopy copyNamed(const QString& name) {
    const auto copy = SafetyCopy::ofName(name);
    if (!copy)
        qFatal("%s names no copy", qUtf8Printable(name));
    return *copy;
}

mode_t modeOf(const QString& path) {
    struct stat state {};
    return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? state.st_mode & 07777 : 0;
}

QStringList titlesOf(const QString& store) {
    Database database(store);
    return rowsOf(database, u"Base01"_s);
}

} // namespace

class SafetyCopyTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        moment_ = QDateTime(QDate(2026, 11, 22), QTime(9, 30));
        clock::setSource([this] { return moment_; });
    }
    void cleanup() { clock::setSource({}); }

    void aCopyGetsItsNameWhenItHasBeenLookedThrough();
    void aCopyHoldsWhatWasCommittedWhenItWasMade();
    void aCopyAtOnceIsMadeInOneStep();
    void aSecondCopyOfTheSameSecondHasItsOwnName();
    void aNewCopyIsTheNewestOfItsDay_data();
    void aNewCopyIsTheNewestOfItsDay();
    void theDaysCopyIsKnownByItsName();
    void whatOthersHaveLaidIntoTheFolderStays();
    void whatAKilledProgramHasLeftGoesOrIsFinished();
    void whatAnotherProcessIsWorkingOnIsLeftToIt();
    void aDamagedCopyGetsNoNameAndTakesNoneAway();
    void aCopyOfAnotherProgramsFileGetsNoName();
    void aLookThatWasStoppedIsTakenUpAgain();
    void aFolderElsewhereKeepsItsMode();
    void aFolderThatCannotBeMadeIsTold();
    void aStoreThatCannotBeReadIsTold();
    void aNewCopyStaysThoughAWrongClockMadeItTheOldest();
    void aCopyOfAStoreWithAWriteCutOffHoldsWhatWasBefore();
    void theMarksOfTheStoreAreForgottenInTheCopy();

  private:
    /// Makes a copy from its bytes to its name.
    QString make(const TestStore& store, CopyReason reason, CopyPace pace = CopyPace::AtOnce) {
        const CopyOutcome outcome = copyBytes(store.path(), reason, pace, ToTheEnd);
        if (!outcome.copy)
            return outcome.finding.technical;
        const StoreFinding finding = finishCopy(store.path(), *outcome.copy, ToTheEnd);
        return finding.kind == StoreFinding::Kind::Sound ? outcome.copy->name() : finding.technical;
    }

    QDateTime moment_;
};

void SafetyCopyTest::aCopyGetsItsNameWhenItHasBeenLookedThrough() {
    const TestStore store;
    const QByteArray before = contentOf(store.path());
    const QString folder = copyFolderOf(store.path());
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY2(outcome.copy, qPrintable(outcome.finding.technical));
    QCOMPARE(outcome.copy->name(), DayName);
    QCOMPARE(namesIn(folder), QStringList{u".unchecked-"_s + DayName});
    QCOMPARE(safetyCopiesOf(store.path()), QList<SafetyCopy>());
    QCOMPARE(namesOf(uncheckedCopiesOf(store.path())), QStringList{DayName});

    const StoreFinding finding = finishCopy(store.path(), *outcome.copy, ToTheEnd);
    QVERIFY2(finding.kind == StoreFinding::Kind::Sound, qPrintable(finding.technical));
    QCOMPARE(namesIn(folder), QStringList{DayName});
    QCOMPARE(namesOf(safetyCopiesOf(store.path())), QStringList{DayName});
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>());
    QCOMPARE(modeOf(folder), mode_t{0700});
    QCOMPARE(modeOf(folder + u'/' + DayName), mode_t{0600});
    QVERIFY(contentOf(store.path()) == before);
    QCOMPARE(namesIn(store.folder() + u"/DB"_s), QStringList({u"Pontrel.mdb"_s, u"backup"_s}));
}

void SafetyCopyTest::aCopyHoldsWhatWasCommittedWhenItWasMade() {
    TestStore store;
    store.database().execute(u"insert into Base01(TitleNo,Title) values('1','科員')"_s);
    const QString copy = copyFolderOf(store.path()) + u'/' + make(store, CopyReason::Purge);
    store.database().execute(u"delete * from Base01"_s);
    QCOMPARE(titlesOf(copy), QStringList{u"1|科員"_s});
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList());
    QCOMPARE(QFileInfo(copy).fileName(), u"Pontrel-20261122-093000-purge.mdb"_s);
}

void SafetyCopyTest::aCopyAtOnceIsMadeInOneStep() {
    TestStore store;
    {
        Stage stage(store.database());
        for (int row = 0; row < 20'000; ++row)
            store.database().execute(u"insert into Holi02(SuitNo) values('%1')"_s.arg(row, 100));
        stage.finish();
    }
    const auto stepsOf = [&store](CopyPace pace) {
        int steps = 0;
        const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Hand, pace, [&steps] {
            ++steps;
            return true;
        });
        return outcome.copy ? steps : -1;
    };
    QCOMPARE(stepsOf(CopyPace::AtOnce), 1);
    QVERIFY(stepsOf(CopyPace::InPieces) > 1);
}

void SafetyCopyTest::aSecondCopyOfTheSameSecondHasItsOwnName() {
    const TestStore store;
    QCOMPARE(make(store, CopyReason::Hand), u"Pontrel-20261122-093000-hand.mdb"_s);
    QCOMPARE(make(store, CopyReason::Hand, CopyPace::InPieces), u"Pontrel-20261122-093001-hand.mdb"_s);
    QCOMPARE(make(store, CopyReason::Day), u"Pontrel-20261122-093002-day.mdb"_s);
    QCOMPARE(namesOf(safetyCopiesOf(store.path())),
             QStringList({u"Pontrel-20261122-093002-day.mdb"_s, u"Pontrel-20261122-093001-hand.mdb"_s,
                          u"Pontrel-20261122-093000-hand.mdb"_s}));
}

void SafetyCopyTest::aNewCopyIsTheNewestOfItsDay_data() {
    QTest::addColumn<QTime>("begin");
    QTest::addColumn<int>("secondsBetween");
    QTest::addColumn<QString>("newest");
    QTest::newRow("all in one second") << QTime(9, 30) << 0 << u"Pontrel-20261122-093007-replace.mdb"_s;
    QTest::newRow("the clock goes back") << QTime(9, 30) << -900 << u"Pontrel-20261122-093007-replace.mdb"_s;
    QTest::newRow("the clock goes on") << QTime(9, 30) << 2 << u"Pontrel-20261122-093014-replace.mdb"_s;
    QTest::newRow("over midnight") << QTime(23, 59, 58) << 0 << u"Pontrel-20261123-000005-replace.mdb"_s;
}

/// Thinning takes copies made before actions away while more are made; none of the freed names comes again.
void SafetyCopyTest::aNewCopyIsTheNewestOfItsDay() {
    QFETCH(const QTime, begin);
    QFETCH(const int, secondsBetween);
    QFETCH(const QString, newest);
    TestStore store;
    moment_ = QDateTime(moment_.date(), begin);
    for (int number = 0; number < 8; ++number, moment_ = moment_.addSecs(secondsBetween)) {
        store.database().execute(u"insert into Base01(TitleNo) values('%1')"_s.arg(number));
        const QString made = make(store, CopyReason::Replace);
        QCOMPARE(namesOf(safetyCopiesOf(store.path())).constFirst(), made);
        QCOMPARE(titlesOf(copyFolderOf(store.path()) + u'/' + made).size(), number + 1);
    }
    const QStringList left = namesOf(safetyCopiesOf(store.path()));
    QCOMPARE(left.constFirst(), newest);
    for (int number = 0; number < 3; ++number)
        QCOMPARE(titlesOf(copyFolderOf(store.path()) + u'/' + left[number]).size(), 8 - number);
}

void SafetyCopyTest::theDaysCopyIsKnownByItsName() {
    const TestStore store;
    const QDate day = moment_.date();
    QVERIFY(!hasCopyOfDay(store.path(), day));
    make(store, CopyReason::Purge);
    QVERIFY(!hasCopyOfDay(store.path(), day));
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY(outcome.copy);
    QVERIFY(hasCopyOfDay(store.path(), day));
    (void)finishCopy(store.path(), *outcome.copy, ToTheEnd);
    QVERIFY(hasCopyOfDay(store.path(), day));
    QVERIFY(!hasCopyOfDay(store.path(), day.addDays(1)));
}

void SafetyCopyTest::whatOthersHaveLaidIntoTheFolderStays() {
    const TestStore store;
    const QString folder = copyFolderOf(store.path());
    QVERIFY(QDir().mkdir(folder));
    const QStringList strange{u".copying-notes"_s, u".unchecked-Pontrel-20261122-093000-week.mdb"_s,
                              u"Pontrel-20200101-080000-day.mdb.old"_s, u"pontrel-20200101-080000-day.mdb"_s,
                              u"notes.txt"_s};
    for (const QString& name : strange)
        writeContent(folder + u'/' + name, "mine");
    // Of the names of copies, but none.
    QVERIFY(QDir().mkdir(folder + u"/Pontrel-20190101-080000-day.mdb"_s));
    QVERIFY(QFile::link(folder + u"/notes.txt"_s, folder + u"/Pontrel-20180101-080000-day.mdb"_s));
    // A copy on each of many days: most of them go again.
    const QStringList others = namesIn(folder);
    for (int day = 0; day < 60; ++day, moment_ = moment_.addDays(1))
        QVERIFY(SafetyCopy::ofName(make(store, CopyReason::Day)));
    QStringList left = namesIn(folder);
    for (const SafetyCopy& copy : safetyCopiesOf(store.path()))
        QVERIFY(left.removeOne(copy.name()));
    QCOMPARE(left, others);
    for (const QString& name : strange)
        QCOMPARE(contentOf(folder + u'/' + name), QByteArray("mine"));
    // Sixty days from a Sunday on, to 2027-01-20: seven days, three weeks more, December's and November's
    // last.
    QCOMPARE(safetyCopiesOf(store.path()).size(), 7 + 3 + 2);
}

void SafetyCopyTest::whatAKilledProgramHasLeftGoesOrIsFinished() {
    const TestStore store;
    const QString folder = copyFolderOf(store.path());
    make(store, CopyReason::Hand);
    writeContent(folder + u"/.copying-Pontrel-20261121-080000-day.mdb"_s, "half of it");
    QVERIFY(QFile::rename(folder + u"/Pontrel-20261122-093000-hand.mdb"_s,
                          folder + u"/.unchecked-Pontrel-20261122-093000-hand.mdb"_s));
    const QString dayName = u"Pontrel-20261122-093001-day.mdb"_s;
    QCOMPARE(make(store, CopyReason::Day), dayName);
    QCOMPARE(namesIn(folder), QStringList({u".unchecked-Pontrel-20261122-093000-hand.mdb"_s, dayName}));
    for (const SafetyCopy& copy : uncheckedCopiesOf(store.path()))
        QVERIFY(finishCopy(store.path(), copy, ToTheEnd).kind == StoreFinding::Kind::Sound);
    QCOMPARE(namesIn(folder), QStringList({u"Pontrel-20261122-093000-hand.mdb"_s, dayName}));
}

void SafetyCopyTest::whatAnotherProcessIsWorkingOnIsLeftToIt() {
    const TestStore store;
    const QString folder = copyFolderOf(store.path());
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Hand, CopyPace::AtOnce, ToTheEnd);
    QVERIFY(outcome.copy);
    const QString unchecked = folder + u"/.unchecked-"_s + outcome.copy->name();
    const QString copying = folder + u"/.copying-Pontrel-20261121-080000-day.mdb"_s;
    writeContent(copying, "half of it");
    const auto hold = [](const QString& path) {
        const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
        return descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 ? descriptor : -1;
    };
    const int first = hold(unchecked);
    const int second = hold(copying);
    QVERIFY(first >= 0 && second >= 0);
    QVERIFY(finishCopy(store.path(), *outcome.copy, ToTheEnd).kind == StoreFinding::Kind::AtWork);
    QCOMPARE(make(store, CopyReason::Day), u"Pontrel-20261122-093001-day.mdb"_s);
    QVERIFY(QFile::exists(unchecked) && QFile::exists(copying));
    ::close(first);
    ::close(second);
    QVERIFY(finishCopy(store.path(), *outcome.copy, ToTheEnd).kind == StoreFinding::Kind::Sound);
    // Whoever comes behind the other finds it gone.
    QVERIFY(finishCopy(store.path(), *outcome.copy, ToTheEnd).kind == StoreFinding::Kind::NotLookedAt);
}

void SafetyCopyTest::aDamagedCopyGetsNoNameAndTakesNoneAway() {
    TestStore store;
    QCOMPARE(make(store, CopyReason::Hand), u"Pontrel-20261122-093000-hand.mdb"_s);
    {
        Stage stage(store.database());
        for (int row = 0; row < 3000; ++row)
            store.database().execute(u"insert into Base02(UnitNo,Unit) values('%1','%2')"_s.arg(
                QString::number(row), QString(100, u'x')));
        stage.finish();
    }
    QFile file(store.path());
    QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QVERIFY(file.seek(file.size() - 100'000) && file.write(QByteArray(50'000, '\xa5')) == 50'000);
    file.close();
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY(outcome.copy);
    const StoreFinding finding = finishCopy(store.path(), *outcome.copy, ToTheEnd);
    QVERIFY(finding.kind == StoreFinding::Kind::Damaged);
    QVERIFY(!finding.technical.isEmpty());
    QCOMPARE(namesIn(copyFolderOf(store.path())), QStringList{u"Pontrel-20261122-093000-hand.mdb"_s});
}

void SafetyCopyTest::aCopyOfAnotherProgramsFileGetsNoName() {
    const TestStore store;
    const QString folder = copyFolderOf(store.path());
    QVERIFY(QDir().mkdir(folder));
    constexpr int Version = 60; // where the file carries it, and the mark of its program
    constexpr int Program = 68;
    for (const auto& [place, mark] : {std::pair(Program, '\0'), {Version, '\0'}, {Version, '\1'}}) {
        QByteArray foreign = contentOf(store.path());
        foreign.replace(place, 4, QByteArray(4, mark));
        writeContent(folder + u"/.unchecked-"_s + DayName, foreign);
        const StoreFinding finding = finishCopy(store.path(), copyNamed(DayName), ToTheEnd);
        QVERIFY(finding.kind == StoreFinding::Kind::Damaged);
        QCOMPARE(finding.technical, u"not a store of this program"_s);
        QCOMPARE(namesIn(folder), QStringList());
    }
}

void SafetyCopyTest::aLookThatWasStoppedIsTakenUpAgain() {
    TestStore store;
    {
        Stage stage(store.database());
        for (int row = 0; row < 20'000; ++row)
            store.database().execute(u"insert into Holi02(SuitNo) values('%1')"_s.arg(row));
        stage.finish();
    }
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Purge, CopyPace::InPieces, ToTheEnd);
    QVERIFY(outcome.copy);
    QVERIFY(finishCopy(store.path(), *outcome.copy, [] { return false; }).kind ==
            StoreFinding::Kind::NotLookedAt);
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>{*outcome.copy});
    QVERIFY(finishCopy(store.path(), *outcome.copy, ToTheEnd).kind == StoreFinding::Kind::Sound);
    QCOMPARE(safetyCopiesOf(store.path()), QList<SafetyCopy>{*outcome.copy});
}

void SafetyCopyTest::aFolderElsewhereKeepsItsMode() {
    const TestStore store;
    const QString shared = store.folder() + u"/shared"_s;
    const QString folder = copyFolderOf(store.path());
    QVERIFY(QDir().mkdir(shared));
    QCOMPARE(::chmod(QFile::encodeName(shared).constData(), 0775), 0);
    QVERIFY(QFile::link(shared, folder));
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY2(outcome.copy, qPrintable(outcome.finding.technical));
    QVERIFY(finishCopy(store.path(), *outcome.copy, ToTheEnd).kind == StoreFinding::Kind::Sound);
    QCOMPARE(modeOf(shared), mode_t{0775});
    QCOMPARE(namesIn(shared), QStringList{DayName});
    QCOMPARE(modeOf(shared + u'/' + DayName), mode_t{0600});
    QVERIFY(QFileInfo(folder).isSymLink());
    // A folder of the program's own is closed again.
    QVERIFY(QFile::remove(folder));
    QVERIFY(QDir().mkdir(folder));
    QCOMPARE(::chmod(QFile::encodeName(folder).constData(), 0775), 0);
    QVERIFY(copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd).copy);
    QCOMPARE(modeOf(folder), mode_t{0700});
}

void SafetyCopyTest::aFolderThatCannotBeMadeIsTold() {
    const TestStore store;
    const QString folder = copyFolderOf(store.path());
    writeContent(folder, "a file in its place");
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY(!outcome.copy);
    QVERIFY(outcome.finding.kind == StoreFinding::Kind::NotLookedAt);
    QCOMPARE(outcome.finding.technical, u"no safety copy: the folder %1 cannot be made"_s.arg(folder));
    QCOMPARE(contentOf(folder), QByteArray("a file in its place"));
}

void SafetyCopyTest::aStoreThatCannotBeReadIsTold() {
    const TestStore store;
    const QString path = store.path() + u"2"_s;
    const CopyOutcome missing = copyBytes(path, CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY(!missing.copy && missing.finding.kind == StoreFinding::Kind::NotLookedAt);
    writeContent(path, "no store at all\n");
    const CopyOutcome none = copyBytes(path, CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY(!none.copy && none.finding.kind == StoreFinding::Kind::Damaged);
    QCOMPARE(contentOf(path), QByteArray("no store at all\n"));
    QCOMPARE(namesIn(copyFolderOf(path)), QStringList());
}

void SafetyCopyTest::aNewCopyStaysThoughAWrongClockMadeItTheOldest() {
    const TestStore store;
    for (int month = 0; month < 30; ++month, moment_ = moment_.addMonths(1))
        QVERIFY(SafetyCopy::ofName(make(store, CopyReason::Day)));
    const qsizetype before = safetyCopiesOf(store.path()).size();
    moment_ = QDateTime(QDate(1970, 1, 1), QTime(0, 0, 7));
    QCOMPARE(make(store, CopyReason::Purge), u"Pontrel-19700101-000007-purge.mdb"_s);
    QCOMPARE(safetyCopiesOf(store.path()).size(), before + 1);
    QCOMPARE(safetyCopiesOf(store.path()).constLast().name(), u"Pontrel-19700101-000007-purge.mdb"_s);
}

void SafetyCopyTest::aCopyOfAStoreWithAWriteCutOffHoldsWhatWasBefore() {
    TestStore store;
    store.database().execute(u"insert into Base01(TitleNo,Title) values('1','科員')"_s);
    // What a kill leaves: pages of a write in the file, and the journal that undoes them.
    const TestStore other;
    QByteArray half;
    QByteArray journal;
    {
        // A cache too small for the change makes the engine write pages before the end.
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        engine.exec("PRAGMA cache_size = 2; BEGIN; DELETE FROM Base01;"
                    "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                    "INSERT INTO AtteTemp(EmpNo) SELECT i FROM n");
        half = contentOf(store.path());
        journal = contentOf(store.path() + u"-journal"_s);
    }
    QVERIFY(journal.size() > 1000);
    QVERIFY(half != contentOf(store.path())); // which the end of the connection has undone
    writeContent(other.path(), half);
    writeContent(other.path() + u"-journal"_s, journal);
    const QString copy = copyFolderOf(other.path()) + u'/' + make(other, CopyReason::Hand);
    QCOMPARE(titlesOf(copy), QStringList{u"1|科員"_s});
    QVERIFY(!QFile::exists(other.path() + u"-journal"_s));
    QCOMPARE(titlesOf(other.path()), QStringList{u"1|科員"_s});
}

void SafetyCopyTest::theMarksOfTheStoreAreForgottenInTheCopy() {
    TestStore store;
    store.database().execute(u"insert into Base01(TitleNo) values('1')"_s);
    const auto marksIn = [](const QString& path) {
        SQLite::Database engine(path.toStdString(), SQLite::OPEN_READONLY);
        return engine.execAndGet("SELECT count(*) FROM CopyMark").getInt();
    };
    QVERIFY(marksIn(store.path()) > 0);
    const QString copy = copyFolderOf(store.path()) + u'/' + make(store, CopyReason::Hand);
    QCOMPARE(marksIn(copy), 0);
    QVERIFY(marksIn(store.path()) > 0);
}

QTEST_GUILESS_MAIN(SafetyCopyTest)
#include "SafetyCopyTest.moc"
