#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Outcome {
    int status = -1;
    QString output;
    QString errors;
};

/// Runs pontrel-report to its end, its language C, as on a machine that has never been told another.
Outcome run(const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PONTREL_REPORT), arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

class ReportProgramTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void checksTheTemplatesOfTheProgram() {
        const QDir folder(QStringLiteral(PONTREL_REPORTS));
        QStringList arguments{QStringLiteral("check")};
        for (const QString& name : folder.entryList({QStringLiteral("*.rpt")}))
            arguments += folder.filePath(name);
        QVERIFY(arguments.size() > 1);
        const Outcome outcome = run(arguments);
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output.count(u'\n'), arguments.size() - 1);
        QVERIFY2(outcome.output.contains(QStringLiteral("/C02.rpt: C02 單位別員工出勤狀況表\n")),
                 qUtf8Printable(outcome.output));
    }

    void tellsEveryFaultByItsPlace() {
        const QTemporaryDir folder;
        const QString faulty = folder.filePath(QStringLiteral("壞.rpt"));
        QFile file(faulty);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<report format=\"1\" code=\"X\" caption=\"\">\n  <colum/>\n</report>\n");
        file.close();
        const QString missing = folder.filePath(QStringLiteral("none.rpt"));
        const Outcome outcome =
            run({QStringLiteral("check"), faulty, missing, QStringLiteral(PONTREL_REPORTS "/C02.rpt")});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.errors,
                 QStringLiteral("壞.rpt 第 2 行第 3 字：<colum> 不認得，可用 <paper>、<fonts>、<rows>、"
                                "<heading>、<group>、<order>、<columns>、<card>、<flow>、<end>、<foot>\n"
                                "找不到檔案：%1\n")
                     .arg(missing));
        // One that is at fault keeps none that comes after it from being looked at.
        QCOMPARE(outcome.output, QStringLiteral(PONTREL_REPORTS "/C02.rpt: C02 單位別員工出勤狀況表\n"));
    }

    void refusesACommandLineThatItDoesNotUnderstand_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList{};
        QTest::newRow("no file") << QStringList{QStringLiteral("check")};
        QTest::newRow("something else") << QStringList{QStringLiteral("mend"), QStringLiteral("C02.rpt")};
        QTest::newRow("an option") << QStringList{QStringLiteral("check"), QStringLiteral("--all")};
    }
    void refusesACommandLineThatItDoesNotUnderstand() {
        QFETCH(const QStringList, arguments);
        const Outcome outcome = run(arguments);
        QCOMPARE(outcome.status, 2);
        QVERIFY(outcome.errors.contains(QStringLiteral("check FILE...")));
        QCOMPARE(outcome.output, QString());
    }
};

QTEST_GUILESS_MAIN(ReportProgramTest)
#include "ReportProgramTest.moc"
