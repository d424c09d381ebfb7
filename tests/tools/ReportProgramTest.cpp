#include "paper/TemplateReader.h"
#include "store/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;

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

    void tellsWhatTheProgramTells_data() {
        QTest::addColumn<QByteArray>("content");
        const QByteArray head = "<report format=\"1\" code=\"X\" caption=\"\"><rows from=\"Base01\"/>";
        const auto column = [&](const QByteArray& width, const QByteArray& field) {
            return head + "<columns><column caption=\"\" width=\"" + width + "\">{" + field +
                   "}</column></columns></report>";
        };
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("broken") << head + "<columns>";
        QTest::newRow("no UTF-8") << head + "\xA4\xE9";
        QTest::newRow("unknown element") << head + "<colum/></report>";
        QTest::newRow("unknown field") << column("9", "Base01.Nothing");
        QTest::newRow("too wide") << column("900", "Base01.Title");
        QTest::newRow("an entity bomb")
            << "<!DOCTYPE r [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]>" + column("9", "Base01.Title");
        QTest::newRow("too large") << QByteArray(1024 * 1024 + 1, ' ');
    }
    /// A fault found beforehand has the words of one that is found when the report is printed.
    void tellsWhatTheProgramTells() {
        QFETCH(const QByteArray, content);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("X.rpt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        checkTold(path);
    }
    void tellsOfWhatIsNoFile() {
        const QTemporaryDir folder;
        checkTold(folder.filePath(QStringLiteral("none.rpt")));
        checkTold(folder.path());
        // A gigabyte that takes no room on the disk.
        const QString large = folder.filePath(QStringLiteral("large.rpt"));
        QFile file(large);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64{1} << 30));
        checkTold(large);
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

  private:
    static void checkTold(const QString& path) {
        QString told;
        try {
            (void)readTemplate(path);
        } catch (const RunTimeError& fault) {
            told = fault.text();
        }
        QVERIFY(!told.isEmpty());
        const Outcome outcome = run({QStringLiteral("check"), path});
        QCOMPARE(outcome.status, 1);
        // Behind it may stand what the system said.
        QVERIFY2(outcome.errors.startsWith(told + u'\n'), qUtf8Printable(outcome.errors));
        QCOMPARE(outcome.output, QString());
    }
};

QTEST_GUILESS_MAIN(ReportProgramTest)
#include "ReportProgramTest.moc"
