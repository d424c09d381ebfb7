#include "paper/GlyphMeasure.h"
#include "paper/PaperSupport.h"

#include <QTest>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <random>

using namespace pontrel;
using namespace pontrel::paper;

namespace {

/// 10 points, so that a Han character is 3.53 mm wide.
Template tenPoints() {
    Template layout;
    layout.fonts[BodyFont].points = 10;
    return layout;
}

constexpr double Em = 10 * 2540.0 / 72;

/// Where the characters of a text end, as a reader sees them.
std::vector<qsizetype> endsOf(const QString& text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    std::vector<qsizetype> ends;
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary())
        ends.push_back(end);
    return ends;
}

} // namespace

/// Widths of texts in the program's own face.
class GlyphMeasureTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theFaceIsTheProgramsOwn() {
        const GlyphMeasure measure(tenPoints());
        QCOMPARE(measure.face(BodyFont).rawFont().familyName(), QStringLiteral("Noto Sans CJK TC"));
        QCOMPARE(measure.face(TitleFont).rawFont().styleName(), QStringLiteral("Bold"));
        QVERIFY(measure.lineHeight(BodyFont) > measure.ascent(BodyFont));
        QVERIFY(measure.lineHeight(BodyFont) > Em);
        QVERIFY(measure.lineHeight(TitleFont) > measure.lineHeight(BodyFont));
    }

    void hanCharactersAreAsWideAsTheyAreHigh() {
        const GlyphMeasure measure(tenPoints());
        QCOMPARE(measure.width(BodyFont, u"日"), qCeil(Em));
        QCOMPARE(measure.width(BodyFont, QStringLiteral("日期工\U00020BB7")), qCeil(4 * Em));
        QCOMPARE(measure.width(BodyFont, u""), 0);
        // Columns of figures stand true.
        for (const char16_t* figures : {u"0000", u"1111", u"8888"})
            QCOMPARE(measure.width(BodyFont, figures), measure.width(BodyFont, u"9999"));
    }

    void marksAndOtherScriptsAreLaidOut() {
        const GlyphMeasure measure(tenPoints());
        QVERIFY(measure.isPlain(BodyFont, u"日期 ABC é ～\n"));
        QVERIFY(!measure.isPlain(BodyFont, u"e\u0301"));
        QVERIFY(!measure.isPlain(BodyFont, u"\u0627\u0628"));
        QVERIFY(!measure.isPlain(BodyFont, u"\u200D"));
        QVERIFY(!measure.isPlain(BodyFont, u"\xD842")); // half a character
        QCOMPARE(measure.width(BodyFont, u"e\u0301"), measure.width(BodyFont, u"\u00E9"));
        QVERIFY(measure.width(BodyFont, u"\u0627\u0628") > 0);
        // A base keeps its mark.
        QCOMPARE(measure.fitting(BodyFont, u"e\u0301e\u0301", measure.width(BodyFont, u"e\u0301")), 2);
        QCOMPARE(measure.fitting(BodyFont, u"日e\u0301", measure.width(BodyFont, u"日") + 5), 1);
    }

    void whatFitsIsTheMostThatDoes() {
        const GlyphMeasure measure(tenPoints());
        const QStringList parts{QStringLiteral("日"), QStringLiteral("期"), QStringLiteral("A"),
                                QStringLiteral(" "),  QStringLiteral("w"),  QStringLiteral("\U00020BB7"),
                                QStringLiteral("，"), QStringLiteral("7")};
        std::mt19937 chance(12);
        for (int round = 0; round < 500; ++round) {
            QString text;
            for (auto part = chance() % 20; part > 0; --part)
                text += parts[static_cast<qsizetype>(chance() % 8)];
            if (round % 10 == 0)
                text += QStringLiteral("e\u0301");
            const int width = static_cast<int>(chance() % 4000);
            const qsizetype fits = measure.fitting(BodyFont, text, width);
            const std::vector<qsizetype> ends = endsOf(text);
            QVERIFY(fits == 0 || std::find(ends.begin(), ends.end(), fits) != ends.end());
            QVERIFY2(measure.width(BodyFont, QStringView(text).left(fits)) <= width + 1, qPrintable(text));
            const auto next =
                std::find_if(ends.begin(), ends.end(), [&](qsizetype end) { return end > fits; });
            if (next != ends.end())
                QVERIFY2(measure.width(BodyFont, QStringView(text).left(*next)) >= width, qPrintable(text));
        }
    }

    void aTextOfHanAndFiguresIsAsWideAsQtSays() {
        const GlyphMeasure measure(tenPoints());
        const QString text = QStringLiteral("單位合計　28 筆，3 人：115/01/05");
        QTextLayout layout(text, measure.face(BodyFont).font());
        layout.beginLayout();
        const QTextLine line = layout.createLine();
        layout.endLayout();
        QVERIFY(std::abs(measure.width(BodyFont, text) - line.naturalTextWidth() * Em / 1000) <= 1);
    }
};

QTEST_MAIN(GlyphMeasureTest)
#include "GlyphMeasureTest.moc"
