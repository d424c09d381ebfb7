#include "paper/PaperSupport.h"
#include "support/Builders.h"

#include <QTest>

#include <random>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;

namespace {

/// A template of groups that have or lack a header, a footer, a repetition, a page of their own.
class RandomTemplate {
  public:
    explicit RandomTemplate(std::mt19937& chance) : chance_(chance) {}

    Template make() {
        const char* fields[] = {"Memo", "EmpNo", "OverHours"};
        QByteArray groups;
        const int depth = upTo(3);
        for (int level = 0; level < depth; ++level) {
            groups += "<group by=\"" + QByteArray(fields[level]) + '"' + maybe(" new-page=\"yes\"", 6) +
                      maybe(" repeat=\"yes\"", 2) + '>' + maybe("<header>組{Continued}</header>", 2) +
                      maybe("<footer label=\"計\"/>", 2) + "</group>";
        }
        const QByteArray body = "<columns stripes=\"yes\"><column caption=\"帳\" "
                                "width=\"40\">{Over01.Account}</column><column caption=\"註\" width=\"10\""
                                " fit=\"wrap\">{Over01.Memo}</column></columns>";
        Template made =
            templateOf("<report format=\"1\" code=\"T\" caption=\"\"><rows "
                       "from=\"Over01\"/><heading><text>頭 {Page}/{Pages}</text></heading>" +
                       groups + body + maybe("<end label=\"總\"/>", 2) + "<foot left=\"尾\"/></report>");
        made.paperHeight = 4500 + upTo(12000);
        return made;
    }

    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(chance_); }
    QByteArray maybe(const char* text, int times) {
        return upTo(times - 1) == 0 ? QByteArray(text) : QByteArray();
    }

  private:
    std::mt19937& chance_;
};

/// The height of the bands that belong on one page: headers, the row after them and the footers after it.
int chainHeight(const std::vector<Band>& bands, std::size_t at) {
    int height = 0;
    while (at < bands.size() && bands[at].kind == Band::Kind::Header)
        height += bands[at++].height;
    if (at < bands.size())
        height += bands[at++].height;
    while (at < bands.size() && (bands[at].kind == Band::Kind::Footer || bands[at].kind == Band::Kind::End))
        height += bands[at++].height;
    return height;
}

std::size_t startOfChain(const std::vector<Band>& bands, std::size_t at) {
    while (at > 0 && (bands[at].kind == Band::Kind::Footer || bands[at].kind == Band::Kind::End))
        --at;
    while (at > 0 && bands[at - 1].kind == Band::Kind::Header)
        --at;
    return at;
}

} // namespace

/// What holds of every layout, over reports made up by chance. The seed of a failure is the row's name.
class LayoutRandomTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void everyRowStandsOnceWithinThePage_data() {
        QTest::addColumn<int>("seed");
        for (int seed = 1; seed <= 60; ++seed)
            QTest::addRow("%d", seed) << seed;
    }
    void everyRowStandsOnceWithinThePage() {
        QFETCH(const int, seed);
        std::mt19937 chance(static_cast<unsigned>(seed));
        RandomTemplate random(chance);
        TestStore store;
        store.holdOpen();
        const int rows = random.upTo(3) == 0 ? random.upTo(2) : random.upTo(120);
        for (int row = 0; row < rows; ++row)
            insertRow(store.database(), QStringLiteral("Over01"),
                      {{u"Account", QStringLiteral("R%1").arg(row)},
                       {u"Memo", QString(1 + 9 * random.upTo(2) * random.upTo(1), u'字')},
                       {u"EmpNo", QString::number(random.upTo(3))},
                       {u"OverHours", random.upTo(4)}});
        store.commit();
        for (int layouts = 0; layouts < 5; ++layouts)
            check(*documentOf(store, random.make()), rows);
    }

  private:
    static void check(const ReportDocument& document, int rows) {
        const Template& layout = document.layout();
        const PageMeasures& measures = document.pages().measures();
        QStringList seen;
        for (int page = 0; page < document.pageCount(); ++page) {
            QStringList furniture;
            for (const Item& item : itemsOf(document, page)) {
                QVERIFY(item.x >= layout.margin && item.x + item.width <= layout.paperWidth - layout.margin);
                QVERIFY(item.y >= layout.margin &&
                        item.y + item.height <= layout.paperHeight - layout.margin + 40);
                if (item.kind != Item::Kind::Text)
                    continue;
                const bool body = item.y >= measures.bodyTop && item.y < measures.footTop;
                QVERIFY(!body || item.y + item.height <= measures.bodyTop + measures.room);
                if (!body)
                    furniture += item.text;
                if (item.text.startsWith(u'R')) {
                    seen += item.text;
                    QCOMPARE(page, document.pageOf(static_cast<std::size_t>(seen.size()) - 1));
                }
            }
            QCOMPARE(furniture.join(u' '),
                     QStringLiteral("頭 %1/%2 帳 註 尾").arg(page + 1).arg(document.pageCount()));
        }
        QCOMPARE(seen.size(), rows);
        QCOMPARE(QSet<QString>(seen.begin(), seen.end()).size(), rows);
        checkBreaks(document);
    }

    /// Pages follow each other without a gap, and part nothing that fits on one page.
    static void checkBreaks(const ReportDocument& document) {
        const std::vector<Band>& bands = document.pages().bands();
        const int room = document.pages().measures().room;
        std::size_t next = 0;
        for (const PageRange& page : document.pages().pages()) {
            QCOMPARE(std::size_t{page.first}, next);
            next += page.count;
            if (page.first == 0 || page.count == 0)
                continue;
            const bool parted = bands[page.first - 1].kind == Band::Kind::Header ||
                                bands[page.first].kind == Band::Kind::Footer ||
                                bands[page.first].kind == Band::Kind::End;
            if (parted && bands[page.first - 1].kind != Band::Kind::EndLine)
                QVERIFY(chainHeight(bands, startOfChain(bands, page.first)) > room);
        }
        QCOMPARE(next, bands.size());
    }
};

QTEST_GUILESS_MAIN(LayoutRandomTest)
#include "LayoutRandomTest.moc"
