#include "paper/CsvFile.h"
#include "paper/PaperSupport.h"
#include "paper/SheetFile.h"
#include "support/Builders.h"
#include "support/SavedFiles.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;

namespace {

const QByteArray Overtime =
    "<report format=\"1\" code=\"F01\" caption=\"加班\"><rows from=\"Over01\"/>"
    "<group by=\"EmpNo\" caption=\"員工碼\"><footer label=\"小計\"/></group>"
    "<columns><column caption=\"日期\" width=\"30\">{Over01.OverDate}</column>"
    "<column caption=\"星期\" width=\"10\" format=\"weekday\">{Over01.OverDate}</column>"
    "<column caption=\"開始\" width=\"20\" empty=\"無\">{Over01.BegTime}</column>"
    "<column caption=\"時數\" width=\"20\" zero=\"blank\" total=\"sum\">{Over01.OverHours}</column>"
    "<column caption=\"補休\" width=\"20\" once=\"group\">{Over01.Rest}</column>"
    "<column caption=\"備註, 說明\" width=\"30\">{Over01.Memo}</column>"
    "<column caption=\"時間\" width=\"40\">{Over01.TransDate}</column></columns></report>";

void fill(TestStore& store) {
    insertRow(store.database(), QStringLiteral("Over01"),
              {{u"EmpNo", u"007"},
               {u"OverDate", QDate(2026, 1, 5)},
               {u"BegTime", QTime(18, 0)},
               {u"OverHours", 0},
               {u"Rest", true},
               {u"Memo", u"他說\"好\", 再\n來"},
               {u"TransDate", QDateTime(QDate(2026, 1, 6), QTime(9, 30))}});
    insertRow(store.database(), QStringLiteral("Over01"),
              {{u"EmpNo", u"007"},
               {u"OverDate", QDate(1899, 5, 1)},
               {u"OverHours", 12},
               {u"Rest", true},
               {u"Memo", u"\U00020BB7=1+1"}});
    insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"010"}, {u"Memo", u"1e5"}});
}

/// A table of one content.
class OneText : public PlainTable {
  public:
    explicit OneText(QString text) : text_(std::move(text)), content_{Kind::Text, 0, text_} {}
    explicit OneText(Content content)
        : text_(content.text.toString()), content_{content.kind, content.number, text_} {}

    [[nodiscard]] const std::vector<Column>& columns() const override { return columns_; }
    [[nodiscard]] std::size_t lineCount() const override { return 1; }
    [[nodiscard]] Content at(std::size_t, std::size_t, QString&) const override { return content_; }

  private:
    QString text_;
    Content content_;
    std::vector<Column> columns_{{u"欄"_s, 20}};
};

} // namespace

/// A report's data in files for other programs.
class DataFilesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(QStringLiteral("report"));
    }

    void commaSeparatedTextHoldsARowALine() {
        TestStore store;
        fill(store);
        QVERIFY(saveCsv(*documentOf(store, templateOf(Overtime)), path_));
        QCOMPARE(contentOf(path_),
                 QStringLiteral("\ufeff員工碼,日期,星期,開始,時數,補休,\"備註, 說明\",時間\r\n"
                                "007,2026/01/05,一,18:00,0,是,\"他說\"\"好\"\", 再\n來\",2026/01/06 09:30\r\n"
                                "007,1899/05/01,一,無,12,是,\U00020BB7=1+1,\r\n"
                                "010,,,無,,,1e5,\r\n")
                     .toUtf8());
    }

    void aSpreadsheetHoldsTextsNumbersAndDates() {
        TestStore store;
        fill(store);
        QVERIFY(saveSheet(*documentOf(store, templateOf(Overtime)), path_));
        QCOMPARE(
            sheetOf(path_, 1),
            (QStringList{
                QStringLiteral("frozen at A2"),
                QStringLiteral("A1=\"員工碼\" B1=\"日期\" C1=\"星期\" D1=\"開始\" E1=\"時數\" F1=\"補休\" "
                               "G1=\"備註, 說明\" H1=\"時間\" "),
                QStringLiteral("A2=\"007\" B2=46027 C2=\"一\" D2=0.75 E2=0 F2=\"是\" "
                               "G2=\"他說\"好\", 再\n來\" H2=46028.39583333334 "),
                QStringLiteral("A3=\"007\" B3=\"1899/05/01\" C3=\"一\" D3=\"無\" E3=12 F3=\"是\" "
                               "G3=\"\U00020BB7=1+1\" "),
                QStringLiteral("A4=\"010\" D4=\"無\" G4=\"1e5\" "), QStringLiteral("filter A1:H4")}));
    }

    /// The names of groups stand beside their codes where no column has them; dates without a year are dates.
    void groupsBringTheirNames() {
        TestStore store;
        addEmployee(store.database(), u"007"_s, {{u"EmpName", u"王小明"}});
        addEmployee(store.database(), u"010"_s, {{u"EmpName", u"=1+1"}});
        for (const auto* code : {u"010", u"007"})
            insertRow(store.database(), u"Over01"_s,
                      {{u"EmpNo", code}, {u"OverDate", QDate(2026, 1, 5)}, {u"OverHours", 2}});
        const QByteArray rows = "<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Over01\">"
                                "<look-up table=\"Base06\" on=\"EmpNo\"/></rows>"
                                "<group by=\"Over01.EmpNo\" caption=\"員工碼\" name=\"Base06.EmpName\" "
                                "name-caption=\"姓名\"/><columns>";
        const QByteArray day = "<column caption=\"日\" saved-as=\"日期\" width=\"20\" "
                               "format=\"mm/dd\">{Over01.OverDate}</column></columns></report>";
        QVERIFY(saveCsv(*documentOf(store, templateOf(rows + day)), path_));
        QCOMPARE(contentOf(path_), u"\ufeff員工碼,姓名,日期\r\n007,王小明,2026/01/05\r\n"
                                   "010,'=1+1,2026/01/05\r\n"_s.toUtf8());
        QVERIFY(saveSheet(*documentOf(store, templateOf(rows + day)), path_));
        QCOMPARE(sheetOf(path_, 1).value(2), u"A2=\"007\" B2=\"王小明\" C2=46027 "_s);
        QCOMPARE(sheetOf(path_, 1).value(3), u"A3=\"010\" B3=\"=1+1\" C3=46027 "_s);
        // A column that shows it is enough.
        const QByteArray shown = "<column caption=\"名\" width=\"20\">{Base06.EmpName}</column>";
        QVERIFY(saveCsv(*documentOf(store, templateOf(rows + shown + day)), path_));
        QVERIFY(contentOf(path_).startsWith(u"\ufeff員工碼,名,日期\r\n007,王小明,"_s.toUtf8()));
    }

    void moreRowsThanASheetTakesGoOnTheNext() {
        TestStore store;
        fill(store);
        QVERIFY(saveSheet(*documentOf(store, templateOf(Overtime)), path_, {}, 2));
        const QStringList first = sheetOf(path_, 1);
        const QStringList second = sheetOf(path_, 2);
        QCOMPARE(first.last(), QStringLiteral("filter A1:H3"));
        QCOMPARE(second.size(), 4);
        QCOMPARE(second[1], first[1]);
        QCOMPARE(second[2], QStringLiteral("A2=\"010\" D2=\"無\" G2=\"1e5\" "));
        QCOMPARE(second[3], QStringLiteral("filter A1:H2"));
    }

    void aSummaryGivesALineForEachGroup() {
        TestStore store;
        fill(store);
        const auto document = documentOf(
            store,
            templateOf(
                "<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Over01\"/><group by=\"EmpNo\"/>"
                "<columns summary=\"yes\"><column caption=\"員工\" width=\"20\">{Over01.EmpNo}</column>"
                "<column caption=\"次數\" width=\"20\" total=\"count\">{Over01.OverDate}</column>"
                "<column caption=\"日.時\" width=\"20\" total=\"sum\" "
                "format=\"day.hour\">{Over01.OverHours}</column>"
                "</columns></report>"));
        QVERIFY(saveCsv(*document, path_));
        QCOMPARE(contentOf(path_),
                 QStringLiteral("\ufeff員工,次數,日.時\r\n007,2,1.4\r\n010,0,0.0\r\n").toUtf8());
        QVERIFY(saveSheet(*document, path_));
        QCOMPARE(sheetOf(path_, 1).mid(2, 2), (QStringList{QStringLiteral("A2=\"007\" B2=2 C2=\"1.4\" "),
                                                           QStringLiteral("A3=\"010\" B3=0 C3=\"0.0\" ")}));
    }

    void noRowsGiveTheCaptions() {
        TestStore store;
        const auto document = documentOf(store, templateOf(Overtime));
        QVERIFY(saveCsv(*document, path_));
        QCOMPARE(contentOf(path_),
                 QStringLiteral("\ufeff員工碼,日期,星期,開始,時數,補休,\"備註, 說明\",時間\r\n").toUtf8());
        QVERIFY(saveSheet(*document, path_));
        QCOMPARE(sheetOf(path_, 1).last(), QStringLiteral("filter A1:H1"));
    }

    void anyTextAndNumberLeavesAReadableSpreadsheet() {
        TestStore store;
        const QStringList parts{QStringLiteral("<&>\"'"),     QStringLiteral("\u0001\u001f"),
                                QStringLiteral("\n\t"),       QStringLiteral("]]>"),
                                QStringLiteral("=A1"),        QStringLiteral("日"),
                                QStringLiteral("\U00020BB7"), QString(QChar(0xffff)),
                                QStringLiteral(" "),          QStringLiteral("_x0041_")};
        std::mt19937 chance(7);
        QStringList texts{QString(40000, u'長')};
        for (int row = 0; row < 300; ++row) {
            QString text;
            for (auto part = chance() % 6 + 1; part > 0; --part)
                text += parts[static_cast<qsizetype>(chance() % 10)];
            texts += text;
        }
        const double numbers[] = {0, -0.0, 1e300, -1e-300, 0.1, 123456789012345678.0, HUGE_VAL, -HUGE_VAL};
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Transaction transaction(engine);
        SQLite::Statement insert(engine, "INSERT INTO Holi03 (BusNo, HoliDesc, HoliHours) VALUES (?, ?, ?)");
        for (const QString& text : texts) {
            insert.bind(1, std::to_string(chance()));
            insert.bind(2, text.toStdString());
            insert.bind(3, numbers[chance() % 8]);
            insert.exec();
            insert.reset();
        }
        transaction.commit();
        const auto document = documentOf(
            store,
            templateOf("<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Holi03\"/><columns>"
                       "<column caption=\"註\" width=\"20\">{Holi03.HoliDesc}</column>"
                       "<column caption=\"時\" width=\"20\">{Holi03.HoliHours}</column></columns></report>"));
        QVERIFY(saveSheet(*document, path_));
        const QStringList rows = sheetOf(path_, 1).mid(2);
        QCOMPARE(rows.size(), texts.size() + 1);
        // In the order of the store, whose key is chance's.
        QString scratch;
        for (qsizetype row = 0; row < texts.size(); ++row) {
            QString text = document->texts()
                               .cell(document->layout().cells[0], static_cast<std::size_t>(row), scratch)
                               .toString();
            text = text.left(32767);
            for (QChar& character : text)
                if ((character < u' ' && character != u'\n' && character != u'\t') ||
                    character.unicode() == 0xffff)
                    character = u' ';
            QVERIFY2(rows[row].contains(u'"' + text + u'"'), qPrintable(rows[row]));
            QVERIFY(rows[row].contains(QStringLiteral("B%1=").arg(row + 2)));
        }
    }

    void whatIsStoppedLeavesThereWhatStood() {
        TestStore store;
        fill(store);
        const auto document = documentOf(store, templateOf(Overtime));
        writeContent(path_, "earlier");
        const auto stop = [](std::size_t, std::size_t) { return false; };
        QVERIFY(!saveCsv(*document, path_, stop));
        QVERIFY(!saveSheet(*document, path_, stop));
        QCOMPARE(contentOf(path_), QByteArray("earlier"));
        QCOMPARE(
            QDir(folder_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
            1);
    }

    void formulasOfATableAreDefused_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("field");
        const auto row = [](const char* name, const char16_t* text, const char16_t* field) {
            QTest::newRow(name) << QString::fromUtf16(text) << QString::fromUtf16(field);
        };
        row("equals", u"=1+1", u"'=1+1");
        row("plus", u"+cmd", u"'+cmd");
        row("minus", u"-A1", u"'-A1");
        row("at", u"@SUM(A1)", u"'@SUM(A1)");
        row("tab", u"\t=1", u"'\t=1");
        row("carriage return", u"\r=1", u"\"'\r=1\"");
        row("line feed", u"\n=1", u"\"'\n=1\"");
        row("a wide sign", u"＝1+1", u"'＝1+1");
        row("with a comma", u"=A1,\"x\"", u"\"'=A1,\"\"x\"\"\"");
        row("a negative number", u"-5", u"-5");
        row("with decimals", u"+12.50", u"+12.50");
        row("a sign alone", u"-", u"'-");
        row("two points", u"-1.2.3", u"'-1.2.3");
        row("a sum", u"-1+2", u"'-1+2");
        row("no digits behind the point", u"-1.", u"'-1.");
        row("inside a text", u"a=1", u"a=1");
        row("a blank first", u" =1", u" =1");
        row("empty", u"", u"");
        row("a rare character", u"\U00020BB7", u"\U00020BB7");
    }
    void formulasOfATableAreDefused() {
        QFETCH(const QString, text);
        QFETCH(const QString, field);
        QVERIFY(saveCsv(OneText(text), path_));
        QCOMPARE(contentOf(path_), u"\ufeff欄\r\n%1\r\n"_s.arg(field).toUtf8());
        QVERIFY(saveSheet(OneText(text), path_, {}));
        const QString shown = QString(text).replace(u'\r', u' '); // which no sheet can hold
        QCOMPARE(sheetOf(path_, 1).value(2), text.isEmpty() ? u"filter A1:A2"_s : u"A2=\"%1\" "_s.arg(shown));
    }

    void whatATableWritesItselfIsKept() {
        const double day = static_cast<double>(QDate(2026, 1, 5).toJulianDay());
        const OneText written({PlainTable::Kind::Date, day, u"2026/1/5"});
        QVERIFY(saveCsv(written, path_));
        QCOMPARE(contentOf(path_), u"\ufeff欄\r\n2026/1/5\r\n"_s.toUtf8());
        QVERIFY(saveSheet(written, path_, {}));
        QCOMPARE(sheetOf(path_, 1).value(2), u"A2=46027 "_s);
        QCOMPARE(formatsOf(path_).value(u"A2"_s), u"yyyy/mm/dd"_s);
        // A number is none of the texts that are looked at for signs.
        const OneText number({PlainTable::Kind::Number, -12, u"-12"});
        QVERIFY(saveCsv(number, path_));
        QCOMPARE(contentOf(path_), u"\ufeff欄\r\n-12\r\n"_s.toUtf8());
        QVERIFY(saveSheet(number, path_, {}));
        QCOMPARE(sheetOf(path_, 1).value(2), u"A2=-12 "_s);
        // No sheet counts the days before 1900.
        const OneText early({PlainTable::Kind::Date, day - 60'000, u"1861/9/30"});
        QVERIFY(saveSheet(early, path_, {}));
        QCOMPARE(sheetOf(path_, 1).value(2), u"A2=\"1861/9/30\" "_s);
    }

  private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
};

QTEST_GUILESS_MAIN(DataFilesTest)
#include "DataFilesTest.moc"
