#include "store/SafetyCopy.h"
#include "support/Dump.h"
#include "support/Patience.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <sqlite3.h>

#include <csignal>
#include <sys/wait.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// Rows of a page each: many of the pieces in which a store is copied.
void fill(const TestStore& store) {
    SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
    engine.exec("WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 8000) "
                "INSERT INTO Holi02(SuitNo) SELECT hex(zeroblob(1500)) || i FROM n");
}

/// Halts the process where it stands; false where it has ended.
bool halt(const QProcess& process) {
    const auto id = static_cast<pid_t>(process.processId());
    siginfo_t state{};
    return ::kill(id, SIGSTOP) == 0 &&
           ::waitid(P_PID, static_cast<id_t>(id), &state, WSTOPPED | WEXITED | WNOWAIT) == 0 &&
           state.si_code == CLD_STOPPED;
}

void letGoOn(const QProcess& process) {
    ::kill(static_cast<pid_t>(process.processId()), SIGCONT);
}

/// The process whenever somebody has to wait for it: it goes on, and is waited for.
int waitFor(void* process, int /*times*/) {
    letGoOn(*static_cast<const QProcess*>(process));
    QTest::qSleep(1);
    return 1;
}

} // namespace

/// pontrel-admin copies the store without holding up those who work with it.
class AdminPaceTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aWriterGetsItsTurnBeforeTheCopyEnds_data();
    void aWriterGetsItsTurnBeforeTheCopyEnds();
};

void AdminPaceTest::aWriterGetsItsTurnBeforeTheCopyEnds_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("a safety copy") << u"copy"_s << u"/DB/backup"_s << u".copying-*"_s;
    QTest::newRow("the copy that is looked through") << u"check"_s << u"/DB"_s << u".checking"_s;
}

/// The program is halted in the middle of its copy, whether or not it holds the store at that moment, until a
/// writer stands in line: who holds the store until the end keeps the writer waiting for that long.
void AdminPaceTest::aWriterGetsItsTurnBeforeTheCopyEnds() {
    QFETCH(const QString, command);
    QFETCH(const QString, folder);
    QFETCH(const QString, pattern);
    const TestStore store;
    fill(store);
    const qint64 whole = QFileInfo(store.path()).size();
    const auto copied = [&] {
        const QFileInfoList copies =
            QDir(store.folder() + folder).entryInfoList({pattern}, QDir::Files | QDir::Hidden);
        return copies.isEmpty() ? 0 : copies.constFirst().size();
    };
    QProcess process;
    const auto haltInTheMiddle = [&] {
        process.start(QStringLiteral(PONTREL_ADMIN), {store.folder(), command});
        while (process.state() != QProcess::NotRunning)
            if (const qint64 part = copied(); part > 0 && part <= whole / 2 && halt(process))
                return copied() <= whole / 2;
            else
                process.waitForFinished(1);
        return false;
    };
    QElapsedTimer hung;
    hung.start();
    while (!haltInTheMiddle()) {
        QVERIFY(hung.elapsed() < PatienceMs);
        letGoOn(process);
        QVERIFY(process.waitForFinished(PatienceMs));
    }

    SQLite::Database writer(store.path().toStdString(), SQLite::OPEN_READWRITE);
    sqlite3_busy_handler(writer.getHandle(), waitFor, &process);
    writer.exec("BEGIN EXCLUSIVE");
    const qint64 part = copied();
    writer.exec("INSERT INTO Base01(TitleNo) VALUES('1'); COMMIT");
    letGoOn(process);
    QVERIFY(process.waitForFinished(PatienceMs));
    QVERIFY2(part > 0 && part < whole, qPrintable(u"%1 of %2 bytes"_s.arg(part).arg(whole)));
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
    QCOMPARE(process.exitCode(), 0);
    // What has been written meanwhile is in the copy.
    for (const SafetyCopy& copy : safetyCopiesOf(store.path())) {
        Database database(copyFolderOf(store.path()) + u'/' + copy.name());
        QCOMPARE(rowsOf(database, u"Base01"_s), QStringList{u"1|null"_s});
    }
    QCOMPARE(safetyCopiesOf(store.path()).size(), command == u"copy" ? 1 : 0);
}

QTEST_GUILESS_MAIN(AdminPaceTest)
#include "AdminPaceTest.moc"
