#include "windows/master/Form1Pages.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

// The three columns of the table of buttons; the query button, 5, is in none of them on these tabs.
const QList<int> BrowseWithRows{0, 1, 2, 6, 7, 8, 9, 10, 11, 12};
const QList<int> BrowseWithoutRows{0, 10, 11, 12};
const QList<int> InEdit{3, 4};
const QList<int> AllTabs{0, 1, 2, 3, 4, 5};

enum Button { Add, Modify, Delete, Cancel, Save, Query, First, Previous, Next, Last, Refresh, Print, Leave };

} // namespace

/// The bar, the status bar and the tabs of the master data's tabs 0 to 4, in every state.
class Form1BarTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void captionsOfTheBar_data() { eachPlainPage(); }
    void captionsOfTheBar();
    void browseWithRows_data() { eachPlainPage(); }
    void browseWithRows();
    void browseWithoutRows_data() { eachPlainPage(); }
    void browseWithoutRows();
    void addAndModifyEnterTheEdit_data() { eachPlainPage(); }
    void addAndModifyEnterTheEdit();
    void anEditCannotBeLeft_data() { eachPlainPage(); }
    void anEditCannotBeLeft();
    void everyEndOfAnEditGoesBackToBrowse_data() { eachPlainPage(); }
    void everyEndOfAnEditGoesBackToBrowse();
    void movesStayWithinTheRows_data() { eachPlainPage(); }
    void movesStayWithinTheRows();
    void theGridFollowsTheRowAndLeadsIt_data();
    void theGridFollowsTheRowAndLeadsIt();
    void refreshShowsWhatOthersWrote_data() { eachPlainPage(); }
    void refreshShowsWhatOthersWrote();
    void printLeadsToTheFirstTabOfTheReports_data() { eachPlainPage(); }
    void printLeadsToTheFirstTabOfTheReports();
    void leaveAndPanel8Unload_data() { eachPlainPage(); }
    void leaveAndPanel8Unload();
    void otherPanelsDoNothing_data() { eachPlainPage(); }
    void otherPanelsDoNothing();
};

void Form1BarTest::captionsOfTheBar() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.openPage();
    QCOMPARE(fixture.tabs().tabText(tab), PlainPages.at(tab).caption);
    QStringList captions;
    for (int index = 0; index <= Leave; ++index)
        captions += fixture.at<QPushButton>(fixture.button(index)).text();
    QCOMPARE(captions,
             QStringList({u"新增資料"_s, u"修改"_s, u"刪除"_s, u"取消"_s, u"存檔"_s, u"查詢"_s, u"首筆"_s,
                          u"上一筆"_s, u"下一筆"_s, u"末筆"_s, u"更新"_s, u"列印"_s, u"離開"_s}));
    QVERIFY(!fixture.form().findChild<QPushButton*>(fixture.button(Leave + 1)));
}

void Form1BarTest::browseWithRows() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(3);
    fixture.openPage();
    QCOMPARE(fixture.on(), BrowseWithRows);
    QCOMPARE(fixture.shown(), u"資料錄:1/3|1|名1"_s);
    QCOMPARE(fixture.panel(2), QString());
    QVERIFY(!fixture.frameOn());
    QVERIFY(fixture.panel8Raised());
    QCOMPARE(fixture.tabsOn(), AllTabs);
}

void Form1BarTest::browseWithoutRows() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.openPage();
    QCOMPARE(fixture.on(), BrowseWithoutRows);
    QCOMPARE(fixture.shown(), u"資料錄:1/0||"_s);
    QCOMPARE(fixture.panel(2), QString());
    QVERIFY(!fixture.frameOn());
    QVERIFY(fixture.panel8Raised());
    QCOMPARE(fixture.tabsOn(), AllTabs);
    // An empty table lets itself be run again.
    fixture.pressButton(Refresh);
    QCOMPARE(fixture.shown(), u"資料錄:1/0||"_s);
    QCOMPARE(fixture.on(), BrowseWithoutRows);
}

void Form1BarTest::addAndModifyEnterTheEdit() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    const auto compare = [&](Button button, const QString& word, const QString& code) {
        fixture.pressButton(button);
        QCOMPARE(fixture.on(), InEdit);
        QCOMPARE(fixture.panel(2), word);
        QCOMPARE(fixture.focused(), fixture.page().codeBox());
        QCOMPARE(fixture.text(fixture.page().codeBox()), code);
        QVERIFY(fixture.frameOn());
        QVERIFY(!fixture.panel8Raised());
        QCOMPARE(fixture.tabsOn(), QList<int>{tab});
        fixture.pressButton(Cancel);
    };
    compare(Add, u"新增資料"_s, QString());
    compare(Modify, u"修改資料"_s, u"1"_s);
    QCOMPARE(fixture.shown(), u"資料錄:1/2|1|名1"_s);
}

void Form1BarTest::anEditCannotBeLeft() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    fixture.pressButton(Modify);
    fixture.type(fixture.page().nameBox(), u"typed"_s);
    fixture.press(u"StbTool(8)"_s);
    fixture.clickTab(tab == 0 ? 1 : 0);
    fixture.clickTab(5);
    for (const Button button :
         {Add, Modify, Delete, Query, First, Previous, Next, Last, Refresh, Print, Leave})
        fixture.pressButton(button);
    QVERIFY(moduleWindow(1));
    QVERIFY(!moduleWindow(7));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.tabs().currentIndex(), tab);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.shown(), u"資料錄:1/2|1|typed"_s);
}

void Form1BarTest::everyEndOfAnEditGoesBackToBrowse() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    for (const auto& [begin, end] : {std::pair(Add, Cancel), {Modify, Cancel}, {Modify, Save}}) {
        fixture.pressButton(begin);
        fixture.pressButton(end);
        QCOMPARE(fixture.on(), BrowseWithRows);
        QCOMPARE(fixture.panel(2), QString());
        QVERIFY(!fixture.frameOn());
        QVERIFY(fixture.panel8Raised());
        QCOMPARE(fixture.tabsOn(), AllTabs);
        QCOMPARE(fixture.shown(), u"資料錄:1/2|1|名1"_s);
        QCOMPARE(fixture.rows(),
                 QStringList({fixture.page().row(u"1"_s, u"名1"_s), fixture.page().row(u"2"_s, u"名2"_s)}));
    }
}

void Form1BarTest::movesStayWithinTheRows() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(3);
    fixture.openPage();
    const QList<std::pair<Button, int>> moves{{Previous, 1}, {Next, 2},     {Next, 3},
                                              {Next, 3},     {Previous, 2}, {First, 1},
                                              {Last, 3},     {Previous, 2}, {Refresh, 1}};
    for (const auto& [move, row] : moves) {
        fixture.pressButton(move);
        QCOMPARE(fixture.shown(), u"資料錄:%1/3|%1|名%1"_s.arg(row));
        QCOMPARE(fixture.on(), BrowseWithRows);
    }
}

void Form1BarTest::theGridFollowsTheRowAndLeadsIt_data() {
    QTest::addColumn<int>("tab");
    for (int tab = 0; tab < 3; ++tab)
        QTest::newRow(qUtf8Printable(PlainPages.at(tab).caption)) << tab;
}

void Form1BarTest::theGridFollowsTheRowAndLeadsIt() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(3);
    fixture.openPage();
    auto& grid = fixture.at<TDBGrid>(u"TDBGrid2(%1)"_s.arg(tab));
    const auto cell = [&grid](int row, int column) { return grid.model()->index(row, column); };
    QCOMPARE(grid.model()->rowCount(), 3);
    for (int row = 0; row < 3; ++row) {
        QCOMPARE(cell(row, 0).data().toString(), QString::number(row + 1));
        QCOMPARE(cell(row, 1).data().toString(), u"名%1"_s.arg(row + 1));
    }
    fixture.pressButton(Next);
    QCOMPARE(grid.currentIndex().row(), 1);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, grid.visualRect(cell(2, 0)).center());
    QCOMPARE(fixture.shown(), u"資料錄:3/3|3|名3"_s);
    // The grid takes no typing.
    QTest::keyClicks(grid.viewport(), u"x"_s);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, grid.visualRect(cell(2, 1)).center());
    QVERIFY(!grid.findChild<QLineEdit*>());
    QCOMPARE(fixture.panel(2), QString());
}

void Form1BarTest::refreshShowsWhatOthersWrote() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    fixture.pressButton(Last);
    fixture.addCode(u"0"_s, u"新"_s);
    QCOMPARE(fixture.shown(), u"資料錄:2/2|2|名2"_s);
    fixture.pressButton(Refresh);
    QCOMPARE(fixture.shown(), u"資料錄:1/3|0|新"_s);
}

void Form1BarTest::printLeadsToTheFirstTabOfTheReports() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.openPage();
    // Print asks for no right.
    gF7 = false;
    fixture.pressButton(Print);
    QVERIFY(!moduleWindow(1));
    QVERIFY(moduleWindow(7) && moduleWindow(7)->isVisible());
    QCOMPARE(control<QTabWidget>(*moduleWindow(7), u"SSTab1"_s).currentIndex(), 0);
    QCOMPARE(fixture.mainWindow().windowTitle(), u"報表列印"_s);
    QCOMPARE(enabledButtons(), QList<int>{7});
}

void Form1BarTest::leaveAndPanel8Unload() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(1);
    fixture.openPage();
    for (const QString& way : {fixture.button(Leave), u"StbTool(8)"_s}) {
        if (!moduleWindow(1)) {
            OpenToolWindow(1);
            fixture.clickTab(tab);
        }
        QVERIFY(gDbOpen);
        fixture.press(way);
        QVERIFY(!moduleWindow(1));
        QVERIFY(!gDbOpen);
        QVERIFY(fixture.mainWindow().Tb().isEnabled());
        QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    }
}

void Form1BarTest::otherPanelsDoNothing() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(1);
    fixture.openPage();
    for (int panel = 1; panel <= 7; ++panel)
        fixture.press(u"StbTool(%1)"_s.arg(panel));
    QVERIFY(moduleWindow(1));
    QCOMPARE(fixture.shown(), u"資料錄:1/1|1|名1"_s);
    QCOMPARE(fixture.on(), BrowseWithRows);
}

int main(int argc, char** argv) {
    return runTests<Form1BarTest>(argc, argv);
}

#include "Form1BarTest.moc"
