#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/// The programs that measure, in runs too small to say anything of speed.
class MeasureTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void figuresArePrintedWithTheirLimits_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("figures"); ///< "what/its limit", or of memory "what", a line each.
        QTest::addRow("seniority") << QStringLiteral(PONTREL_MEASURE_SENIORITY)
                                   << QStringList{u"--employees"_s, u"60"_s, u"--runs"_s, u"2"_s}
                                   << QStringList{u"seniority of all employees/one update an employee"_s,
                                                  u"entitlement of all employees/one update an employee"_s};
        QTest::addRow("leave") << QStringLiteral(PONTREL_MEASURE_LEAVE)
                               << QStringList{u"--employees"_s, u"100"_s,    u"--notes"_s,
                                              u"200"_s,         u"--runs"_s, u"2"_s}
                               << QStringList{u"leave batch/bulk insert and update"_s,
                                              u"a note beside many others/a note alone"_s};
        QTest::addRow("overtime") << QStringLiteral(PONTREL_MEASURE_OVERTIME)
                                  << QStringList{u"--employees"_s, u"60"_s, u"--runs"_s, u"2"_s}
                                  << QStringList{u"overtime batch/bulk insert of its rows"_s};
        QTest::addRow("roster") << QStringLiteral(PONTREL_MEASURE_ROSTER)
                                << QStringList{u"--employees"_s, u"60"_s,     u"--days"_s,
                                               u"5"_s,           u"--runs"_s, u"2"_s}
                                << QStringList{u"roster, none there yet/bulk insert of its rows"_s,
                                               u"the same roster once more/bulk insert of its rows"_s};
        QTest::addRow("write-offs") << QStringLiteral(PONTREL_MEASURE_WRITEOFFS)
                                    << QStringList{u"--employees"_s, u"60"_s,     u"--entries"_s,
                                                   u"600"_s,         u"--runs"_s, u"2"_s}
                                    << QStringList{
                                           u"write-off batch, none there yet/bulk insert of its rows"_s,
                                           u"the same batch once more/bulk insert of its rows"_s,
                                           u"counts, 6 entries of one/one pass over his rows"_s,
                                           u"counts, 60 entries of one/one pass over his rows"_s,
                                           u"counts, 600 entries of one/one pass over his rows"_s};
        QTest::addRow("staging") << QStringLiteral(PONTREL_MEASURE_STAGING)
                                 << QStringList{u"--employees"_s, u"40"_s, u"--runs"_s, u"2"_s}
                                 << QStringList{u"write-offs counted for a report/its statements by hand"_s};
        QTest::addRow("attendance window")
            << QStringLiteral(PONTREL_MEASURE_FORM3)
            << QStringList{u"--punches"_s, u"3000"_s, u"--runs"_s, u"1"_s}
            << QStringList{u"attendance window opened/reading the identities"_s,
                           u"its last row/reading the identities"_s,
                           u"slowest page of a scroll/reading the identities"_s};
        QTest::addRow("export of a list")
            << QStringLiteral(PONTREL_MEASURE_EXPORT)
            << QStringList{u"--punches"_s, u"3000"_s, u"--runs"_s, u"1"_s}
            << QStringList{u"list as comma-separated text/read and written"_s,
                           u"list as spreadsheet/the bare library"_s, u"comma-separated text, held beside"_s,
                           u"spreadsheet, held beside"_s};
    }

    void figuresArePrintedWithTheirLimits() {
        QFETCH(const QString, program);
        QFETCH(const QStringList, arguments);
        QFETCH(const QStringList, figures);
        QProcess process;
        process.start(program, arguments);
        QVERIFY(process.waitForFinished(120'000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
        const QStringList lines =
            QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), figures.size());
        for (qsizetype line = 0; line < lines.size(); ++line)
            checkLine(lines.at(line), figures.at(line).section(u'/', 0, 0),
                      figures.at(line).section(u'/', 1));
    }

  private:
    static void checkMemory(const QString& line, const QString& what) {
        const QRegularExpression form(u"^%1 +(-?\\d+) kB +goal (\\d+) kB +(reached|MISSED)$"_s.arg(what));
        const QRegularExpressionMatch match = form.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QCOMPARE(match.captured(3) == u"reached"_s, match.captured(1).toInt() <= match.captured(2).toInt());
    }
    static void checkLine(const QString& line, const QString& what, const QString& limit) {
        if (limit.isEmpty())
            return checkMemory(line, what);
        const QRegularExpression form(
            u"^%1 +(\\d+\\.\\d{3}) s +%2 +(\\d+\\.\\d{3}) s +"
            "ratio +(\\d+\\.\\d{2}) +goal +(\\d+\\.\\d{2}) +(reached|MISSED)$"_s.arg(what, limit));
        const QRegularExpressionMatch match = form.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        // What is printed is rounded: at the goal itself either word may stand.
        if (match.captured(3) != match.captured(4))
            QCOMPARE(match.captured(5) == u"reached"_s,
                     match.captured(3).toDouble() < match.captured(4).toDouble());
    }
};

QTEST_GUILESS_MAIN(MeasureTest)
#include "MeasureTest.moc"
