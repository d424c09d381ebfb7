#include "app/RecordFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Add = u"CtrlCmd0(0)"_s;
const QString Edit = u"CtrlCmd0(1)"_s;
const QString Cancel = u"CtrlCmd0(3)"_s;
const QString First = u"CtrlCmd0(6)"_s;
const QString Previous = u"CtrlCmd0(7)"_s;
const QString Next = u"CtrlCmd0(8)"_s;
const QString Last = u"CtrlCmd0(9)"_s;
const QString Code = u"Text1(0)"_s;
const QString Name = u"Text1(1)"_s;

} // namespace

/// How the rows of a record page are walked, by its buttons and by its grid.
class RecordPageRowsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void movesGoThroughTheRows();
    void previousOnTheFirstRowStays();
    void nextOnTheLastRowStays();
    void stepAfterEachMoveRuns();
    void gridFollowsTheRowAndTheRowTheGrid();
    void aRepositionWritesCounterAndLabelsAlone();
    void aMoveByCodeDuringAnEditEndsIt_data();
    void aMoveByCodeDuringAnEditEndsIt();
    void aSearchWithoutAMatchLeavesTheEdit();
};

void RecordPageRowsTest::movesGoThroughTheRows() {
    RecordFixture fixture;
    fixture.addTitles(4);
    fixture.open();
    const QList<QPair<QString, QString>> walk = {{Next, u"2"_s}, {Next, u"3"_s},     {Previous, u"2"_s},
                                                 {Last, u"4"_s}, {Previous, u"3"_s}, {First, u"1"_s}};
    for (const auto& [button, code] : walk) {
        fixture.press(button);
        QCOMPARE(fixture.text(Code), code);
        QCOMPARE(fixture.panel(1), u"資料錄:%1/4"_s.arg(code));
    }
}

void RecordPageRowsTest::previousOnTheFirstRowStays() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    for (int time = 0; time < 2; ++time) {
        fixture.press(Previous);
        QCOMPARE(fixture.text(Code), u"1"_s);
        QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    }
}

void RecordPageRowsTest::nextOnTheLastRowStays() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    fixture.press(Last);
    for (int time = 0; time < 2; ++time) {
        fixture.press(Next);
        QCOMPARE(fixture.text(Code), u"3"_s);
        QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    }
}

void RecordPageRowsTest::stepAfterEachMoveRuns() {
    RecordFixture fixture;
    fixture.addTitles(2);
    QStringList seen;
    fixture.plans[0].steps.afterMove = [&] { seen << fixture.text(Code); };
    fixture.open();
    QCOMPARE(seen, QStringList());
    for (const QString& button : {Next, Next, Previous, Previous, Last, First})
        fixture.press(button);
    QCOMPARE(seen, QStringList({u"2"_s, u"2"_s, u"1"_s, u"1"_s, u"2"_s, u"1"_s}));
    fixture.press(Edit);
    fixture.press(Cancel);
    QCOMPARE(seen.size(), 6);
}

void RecordPageRowsTest::gridFollowsTheRowAndTheRowTheGrid() {
    RecordFixture fixture;
    fixture.addTitles(3);
    int repositions = 0;
    fixture.plans[0].steps.afterReposition = [&repositions] { ++repositions; };
    fixture.open();
    auto& grid = fixture.at<TDBGrid>(u"TDBGrid2(0)"_s);
    fixture.press(Last);
    QCOMPARE(grid.currentIndex().row(), 2);
    repositions = 0;
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                      grid.visualRect(grid.model()->index(1, 0)).center());
    QCOMPARE(fixture.text(Code), u"2"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
    QCOMPARE(repositions, 1);
}

void RecordPageRowsTest::aRepositionWritesCounterAndLabelsAlone() {
    RecordFixture fixture;
    fixture.addTitles(3);
    QStringList label;
    fixture.plans[0].steps.afterReposition = [&] { label = {fixture.text(Name)}; };
    int refreshes = 0;
    fixture.plans[0].steps.beforeBar = [&refreshes] {
        ++refreshes;
        return true;
    };
    fixture.open();
    refreshes = 0;
    const QList<int> browse = fixture.buttonsOn(u"CtrlCmd0"_s);
    // Not what any state would have.
    fixture.at(Add).setEnabled(false);
    fixture.at(Cancel).setEnabled(true);
    fixture.at(u"Frame1(0)"_s).setEnabled(true);
    const QList<int> byHand = fixture.buttonsOn(u"CtrlCmd0"_s);
    const auto& grid = fixture.at<TDBGrid>(u"TDBGrid2(0)"_s);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                      grid.visualRect(grid.model()->index(1, 0)).center());
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
    QCOMPARE(label, QStringList{u"職稱2"_s});
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), byHand);
    QVERIFY(fixture.at(u"Frame1(0)"_s).isEnabled());
    QCOMPARE(refreshes, 0);
    // A button's move refreshes the bar besides.
    fixture.press(Next);
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    QCOMPARE(label, QStringList{u"職稱3"_s});
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), browse);
    QVERIFY(!fixture.at(u"Frame1(0)"_s).isEnabled());
    QCOMPARE(refreshes, 1);
}

void RecordPageRowsTest::aMoveByCodeDuringAnEditEndsIt_data() {
    QTest::addColumn<QString>("begin");
    QTest::addColumn<bool>("refresh");
    QTest::addColumn<QString>("shown");
    QTest::addRow("edit, find") << Edit << false << u"資料錄:3/3|3|職稱3"_s;
    QTest::addRow("new row, find") << Add << false << u"資料錄:3/3|3|職稱3"_s;
    QTest::addRow("edit, run again") << Edit << true << u"資料錄:1/3|1|職稱1"_s;
}

void RecordPageRowsTest::aMoveByCodeDuringAnEditEndsIt() {
    QFETCH(const QString, begin);
    QFETCH(const bool, refresh);
    QFETCH(const QString, shown);
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    const QList<int> browse = fixture.buttonsOn(u"CtrlCmd0"_s);
    fixture.press(begin);
    fixture.type(Name, u"half"_s);
    DataSource& source = fixture.form().source(0);
    if (refresh)
        source.Refresh();
    else
        source.FindFirst(u"TitleNo ='3'"_s);
    QCOMPARE(fixture.panel(1) + u'|' + fixture.text(Code) + u'|' + fixture.text(Name), shown);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), browse);
    QCOMPARE(fixture.tabsOn(), QList<int>({0, 1, 2}));
    QVERIFY(fixture.panel8Raised());
    QVERIFY(!fixture.at(u"Frame1(0)"_s).isEnabled());
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"2|職稱2"_s, u"3|職稱3"_s}));
    fixture.press(Edit);
    fixture.type(Name, u"whole"_s);
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(fixture.titles().filter(u"whole"_s).size(), 1);
}

void RecordPageRowsTest::aSearchWithoutAMatchLeavesTheEdit() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    fixture.press(Edit);
    fixture.type(Name, u"half"_s);
    fixture.form().source(0).FindFirst(u"TitleNo ='9'"_s);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.text(Name), u"half"_s);
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(fixture.titles(), QStringList({u"1|half"_s, u"2|職稱2"_s, u"3|職稱3"_s}));
}

int main(int argc, char** argv) {
    return runTests<RecordPageRowsTest>(argc, argv);
}

#include "RecordPageRowsTest.moc"
