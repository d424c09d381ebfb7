#include "folder/LayOut.h"
#include "store/NewStore.h"
#include "store/StorePath.h"
#include "support/Patience.h"
#include "tools/Files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

struct Outcome {
    int status = -1;
    QString output;
    QString errors;
};

} // namespace

/// pontrel-setup as the desktop and scripts start it.
class SetupProgramTest : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<QTemporaryDir> temporary_;
    QString program_;
    QString templates_;
    QString folder_;

    [[nodiscard]] Outcome run(const QStringList& arguments) const {
        QProcess process;
        process.start(QStringLiteral(PONTREL_SETUP), arguments);
        if (!process.waitForFinished(PatienceMs) || process.exitStatus() != QProcess::NormalExit)
            return {};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    [[nodiscard]] QStringList from() const {
        return {u"--program"_s, program_, u"--templates"_s, templates_};
    }

  private Q_SLOTS:
    void init() {
        temporary_ = std::make_unique<QTemporaryDir>();
        QVERIFY(temporary_->isValid());
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(temporary_->filePath(u"config"_s)));
        program_ = temporary_->filePath(u"pontrel"_s);
        templates_ = temporary_->filePath(u"templates"_s);
        folder_ = temporary_->filePath(u"my work/program"_s);
        write(program_, "#!/bin/sh\necho \"$0\" \"$#\"\nexit 7\n");
        write(templates_ + u"/B01.rpt"_s, "template");
    }

    void laysAFolderOutForScripts() {
        const Outcome first = run(from() + QStringList{u"--lay-out"_s, folder_});
        QCOMPARE(first.errors, QString());
        QCOMPARE(first.output, QString());
        QCOMPARE(first.status, 0);
        QCOMPARE(below(folder_), (QStringList{u".laid-out"_s, u"pontrel"_s, u"punch"_s, u"report"_s}));

        write(folder_ + u"/report/B01.rpt"_s, "mine");
        write(templates_ + u"/B01.rpt"_s, "newer");
        const Outcome second = run(from() + QStringList{u"--lay-out"_s, folder_});
        QCOMPARE(second.status, 0);
        const QString kept = folder_ + u"/report/B01.rpt"_s;
        QCOMPARE(second.output,
                 u"%1 has been edited and stays; the newer one lies beside it, as %1.new.\n"_s.arg(kept));
        QCOMPARE(contentOf(kept), QByteArray("mine"));
    }

    void saysWhyAFolderCannotBeLaidOut() {
        write(folder_, "a file");
        const Outcome failed = run(from() + QStringList{u"--lay-out"_s, folder_});
        QCOMPARE(failed.status, 1);
        QVERIFY2(failed.errors.startsWith(u"The program folder cannot be laid out: %1"_s.arg(folder_)),
                 qUtf8Printable(failed.errors));
    }

    void becomesTheProgramOfTheFolderItRemembers() {
        QVERIFY(QDir().mkpath(folder_));
        createStore(storePathIn(folder_), {PunchFolder, u"clerk"_s, u"secret"_s});
        const QByteArray store = contentOf(storePathIn(folder_));
        QVERIFY(rememberFolder(folder_));
        const Outcome started = run(from());
        QCOMPARE(started.output, u"%1/pontrel 0\n"_s.arg(folder_));
        QCOMPARE(started.status, 7);
        QCOMPARE(contentOf(storePathIn(folder_)), store);
        QCOMPARE(contentOf(folder_ + u"/report/B01.rpt"_s), QByteArray("template"));
    }

    void refusesACommandLineThatItDoesNotUnderstand_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("an unknown option") << QStringList{u"--force"_s};
        QTest::newRow("a folder without an option") << QStringList{u"/tmp"_s};
        QTest::newRow("no folder") << QStringList{u"--lay-out"_s};
        QTest::newRow("an empty folder") << QStringList{u"--lay-out"_s, QString()};
        QTest::newRow("a password") << QStringList{u"--password"_s, u"secret"_s};
    }

    void refusesACommandLineThatItDoesNotUnderstand() {
        QFETCH(const QStringList, arguments);
        const Outcome refused = run(arguments);
        QCOMPARE(refused.status, 2);
        QVERIFY(refused.errors.contains(u"Usage:"_s));
        QCOMPARE(refused.output, QString());
    }

    void explainsItself() {
        const Outcome help = run({u"--help"_s});
        QCOMPARE(help.status, 0);
        for (const char16_t* option : {u"--lay-out", u"--program", u"--templates"})
            QVERIFY(help.output.contains(QString::fromUtf16(option)));
    }
};

QTEST_GUILESS_MAIN(SetupProgramTest)
#include "SetupProgramTest.moc"
