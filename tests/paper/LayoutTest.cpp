#include "paper/PaperSupport.h"
#include "support/Builders.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;

namespace {

/// A template over overtime whose parts are given. A page of 297 mm with margins of 10 has room for 46 rows
/// of 5.8 mm below the captions; a tall margin leaves less.
Template overtime(const QByteArray& before, const QByteArray& body, const QByteArray& after = {},
                  const QByteArray& margins = "10") {
    return templateOf("<report format=\"1\" code=\"T01\" caption=\"加班\"><paper margins=\"" + margins +
                      "\"/><rows from=\"Over01\"/>" + before + body + after + "</report>");
}

const QByteArray TwoColumns =
    "<columns><column caption=\"員工\" width=\"40\">{Over01.EmpNo}</column>"
    "<column caption=\"時數\" width=\"30\" total=\"sum\">{Over01.OverHours}</column></columns>";

void add(TestStore& store, const QString& EmpNo, int hours, int count = 1) {
    for (int row = 0; row < count; ++row)
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", EmpNo}, {u"OverHours", hours}});
}

/// The lines of each page, pages with an empty line between.
QStringList pagesOf(const ReportDocument& document) {
    QStringList lines;
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0)
            lines += QString();
        lines += linesOf(document, page);
    }
    return lines;
}

QStringList lines(std::initializer_list<const char16_t*> texts) {
    QStringList made;
    for (const char16_t* text : texts)
        made += QString::fromUtf16(text);
    return made;
}

} // namespace

/// Where things stand on pages, reckoned with a measure of fixed widths.
class LayoutTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aReportIsPutOnPaperToTheHundredth() {
        TestStore store;
        add(store, QStringLiteral("A01"), 3);
        add(store, QStringLiteral("A01"), 2);
        add(store, QStringLiteral("B02"), 0);
        const Template layout = overtime(
            "<heading><text font=\"title\" align=\"center\">{Title}</text>"
            "<text left=\"期間：{Period}\" right=\"第 {Page} 頁，共 {Pages} 頁\"/></heading>"
            "<group by=\"EmpNo\"><header>員工 {Over01.EmpNo}</header><footer label=\"小計 {Count} "
            "筆\"/></group>",
            "<columns stripes=\"yes\"><column caption=\"員工\" width=\"40\" "
            "once=\"group\">{Over01.EmpNo}</column>"
            "<column caption=\"時數\" width=\"30\" zero=\"blank\" "
            "total=\"sum\">{Over01.OverHours}</column></columns>",
            "<end label=\"總計 {Distinct Over01.EmpNo} 人\"/><foot left=\"{Code}\" right=\"{Today}\"/>");
        const auto document =
            documentOf(store, layout, {}, {{QStringLiteral("Title"), QStringLiteral("公司")}});
        QCOMPARE(goldenText(*document), lines({
                                            u"1 1000 1000 19000 0 center \"公司\"",
                                            u"1 1000 1800 9500 2 left \"期間：\"",
                                            u"1 10500 1800 9500 2 right \"第 1 頁，共 1 頁\"",
                                            u"1 1080 2540 3840 2 left \"員工\"",
                                            u"1 5080 2540 2840 2 right \"時數\"",
                                            u"1 1080 3120 18840 1 left \"員工 A01\"",
                                            u"1 1080 3800 3840 2 left \"A01\"",
                                            u"1 5080 3800 2840 2 right \"3\"",
                                            u"1 5080 4380 2840 2 right \"2\"",
                                            u"1 1080 4960 3840 2 left \"小計 2 筆\"",
                                            u"1 5080 4960 2840 2 right \"5\"",
                                            u"1 1080 5540 18840 1 left \"員工 B02\"",
                                            u"1 1080 6220 3840 2 left \"B02\"",
                                            u"1 1080 6800 3840 2 left \"小計 1 筆\"",
                                            u"1 1080 7380 3840 2 left \"總計 2 人\"",
                                            u"1 5080 7380 2840 2 right \"5\"",
                                            u"1 1000 28200 9500 2 left \"T01\"",
                                            u"1 10500 28200 9500 2 right \"115/01/31\"",
                                        }));
        QCOMPARE(document->title(), QStringLiteral("T01 加班"));
    }

    void noRowsMakeOnePage() {
        TestStore store;
        const Template layout =
            overtime("<heading><text>{Title}{Over01.EmpNo}第 {Page}/{Pages} 頁</text></heading>"
                     "<group by=\"EmpNo\"><header>x</header><footer label=\"y\"/></group>",
                     TwoColumns, "<end label=\"共 {Count} 筆，{Sum Over01.OverHours} 時\"/>");
        const auto document = documentOf(store, layout);
        QCOMPARE(document->pageCount(), 1);
        QCOMPARE(linesOf(*document, 0), lines({u"第 1/1 頁", u"員工|時數", u"共 0 筆，0 時|0"}));
        QCOMPARE(document->pageOf(0), 0);
        QVERIFY(document->outline().isEmpty());
    }

    void rowsThatJustFitAndOneMore() {
        // The margins leave 10 rows of 5.8 mm below the captions, of the same height: 63.8 mm of 297.
        const Template layout = overtime({}, TwoColumns, {}, "50");
        TestStore store;
        const int fit = (29700 - 2 * 5000) / 580 - 1;
        add(store, QStringLiteral("A01"), 1, fit);
        QCOMPARE(documentOf(store, layout)->pageCount(), 1);
        add(store, QStringLiteral("B02"), 2);
        const auto more = documentOf(store, layout);
        QCOMPARE(more->pageCount(), 2);
        QCOMPARE(linesOf(*more, 0).size(), fit + 1);
        QCOMPARE(linesOf(*more, 1), lines({u"員工|時數", u"B02|2"}));
        QCOMPARE(more->pageOf(static_cast<std::size_t>(fit) - 1), 0);
        QCOMPARE(more->pageOf(static_cast<std::size_t>(fit)), 1);
    }

    void theLastRowKeepsFootersAndTotal() {
        // Groups of one row each: header, row, footer, and at the very end the total.
        const Template layout =
            overtime("<group by=\"EmpNo\"><header>組 {Over01.EmpNo}</header><footer label=\"小計\"/></group>",
                     TwoColumns, "<end label=\"總計\"/>", "50");
        TestStore store;
        // 197 mm less the captions leave 191.2: a header of 6.8, rows, a footer and the total of 5.8 each.
        add(store, QStringLiteral("A"), 1, 29);
        QCOMPARE(documentOf(store, layout)->pageCount(), 1); // 186.6
        add(store, QStringLiteral("A"), 1);
        const auto parted = documentOf(store, layout);
        QCOMPARE(parted->pageCount(), 2); // 192.4: neither the total nor the footer goes without the last row
        QCOMPARE(linesOf(*parted, 0).size(), 2 + 29);
        QCOMPARE(linesOf(*parted, 1), lines({u"員工|時數", u"A|1", u"小計|30", u"總計|30"}));
    }

    void aHeaderKeepsItsFirstRow() {
        const Template layout =
            overtime("<group by=\"EmpNo\"><header>組 {Over01.EmpNo}</header></group>", TwoColumns, {}, "50");
        TestStore store;
        add(store, QStringLiteral("A"), 1,
            30); // 180.8 of 191.2, which leaves room for a header without a row
        add(store, QStringLiteral("B"), 1);
        const auto document = documentOf(store, layout);
        QCOMPARE(linesOf(*document, 0).size(), 2 + 30);
        QCOMPARE(linesOf(*document, 1), lines({u"員工|時數", u"組 B", u"B|1"}));
    }

    void aHeaderIsRepeatedOnTheNextPage() {
        const Template layout = overtime("<group by=\"EmpNo\" repeat=\"yes\" in-tree=\"{Over01.EmpNo}\">"
                                         "<header>組 {Over01.EmpNo}{Continued}</header></group>",
                                         TwoColumns, {}, "50");
        TestStore store;
        add(store, QStringLiteral("A"), 1, 40);
        add(store, QStringLiteral("B"), 2, 2);
        const auto document = documentOf(store, layout);
        QCOMPARE(document->pageCount(), 2);
        QCOMPARE(linesOf(*document, 0).mid(0, 3), lines({u"員工|時數", u"組 A", u"A|1"}));
        QCOMPARE(linesOf(*document, 1).mid(0, 3), lines({u"員工|時數", u"組 A（續）", u"A|1"}));
        QCOMPARE(linesOf(*document, 1).mid(linesOf(*document, 1).size() - 3),
                 lines({u"組 B", u"B|2", u"B|2"}));
        QCOMPARE(document->outline().size(), 2);
        QCOMPARE(document->outline()[1].text, QStringLiteral("B"));
        QCOMPARE(document->outline()[0].page, 0);
        QCOMPARE(document->outline()[1].page, 1);
    }

    void aGroupCanBeginANewPage() {
        const Template layout = overtime(
            "<group by=\"EmpNo\" new-page=\"yes\"><footer label=\"小計 {Count}\"/></group>", TwoColumns);
        TestStore store;
        add(store, QStringLiteral("A"), 1, 2);
        add(store, QStringLiteral("B"), 2);
        QCOMPARE(pagesOf(*documentOf(store, layout)),
                 lines({u"員工|時數", u"A|1", u"A|1", u"小計 2|2", u"", u"員工|時數", u"B|2", u"小計 1|2"}));
    }

    void aSummaryHasALineForEachGroup() {
        TestStore store;
        for (const auto& [unit, code, hours, rest] : {std::tuple{u"盤點", u"A1", 3, true},
                                                      {u"盤點", u"A1", 2, false},
                                                      {u"盤點", u"A2", 1, true},
                                                      {u"搬運", u"A1", 8, false}})
            insertRow(store.database(), QStringLiteral("Over01"),
                      {{u"Memo", unit}, {u"EmpNo", code}, {u"OverHours", hours}, {u"Rest", rest}});
        const Template layout = overtime(
            "<group by=\"Memo\"><footer label=\"{Over01.Memo}合計\"/></group><group by=\"EmpNo\"/>",
            "<columns summary=\"yes\"><column caption=\"員工碼員工碼\" width=\"40\">{Over01.EmpNo}</column>"
            "<column caption=\"次數\" width=\"15\" total=\"count\">{Over01.OverHours}</column>"
            "<column caption=\"補休\" width=\"15\" total=\"count\">{Over01.Rest}</column>"
            "<column caption=\"時數\" width=\"15\" total=\"sum\">{Over01.OverHours}</column>"
            "<column caption=\"日.時\" width=\"15\" format=\"day.hour\" "
            "total=\"sum\">{Over01.OverHours}</column>"
            "<column caption=\"休\" width=\"15\" total=\"sum\" "
            "when=\"Over01.Rest\">{Over01.OverHours}</column>"
            "<column caption=\"最多\" width=\"15\" total=\"max\">{Over01.OverHours}</column>"
            "<column caption=\"人數\" width=\"15\" total=\"distinct\">{Over01.EmpNo}</column></columns>",
            "<end label=\"總計\"/>");
        QCOMPARE(pagesOf(*documentOf(store, layout)),
                 lines({u"員工碼員工碼|次數|補休|時數|日.時|休|最多|人數", u"A1|1|0|8|1.0|0|8|1",
                        u"搬運合計|1|0|8|1.0|0|8|1", u"A1|2|1|5|0.5|3|3|1", u"A2|1|1|1|0.1|1|1|1",
                        u"盤點合計|3|2|6|0.6|4|3|2", u"總計|4|2|14|1.6|4|8|2"}));
    }

    void aSummaryTellsOnceWhatItsGroupsShare() {
        TestStore store;
        for (const auto& [unit, code] : {std::pair{u"盤點", u"A1"}, {u"盤點", u"A2"}, {u"搬運", u"A2"}})
            insertRow(store.database(), QStringLiteral("Over01"),
                      {{u"Memo", unit}, {u"EmpNo", code}, {u"OverHours", 1}});
        const Template layout =
            overtime("<group by=\"Memo\"/><group by=\"EmpNo\"/>",
                     "<columns summary=\"yes\"><column caption=\"備註\" width=\"40\" "
                     "once=\"group\">{Over01.Memo}</column>"
                     "<column caption=\"員工碼\" width=\"40\">{Over01.EmpNo}</column></columns>");
        QCOMPARE(pagesOf(*documentOf(store, layout)), lines({u"備註|員工碼", u"搬運|A2", u"盤點|A1", u"A2"}));
    }

    void aTextShrinksAndThenWraps() {
        TestStore store;
        for (const char16_t* text : {u"一二三四五", u"一二三四五六七", u"一二三四五六七八九"})
            insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"A"}, {u"Memo", text}});
        const auto items = [&](const char* fit) {
            const Template layout =
                overtime({}, QByteArray("<columns><column caption=\"碼\" width=\"10\">{Over01.EmpNo}</column>"
                                        "<column caption=\"註\" width=\"11.6\" fit=\"") +
                                 fit + "\">{Over01.Memo}</column></columns>");
            QStringList told;
            for (const Item& item : itemsOf(*documentOf(store, layout), 0)) {
                if (item.x > 1500 && item.y > 1500 && !item.text.isEmpty())
                    told += QStringLiteral("%1 %2 %3").arg(item.y).arg(item.scale).arg(item.text);
            }
            return told;
        };
        QCOMPARE(items("shrink-wrap"), lines({u"1620 100 一二三四五", u"2200 71 一二三四五六七",
                                              u"2780 100 一二三四五", u"3280 100 六七八九"}));
        QCOMPARE(items("shrink"),
                 lines({u"1620 100 一二三四五", u"2200 71 一二三四五六七", u"2780 70 一二三四五六…"}));
    }

    /// What stands once makes its own row higher and none of those that leave it out; where it comes again at
    /// the top of a page, on a row without that room, it shrinks.
    void whatStandsOnceGrowsOnce() {
        TestStore store;
        for (int row = 0; row < 4; ++row)
            insertRow(store.database(), QStringLiteral("Over01"),
                      {{u"EmpNo", u"A"}, {u"Memo", u"一二三四五六七八九"}, {u"OverHours", row}});
        Template layout =
            overtime("<group by=\"EmpNo\"/>",
                     "<columns><column caption=\"註\" width=\"11.6\" once=\"group\" "
                     "fit=\"shrink-wrap\">{Over01.Memo}</column>"
                     "<column caption=\"時\" width=\"10\">{Over01.OverHours}</column></columns>");
        layout.paperHeight = 2 * 1000 + 580 + 500 + 3 * 580; // three rows, the first of two lines
        QCOMPARE(pagesOf(*documentOf(store, layout)), lines({u"註|時", u"一二三四五", u"六七八九", u"0", u"1",
                                                             u"2", u"", u"註|時", u"一二三四五六…|3"}));
    }

    void copiedTextKeepsItsColumns() {
        TestStore store;
        insertRow(store.database(), QStringLiteral("Over01"),
                  {{u"EmpNo", u"A"}, {u"Memo", u"一二三四五六七八九\n十"}, {u"OverHours", 3}});
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"A"}, {u"OverHours", 2}});
        const Template layout =
            overtime("<group by=\"EmpNo\"><header>員工 {Over01.EmpNo}</header></group>",
                     "<columns><column caption=\"碼\" width=\"10\" once=\"group\">{Over01.EmpNo}</column>"
                     "<column caption=\"註\" width=\"20\" fit=\"wrap\">{Over01.Memo}</column>"
                     "<column caption=\"時\" width=\"20\" total=\"sum\">{Over01.OverHours}</column>"
                     "<column caption=\"始\" width=\"20\">{Over01.BegTime}</column></columns>",
                     "<end label=\"總計\"/>");
        QCOMPARE(documentOf(store, layout)->textOf(0).split(u'\n'),
                 lines({u"碼\t註\t時\t始", u"員工 A", u"A\t一二三四五六七八九 十\t3\t", u"\t\t2\t",
                        u"總計\t\t5\t"}));
    }

    void totalsByAValueStandAtTheEnd() {
        TestStore store;
        add(store, QStringLiteral("B"), 1);
        add(store, QStringLiteral("A"), 2);
        add(store, QStringLiteral("B"), 4);
        insertRow(store.database(), QStringLiteral("Over01"), {{u"OverHours", 8}});
        const Template layout =
            overtime({}, TwoColumns,
                     "<end label=\"總計\"><totals by=\"EmpNo\" label=\"{Over01.EmpNo} {Count} 筆\"/></end>");
        QCOMPARE(linesOf(*documentOf(store, layout), 0),
                 lines({u"員工|時數", u"B|1", u"A|2", u"B|4", u"8", u" 1 筆|8", u"A 1 筆|2", u"B 2 筆|5",
                        u"總計|15"}));
    }

    void aFlowStandsSideBySide() {
        TestStore store;
        for (int day = 1; day <= 5; ++day)
            insertRow(store.database(), QStringLiteral("Rule03"),
                      {{u"EmpNo", u"A"}, {u"YMD", QDate(2026, 1, day)}, {u"TimeNo", day == 3 ? u"" : u"1"}});
        insertRow(store.database(), QStringLiteral("Rule03"),
                  {{u"EmpNo", u"B"}, {u"YMD", QDate(2026, 1, 1)}, {u"TimeNo", u"2"}});
        const Template layout =
            templateOf("<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Rule03\"/>"
                       "<group by=\"EmpNo\"><header>{Rule03.EmpNo}</header></group><order by=\"YMD\"/>"
                       "<flow across=\"3\"><cell format=\"dd\">{Rule03.YMD}</cell><cell "
                       "empty=\"休\">{Rule03.TimeNo}</cell></flow></report>");
        QStringList placed;
        for (const Item& item : itemsOf(*documentOf(store, layout), 0))
            placed += QStringLiteral("%1 %2 %3").arg(item.x).arg(item.y).arg(item.text);
        QCOMPARE(placed,
                 lines({u"1080 1040 A", u"1080 1720 1", u"1080 2220 1", u"7413 1720 2", u"7413 2220 1",
                        u"13746 1720 3", u"13746 2220 休", u"1080 2800 4", u"1080 3300 1", u"7413 2800 5",
                        u"7413 3300 1", u"1080 3880 B", u"1080 4560 1", u"1080 5060 2"}));
    }

    void aCardIsKeptWhole() {
        TestStore store;
        for (int number = 1; number <= 9; ++number)
            insertRow(store.database(), QStringLiteral("Over01"),
                      {{u"EmpNo", QStringLiteral("A%1").arg(number)},
                       {u"Memo", u"盤點盤點盤點盤點盤點盤點盤點盤點盤點"}});
        const Template layout =
            overtime({},
                     "<card across=\"2\" caption-width=\"20\"><field caption=\"員工\">{Over01.EmpNo}</field>"
                     "<field caption=\"時數\" empty=\"無\">{Over01.OverHours}</field>"
                     "<field caption=\"備註\" fit=\"wrap\">{Over01.Memo}</field></card>",
                     {}, "50");
        // A memo of 36 mm takes two lines of the 33.4 mm that are left to it.
        const auto document = documentOf(store, layout);
        // A card takes 5.8 + 10.8 + 2 mm, so that ten would fit.
        QCOMPARE(document->pageCount(), 1);
        QCOMPARE(goldenText(*document).mid(0, 9),
                 lines({u"1 5080 5040 1840 2 left \"員工\"", u"1 7080 5040 3340 2 left \"A1\"",
                        u"1 10580 5040 1840 2 left \"時數\"", u"1 12580 5040 3340 2 right \"無\"",
                        u"1 5080 5620 1840 2 left \"備註\"",
                        u"1 7080 5620 3340 2 left \"盤點盤點盤點盤點盤點盤點盤點盤點\"",
                        u"1 7080 6120 3340 2 left \"盤點\"", u"1 5080 6900 1840 2 left \"員工\"",
                        u"1 7080 6900 3340 2 left \"A2\""}));
    }

    void aRowHigherThanAPageIsCutAndEndsThere() {
        TestStore store;
        insertRow(store.database(), QStringLiteral("Over01"),
                  {{u"EmpNo", u"A"}, {u"Memo", u"盤盤盤盤盤盤盤盤盤盤盤盤"}});
        add(store, QStringLiteral("B"), 1);
        Template layout =
            overtime({}, "<columns><column caption=\"\" width=\"20\">{Over01.EmpNo}</column>"
                         "<column caption=\"\" width=\"6\" fit=\"wrap\">{Over01.Memo}</column></columns>");
        layout.paperHeight = 2 * 1000 + 580 + 1300; // room for two lines of the five
        const auto document = documentOf(store, layout);
        QCOMPARE(pagesOf(*document), lines({u"A|盤盤", u"盤盤", u"", u"B"}));
    }

    void textsThatAreTooLongAreCutShrunkOrWrapped_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("fit");
        QTest::addColumn<QStringList>("shown");
        // 20 mm less the padding are 18.4: nine characters of 2 mm, eighteen of 1 mm.
        const auto row = [](const char* title, const char16_t* text, const char* fit,
                            std::initializer_list<const char16_t*> shown) {
            QTest::newRow(title) << QString::fromUtf16(text) << QByteArray(fit) << lines(shown);
        };
        row("just fits", u"一二三四五六七八九", "cut", {u"一二三四五六七八九"});
        row("cut", u"一二三四五六七八九十", "cut", {u"一二三四五六七八…"});
        row("shrunk", u"一二三四五六七八九十", "shrink", {u"一二三四五六七八九十 92%"});
        row("shrunk as far as it goes and cut", u"一二三四五六七八九十一二三四五", "shrink",
            {u"一二三四五六七八九十一二… 70%"});
        row("wrapped", u"一二三四五六七八九十", "wrap", {u"一二三四五六七八九", u"十"});
        row("no closing mark at the start of a line", u"一二三四五六七八九，十", "wrap",
            {u"一二三四五六七八", u"九，十"});
        row("no opening mark at its end", u"一二三四五六七八（九）", "wrap",
            {u"一二三四五六七八", u"（九）"});
        row("words stay whole", u"one two three four five", "wrap", {u"one two three four", u"five"});
        row("a word that is too long", u"abcdefghijklmnopqrstuvwxyz", "wrap",
            {u"abcdefghijklmnopqr", u"stuvwxyz"});
        row("own lines", u"一\n\n二", "wrap", {u"一", u"", u"二"});
        row("five lines at most",
            u"一二三四五六七八九一二三四五六七八九一二三四五六七八九一二三四五六七八九一二三四五六七八九十",
            "wrap",
            {u"一二三四五六七八九", u"一二三四五六七八九", u"一二三四五六七八九", u"一二三四五六七八九",
             u"一二三四五六七八…"});
        row("no half characters",
            u"\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7"
            u"\U00020BB7",
            "wrap",
            {u"\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7\U00020BB7",
             u"\U00020BB7"});
    }
    void textsThatAreTooLongAreCutShrunkOrWrapped() {
        QFETCH(const QString, text);
        QFETCH(const QByteArray, fit);
        TestStore store;
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"A"}, {u"Memo", text}});
        const Template layout = overtime({}, "<columns><column caption=\"\" width=\"20\" fit=\"" + fit +
                                                 "\">{Over01.Memo}</column></columns>");
        QStringList shown;
        int y = 0;
        for (const Item& item : itemsOf(*documentOf(store, layout), 0)) {
            if (item.kind != Item::Kind::Text)
                continue;
            // Lines without a text are left out of the page and keep their room.
            for (; y > 0 && y + 500 < item.y; y += 500)
                shown += QString();
            y = item.y;
            shown += item.scale == 100 ? item.text : item.text + QStringLiteral(" %1%").arg(item.scale);
        }
        QTEST(shown, "shown");
    }

    void valuesAreWrittenAsTheTemplateSays_data() {
        QTest::addColumn<QByteArray>("cell");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char* cell, const char16_t* shown) {
            QTest::newRow(cell) << QByteArray(cell) << QString::fromUtf16(shown);
        };
        row(">{Holi03.HoliBegDate}", u"115/01/05");
        row(" format=\"date\">{Holi03.HoliBegDate}", u"2026/01/05");
        row(" format=\"mm/dd\">{Holi03.HoliBegDate}", u"01/05");
        row(" format=\"dd\">{Holi03.HoliBegDate}", u"5");
        row(" format=\"weekday\">{Holi03.HoliBegDate}", u"一");
        row(">{Holi03.HoliBegTime}", u"08:05");
        row(">{Holi03.TransDate}", u"115/12/31 23:59");
        row(" format=\"date\">{Holi03.TransDate}", u"2026/12/31");
        row(" format=\"hh:mm\">{Holi03.TransDate}", u"23:59");
        row(">{Holi03.HoliHours}", u"1.4");
        row(" format=\"0\">{Holi03.HoliHours}", u"1");
        row(" format=\"0.0\">{Holi03.HoliHours}", u"1.4");
        row(">{Holi03.Money}", u"是");
        row(">{Holi03.TransType}", u"");
        row(" words=\"不扣|扣\">{Holi03.Money}", u"扣");
        row(" words=\"不扣|扣\">{Holi03.TransType}", u"不扣");
        row(">{Holi03.HoliEndDate}", u"");
        row(" empty=\"無\">{Holi03.HoliEndDate}", u"無");
        row(" empty=\"無\">{Holi03.Account}", u"無");
        row(" empty=\"無\">{Holi03.HoliDesc}", u"無");
        row(">{Holi03.EmpNo}{Holi03.Money:|*}", u"007*");
        row(">{Holi03.EmpNo}　{Holi03.HoliBegDate:mm/dd}", u"007　01/05");
        row(" when=\"Holi03.Money\">{Holi03.EmpNo}", u"007");
        row(" when=\"Holi03.TransType\">{Holi03.EmpNo}", u"");
        row(" format=\"day.hour\">{Holi03.HoliHours} + {Holi03.HoliHours}", u"0.3");
        row(" format=\"months\">{Holi03.HoliHours}", u"0年01月");
    }
    void valuesAreWrittenAsTheTemplateSays() {
        QFETCH(const QByteArray, cell);
        TestStore store;
        insertRow(store.database(), QStringLiteral("Holi03"),
                  {{u"BusNo", u"1"},
                   {u"EmpNo", u"007"},
                   {u"HoliBegDate", QDate(2026, 1, 5)},
                   {u"HoliBegTime", QTime(8, 5, 59)},
                   {u"HoliHours", 1.4},
                   {u"HoliDesc", u""},
                   {u"Money", true},
                   {u"TransDate", QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59))}});
        const Template layout =
            templateOf("<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Holi03\"/>"
                       "<columns><column caption=\"\" width=\"60\"" +
                       cell + "</column></columns></report>");
        QTEST(linesOf(*documentOf(store, layout), 0).last(), "shown");
    }

    void emptyTextsAreShownAsNothingWhereThereAreNoOthers() {
        TestStore store;
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u""}});
        const Template layout = overtime(
            {},
            "<columns><column caption=\"\" width=\"40\">[{Over01.EmpNo}]{Over01.Memo}</column></columns>");
        QCOMPARE(linesOf(*documentOf(store, layout), 0), lines({u"[]"}));
    }

    void thePeriodIsTheMasksOrElseTheFormulas() {
        Selection selection;
        selection.first = QDate(2026, 1, 5);
        selection.last = QDate(2026, 2, 1);
        QCOMPARE(periodText({}, selection), QStringLiteral("115/01/05 ～ 115/02/01"));
        QCOMPARE(periodText({{QStringLiteral("Sdate"), QStringLiteral("99/01/05")},
                             {QStringLiteral("Edate"), QStringLiteral("99/02/01")}},
                            selection),
                 QStringLiteral("99/01/05 ～ 99/02/01"));
        QCOMPARE(periodText({{QStringLiteral("Sdate"), QString()}}, selection),
                 QStringLiteral("115/01/05 ～ 115/02/01"));
        // A mask holds no day from 2011 on.
        QCOMPARE(periodText({{QStringLiteral("Sdate"), QStringLiteral("99/12/20")},
                             {QStringLiteral("Edate"), QString()}},
                            selection),
                 QStringLiteral("99/12/20 ～ 115/02/01"));
        selection.last = selection.first;
        QCOMPARE(periodText({}, selection), QStringLiteral("115/01/05"));
        QCOMPARE(periodText({{QStringLiteral("Sdate"), QStringLiteral("99/01/05")},
                             {QStringLiteral("Edate"), QStringLiteral("99/02/01")}},
                            selection),
                 QStringLiteral("99/01/05"));
        QCOMPARE(periodText({}, {}), QString());
    }
};

QTEST_GUILESS_MAIN(LayoutTest)
#include "LayoutTest.moc"
