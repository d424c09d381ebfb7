#include "paper/TemplateReader.h"
#include "paper/TemplateText.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace pontrel;
using namespace pontrel::paper;

namespace {

/// A small template, in which the named part is put in place of the one that is there.
QByteArray sound(const QByteArray& part = {}, const QByteArray& place = {}) {
    QByteArray text = "<report format=\"1\" code=\"T\" caption=\"試\">\n"
                      "  <paper size=\"A4\"/>\n"
                      "  <rows from=\"Atte02\">\n"
                      "    <look-up table=\"Base06\" on=\"EmpNo\"/>\n"
                      "  </rows>\n"
                      "  <group by=\"Atte02.EmpNo\"><footer label=\"小計\"/></group>\n"
                      "  <columns>\n"
                      "    <column caption=\"日期\" width=\"22\">{Atte02.UseDate}</column>\n"
                      "  </columns>\n"
                      "</report>\n";
    if (!part.isEmpty() || !place.isEmpty()) {
        if (text.count(place) != 1)
            qFatal("the place does not stand once in the template");
        text.replace(place, part);
    }
    return text;
}

Template read(const QByteArray& text) {
    return readTemplate(TemplateText(QStringLiteral("T.rpt"), text));
}

QString faultOf(const QByteArray& text) {
    try {
        (void)read(text);
    } catch (const TemplateFault& fault) {
        return fault.text();
    }
    return QStringLiteral("(none)");
}

RunTimeError errorOfFile(const QString& path) {
    try {
        (void)readTemplate(path);
    } catch (const RunTimeError& failure) {
        return failure;
    }
    return {0, QString()};
}

QString fieldNames(const Template& made, const std::vector<int>& places) {
    QStringList names;
    for (const int place : places)
        names += made.field(place).name();
    return names.join(u' ');
}

} // namespace

/// What a template's file says, and what is told of one that cannot be used.
class TemplateTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void readsAReport() {
        const Template made = readTemplate(QStringLiteral(PONTREL_REPORTS "/C02.rpt"));
        QCOMPARE(made.code, QStringLiteral("C02"));
        QCOMPARE(made.caption, QStringLiteral("單位別員工出勤狀況表"));
        QCOMPARE(made.paperWidth, 29700);
        QCOMPARE(made.paperHeight, 21000);
        QCOMPARE(made.contentWidth(), 27700);
        QCOMPARE(made.fonts[TitleFont].points, 16.0);
        QVERIFY(made.fonts[TitleFont].bold);
        QVERIFY(!made.fonts[BodyFont].bold);
        QCOMPARE(made.from->name, QStringLiteral("Atte02"));
        QCOMPARE(made.lookUps.size(), std::size_t{3});
        QCOMPARE(fieldNames(made, made.lookUps[1].on), QStringLiteral("Base06.UnitNo"));
        QCOMPARE(made.groups.size(), std::size_t{2});
        QCOMPARE(made.field(made.groups[0].by).name(), QStringLiteral("Base06.UnitNo"));
        QVERIFY(made.groups[0].repeat && made.groups[0].hasHeader && made.groups[0].hasFooter);
        QVERIFY(!made.groups[1].repeat && !made.groups[1].hasHeader && made.groups[1].hasFooter);
        QCOMPARE(made.order.size(), std::size_t{2});
        QCOMPARE(made.cells.size(), std::size_t{13});
        const Cell& late = made.cells[10];
        QCOMPARE(late.caption, QStringLiteral("遲到(分)"));
        QCOMPARE(late.left, 21700);
        QCOMPARE(late.width, 2000);
        QCOMPARE(fieldNames(made, late.fields), QStringLiteral("Atte02.Delay1 Atte02.Delay3"));
        QVERIFY(late.zeroBlank);
        QCOMPARE(late.align, Align::Right);
        QCOMPARE(late.total, Total::Sum);
        QCOMPARE(made.cells[2].format, Format::Roc);
        QCOMPARE(made.cells[2].align, Align::Center);
        QCOMPARE(made.cells[4].pieces.size(), std::size_t{3});
        QCOMPARE(made.cells[12].words, (QStringList{QString(), QStringLiteral("是")}));
        QVERIFY(made.hasEnd && made.hasFoot);
    }

    void theFormatFollowsTheFieldWhereNoneIsGiven_data() {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("align");
        const auto row = [](const char* title, const char* field, Format format, Align align) {
            QTest::newRow(title) << QByteArray(field) << static_cast<int>(format) << static_cast<int>(align);
        };
        row("a date", "{Atte02.UseDate}", Format::Roc, Align::Center);
        row("a time", "{Atte02.Time1}", Format::HourMinute, Align::Center);
        row("a number", "{Atte02.Delay1}", Format::Number, Align::Right);
        row("a sum", "{Atte02.Delay1}+{Atte02.Delay3}", Format::Number, Align::Right);
        row("yes or no", "{Atte02.Expt}", Format::Words, Align::Center);
        row("a text", "{Base06.EmpName}", Format::Text, Align::Left);
        row("several", "{Base06.EmpNo}-{Base06.EmpName}", Format::Text, Align::Left);
    }
    void theFormatFollowsTheFieldWhereNoneIsGiven() {
        QFETCH(const QByteArray, field);
        const Template made = read(sound(field, "{Atte02.UseDate}"));
        QTEST(static_cast<int>(made.cells[0].format), "format");
        QTEST(static_cast<int>(made.cells[0].align), "align");
    }

    void namesStandInAnyCaseOfLetters() {
        const Template made = read(sound("{atte02.usedate}", "{Atte02.UseDate}"));
        QCOMPARE(made.field(made.cells[0].fields[0]).name(), QStringLiteral("Atte02.UseDate"));
    }

    void aFaultTellsPlaceAndChoice_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("told");
        const auto row = [](const char* title, const QByteArray& text, const char16_t* told) {
            QTest::newRow(title) << text << QString::fromUtf16(told);
        };
        row("unknown element", sound("<colum ", "<column "),
            u"T.rpt 第 8 行第 61 字：XML 寫法有誤（Opening and ending tag mismatch.）");
        row("unknown element, closed",
            sound("<colum/>", "<column caption=\"日期\" width=\"22\">{Atte02.UseDate}</column>"),
            u"T.rpt 第 8 行第 5 字：<colum> 不認得，可用 <column>");
        row("unknown root", "<reports/>", u"T.rpt 第 1 行第 1 字：<reports> 不認得，可用 <report>");
        row("unknown attribute", sound("<paper sise=\"A4\"/>", "<paper size=\"A4\"/>"),
            u"T.rpt 第 2 行第 10 字：<paper> 的 sise 不認得，可用 size、orientation、margins");
        row("an unknown choice", sound("\"A6\"", "\"A4\""),
            u"T.rpt 第 2 行第 10 字：size 不可為「A6」，可用 A3、A4、A5、B4、B5、Letter");
        row("an invalid number", sound("width=\"wide\"", "width=\"22\""),
            u"T.rpt 第 8 行第 26 字：width 不可為「wide」，要 3 到 400 的數字");
        row("a number that is no number", sound("width=\"nan\"", "width=\"22\""),
            u"T.rpt 第 8 行第 26 字：width 不可為「nan」，要 3 到 400 的數字");
        row("a missing attribute", sound({}, " width=\"22\""), u"T.rpt 第 8 行第 5 字：<column> 缺少 width");
        row("another format", sound("format=\"2\"", "format=\"1\""),
            u"T.rpt 第 1 行第 9 字：format 不可為「2」，可用 1");
        row("an element twice", sound("<paper/><paper/>", "<paper size=\"A4\"/>"),
            u"T.rpt 第 2 行第 11 字：<paper> 只能有一個");
        row("text in between", sound("<paper/>字", "<paper size=\"A4\"/>"),
            u"T.rpt 第 2 行第 11 字：<report> 裡不可有文字「字」");
        row("no rows", "<report format=\"1\" code=\"T\" caption=\"\"><columns/></report>",
            u"T.rpt 第 1 行第 1 字：<report> 缺少 <rows>");
        row("no columns",
            sound("<columns></columns>", "<columns>\n    <column caption=\"日期\" "
                                         "width=\"22\">{Atte02.UseDate}</column>\n  </columns>"),
            u"T.rpt 第 7 行第 3 字：<columns> 要有 1 到 100 個元素");
        row("unknown table", sound("\"Base66\"", "\"Base06\""),
            u"T.rpt 第 4 行第 14 字：資料表 Base66 不認得，可用 "
            u"Base01、Base02、Base03、Base04、Base05、Base06、"
            u"Rule01、Rule03、Rule04、Atte01、AtteTemp、Atte02、Atte03、AtteTemp1、View02、Holi01、Holi02、"
            u"Holi03、Holi04、Canc01、Canc02、View01、View03、Over01、Syst01、Syst03");
        row("the accounts",
            sound("<look-up table=\"syst02\" on=\"EmpNo\"/>", "<look-up table=\"Base06\" on=\"EmpNo\"/>"),
            u"T.rpt 第 4 行第 14 字：資料表 syst02 不認得，可用 "
            u"Base01、Base02、Base03、Base04、Base05、Base06、"
            u"Rule01、Rule03、Rule04、Atte01、AtteTemp、Atte02、Atte03、AtteTemp1、View02、Holi01、Holi02、"
            u"Holi03、Holi04、Canc01、Canc02、View01、View03、Over01、Syst01、Syst03");
        row("unknown column", sound("{Base06.Name}", "{Atte02.UseDate}"),
            u"T.rpt 第 8 行第 37 字：Base06 沒有欄位 Name，可用 "
            u"EmpNo、EmpName、Sex、IdNo、UnitNo、ClsNo、TitleNo、"
            u"WorkNo、SuitNo、Birth、ArriveDate、LeaveDate、IniArrDate、BreakY、SoldierY、HoliExper、ThisYear"
            u"HD、"
            u"ThisYearUse、ThisYearLeft、LastYearHD、LastYearUse、LastYearLeft、LeaveHD、LeaveUse、LeaveLeft"
            u"、"
            u"SickHD、SickUse、SickLeft、Memo、Telephone、Address、ExperLevel、SalaryLevel、SalaryPoint、"
            u"BackGround、Exam、Webpsw、WebNo");
        row("a table that the rows do not look up", sound("{Base02.Unit}", "{Atte02.UseDate}"),
            u"T.rpt 第 8 行第 37 字：<rows> 裡沒有資料表 Base02，可用 Atte02、Base06");
        row("unknown value", sound("{Titel}", "{Atte02.UseDate}"),
            u"T.rpt 第 8 行第 37 字：{Titel} 不認得，可用 "
            u"Title、Sdate、Edate、Att、Cushion、Delay、Earlier、Absent、Employee、"
            u"Caption、Code、Period、Today、表.欄位");
        row("unknown value of a total", sound("label=\"{Summe Atte02.Delay1}\"", "label=\"小計\""),
            u"T.rpt 第 6 行第 36 字：<rows> 裡沒有資料表 Summe Atte02，可用 Atte02、Base06");
        row("a brace that stays open", sound("日 {Atte02.UseDate", "{Atte02.UseDate}"),
            u"T.rpt 第 8 行第 39 字：{ 沒有用 } 關閉");
        row("a brace that closes nothing", sound("Atte02.UseDate}", "{Atte02.UseDate}"),
            u"T.rpt 第 8 行第 37 字：} 之前沒有 {");
        row("nothing in a column", sound({}, "{Atte02.UseDate}"), u"T.rpt 第 8 行第 5 字：<column> 沒有內容");
        row("half a key",
            sound("<look-up table=\"Rule03\" on=\"EmpNo\"/>", "<look-up table=\"Base06\" on=\"EmpNo\"/>"),
            u"T.rpt 第 4 行第 29 字：Rule03 的鍵是 YMD、EmpNo，on 要同樣多的欄位");
        row("a table without a key",
            sound("<look-up table=\"Over01\" on=\"EmpNo\"/>", "<look-up table=\"Base06\" on=\"EmpNo\"/>"),
            u"T.rpt 第 4 行第 29 字：資料表 Over01 沒有鍵，不能查");
        row("a key of another type", sound("on=\"UseDate\"", "on=\"EmpNo\""),
            u"T.rpt 第 4 行第 29 字：欄位 Atte02.UseDate 的型態與 Base06.EmpNo 不同");
        row("a table looked up twice", sound("table=\"Atte02\"", "table=\"Base06\""),
            u"T.rpt 第 4 行第 14 字：資料表 Atte02 已經在 <rows> 裡");
        row("too wide", sound("width=\"190.01\"", "width=\"22\""),
            u"T.rpt 第 7 行第 3 字：各欄共寬 190.01 mm，紙上只有 190 mm");
        row("a format that does not fit", sound("width=\"22\" format=\"0.0\"", "width=\"22\""),
            u"T.rpt 第 8 行第 37 字：format 不合欄位 Atte02.UseDate 的型態");
        row("words of a date", sound("width=\"22\" words=\"a|b\"", "width=\"22\""),
            u"T.rpt 第 8 行第 37 字：words 不合欄位 Atte02.UseDate 的型態");
        row("a sum of dates", sound("{Atte02.UseDate} + {Atte02.UseDate}", "{Atte02.UseDate}"),
            u"T.rpt 第 8 行第 37 字：欄位 Atte02.UseDate 不是數字，不能相加");
        row("a total of dates", sound("width=\"22\" total=\"sum\"", "width=\"22\""),
            u"T.rpt 第 8 行第 37 字：total=\"sum\" 不合欄位 Atte02.UseDate 的型態");
        row("a total of a text of pieces",
            sound("width=\"22\" total=\"count\">一{Atte02.UseDate}", "width=\"22\">{Atte02.UseDate}"),
            u"T.rpt 第 8 行第 37 字：total 要一個欄位");
        row("a summary with a footer", sound("<columns summary=\"yes\">", "<columns>"),
            u"T.rpt 第 7 行第 3 字：summary 時最內的 <group> 只印一行，不可有 <header>、<footer>、new-page");
        row("a font of no size", sound("<paper/><fonts body=\"bold\"/>", "<paper size=\"A4\"/>"),
            u"T.rpt 第 2 行第 18 字：body 不可為「bold」，要 4 到 72 的點數，可再加 bold");
        row("a heading of half a page",
            sound("<paper/><fonts title=\"72\"/><heading>" +
                      QByteArray("<text font=\"title\">x</text>").repeated(4) + "</heading>",
                  "<paper size=\"A4\"/>"),
            u"T.rpt 第 2 行第 30 字：<heading> 比半頁還高");
        row("day of a text", sound("</group><order by=\"day(EmpNo)\"/>", "</group>"),
            u"T.rpt 第 6 行第 63 字：欄位 EmpNo 不是日期");
        row("broken", sound({}, "</report>"), u"T.rpt 第 11 行第 1 字：檔案在此結束，還有元素沒有關閉");
        row("empty", "", u"T.rpt 第 1 行第 1 字：檔案在此結束，還有元素沒有關閉");
        row("nothing but a remark", "<!-- x -->", u"T.rpt 第 1 行第 11 字：檔案在此結束，還有元素沒有關閉");
        row("no UTF-8", sound("\xA4\xE9", "日期"), u"T.rpt 第 8 行第 22 字：不是 UTF-8 編碼");
        row("an entity bomb",
            "<!DOCTYPE r [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\">]>\n" + sound("&b;", "小計"),
            u"T.rpt 第 1 行第 1 字：不可有 DOCTYPE 與自訂實體");
        row("too deep", QByteArray("<report>").repeated(20), u"T.rpt 第 1 行第 129 字：元素的層數過多");
        row("too large", QByteArray(1024 * 1024 + 1, ' '), u"T.rpt 第 1 行第 1 字：檔案超過 1 MB");
    }
    void aFaultTellsPlaceAndChoice() {
        QFETCH(const QByteArray, text);
        QTEST(faultOf(text), "told");
    }

    void placesAreCountedOverLinesOfBothEnds() {
        QByteArray text =
            sound("<colum/>", "<column caption=\"日期\" width=\"22\">{Atte02.UseDate}</column>");
        text.replace("\n", "\r\n");
        QCOMPARE(faultOf(text), QStringLiteral("T.rpt 第 8 行第 5 字：<colum> 不認得，可用 <column>"));
    }

    void aFileThatCannotBeRead() {
        const QTemporaryDir folder;
        const RunTimeError missing = errorOfFile(folder.filePath(QStringLiteral(".rpt")));
        QCOMPARE(missing.number(), error::FileNotFound);
        QCOMPARE(missing.text(), QStringLiteral("找不到檔案：%1/.rpt").arg(folder.path()));

        const QString inPlace = folder.filePath(QStringLiteral("a01.rpt"));
        QVERIFY(QDir().mkpath(inPlace));
        const RunTimeError refused = errorOfFile(inPlace);
        QCOMPARE(refused.number(), error::FileAccess);
        QCOMPARE(refused.text(), QStringLiteral("無法讀取檔案：%1").arg(inPlace));

        // A gigabyte that takes no room on the disk.
        const QString large = folder.filePath(QStringLiteral("a02.rpt"));
        QFile file(large);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64{1} << 30));
        const RunTimeError tooLarge = errorOfFile(large);
        QCOMPARE(tooLarge.number(), error::FaultyFile);
        QCOMPARE(tooLarge.text(), QStringLiteral("a02.rpt 第 1 行第 1 字：檔案超過 1 MB"));
    }
};

QTEST_GUILESS_MAIN(TemplateTest)
#include "TemplateTest.moc"
