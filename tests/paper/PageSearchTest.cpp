#include "paper/PageSearch.h"

#include "paper/PaperSupport.h"
#include "support/Builders.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A column of 60 mm at the margin of 10, one centred and one to the right beside it.
const QByteArray Layout =
    "<report format=\"1\" code=\"T01\" caption=\"\"><rows from=\"Over01\"/><order "
    "by=\"Over01.EmpNo\"/><columns>"
    "<column caption=\"員工\" width=\"60\">{Over01.EmpNo}</column>"
    "<column caption=\"備註\" width=\"60\" align=\"center\">{Over01.Memo}</column>"
    "<column caption=\"登錄\" width=\"60\" align=\"right\">{Over01.EmpNo}</column></columns></report>";

QStringList found(const ReportDocument& document, const QString& wanted) {
    std::vector<PageHit> hits;
    for (int page = 0; page < document.pageCount(); ++page)
        findOnPage(document, page, wanted, hits);
    QStringList places;
    for (const PageHit& hit : hits)
        places << u"%1: %2 +%3"_s.arg(hit.page).arg(hit.place.x()).arg(hit.place.width());
    return places;
}

} // namespace

/// Texts found on pages, measured by characters of 1 and 2 mm.
class PageSearchTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void placesFollowTheAlignment() {
        TestStore store;
        insertRow(store.database(), u"Over01"_s, {{u"EmpNo", u"Ab12ab"_s}, {u"Memo", u"盤點盤點"_s}});
        const auto document = documentOf(store, templateOf(Layout));
        // A cell keeps 0.8 mm on both sides; 6 mm of text stand at its left or right end.
        QCOMPARE(found(*document, u"12"_s), (QStringList{u"0: 1280 +200"_s, u"0: 18520 +200"_s}));
        // Letters in any case, and twice in one text.
        QCOMPARE(found(*document, u"AB"_s),
                 (QStringList{u"0: 1080 +200"_s, u"0: 1480 +200"_s, u"0: 18320 +200"_s, u"0: 18720 +200"_s}));
        // 8 mm of text in the middle of the second column, which ends at 130 mm.
        QCOMPARE(found(*document, u"點"_s), (QStringList{u"0: 9800 +200"_s, u"0: 10200 +200"_s}));
        QCOMPARE(found(*document, u"備註"_s).size(), 1);
        QCOMPARE(found(*document, QString()), QStringList());
        QCOMPARE(found(*document, u"沒有"_s), QStringList());
    }

    void everyPageIsLookedAt() {
        TestStore store;
        for (int row = 0; row < 120; ++row)
            insertRow(store.database(), u"Over01"_s, {{u"EmpNo", u"E%1"_s.arg(row, 3, 10, QChar(u'0'))}});
        const auto document = documentOf(store, templateOf(Layout));
        QVERIFY(document->pageCount() > 2);
        QCOMPARE(found(*document, u"E"_s).size(), 240);
        const QString last = u"%1: "_s.arg(document->pageCount() - 1);
        const QStringList places = found(*document, u"E119"_s);
        QCOMPARE(places.size(), 2);
        QVERIFY(places[0].startsWith(last) && places[1].startsWith(last));
    }
};

QTEST_GUILESS_MAIN(PageSearchTest)
#include "PageSearchTest.moc"
