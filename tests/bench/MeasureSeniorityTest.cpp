#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/// The program that measures seniority and entitlement, in a run too small to say anything of speed.
class MeasureSeniorityTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void bothCalculationsArePrintedWithTheirLimits() {
        QProcess program;
        program.start(QStringLiteral(PONTREL_MEASURE_SENIORITY),
                      {u"--employees"_s, u"60"_s, u"--runs"_s, u"2"_s});
        QVERIFY(program.waitForFinished(60'000));
        QCOMPARE(QString::fromUtf8(program.readAllStandardError()), QString());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        const QStringList lines =
            QString::fromUtf8(program.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        for (const auto& [line, what] : {std::pair{lines[0], u"seniority"_s}, {lines[1], u"entitlement"_s}}) {
            const QRegularExpression form(
                u"^%1 of all employees +(\\d+\\.\\d{3}) s +one update an employee +(\\d+\\.\\d{3}) s +"
                "ratio +(\\d+\\.\\d{2}) +goal 3\\.00 +(reached|MISSED)$"_s.arg(what));
            const QRegularExpressionMatch match = form.match(line);
            QVERIFY2(match.hasMatch(), qPrintable(line));
            const double ratio = match.captured(3).toDouble();
            QVERIFY(ratio > 0.0);
            // What is printed is rounded: at 3.00 itself either word may stand.
            if (match.captured(3) != u"3.00"_s)
                QCOMPARE(match.captured(4) == u"reached"_s, ratio < 3.0);
        }
    }
};

QTEST_GUILESS_MAIN(MeasureSeniorityTest)
#include "MeasureSeniorityTest.moc"
