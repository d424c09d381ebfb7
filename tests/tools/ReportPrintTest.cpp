#include "demo/Demo.h"
#include "rules/attendance/DailyCalculation.h"
#include "rules/reports/Catalogue.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/TestStore.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
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

Outcome run(const QString& program, const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C"_s);
    // No display, and none that could be asked for.
    for (const QString& name :
         {u"QT_QPA_PLATFORM"_s, u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"XDG_RUNTIME_DIR"_s})
        environment.remove(name);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

/// The lines of a PDF without their blanks, as another program reads them.
QStringList linesOf(const QString& pdf) {
    QStringList lines =
        run(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s}).output.split(QRegularExpression(u"[\n\f]"_s));
    for (QString& line : lines)
        line.removeIf([](QChar character) { return character.isSpace(); });
    lines.removeAll(QString());
    return lines;
}

QString roc(const QString& date) {
    const QDate day = QDate::fromString(date, Qt::ISODate);
    return u"%1/%2"_s.arg(day.year() - 1911, 3, 10, QChar(u'0')).arg(day.toString(u"MM/dd"));
}

} // namespace

/// Reports printed from the command line over the example organisation, after its ten days have been read.
class ReportPrintTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void daysOfUnits();
    void dataOfUnits();
    void oneDay();
    void oneEmployee();
    void aReportWithoutRecordsTellsWhatItIsAbout();
    void countsAreStaged();
    void listsNarrow();
    void reasonsNarrow();
    void birthdaysOfAMonth();
    void exceptionsOfAPunch();
    void everyReportPrints_data();
    void everyReportPrints();
    void refusals_data();
    void refusals();
    void whatCannotBeReadOrWritten();
    void helpIsGiven();

  private:
    [[nodiscard]] Outcome print(const QStringList& arguments) {
        return run(QStringLiteral(PONTREL_REPORT),
                   QStringList{u"print"_s} + arguments + QStringList{u"--folder"_s, store_.folder()});
    }
    [[nodiscard]] QString file(const QString& name) const { return output_.filePath(name); }

    TestStore store_;
    QTemporaryDir output_;
};

void ReportPrintTest::initTestCase() {
    createDemo(store_.database(), store_.folder());
    FakeHost host;
    DailyCalculation calculation(store_.database(), host);
    for (const DemoPunchFile& each : demoPunchFiles()) {
        host.punchFile = store_.punchFolder() + u'/' + each.name;
        calculation.ReadPunchFile();
        QVERIFY(calculation.finished());
    }
    QVERIFY(QFile::link(QStringLiteral(PONTREL_REPORTS), store_.folder() + u"/report"_s));
}

/// Every row of the file against what a plain statement reads.
void ReportPrintTest::daysOfUnits() {
    const QString path = file(u"C02.pdf"_s);
    const Outcome outcome = print({u"c02"_s, u"--from"_s, u"2010-03-01"_s, u"--to"_s, u"2010/3/5"_s,
                                   u"--unit"_s, u"5000..6000"_s, u"--output"_s, path});
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.status, 0);
    const QString days =
        u" from Atte02,Base06,Base04 where Atte02.EmpNo = Base06.EmpNo and Base04.TimeNo = Atte02.TimeNo and "
        "UnitNo between '5000' and '6000' and UseDate between #2010/3/1# and #2010/3/5# and ArriveDate <= #2010/3/1#"_s;
    QStringList expected;
    for (const QString& row : rowsOfSelection(
             store_.database(),
             u"select UseDate, Atte02.TimeNo, TimeName, Time1, Time2, Time3, Time4, Atte02.Cushion1, "
             "Atte02.Cushion3, Atte02.Delay1, Atte02.Delay3, Atte02.Earlier2, Atte02.Earlier4, Expt"_s +
                 days)) {
        const QStringList values = row.split(u'|');
        static const QString weekdays = u"一二三四五六日"_s;
        QString line = roc(values[0]) + weekdays[QDate::fromString(values[0], Qt::ISODate).dayOfWeek() - 1] +
                       values[1] + values[2];
        for (int time = 3; time <= 6; ++time)
            line += values[time] == u"null"_s ? QString() : values[time].left(5);
        for (const int minutes : {7, 9, 11}) {
            if (const int sum = values[minutes].toInt() + values[minutes + 1].toInt(); sum != 0)
                line += QString::number(sum);
        }
        expected << line + (values[13] == u"True"_s ? u"是"_s : QString());
    }
    QVERIFY(expected.size() > 50);
    QStringList printed;
    const QRegularExpression row(u"^(?:\\d{5}\\D*)?(\\d{3}/\\d\\d/\\d\\d[一二三四五六日].*)$"_s);
    const QStringList lines = linesOf(path);
    for (const QString& line : lines) {
        if (const auto match = row.match(line); match.hasMatch())
            printed << match.captured(1);
    }
    expected.sort();
    printed.sort();
    QCOMPARE(printed, expected);
    QCOMPARE(outcome.output, u"%1: C02 單位別員工出勤狀況表，%2 筆，%3 頁\n"_s.arg(path)
                                 .arg(expected.size())
                                 .arg(lines.count(u"C02"_s)));
    QVERIFY(lines.filter(u"期間：099/03/01～099/03/05"_s).size() == lines.count(u"C02"_s));
    QVERIFY(lines.contains(store_.database().select(u"select CmpName from Syst01"_s).at(0, 0).toText()));
}

void ReportPrintTest::dataOfUnits() {
    const QStringList arguments{u"F02"_s, u"--from"_s, u"2010-01-01"_s, u"--to"_s, u"2010-03-31"_s};
    QCOMPARE(print(arguments + QStringList{u"--output"_s, file(u"F02.csv"_s)}).status, 0);
    QFile csv(file(u"F02.csv"_s));
    QVERIFY(csv.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(csv.readAll());
    for (const QString& row :
         rowsOfSelection(store_.database(), u"select distinct Over01.EmpNo, EmpName from Over01,Base06 where "
                                            "Over01.EmpNo = Base06.EmpNo and isnull(LeaveDate) = true"_s))
        QVERIFY2(text.contains(row.section(u'|', 0, 0) + u',' + row.section(u'|', 1, 1)), qPrintable(row));
    QCOMPARE(print(arguments + QStringList{u"--output"_s, file(u"F02.XLSX"_s)}).status, 0);
    QFile sheet(file(u"F02.XLSX"_s));
    QVERIFY(sheet.open(QIODevice::ReadOnly) && sheet.read(2) == "PK");
}

void ReportPrintTest::oneDay() {
    const QString path = file(u"D05.pdf"_s);
    const Outcome outcome = print({u"D05"_s, u"--from"_s, u"2010-03-03"_s, u"--output"_s, path});
    QCOMPARE(outcome.errors, QString());
    const QString heads =
        store_.database()
            .select(u"select count(EmpNo) as cnt from Base06 where isnull(LeaveDate) = true"_s)
            .at(0, 0)
            .joined();
    const QStringList lines = linesOf(path);
    QVERIFY2(lines.contains(u"在職人數：%1人"_s.arg(heads)), qPrintable(lines.join(u'\n')));
    QVERIFY(!lines.filter(u"期間：099/03/03列印日期"_s).isEmpty());
}

void ReportPrintTest::oneEmployee() {
    const QString path = file(u"D06.pdf"_s);
    QCOMPARE(print({u"D06"_s, u"--from"_s, u"2010-03-01"_s, u"--to"_s, u"2010-03-14"_s, u"--employee"_s,
                    u"10021"_s, u"--output"_s, path})
                 .status,
             0);
    const QString sums =
        rowsOfSelection(store_.database(),
                        u"select Sum(Cushion1+Cushion3) as a, Sum(Delay1+Delay3) as b, "
                        "Sum(Earlier2+Earlier4) as c from Atte02 where EmpNo = '10021' and UseDate "
                        "between #2010/3/1# and #2010/3/14#"_s)
            .constFirst();
    const QStringList values = sums.split(u'|');
    QVERIFY(values[1].toInt() > 0 && values[2].toInt() > 0);
    QVERIFY2(!linesOf(path)
                  .filter(u"逾時：%1分遲到：%2分早退：%3分"_s.arg(values[0], values[1], values[2]))
                  .isEmpty(),
             qPrintable(linesOf(path).join(u'\n')));
}

void ReportPrintTest::aReportWithoutRecordsTellsWhatItIsAbout() {
    const QString name =
        store_.database().select(u"select EmpName from Base06 where EmpNo = '10021'"_s).at(0, 0).joined();
    for (const QString& code : {u"D06"_s, u"E02"_s}) {
        const QString path = file(code + u".pdf"_s);
        QCOMPARE(
            print({code, u"--from"_s, u"2026-01-05"_s, u"--to"_s, u"2026-01-31"_s, u"--employee"_s,
                   u"10021"_s, u"--output"_s, path})
                .output,
            u"%1: %2，0 筆，1 頁\n"_s.arg(path, findReport(code)->code + u' ' + findReport(code)->caption));
        const QStringList lines = linesOf(path);
        QVERIFY2(!lines.filter(u"期間：115/01/05～115/01/31"_s).isEmpty(), qPrintable(lines.join(u'\n')));
        QCOMPARE(lines.contains(u"員工：10021"_s + name), code == u"D06"_s);
    }
}

void ReportPrintTest::countsAreStaged() {
    const QString path = file(u"E03.pdf"_s);
    const Outcome outcome = print({u"E03"_s, u"--from"_s, u"2010-01-01"_s, u"--to"_s, u"2010-03-31"_s,
                                   u"--count"_s, u"3"_s, u"--output"_s, path});
    QCOMPARE(outcome.errors, QString());
    const auto database = store_.connect();
    const QStringList staged = rowsOfSelection(*database, u"select EmpNo, CnlNo, CnlTimes from View01"_s);
    QVERIFY(!staged.isEmpty());
    const QStringList lines = linesOf(path);
    for (const QString& row : staged) {
        const QStringList values = row.split(u'|');
        QVERIFY(values[2].toInt() >= 3);
        const QRegularExpression line(u"^%1.*%2.*%3$"_s.arg(values[0], values[1], values[2]));
        QVERIFY2(!lines.filter(line).isEmpty(), qPrintable(row));
    }
    QVERIFY(outcome.output.contains(u"，%1 筆，"_s.arg(staged.size())));
}

void ReportPrintTest::listsNarrow() {
    const auto rowsOf = [this](const QStringList& more) {
        const Outcome outcome = print(QStringList{u"D04"_s, u"--from"_s, u"2010-03-01"_s, u"--to"_s,
                                                  u"2010-03-14"_s, u"--output"_s, file(u"D04.csv"_s)} +
                                      more);
        return outcome.status == 0 ? outcome.output.section(u'，', 1, 1) : outcome.errors;
    };
    const auto expected = [this](const QString& condition) {
        return u"%1 筆"_s.arg(
            store_.database()
                .select(u"select count(*) as cnt from Holi04,Base06 where Holi04.EmpNo = Base06.EmpNo "
                        "and isnull(LeaveDate) = true and HoliDate between #2010/3/1# and #2010/3/14#"_s +
                        condition)
                .at(0, 0)
                .toInteger());
    };
    QCOMPARE(rowsOf({}), expected({}));
    QCOMPARE(rowsOf({u"--types"_s, u"04"_s}), expected(u" and HoliNo = '04'"_s));
    QCOMPARE(rowsOf({u"--types"_s, u"04,10"_s}), expected(u" and (HoliNo = '04' or HoliNo = '10')"_s));
    QVERIFY(rowsOf({u"--types"_s, u"04"_s}) != rowsOf({}));
    QCOMPARE(rowsOf({u"--types"_s, u"04,77"_s}), u"--types: the store has no 77.\n"_s);
}

/// What is printed and staged against what a plain walk over the entries counts.
void ReportPrintTest::reasonsNarrow() {
    const QString path = file(u"E01.csv"_s);
    const QStringList arguments{u"E01"_s,      u"--from"_s, u"2010-01-01"_s, u"--to"_s, u"2010-03-31"_s,
                                u"--output"_s, path};
    QMap<QString, int> times; // "reason|employee" in that order, as they are staged
    for (const QString& row :
         rowsOfSelection(store_.database(),
                         u"select Canc02.EmpNo, CnlNo1, CnlNo2, CnlNo3, CnlNo4 from Canc02,Base06 where "
                         "Canc02.EmpNo = Base06.EmpNo and isnull(LeaveDate) = true and "
                         "CnlDate between #2010/1/1# and #2010/3/31#"_s)) {
        const QStringList values = row.split(u'|');
        for (int place = 1; place <= 4; ++place)
            ++times[values[place] + u'|' + values[0]];
    }
    const auto expected = [&](const QStringList& codes) {
        QStringList rows;
        for (auto count = times.cbegin(); count != times.cend(); ++count) {
            const QString reason = count.key().section(u'|', 0, 0);
            if (codes.contains(reason))
                rows << u"%1|2010-01-01|2010-03-31|%2|%3|0"_s.arg(count.key().section(u'|', 1), reason)
                            .arg(count.value());
        }
        return rows;
    };
    const QStringList all = expected({u"01"_s, u"02"_s, u"03"_s, u"04"_s, u"05"_s});
    for (const QStringList& codes : {QStringList{u"01"_s}, {u"02"_s}, {u"01"_s, u"03"_s}}) {
        const QStringList rows = expected(codes);
        QVERIFY(!rows.isEmpty() && rows.size() < all.size());
        const Outcome outcome = print(arguments + QStringList{u"--reasons"_s, codes.join(u',')});
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(rowsOf(*store_.connect(), u"View01"_s), rows);
        QVERIFY2(outcome.output.contains(u"，%1 筆"_s.arg(rows.size())), qPrintable(outcome.output));
    }
    const Outcome whole = print(arguments);
    QCOMPARE(rowsOf(*store_.connect(), u"View01"_s), all);
    QVERIFY2(whole.output.contains(u"，%1 筆"_s.arg(all.size())), qPrintable(whole.output));
    const Outcome unknown = print(arguments + QStringList{u"--reasons"_s, u"01,77"_s});
    QCOMPARE(unknown.errors, u"--reasons: the store has no 77.\n"_s);
    QCOMPARE(unknown.status, 2);
    QCOMPARE(rowsOf(*store_.connect(), u"View01"_s), all); // nothing was done
}

void ReportPrintTest::birthdaysOfAMonth() {
    const Outcome outcome = print({u"A09"_s, u"--month"_s, u"5"_s, u"--output"_s, file(u"A09.pdf"_s)});
    QCOMPARE(outcome.errors, QString());
    const QStringList lines = linesOf(file(u"A09.pdf"_s));
    const QStringList born =
        rowsOfSelection(store_.database(), u"select EmpNo, Birth from Base06 where "
                                           "isnull(LeaveDate) = true and format(Birth,'mm') = '05'"_s);
    QVERIFY(!born.isEmpty());
    for (const QString& row : born)
        QVERIFY(!lines
                     .filter(QRegularExpression(
                         u"^%1%2"_s.arg(roc(row.section(u'|', 1)), row.section(u'|', 0, 0))))
                     .isEmpty());
    QCOMPARE(lines.filter(QRegularExpression(u"^\\d{3}/05/"_s)).size(), born.size());
}

void ReportPrintTest::exceptionsOfAPunch() {
    const auto rows = [this](const QString& punch) {
        return print({u"C05"_s, u"--from"_s, u"2010-03-01"_s, u"--to"_s, u"2010-03-14"_s, u"--punch-mark"_s,
                      punch, u"--output"_s, file(u"C05.csv"_s)})
            .output.section(u'，', 1, 1);
    };
    const auto expected = [this](const QString& condition) {
        return u"%1 筆"_s.arg(
            store_.database()
                .select(u"select count(*) as cnt from Atte02,Base06 where Atte02.EmpNo = Base06.EmpNo and "
                        "UseDate between #2010/3/1# and #2010/3/14# and ArriveDate <= #2010/3/1# and "_s +
                        condition)
                .at(0, 0)
                .toInteger());
    };
    QCOMPARE(rows(u"morning-in"_s), expected(u"F1 = true"_s));
    QCOMPARE(rows(u"afternoon-out"_s), expected(u"F4 = true"_s));
    QCOMPARE(rows(u"day"_s), expected(u"(F1 = true or F2 = true or F3 = true or F4 = true)"_s));
}

void ReportPrintTest::everyReportPrints_data() {
    QTest::addColumn<QString>("code");
    for (const Report& report : reports())
        QTest::newRow(qPrintable(report.code)) << report.code;
}

/// Of the options those that its fields in the report window ask for.
void ReportPrintTest::everyReportPrints() {
    QFETCH(const QString, code);
    const Report& report = *findReport(code);
    const QString path = file(code + u".csv"_s);
    QStringList arguments{code, u"--output"_s, path};
    const bool isBasic = report.tab == ReportTab::Basic;
    if (isBasic ? report.fields.mask(0) || report.fields.mask(2) : true)
        arguments << u"--from"_s << (code == u"D05"_s ? u"2010-03-03"_s : u"2010-01-01"_s);
    if (isBasic ? report.fields.mask(1) || report.fields.mask(3) : report.fields.mask(1))
        arguments << u"--to"_s << u"2010-03-31"_s;
    if (code == u"D06"_s)
        arguments << u"--employee"_s << u"10022"_s;
    const Outcome outcome = print(arguments);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.startsWith(u"%1: %2 %3，"_s.arg(path, code.toUpper(), report.caption)));
    QFile csv(path);
    QVERIFY(csv.open(QIODevice::ReadOnly));
    QVERIFY(csv.readAll().count("\r\n") >= (code == u"B03"_s ? 1 : 2));
}

void ReportPrintTest::refusals_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("told");
    const QStringList period{u"--from"_s, u"2010-03-01"_s, u"--to"_s, u"2010-03-14"_s};
    const QStringList output{u"--output"_s, u"/nowhere/a.pdf"_s};
    QTest::newRow("no such report") << QStringList{u"C99"_s} + output << u"There is no report C99.\n"_s;
    QTest::newRow("no output") << QStringList{u"C02"_s} + period << u"Say where to: --output FILE.\n"_s;
    QTest::newRow("an unknown ending") << QStringList{u"C02"_s, u"--output"_s, u"a.doc"_s}
                                       << u"a.doc: the file must end in .pdf, .csv or .xlsx.\n"_s;
    QTest::newRow("no dates") << QStringList{u"C02"_s} + output << u"C02 asks for --from DATE.\n"_s;
    QTest::newRow("one date") << QStringList{u"C02"_s, u"--from"_s, u"2010-03-01"_s} + output
                              << u"C02 asks for --to DATE.\n"_s;
    QTest::newRow("a date too many") << QStringList{u"D05"_s} + period + output
                                     << u"D05 does not ask for --to.\n"_s;
    QTest::newRow("dates of a list") << QStringList{u"a01"_s} + period + output
                                     << u"A01 does not ask for --from.\n"_s;
    QTest::newRow("no date") << QStringList{u"C02"_s, u"--from"_s, u"2010-02-30"_s, u"--to"_s,
                                            u"2010-03-01"_s} +
                                    output
                             << u"--from 2010-02-30 is no date; write it as 2026-01-31.\n"_s;
    QTest::newRow("a range not asked for")
        << QStringList{u"B01"_s, u"--work-type"_s, u"0001"_s} + period + output
        << u"B01 does not ask for --work-type.\n"_s;
    QTest::newRow("no employee") << QStringList{u"D06"_s} + period + output
                                 << u"D06 asks for --employee CODE.\n"_s;
    QTest::newRow("several employees") << QStringList{u"D06"_s, u"--employee"_s, u"1..2"_s} + period + output
                                       << u"D06 takes one value for --employee.\n"_s;
    QTest::newRow("three ends") << QStringList{u"C02"_s, u"--unit"_s, u"1..2..3"_s} + period + output
                                << u"C02 takes one value for --unit.\n"_s;
    QTest::newRow("a count not asked for") << QStringList{u"E01"_s, u"--count"_s, u"2"_s} + period + output
                                           << u"E01 does not ask for --count.\n"_s;
    QTest::newRow("a punch mark") << QStringList{u"C02"_s, u"--punch-mark"_s, u"day"_s} + period + output
                                  << u"C02 does not ask for --punch-mark.\n"_s;
    QTest::newRow("an unknown punch mark")
        << QStringList{u"C04"_s, u"--punch-mark"_s, u"noon"_s} + period + output
        << u"--punch-mark is one of day, morning-in, morning-out, afternoon-in, afternoon-out.\n"_s;
    QTest::newRow("types of another tab") << QStringList{u"E01"_s, u"--types"_s, u"01"_s} + period + output
                                          << u"E01 does not ask for --types.\n"_s;
}

void ReportPrintTest::refusals() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, told);
    const Outcome outcome = print(arguments);
    QCOMPARE(outcome.errors, told);
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.output, QString());
}

void ReportPrintTest::whatCannotBeReadOrWritten() {
    const auto errorsOf = [](const QStringList& arguments) {
        const Outcome outcome = run(QStringLiteral(PONTREL_REPORT), QStringList{u"print"_s} + arguments);
        return outcome.status == 1 && outcome.output.isEmpty() ? outcome.errors : QString();
    };
    const QString here = store_.folder();
    // A folder that is none of the program's; the file's folder; an apostrophe in a code.
    QVERIFY(errorsOf({u"a01"_s, u"--output"_s, file(u"a.pdf"_s), u"--folder"_s, output_.path()})
                .contains(u"DB/Pontrel.mdb"_s));
    QVERIFY(errorsOf({u"a01"_s, u"--output"_s, u"/nowhere/a.pdf"_s, u"--folder"_s, here})
                .startsWith(u"無法寫入檔案：/nowhere/a.pdf（"_s));
    QVERIFY(
        !errorsOf({u"a11"_s, u"--unit"_s, u"O'Neil"_s, u"--output"_s, file(u"b.pdf"_s), u"--folder"_s, here})
             .isEmpty());
    // No template.
    const TestStore bare;
    QVERIFY(errorsOf({u"a01"_s, u"--output"_s, file(u"c.pdf"_s), u"--folder"_s, bare.folder()})
                .contains(u"report/a01.rpt"_s));
    for (const QString& name : {u"a.pdf"_s, u"b.pdf"_s, u"c.pdf"_s})
        QVERIFY(!QFile::exists(file(name)));
}

void ReportPrintTest::helpIsGiven() {
    for (const QStringList& arguments : {QStringList{u"--help"_s}, QStringList{u"print"_s, u"--help"_s}}) {
        const Outcome outcome = run(QStringLiteral(PONTREL_REPORT), arguments);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QString());
        for (const QString& option :
             {u"print CODE"_s, u"--output <FILE>"_s, u"--from <DATE>"_s, u"--to <DATE>"_s, u"--employee"_s,
              u"--unit"_s, u"--work-type"_s, u"--class"_s, u"--month"_s, u"--count"_s, u"--punch-mark"_s,
              u"--types"_s, u"--reasons"_s, u"--folder"_s})
            QVERIFY2(outcome.output.contains(option), qPrintable(option));
    }
}

QTEST_GUILESS_MAIN(ReportPrintTest)
#include "ReportPrintTest.moc"
