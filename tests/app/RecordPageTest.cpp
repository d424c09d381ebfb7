#include "app/RecordFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Add = u"CtrlCmd0(0)"_s;
const QString Edit = u"CtrlCmd0(1)"_s;
const QString Cancel = u"CtrlCmd0(3)"_s;
const QString Next = u"CtrlCmd0(8)"_s;
const QString Code = u"Text1(0)"_s;

} // namespace

Q_DECLARE_METATYPE(pontrel::RecordRules)

/// What a record page shows in each state.
class RecordPageTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void buttonsFollowTheTableOfStates_data();
    void buttonsFollowTheTableOfStates();
    void buttonsThatLeadNowhereAreOff();
    void captionsAreToTheCharacter();
    void aShortBarHasItsOwnIndexes();
    void anEmptyListCountsFromOne();
    void counterAndWordFollowTheState();
    void editAreaIsOnOnlyDuringAnEdit();
    void theFirstFieldHasTheFocusWhenAnEditBegins();
    void duringAnEditNoTabCanBeChosen();
    void panel8LeavesInBrowse();
    void panel8DoesNothingDuringAnEdit();
    void theOtherPanelsDoNothing();
    void aChangeOfTabRefreshesTheBar();
    void enterMovesOn();
    void everyControlIsNamedAndReached();
    void allButtonsShowTheirWholeCaptions();
    void aFailedOpenShowsTheMessage();
};

void RecordPageTest::buttonsFollowTheTableOfStates_data() {
    QTest::addColumn<RecordRules>("rules");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<QList<int>>("on");
    const RecordRules usual;
    const RecordRules withRows{.alsoWithRows = {BarAction::Query}};
    const RecordRules always{.alsoWithRows = {BarAction::Query}, .alsoWithoutRows = {BarAction::Query}};
    const RecordRules backAlone{.leftAlone = {BarAction::Back}};
    const RecordRules leaveAlone{.leftAlone = {BarAction::Leave}};
    const QList<int> browse{0, 1, 2, 6, 7, 8, 9, 10, 11, 12, 13};
    const QList<int> browseWithQuery{0, 1, 2, 5, 6, 7, 8, 9, 10, 11, 12, 13};
    const QList<int> empty{0, 10, 11, 12, 13};
    const QList<int> emptyWithQuery{0, 5, 10, 11, 12, 13};
    QTest::addRow("browse, rows exist") << usual << 2 << QString() << browse;
    QTest::addRow("browse, no rows") << usual << 0 << QString() << empty;
    QTest::addRow("editing") << usual << 2 << Edit << QList<int>{3, 4};
    QTest::addRow("adding") << usual << 2 << Add << QList<int>{3, 4};
    QTest::addRow("adding the first row") << usual << 0 << Add << QList<int>{3, 4};
    QTest::addRow("query with rows, rows exist") << withRows << 2 << QString() << browseWithQuery;
    QTest::addRow("query with rows, no rows") << withRows << 0 << QString() << empty;
    QTest::addRow("query always, rows exist") << always << 2 << QString() << browseWithQuery;
    QTest::addRow("query always, no rows") << always << 0 << QString() << emptyWithQuery;
    QTest::addRow("query always, editing") << always << 2 << Edit << QList<int>{3, 4};
    QTest::addRow("13 left alone, rows exist") << backAlone << 2 << QString() << browse;
    QTest::addRow("13 left alone, editing") << backAlone << 2 << Edit << QList<int>{3, 4, 13};
    QTest::addRow("leave left alone, no rows") << leaveAlone << 0 << QString() << empty;
    QTest::addRow("leave left alone, adding") << leaveAlone << 2 << Add << QList<int>{3, 4, 12};
}

void RecordPageTest::buttonsFollowTheTableOfStates() {
    QFETCH(const RecordRules, rules);
    QFETCH(const int, rows);
    QFETCH(const QString, pressed);
    QFETCH(const QList<int>, on);
    RecordFixture fixture;
    fixture.hasReports = true;
    fixture.addTitles(rows);
    fixture.plans[0].bar = wholeBarWithBack();
    fixture.plans[0].rules = rules;
    fixture.open();
    const QList<int> before = fixture.buttonsOn(u"CtrlCmd0"_s);
    if (!pressed.isEmpty())
        fixture.press(pressed);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), on);
    if (!pressed.isEmpty())
        fixture.press(Cancel);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), before);
}

void RecordPageTest::buttonsThatLeadNowhereAreOff() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.plans[0].bar = wholeBarWithBack();
    fixture.open();
    QVERIFY(!hasModuleWindow(7));
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 1, 2, 6, 7, 8, 9, 10, 12, 13}));
}

void RecordPageTest::captionsAreToTheCharacter() {
    RecordFixture fixture;
    fixture.plans[0].bar = wholeBarWithBack();
    fixture.open();
    const QStringList captions{u"新增資料"_s, u"修改"_s, u"刪除"_s,   u"取消"_s,   u"存檔"_s,
                               u"查詢"_s,     u"首筆"_s, u"上一筆"_s, u"下一筆"_s, u"末筆"_s,
                               u"更新"_s,     u"列印"_s, u"離開"_s,   QString()};
    for (int index = 0; index < captions.size(); ++index)
        QCOMPARE(fixture.at<QPushButton>(u"CtrlCmd0(%1)"_s.arg(index)).text(), captions.at(index));
    QVERIFY(!fixture.at<QPushButton>(u"CtrlCmd0(13)"_s).icon().isNull());
    QVERIFY(!fixture.form().findChild<QPushButton*>(u"CtrlCmd1(13)"_s));
}

void RecordPageTest::aShortBarHasItsOwnIndexes() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.plans[0].bar = {{1, BarAction::Edit}, {2, BarAction::Save}, {3, BarAction::Leave}};
    fixture.open();
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), QList<int>({1, 3}));
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), QList<int>{2});
    fixture.type(u"Text1(1)"_s, u"主任"_s);
    fixture.press(u"CtrlCmd0(2)"_s);
    QCOMPARE(fixture.titles(), QStringList({u"1|主任"_s, u"2|職稱2"_s}));
    fixture.press(u"CtrlCmd0(3)"_s);
    QVERIFY(!fixture.isOpen());
}

void RecordPageTest::anEmptyListCountsFromOne() {
    RecordFixture fixture;
    fixture.open();
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(fixture.panel(2), QString());
}

void RecordPageTest::counterAndWordFollowTheState() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(fixture.panel(2), QString());
    fixture.press(Next);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
    fixture.press(Edit);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
    fixture.press(Cancel);
    QCOMPARE(fixture.panel(2), QString());
    fixture.press(Add);
    QCOMPARE(fixture.panel(2), u"新增資料"_s);
    fixture.press(Cancel);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
}

void RecordPageTest::editAreaIsOnOnlyDuringAnEdit() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.open();
    const auto areas = [&fixture] {
        return QList<bool>{fixture.at(u"Frame1(0)"_s).isEnabled(), fixture.at(Code).isEnabled(),
                           fixture.at(u"Frame1(1)"_s).isEnabled()};
    };
    QCOMPARE(areas(), QList<bool>({false, false, false}));
    fixture.press(Edit);
    QCOMPARE(areas(), QList<bool>({true, true, false}));
    fixture.press(Cancel);
    QCOMPARE(areas(), QList<bool>({false, false, false}));
}

void RecordPageTest::theFirstFieldHasTheFocusWhenAnEditBegins() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.plans[1].steps.focusFirst = [&fixture] { fixture.at(u"Text2(1)"_s).setFocus(); };
    fixture.open();
    for (const QString& button : {Edit, Add}) {
        fixture.press(button);
        QVERIFY(fixture.at(Code).hasFocus());
        fixture.press(Cancel);
        QVERIFY(!fixture.at(Code).hasFocus());
    }
    fixture.clickTab(1);
    fixture.press(u"CtrlCmd1(0)"_s);
    QVERIFY(fixture.at(u"Text2(1)"_s).hasFocus());
}

void RecordPageTest::duringAnEditNoTabCanBeChosen() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.open();
    QCOMPARE(fixture.tabsOn(), QList<int>({0, 1, 2}));
    fixture.press(Edit);
    QCOMPARE(fixture.tabsOn(), QList<int>{0});
    fixture.clickTab(2);
    QCOMPARE(fixture.tabs().currentIndex(), 0);
    QTest::keyClick(&fixture.tabs(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(fixture.tabs().currentIndex(), 0);
    fixture.press(Cancel);
    QCOMPARE(fixture.tabsOn(), QList<int>({0, 1, 2}));
    fixture.clickTab(2);
    QCOMPARE(fixture.tabs().currentIndex(), 2);
    QVERIFY(fixture.at(u"CtrlCmd2(0)"_s).isEnabled());
}

void RecordPageTest::panel8LeavesInBrowse() {
    RecordFixture fixture;
    fixture.open();
    QVERIFY(fixture.panel8Raised());
    click(fixture.at(u"StbTool(8)"_s));
    QVERIFY(!fixture.isOpen());
    QVERIFY(!gDbOpen);
    QVERIFY(gMDI->Tb().isEnabled());
}

void RecordPageTest::panel8DoesNothingDuringAnEdit() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.open();
    for (const QString& button : {Edit, Add}) {
        fixture.press(button);
        QVERIFY(!fixture.panel8Raised());
        click(fixture.at(u"StbTool(8)"_s));
        QVERIFY(fixture.isOpen());
        fixture.press(Cancel);
        QVERIFY(fixture.panel8Raised());
    }
}

void RecordPageTest::theOtherPanelsDoNothing() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    for (int panel = 1; panel <= 7; ++panel) {
        click(fixture.at(u"StbTool(%1)"_s.arg(panel)));
        QVERIFY(fixture.isOpen());
        QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
    }
}

void RecordPageTest::aChangeOfTabRefreshesTheBar() {
    RecordFixture fixture;
    fixture.addTitles(3);
    insertRow(fixture.store.database(), u"Base02"_s, {{u"UnitNo", u"U1"}, {u"Unit", u"總務"}});
    fixture.open();
    fixture.press(Next);
    fixture.clickTab(1);
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd1"_s), QList<int>({0, 1, 2, 6, 7, 8, 9, 10, 12}));
    fixture.clickTab(2);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd2"_s), QList<int>({0, 10, 12}));
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
}

void RecordPageTest::enterMovesOn() {
    RecordFixture fixture;
    fixture.open();
    fixture.press(Add);
    QTest::keyClicks(QApplication::focusWidget(), u"9"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(fixture.at(u"Text1(1)"_s).hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter, Qt::KeypadModifier);
    // Pressed on, it saves the row.
    QVERIFY(fixture.at(u"CtrlCmd0(4)"_s).hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.titles(), QStringList{u"9|null"_s});
}

void RecordPageTest::everyControlIsNamedAndReached() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.plans[0].bar = wholeBarWithBack();
    fixture.open();
    QCOMPARE(controlFaults(fixture.form()), QStringList());
    fixture.press(Edit);
    QCOMPARE(controlFaults(fixture.form()), QStringList());
}

void RecordPageTest::allButtonsShowTheirWholeCaptions() {
    RecordFixture fixture;
    fixture.plans[0].bar = wholeBarWithBack();
    fixture.plans[1].bar = {{0, BarAction::Add}, {1, BarAction::Leave}};
    fixture.open();
    const auto rowsOfBar = [&fixture](const QString& array) {
        QSet<int> places;
        for (const QPushButton* each : fixture.form().findChildren<QPushButton*>()) {
            if (each->objectName().startsWith(array))
                places << each->y();
        }
        return places.size();
    };
    QCOMPARE(controlFaults(fixture.form()), QStringList());
    QVERIFY(fixture.form().rect().contains(fixture.tabs().geometry()));
    QCOMPARE(rowsOfBar(u"CtrlCmd0"_s), 2);
    fixture.clickTab(1);
    QCOMPARE(controlFaults(fixture.form()), QStringList());
    QCOMPARE(rowsOfBar(u"CtrlCmd1"_s), 1);
}

void RecordPageTest::aFailedOpenShowsTheMessage() {
    RecordFixture fixture;
    fixture.plans[0].table = u"Base99"_s;
    fixture.answers.expectMsgBox();
    fixture.open();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QVERIFY(!fixture.isOpen());
}

int main(int argc, char** argv) {
    return runTests<RecordPageTest>(argc, argv);
}

#include "RecordPageTest.moc"
