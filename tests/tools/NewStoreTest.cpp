#include "support/Dump.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

using namespace pontrel;
using namespace pontrel::test;

namespace {

struct Outcome {
    int status = -1;
    QString output;
    QString errors;
};

/// Runs pontrel-newstore to its end, its language C, as on a machine that has never been told another.
Outcome run(const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PONTREL_NEWSTORE), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

/// All files and folders below a folder, hidden ones too.
QStringList below(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
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
        QCOMPARE(made.output, QStringLiteral("Made %1\nAccount: clerk\n").arg(store_));

        Database database(store_);
        QCOMPARE(rowsOf(database, QStringLiteral("syst02")),
                 QStringList{QStringLiteral("clerk|It's mine|True|True|True|True|True|True|True|True")});
        QCOMPARE(rowsOf(database, QStringLiteral("Syst01")),
                 QStringList{folder_ + QStringLiteral("/punch|5|10|60|60|01|02|03|04|")});
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
                 QStringList{folder_ + QStringLiteral("/punch")});
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
        for (const char16_t* option : {u"--account", u"--password", u"--demo", u"DIR"})
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
