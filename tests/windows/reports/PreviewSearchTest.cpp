#include "support/Patience.h"
#include "windows/reports/PreviewFixture.h"

#include <QTreeWidget>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr QRgb Marked = 0xffffe97a;
constexpr QRgb CurrentMarked = 0xffffa63d;

/// How many pixels of the view have that colour.
qsizetype pixelsOf(PageView& view, QRgb colour) {
    const QImage picture = view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    qsizetype count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        count += std::count(line, line + picture.width(), colour);
    }
    return count;
}

/// The pages on which the text stands, each as often as it does, as the pages' own text tells.
QList<int> pagesWith(const paper::ReportDocument& document, const QString& text) {
    QList<int> pages;
    for (int page = 0; page < document.pageCount(); ++page)
        pages << QList<int>(document.textOf(page).count(text, Qt::CaseInsensitive), page);
    return pages;
}

} // namespace

/// What is looked for in a report on screen: texts, groups, the text of a page.
class PreviewSearchTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void findsAndMarks();
    void findsFromThePageInSight();
    void whatIsNotThereIsNotFound();
    void treeOfGroups();
    void copiesThePage();
};

void PreviewSearchTest::findsAndMarks() {
    PreviewFixture fixture;
    const paper::ReportDocument& document = fixture.open().document();
    fixture.key(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(pixelsOf(fixture.pages(), CurrentMarked), 0);
    fixture.key(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(fixture.at(u"TxtFind"_s).hasFocus());
    fixture.at<QLineEdit>(u"TxtFind"_s).setText(u"小龍"_s);
    const QList<int> expected = pagesWith(document, u"小龍"_s);
    QVERIFY(expected.size() == 9 && expected.first() != expected.last());
    const auto found = [&](int index) { return u"第 %1 處，共 %2 處"_s.arg(index + 1).arg(expected.size()); };
    QTRY_COMPARE_WITH_TIMEOUT(fixture.label(u"LblFound"_s), found(0), PatienceMs);
    QCOMPARE(fixture.pages().page(), expected.first());
    QTRY_VERIFY_WITH_TIMEOUT(pixelsOf(fixture.pages(), CurrentMarked) > 20, PatienceMs);
    // F3 goes on, and round; Enter in the box does too.
    for (int index = 1; index <= expected.size(); ++index) {
        const int here = index % static_cast<int>(expected.size());
        if (index % 2 == 1)
            fixture.key(Qt::Key_F3);
        else
            fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.label(u"LblFound"_s), found(here));
        QCOMPARE(fixture.pages().page(), expected.at(here));
    }
    fixture.key(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(fixture.label(u"LblFound"_s), found(static_cast<int>(expected.size()) - 1));
    QCOMPARE(fixture.pages().page(), expected.last());
    fixture.press(u"CmdFindNext"_s);
    fixture.press(u"CmdFindNext"_s);
    QCOMPARE(fixture.label(u"LblFound"_s), found(1));
    fixture.press(u"CmdFindPrevious"_s);
    QCOMPARE(fixture.label(u"LblFound"_s), found(0));
    // Two stand on this page: the other one is marked as well, in another colour.
    if (expected.at(1) == expected.at(0))
        QVERIFY(pixelsOf(fixture.pages(), Marked) > 20);

    // Letters in any case.
    fixture.at<QLineEdit>(u"TxtFind"_s).setText(u"wANG"_s);
    const qsizetype wang = pagesWith(document, u"Wang"_s).size();
    QCOMPARE(wang, 351);
    QTRY_VERIFY2_WITH_TIMEOUT(fixture.label(u"LblFound"_s).endsWith(u"，共 351 處"_s),
                              qUtf8Printable(fixture.label(u"LblFound"_s)), PatienceMs);

    fixture.at(u"TxtFind"_s).setFocus();
    fixture.key(Qt::Key_Escape);
    QVERIFY(!fixture.at(u"FindBar"_s).isVisible());
    QVERIFY(fixture.preview().isVisible());
    QVERIFY(fixture.pages().hasFocus());
    QCOMPARE(pixelsOf(fixture.pages(), Marked) + pixelsOf(fixture.pages(), CurrentMarked), 0);
}

void PreviewSearchTest::findsFromThePageInSight() {
    PreviewFixture fixture;
    const paper::ReportDocument& document = fixture.open().document();
    const QList<int> expected = pagesWith(document, u"小龍"_s);
    fixture.pages().goTo(expected.at(4));
    fixture.key(Qt::Key_F3); // opens the search where there is none
    QVERIFY(fixture.at(u"TxtFind"_s).hasFocus());
    fixture.at<QLineEdit>(u"TxtFind"_s).setText(u"小龍"_s);
    const auto first = static_cast<int>(std::lower_bound(expected.begin(), expected.end(), expected.at(4)) -
                                        expected.begin());
    QTRY_COMPARE_WITH_TIMEOUT(fixture.label(u"LblFound"_s), u"第 %1 處，共 9 處"_s.arg(first + 1),
                              PatienceMs);
    QCOMPARE(fixture.pages().page(), expected.at(first));
    // Behind the last one the first is found.
    fixture.key(Qt::Key_Escape);
    fixture.pages().goTo(document.pageCount() - 1);
    fixture.key(Qt::Key_F, Qt::ControlModifier);
    fixture.at<QLineEdit>(u"TxtFind"_s).setText(u"100007"_s);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.label(u"LblFound"_s), u"第 1 處，共 1 處"_s, PatienceMs);
    QCOMPARE(fixture.pages().page(), 0);
}

void PreviewSearchTest::whatIsNotThereIsNotFound() {
    PreviewFixture fixture;
    fixture.open();
    int bells = 0;
    setBell([&bells] { ++bells; });
    fixture.pages().goTo(3);
    fixture.key(Qt::Key_F, Qt::ControlModifier);
    fixture.type(u"nobody"_s);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.label(u"LblFound"_s), u"找不到"_s, PatienceMs);
    QCOMPARE(fixture.pages().page(), 3);
    fixture.key(Qt::Key_F3);
    QCOMPARE(bells, 1);
    for (int letter = 0; letter < 6; ++letter)
        fixture.key(Qt::Key_Backspace);
    QCOMPARE(fixture.label(u"LblFound"_s), QString());
    setBell({});
}

void PreviewSearchTest::treeOfGroups() {
    PreviewFixture fixture;
    const paper::ReportDocument& document = fixture.open().document();
    auto& tree = fixture.at<QTreeWidget>(u"GroupTree"_s);
    QVERIFY(!tree.isVisible());
    fixture.key(Qt::Key_F4);
    QVERIFY(tree.isVisible() && tree.hasFocus());
    QCOMPARE(tree.topLevelItemCount(), 3);
    QStringList entries;
    for (int index = 0; index < 3; ++index)
        entries << tree.topLevelItem(index)->text(0);
    QCOMPARE(entries, (QStringList{u"1000 第1課"_s, u"2000 第2課"_s, u"3000 第3課"_s}));
    QCOMPARE(tree.currentItem(), tree.topLevelItem(0));
    QCOMPARE(fixture.pages().page(), 0);
    const int second = document.pageOf(PreviewFixture::EmployeesOfUnit);
    const int third = document.pageOf(2 * PreviewFixture::EmployeesOfUnit);
    QVERIFY(0 < second && second < third);
    fixture.key(Qt::Key_Down);
    QCOMPARE(fixture.pages().page(), second);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier,
                      tree.visualItemRect(tree.topLevelItem(2)).center());
    QCOMPARE(fixture.pages().page(), third);
    // It follows the pages.
    fixture.pages().goTo(third - 1);
    QCOMPARE(tree.currentItem()->text(0), entries.at(1));
    QCOMPARE(fixture.pages().page(), third - 1);
    fixture.key(Qt::Key_F4);
    QVERIFY(!tree.isVisible() && fixture.pages().hasFocus());
    QCOMPARE(fixture.pages().page(), third - 1);
}

void PreviewSearchTest::copiesThePage() {
    PreviewFixture fixture;
    const paper::ReportDocument& document = fixture.open().document();
    fixture.pages().goTo(2);
    fixture.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), document.textOf(2));
    QCOMPARE(fixture.label(u"LblStatus"_s), u"已複製第 3 頁的文字"_s);
    // In a box it copies what is chosen there.
    fixture.key(Qt::Key_F, Qt::ControlModifier);
    fixture.type(u"abc"_s);
    fixture.key(Qt::Key_A, Qt::ControlModifier);
    fixture.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"abc"_s);
}

int main(int argc, char** argv) {
    return runTests<PreviewSearchTest>(argc, argv);
}
#include "PreviewSearchTest.moc"
