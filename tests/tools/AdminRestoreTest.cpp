#include "rules/attendance/DailyCalculation.h"
#include "store/Clock.h"
#include "store/SafetyCopy.h"
#include "store/StorePath.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"
#include "tools/AdminProgram.h"

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
const QDate Monday(2001, 3, 5);
constexpr int Employees = 30;

/// The folder DB but for what programs hold locked.
QStringList namesIn(const QString& folder) {
    QStringList names =
        QDir(folder + u"/DB"_s).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    names.removeIf([](const QString& name) { return name.startsWith(u".running-"_s); });
    return names;
}

/// The one store that a restore has kept.
QString keptIn(const QString& folder) {
    const QStringList kept = namesIn(folder).filter(u"-replaced.mdb"_s);
    return kept.isEmpty() ? QString() : folder + u"/DB/"_s + kept.constFirst();
}

QString makeCopy(const QString& store, CopyReason reason) {
    const CopyOutcome outcome = copyBytes(store, reason, CopyPace::AtOnce, ToTheEnd);
    if (!outcome.copy || finishCopy(store, *outcome.copy, ToTheEnd).kind != StoreFinding::Kind::Sound)
        qFatal("no copy: %s", qUtf8Printable(outcome.finding.technical));
    return outcome.copy->name();
}

QStringList titlesOf(const QString& store) {
    Database database(store);
    return rowsOf(database, u"Base01"_s);
}

QString codeOf(int employee) {
    return QString::number(10001 + employee);
}

void addOrganisation(Database& database) {
    addSlot(database, u"A"_s);
    for (int employee = 0; employee < Employees; ++employee) {
        addEmployee(database, codeOf(employee));
        for (int day = 0; day < 5; ++day)
            addRoster(database, codeOf(employee), Monday.addDays(day), u"A"_s);
    }
}

/// The day's punch file: some come late, some forget their last punch.
QString writeDay(const TestStore& store, int number) {
    const QDate day = Monday.addDays(number);
    QByteArray lines;
    for (int employee = 0; employee < Employees; ++employee) {
        const QByteArray card = codeOf(employee).toLatin1();
        lines += punchLine(card, day, QTime(7, 40).addSecs(60 * ((employee * 7 + number * 11) % 60)));
        lines += punchLine(card, day, QTime(12, 5)) + punchLine(card, day, QTime(12, 55));
        if ((employee + number) % 4 != 0)
            lines += punchLine(card, day, QTime(17, 5));
    }
    return store.writePunchFile(day.toString(u"yyyyMMdd"_s) + u".txt"_s, lines);
}

/// A window that makes a copy before a day is replaced, as the program's does.
class CopyingHost : public RecordingHost<AttendanceHost> {
  public:
    explicit CopyingHost(const QString& store, const QString& file) : store_(store), file_(file) {}

    QString copy;

    [[nodiscard]] std::optional<QString> choosePunchFile(const QString&) override { return file_; }
    void beforeReplacingDay() override { copy = makeCopy(store_, CopyReason::Replace); }
    void showPunches(const QString&) override {}
    void refreshExceptions() override {}
    void showExceptions(const QString&) override {}

  private:
    QString store_;
    QString file_;
};

/// Reads the file and says which copy was made on the way, if any.
QString readFile(const QString& store, const QString& file) {
    Database database(store);
    CopyingHost host(store, file);
    DailyCalculation calculation(database, host);
    calculation.ReadPunchFile();
    if (!calculation.finished())
        qFatal("the import of %s has ended early", qUtf8Printable(file));
    return host.copy;
}

QStringList dump(const QString& store) {
    Database database(store);
    return dumpDailyTables(database);
}

} // namespace

class AdminRestoreTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aRestoreKeepsTheStoreBeside();
    void readingTheMissingDaysGivesWhatWouldHaveBeen();
    void aDayReplacedByMistakeIsAsItWas();
    void nothingIsRestoredWhileTheProgramRuns();
    void aDamagedCopyIsNotRestored();
    void aFileThatIsNoStoreIsNotRestored();
    void aWriteCutOffIsUndoneBeforeTheStoreIsKept();
    void aDamagedStoreIsKept();
    void aStoreThatIsGoneIsRestored();
    void aCopyFromElsewhereIsRestored();
    void theStoreItselfIsNoCopy();
    void whatAKilledRestoreHasLeftIsCleared();
};

void AdminRestoreTest::aRestoreKeepsTheStoreBeside() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}});
    const QString name = makeCopy(store.path(), CopyReason::Day);
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"2"}});
    const QByteArray before = contentOf(store.path());
    const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
    QCOMPARE(end.errors, QString());
    QCOMPARE(end.status, 0);
    const QString kept = keptIn(store.folder());
    QCOMPARE(end.output,
             u"Restored %1\nThe store that stood there is kept as %2\nRead the punch files of the "
             "days since then again.\n"_s.arg(copyFolderOf(store.path()) + u'/' + name, kept));
    QVERIFY(contentOf(kept) == before);
    QCOMPARE(titlesOf(store.path()), QStringList{u"1|null"_s});
    QCOMPARE(titlesOf(kept), QStringList({u"1|null"_s, u"2|null"_s}));
    QCOMPARE(namesIn(store.folder()), QStringList({QFileInfo(kept).fileName(), u"Pontrel.mdb"_s}));
    struct stat state {};
    QCOMPARE(::stat(QFile::encodeName(store.path()).constData(), &state), 0);
    QCOMPARE(state.st_mode & 07777, mode_t{0600});
    // The copy stays for another time.
    QCOMPARE(safetyCopiesOf(store.path()).size(), 1);
    QCOMPARE(titlesOf(copyFolderOf(store.path()) + u'/' + name), QStringList{u"1|null"_s});
}

void AdminRestoreTest::readingTheMissingDaysGivesWhatWouldHaveBeen() {
    TestStore store;
    addOrganisation(store.database());
    QStringList files;
    for (int day = 0; day < 5; ++day)
        files += writeDay(store, day);
    (void)readFile(store.path(), files[0]);
    (void)readFile(store.path(), files[1]);
    const QString name = makeCopy(store.path(), CopyReason::Day);
    for (int day = 2; day < 5; ++day)
        (void)readFile(store.path(), files[day]);
    const QStringList expected = dump(store.path());
    QVERIFY(expected.filter(u"Atte02: "_s).size() == 5 * Employees);
    QVERIFY(expected.filter(u"Atte03: "_s).size() > Employees);
    // The loss: nothing of the store is left.
    writeContent(store.path(), QByteArray(100'000, '\xa5'));
    const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
    QVERIFY2(end.status == 0, qPrintable(end.errors));
    for (int day = 2; day < 5; ++day)
        QCOMPARE(readFile(store.path(), files[day]), QString());
    QCOMPARE(dump(store.path()), expected);
}

void AdminRestoreTest::aDayReplacedByMistakeIsAsItWas() {
    TestStore store;
    addOrganisation(store.database());
    const QString monday = writeDay(store, 0);
    const QString tuesday = writeDay(store, 1);
    (void)readFile(store.path(), monday);
    (void)readFile(store.path(), tuesday);
    const QStringList expected = dump(store.path());
    // The same day again, from a file that the reader has cut off.
    writeContent(tuesday, contentOf(tuesday).left(70));
    const QString name = readFile(store.path(), tuesday);
    QVERIFY(!name.isEmpty());
    QVERIFY(dump(store.path()) != expected);
    const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
    QVERIFY2(end.status == 0, qPrintable(end.errors));
    QVERIFY(end.output.contains(
        u"\nThe leaving date 2038-01-01, which an import sets for its time, has been taken away.\n"_s));
    QCOMPARE(dump(store.path()), expected);
}

void AdminRestoreTest::nothingIsRestoredWhileTheProgramRuns() {
    TestStore store;
    const QString name = makeCopy(store.path(), CopyReason::Day);
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}});
    const QByteArray before = contentOf(store.path());
    // This user's program, and another one's.
    for (const unsigned user : {::getuid(), ::getuid() + 1}) {
        const int held = ::open(QFile::encodeName(runningLockIn(store.folder(), user)).constData(),
                                O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        QVERIFY(held >= 0 && ::flock(held, LOCK_EX | LOCK_NB) == 0);
        const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
        ::close(held);
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, u"The program runs in that folder. Close it first.\n"_s);
        QVERIFY(contentOf(store.path()) == before);
        QCOMPARE(namesIn(store.folder()), QStringList{u"Pontrel.mdb"_s});
    }
    QCOMPARE(admin(store.folder(), {u"restore"_s, name}).status, 0);
}

void AdminRestoreTest::aDamagedCopyIsNotRestored() {
    TestStore store;
    const QString name = makeCopy(store.path(), CopyReason::Day);
    const QString path = copyFolderOf(store.path()) + u'/' + name;
    QByteArray content = contentOf(path);
    content.replace(8192, 30'000, QByteArray(30'000, '\x5a'));
    writeContent(path, content);
    const QByteArray before = contentOf(store.path());
    const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
    QCOMPARE(end.status, 1);
    QVERIFY2(end.errors.startsWith(path + u" cannot be restored: "_s), qPrintable(end.errors));
    QVERIFY(contentOf(store.path()) == before);
    QCOMPARE(namesIn(store.folder()), QStringList{u"Pontrel.mdb"_s});
}

void AdminRestoreTest::aFileThatIsNoStoreIsNotRestored() {
    const TestStore store;
    const QByteArray before = contentOf(store.path());
    const QString other = store.folder() + u"/other.mdb"_s;
    {
        SQLite::Database engine(other.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        engine.exec("CREATE TABLE Base01(TitleNo TEXT)");
    }
    const AdminEnd foreign = admin(store.folder(), {u"restore"_s, other});
    QCOMPARE(foreign.status, 1);
    QCOMPARE(foreign.errors, other + u" cannot be restored: not a store of this program\n"_s);
    const AdminEnd missing = admin(store.folder(), {u"restore"_s, u"none.mdb"_s});
    QCOMPARE(missing.status, 1);
    QCOMPARE(missing.errors, u"There is no copy %1/none.mdb.\n"_s.arg(copyFolderOf(store.path())));
    QVERIFY(contentOf(store.path()) == before);
    QCOMPARE(namesIn(store.folder()), QStringList{u"Pontrel.mdb"_s});
}

void AdminRestoreTest::aWriteCutOffIsUndoneBeforeTheStoreIsKept() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}});
    const QString name = makeCopy(store.path(), CopyReason::Day);
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"2"}});
    QByteArray half;
    QByteArray journal;
    {
        // A cache too small for the change makes the engine write pages before the end.
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        engine.exec("PRAGMA cache_size = 2; BEGIN; UPDATE Base01 SET TitleNo = TitleNo || '9';"
                    "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                    "INSERT INTO AtteTemp(EmpNo) SELECT i FROM n");
        half = contentOf(store.path());
        journal = contentOf(store.path() + u"-journal"_s);
    }
    QVERIFY(journal.size() > 1000);
    writeContent(store.path(), half);
    writeContent(store.path() + u"-journal"_s, journal);
    const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
    QVERIFY2(end.status == 0, qPrintable(end.errors));
    const QString kept = keptIn(store.folder());
    QCOMPARE(namesIn(store.folder()), QStringList({QFileInfo(kept).fileName(), u"Pontrel.mdb"_s}));
    QCOMPARE(titlesOf(kept), QStringList({u"1|null"_s, u"2|null"_s}));
    QCOMPARE(titlesOf(store.path()), QStringList{u"1|null"_s});
}

void AdminRestoreTest::aDamagedStoreIsKept() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}});
    const QString name = makeCopy(store.path(), CopyReason::Day);
    writeContent(store.path(), "no store any more");
    writeContent(store.path() + u"-journal"_s, "of that store");
    const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
    QVERIFY2(end.status == 0, qPrintable(end.errors));
    const QString kept = keptIn(store.folder());
    QCOMPARE(contentOf(kept), QByteArray("no store any more"));
    QCOMPARE(titlesOf(store.path()), QStringList{u"1|null"_s});
    QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
}

void AdminRestoreTest::aStoreThatIsGoneIsRestored() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}});
    const QString name = makeCopy(store.path(), CopyReason::Day);
    QVERIFY(QFile::remove(store.path()));
    writeContent(store.path() + u"-journal"_s, "of a store that is gone");
    const AdminEnd end = admin(store.folder(), {u"restore"_s, name});
    QVERIFY2(end.status == 0, qPrintable(end.errors));
    QCOMPARE(titlesOf(store.path()), QStringList{u"1|null"_s});
    const QStringList journals = namesIn(store.folder()).filter(u"-journal"_s);
    QCOMPARE(journals.size(), 1);
    QVERIFY(journals[0].endsWith(u"-replaced.mdb-journal"_s));
    QCOMPARE(contentOf(store.folder() + u"/DB/"_s + journals[0]), QByteArray("of a store that is gone"));
}

void AdminRestoreTest::aCopyFromElsewhereIsRestored() {
    TestStore store;
    TestStore other;
    insertRow(other.database(), u"Base01"_s, {{u"TitleNo", u"7"}});
    QCOMPARE(admin(store.folder(), {u"restore"_s, other.path()}).status, 0);
    QCOMPARE(titlesOf(store.path()), QStringList{u"7|null"_s});
    QCOMPARE(titlesOf(other.path()), QStringList{u"7|null"_s});
}

void AdminRestoreTest::theStoreItselfIsNoCopy() {
    const TestStore store;
    const QByteArray before = contentOf(store.path());
    const AdminEnd end = admin(store.folder(), {u"restore"_s, store.path()});
    QCOMPARE(end.status, 1);
    QCOMPARE(end.errors, store.path() + u" is the store itself.\n"_s);
    QVERIFY(contentOf(store.path()) == before);
}

void AdminRestoreTest::whatAKilledRestoreHasLeftIsCleared() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}});
    const QString name = makeCopy(store.path(), CopyReason::Day);
    writeContent(store.folder() + u"/DB/.restoring"_s, "half of it");
    writeContent(store.folder() + u"/DB/.restoring-journal"_s, "of the half");
    QCOMPARE(admin(store.folder(), {u"restore"_s, name}).status, 0);
    QCOMPARE(titlesOf(store.path()), QStringList{u"1|null"_s});
    QCOMPARE(namesIn(store.folder()).size(), 2);
}

QTEST_GUILESS_MAIN(AdminRestoreTest)
#include "AdminRestoreTest.moc"
