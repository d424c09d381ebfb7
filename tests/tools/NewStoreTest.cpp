#include "support/Dump.h"
#include "support/Patience.h"
#include "tools/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;

namespace {

struct Outcome {
    int status = -1;
    QString output;
    QString errors;
};

/// Runs pontrel-newstore to its end, its language C, as on a machine that has never been told another.
Outcome run(const QStringList& arguments, const QByteArray& input = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PONTREL_NEWSTORE), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(PatienceMs) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QStringList accounts(const QString& store) {
    Database database(store);
    return rowsOf(database, QStringLiteral("syst02"));
}

/// The password that the output tells; nothing where it tells none.
std::optional<QString> toldPassword(const QString& output) {
    static const QRegularExpression pattern(QStringLiteral("^Password: (\\S+)"),
                                            QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = pattern.match(output);
    return match.hasMatch() ? std::optional(match.captured(1)) : std::nullopt;
}

} // namespace

class NewStoreTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        temporary_ = std::make_unique<QTemporaryDir>();
        QVERIFY(temporary_->isValid());
        folder_ = temporary_->filePath(QStringLiteral("差勤 系統/program"));
        store_ = folder_ + QStringLiteral("/DB/Pontrel.mdb");
    }

    void makesAStoreWithItsFolders() {
        const Outcome made = run({folder_, QStringLiteral("--account"), QStringLiteral("clerk"),
                                  QStringLiteral("--password"), QStringLiteral("It's mine")});
        QCOMPARE(made.errors, QString());
        QCOMPARE(made.status, 0);
        QCOMPARE(below(folder_), (QStringList{QStringLiteral("DB"), QStringLiteral("punch")}));
        QCOMPARE(below(folder_ + QStringLiteral("/DB")), QStringList{QStringLiteral("Pontrel.mdb")});
        QCOMPARE(below(folder_ + QStringLiteral("/punch")), QStringList());
        QCOMPARE(QFileInfo(store_).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
                 QFile::ReadOwner | QFile::WriteOwner);
        QCOMPARE(made.output, QStringLiteral("Account: clerk\nMade %1\n").arg(store_));

        Database database(store_);
        QCOMPARE(rowsOf(database, QStringLiteral("syst02")),
                 QStringList{QStringLiteral("clerk|It's mine|True|True|True|True|True|True|True|True")});
        QCOMPARE(rowsOf(database, QStringLiteral("Syst01")),
                 QStringList{QStringLiteral("punch|5|10|60|60|01|02|03|04|")});
        QCOMPARE(rowsOf(database, QStringLiteral("Base06")), QStringList());
    }

    void takesAFolderRelativeToTheCurrentOne() {
        QVERIFY(QDir().mkpath(folder_));
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder_));
        const Outcome made = run({QStringLiteral(".")});
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(made.status, 0);
        Database database(store_);
        QCOMPARE(rowsOfSelection(database, QStringLiteral("select HandPath from Syst01")),
                 QStringList{QStringLiteral("punch")});
    }

    void inventsAPasswordAndPrintsItOnce() {
        const Outcome first = run({folder_});
        const Outcome second = run({folder_ + QStringLiteral("2")});
        QCOMPARE(first.status, 0);
        const std::optional<QString> password = toldPassword(first.output);
        QVERIFY(password);
        QCOMPARE(password->size(), 12);
        QCOMPARE(first.output.count(*password), 1);
        QVERIFY(toldPassword(second.output) != password);
        QCOMPARE(
            accounts(store_),
            QStringList{QStringLiteral("admin|%1|True|True|True|True|True|True|True|True").arg(*password)});
    }

    void readsThePasswordFromItsInput_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("a line") << QByteArray("秘密 1\n");
        QTest::newRow("a line of another system") << QByteArray("秘密 1\r\n");
        QTest::newRow("a line without an end") << QByteArray("秘密 1");
        QTest::newRow("more than a line") << QByteArray("秘密 1\nanother\n");
    }

    void readsThePasswordFromItsInput() {
        QFETCH(const QByteArray, input);
        const Outcome made = run({folder_, QStringLiteral("--password-stdin")}, input);
        QCOMPARE(made.errors, QString());
        QCOMPARE(made.status, 0);
        QCOMPARE(made.output, QStringLiteral("Account: admin\nMade %1\n").arg(store_));
        QCOMPARE(accounts(store_),
                 QStringList{QStringLiteral("admin|秘密 1|True|True|True|True|True|True|True|True")});
    }

    void refusesAnInputWithoutAPassword_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("an empty line") << QByteArray("\nsecret\n");
    }

    void refusesAnInputWithoutAPassword() {
        QFETCH(const QByteArray, input);
        const Outcome refused = run({folder_, QStringLiteral("--password-stdin")}, input);
        QCOMPARE(refused.status, 2);
        QVERIFY(refused.errors.startsWith(QStringLiteral("There is no password on the standard input.\n")));
        QVERIFY(!QFileInfo::exists(folder_));
    }

    void makesAStoreFolderForItsOwnerAlone() {
        const mode_t before = ::umask(0);
        const Outcome made = run({folder_});
        ::umask(before);
        QCOMPARE(made.status, 0);
        const auto modeOf = [](const QString& path) {
            struct stat state {};
            return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? state.st_mode & 07777 : 0;
        };
        QCOMPARE(modeOf(folder_ + QStringLiteral("/DB")), mode_t{0700});
        QCOMPARE(modeOf(store_), mode_t{0600});
    }

    void clearsAwayWhatAKilledRunHasLeft() {
        const QString rest = folder_ + QStringLiteral("/DB/.new-aB3xYz");
        QVERIFY(QDir().mkpath(rest));
        for (const char16_t* name : {u"/Pontrel.mdb", u"/Pontrel.mdb-journal"}) {
            QFile file(rest + QString::fromUtf16(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("half of it") == 10);
        }
        const Outcome made = run({folder_, QStringLiteral("--demo")});
        QCOMPARE(made.errors, QString());
        QCOMPARE(made.status, 0);
        QCOMPARE(below(folder_ + QStringLiteral("/DB")), QStringList{QStringLiteral("Pontrel.mdb")});
        Database database(store_);
        QCOMPARE(rowsOf(database, QStringLiteral("Base06")).size(), 42);
    }

    void leavesToAnotherRunWhatItIsMaking() {
        const QString theirs = folder_ + QStringLiteral("/DB/.new-aB3xYz");
        QVERIFY(QDir().mkpath(theirs));
        const QString lock = folder_ + QStringLiteral("/DB/.making");
        const int held = ::open(QFile::encodeName(lock).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        QVERIFY(held >= 0);
        QCOMPARE(::flock(held, LOCK_EX | LOCK_NB), 0);
        const Outcome refused = run({folder_});
        ::close(held);
        QCOMPARE(refused.status, 1);
        QCOMPARE(refused.errors,
                 QStringLiteral("A store is being made in %1/DB at this moment.\n").arg(folder_));
        QCOMPARE(below(folder_ + QStringLiteral("/DB")),
                 QStringList({QStringLiteral(".making"), QStringLiteral(".new-aB3xYz")}));
        QCOMPARE(run({folder_}).status, 0);
        QCOMPARE(below(folder_ + QStringLiteral("/DB")), QStringList{QStringLiteral("Pontrel.mdb")});
    }

    void refusesToPutAStoreBesideAJournalOfAnother() {
        QVERIFY(QDir().mkpath(folder_ + QStringLiteral("/DB")));
        const QString journal = store_ + QStringLiteral("-journal");
        {
            QFile file(journal);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("of another") == 10);
        }
        const Outcome refused = run({folder_});
        QCOMPARE(refused.status, 1);
        QVERIFY2(refused.errors.startsWith(journal + QStringLiteral(" belongs to a store")),
                 qPrintable(refused.errors));
        QCOMPARE(below(folder_ + QStringLiteral("/DB")), QStringList{QStringLiteral("Pontrel.mdb-journal")});
        QCOMPARE(below(folder_), QStringList{QStringLiteral("DB")});
    }

    void aKilledRunIsMadeGoodByTheNext() {
        int killed = 0;
        for (int attempt = 0; attempt < 8; ++attempt) {
            const QString folder = QStringLiteral("%1-%2").arg(folder_).arg(attempt);
            const QString punches = folder + QStringLiteral("/punch");
            QProcess process;
            process.start(QStringLiteral(PONTREL_NEWSTORE), {folder, QStringLiteral("--demo")});
            // Each run gets a little further: to its folders, its hidden folder, its first files.
            const auto farEnough = [&] {
                return attempt < 3 ? below(folder + QStringLiteral("/DB")).size() > 0
                                   : below(punches).size() >= attempt - 2;
            };
            while (process.state() != QProcess::NotRunning && !farEnough())
                process.waitForFinished(0);
            process.kill();
            process.waitForFinished(-1);
            if (process.exitStatus() == QProcess::CrashExit)
                ++killed;
            const Outcome next = run({folder, QStringLiteral("--demo")});
            const bool done = next.errors.contains(QStringLiteral("exists already"));
            QVERIFY2(next.status == 0 || done, qPrintable(next.errors));
            QCOMPARE(below(folder + QStringLiteral("/DB")), QStringList{QStringLiteral("Pontrel.mdb")});
            QCOMPARE(below(punches).size(), 10);
            const QStringList files = below(punches);
            for (const QString& file : files)
                QVERIFY(contentOf(punches + u'/' + file).endsWith("\r\n"));
        }
        QVERIFY(killed > 0);
    }

    void refusesToOverwriteAStore() {
        QCOMPARE(run({folder_}).status, 0);
        const QByteArray before = contentOf(store_);
        const Outcome again = run({folder_, QStringLiteral("--demo")});
        QCOMPARE(again.status, 1);
        QCOMPARE(again.errors, store_ + QStringLiteral(" exists already. Nothing has been changed.\n"));
        QCOMPARE(again.output, QString());
        QCOMPARE(contentOf(store_), before);
        QCOMPARE(below(folder_ + QStringLiteral("/DB")), QStringList{QStringLiteral("Pontrel.mdb")});
        QCOMPARE(below(folder_ + QStringLiteral("/punch")), QStringList());
    }

    void refusesAFileThatIsNoStoreAndALinkThatLeadsNowhere() {
        QVERIFY(QDir().mkpath(folder_ + QStringLiteral("/DB")));
        QFile file(store_);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QCOMPARE(run({folder_}).status, 1);
        QCOMPARE(contentOf(store_), QByteArray());

        QVERIFY(file.remove());
        QVERIFY(QFile::link(QStringLiteral("/nonexistent/Pontrel.mdb"), store_));
        QCOMPARE(run({folder_}).status, 1);
        QVERIFY(QFileInfo(store_).isSymLink());
        // Nothing else came up, not even the punch folder.
        QCOMPARE(below(folder_), QStringList{QStringLiteral("DB")});
    }

    void leavesNothingBehindWhereTheFolderCannotBeMade() {
        QVERIFY(QDir().mkpath(folder_));
        QFile file(folder_ + QStringLiteral("/DB"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        const Outcome failed = run({folder_});
        QCOMPARE(failed.status, 1);
        QCOMPARE(failed.errors, QStringLiteral("The folder %1/DB cannot be made.\n").arg(folder_));
        QCOMPARE(below(folder_), QStringList{QStringLiteral("DB")});
    }

    void leavesNoStoreWhereTheDemoCannotBeWritten() {
        // A link that leads nowhere in the place of a punch file: it can neither be kept nor written.
        QVERIFY(QDir().mkpath(folder_ + QStringLiteral("/punch")));
        QVERIFY(QFile::link(QStringLiteral("/nonexistent/file.txt"),
                            folder_ + QStringLiteral("/punch/20100301.txt")));
        const Outcome failed = run({folder_, QStringLiteral("--demo")});
        QCOMPARE(failed.status, 1);
        QVERIFY2(failed.errors.contains(QStringLiteral("20100301.txt")), qUtf8Printable(failed.errors));
        QCOMPARE(below(folder_ + QStringLiteral("/DB")), QStringList());
    }

    void refusesACommandLineThatItDoesNotUnderstand_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no folder") << QStringList{};
        QTest::newRow("an empty folder") << QStringList{QString()};
        QTest::newRow("two folders") << QStringList{QStringLiteral("a"), QStringLiteral("b")};
        QTest::newRow("an unknown option") << QStringList{QStringLiteral("a"), QStringLiteral("--force")};
        QTest::newRow("an account without a name")
            << QStringList{QStringLiteral("a"), QStringLiteral("--account"), QString()};
        QTest::newRow("a password that is missing")
            << QStringList{QStringLiteral("a"), QStringLiteral("--password")};
        QTest::newRow("a password twice")
            << QStringList{QStringLiteral("a"), QStringLiteral("--password"), QStringLiteral("b"),
                           QStringLiteral("--password-stdin")};
    }

    void refusesACommandLineThatItDoesNotUnderstand() {
        QFETCH(const QStringList, arguments);
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(temporary_->path()));
        const Outcome refused = run(arguments);
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(refused.status, 2);
        QVERIFY(refused.errors.contains(QStringLiteral("Usage:")));
        QCOMPARE(refused.output, QString());
        QCOMPARE(below(temporary_->path()), QStringList());
    }

    void explainsItself() {
        const Outcome help = run({QStringLiteral("--help")});
        QCOMPARE(help.status, 0);
        for (const char16_t* option : {u"--account", u"--password", u"--password-stdin", u"--demo", u"DIR"})
            QVERIFY(help.output.contains(QString::fromUtf16(option)));
    }

    void addsTheExampleOrganisationOnDemand() {
        const Outcome made =
            run({folder_, QStringLiteral("--account"), QStringLiteral("demo"), QStringLiteral("--password"),
                 QStringLiteral("demo"), QStringLiteral("--demo")});
        QCOMPARE(made.errors, QString());
        QCOMPARE(made.status, 0);
        QCOMPARE(below(folder_ + QStringLiteral("/punch")).size(), 10);
        QCOMPARE(accounts(store_),
                 QStringList{QStringLiteral("demo|demo|True|True|True|True|True|True|True|True")});
        Database database(store_);
        QCOMPARE(rowsOf(database, QStringLiteral("Base06")).size(), 42);
    }

    void keepsAPunchFileThatIsThere() {
        QVERIFY(QDir().mkpath(folder_ + QStringLiteral("/punch")));
        const QString path = folder_ + QStringLiteral("/punch/20100301.txt");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("mine") == 4);
        file.close();
        QCOMPARE(run({folder_, QStringLiteral("--demo")}).status, 0);
        QCOMPARE(contentOf(path), QByteArray("mine"));
        QCOMPARE(below(folder_ + QStringLiteral("/punch")).size(), 10);
    }

  private:
    std::unique_ptr<QTemporaryDir> temporary_;
    QString folder_;
    QString store_;
};

QTEST_GUILESS_MAIN(NewStoreTest)
#include "NewStoreTest.moc"
