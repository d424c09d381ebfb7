#include "master/Form1Fixture.h"

#include "app/LookupProcess.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QList<int> BrowseWithRows{0, 1, 2, 6, 7, 8, 9, 10, 12};
const QList<int> BrowseWithoutRows{0, 10, 12};
const QList<int> InEdit{3, 4};

struct CodeTab {
    QString table;
    QString boxes;
    QStringList labels;
    QStringList columns;
};

const QList<CodeTab> CodeTabs{
    {u"Base01"_s, u"Text1"_s, {u"職稱代碼："_s, u"職稱："_s}, {u"職稱代碼"_s, u"職稱"_s}},
    {u"Base02"_s, u"Text2"_s, {u"單位代碼："_s, u"單位名稱："_s}, {u"單位代碼"_s, u"單位名稱"_s}},
    {u"Base03"_s, u"Text3"_s, {u"聘雇別代碼："_s, u"聘雇類別："_s}, {u"聘雇代碼"_s, u"聘雇類別"_s}},
};

void addTitles(Database& database, int count) {
    for (int code = 1; code <= count; ++code)
        insertRow(database, u"Base01"_s,
                  {{u"TitleNo", u"%1"_s.arg(code)}, {u"Title", u"職稱%1"_s.arg(code)}});
}

int saveARepeatedCode(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        click(control(form, u"CtrlCmd0(0)"_s));
        QTest::keyClicks(&control(form, u"Text1(0)"_s), u"1"_s);
        click(control(form, u"CtrlCmd0(4)"_s));
    });
}

} // namespace

/// The window as a whole, and its three plain code lists.
class Form1CodesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void opensOnTheTitles();
    void tabsHaveTheirCaptions();
    void codeListsHaveTheirLabelsAndColumns();
    void statesOfTheBar();
    void theQueryButtonIsNeverOn();
    void anEmptyTableShowsOneOfNone();
    void aReturnToATabOpensItsSourceAnew();
    void aClickOnTheTabInFrontOpensItAnew();
    void aClickOnTheTabInFrontKeepsAnEdit();
    void otherTabsRestDuringAnEdit();
    void addSaveAndStay();
    void modifyAndCancel();
    void deleteGoesToTheLastRow();
    void anEmptyNameIsStored();
    void aRepeatedCodeEndsTheProgram();
    void enterMovesOn();
    void panel8Unloads();
    void aFailedOpenOfATabTells();
    void controlsAreNamedAndReached_data();
    void controlsAreNamedAndReached();
};

void Form1CodesTest::opensOnTheTitles() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 3);
    fixture.open();
    QCOMPARE(fixture.mainWindow().windowTitle(), u"基本資料"_s);
    QCOMPARE(fixture.form().geometry(), QRect(0, 0, 574, 418));
    QCOMPARE(fixture.tabs().currentIndex(), 0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.text(u"Text1(0)"_s), u"1"_s);
    QCOMPARE(fixture.text(u"Text1(1)"_s), u"職稱1"_s);
}

void Form1CodesTest::tabsHaveTheirCaptions() {
    Form1Fixture fixture;
    fixture.open();
    QStringList captions;
    for (int tab = 0; tab < fixture.tabs().count(); ++tab)
        captions += fixture.tabs().tabText(tab);
    QCOMPARE(captions, QStringList({u"職稱設定"_s, u"單位設定"_s, u"聘僱類別"_s, u"時段設定"_s, u"班別設定"_s,
                                    u"員工資料"_s}));
}

void Form1CodesTest::codeListsHaveTheirLabelsAndColumns() {
    Form1Fixture fixture;
    fixture.open();
    for (int tab = 0; tab < CodeTabs.size(); ++tab) {
        fixture.clickTab(tab);
        const CodeTab& codes = CodeTabs.at(tab);
        QCOMPARE(fixture.captionsOf(u"TDBGrid2(%1)"_s.arg(tab)), codes.columns);
        const QWidget& frame = fixture.at(u"Frame1(%1)"_s.arg(tab));
        QCOMPARE(frame.property("title").toString(), u"編輯區"_s);
        QStringList labels;
        for (const auto* label : frame.findChildren<QLabel*>())
            labels += label->text() + u'|' + label->buddy()->objectName();
        QCOMPARE(labels, QStringList({codes.labels.at(0) + u'|' + codes.boxes + u"(0)"_s,
                                      codes.labels.at(1) + u'|' + codes.boxes + u"(1)"_s}));
    }
}

void Form1CodesTest::statesOfTheBar() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 2);
    fixture.open();
    QCOMPARE(fixture.buttonsOn(0), BrowseWithRows);
    QVERIFY(!fixture.at(u"Frame1(0)"_s).isEnabled());
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.buttonsOn(0), InEdit);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.focused(), u"Text1(0)"_s);
    fixture.press(u"CtrlCmd0(3)"_s);
    QCOMPARE(fixture.buttonsOn(0), BrowseWithRows);
    fixture.press(u"CtrlCmd0(0)"_s);
    QCOMPARE(fixture.buttonsOn(0), InEdit);
    QCOMPARE(fixture.panel(2), u"新增資料"_s);
    QCOMPARE(fixture.focused(), u"Text1(0)"_s);
    QCOMPARE(fixture.text(u"Text1(0)"_s), QString());
    fixture.press(u"CtrlCmd0(3)"_s);
    QCOMPARE(fixture.text(u"Text1(0)"_s), u"1"_s);
}

void Form1CodesTest::theQueryButtonIsNeverOn() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 1);
    addSlot(fixture.database(), u"A"_s);
    fixture.open();
    for (int tab = 0; tab < 5; ++tab) {
        fixture.clickTab(tab);
        QVERIFY(!fixture.buttonsOn(tab).contains(5));
    }
}

void Form1CodesTest::anEmptyTableShowsOneOfNone() {
    Form1Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(fixture.buttonsOn(0), BrowseWithoutRows);
}

void Form1CodesTest::aReturnToATabOpensItsSourceAnew() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 3);
    fixture.open();
    fixture.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    fixture.clickTab(2);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    insertRow(fixture.database(), u"Base01"_s, {{u"TitleNo", u"0"}, {u"Title", u"新"}});
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    QCOMPARE(fixture.text(u"Text1(0)"_s), u"0"_s);
}

void Form1CodesTest::aClickOnTheTabInFrontOpensItAnew() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 3);
    fixture.open();
    fixture.press(u"CtrlCmd0(9)"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void Form1CodesTest::aClickOnTheTabInFrontKeepsAnEdit() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 1);
    fixture.open();
    fixture.press(u"CtrlCmd0(1)"_s);
    fixture.type(u"Text1(1)"_s, u"改"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.text(u"Text1(1)"_s), u"改"_s);
}

void Form1CodesTest::otherTabsRestDuringAnEdit() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 1);
    fixture.open();
    fixture.press(u"CtrlCmd0(1)"_s);
    for (int tab = 1; tab < 6; ++tab)
        QVERIFY(!fixture.tabs().isTabEnabled(tab));
    fixture.clickTab(2);
    QCOMPARE(fixture.tabs().currentIndex(), 0);
    fixture.press(u"StbTool(8)"_s);
    QVERIFY(moduleWindow(1));
    fixture.press(u"CtrlCmd0(3)"_s);
    for (int tab = 1; tab < 6; ++tab)
        QVERIFY(fixture.tabs().isTabEnabled(tab));
}

void Form1CodesTest::addSaveAndStay() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 2);
    fixture.open();
    fixture.press(u"CtrlCmd0(0)"_s);
    fixture.type(u"Text1(0)"_s, u"15"_s);
    fixture.type(u"Text1(1)"_s, u"秘書"_s);
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Base01"_s),
             QStringList({u"1|職稱1"_s, u"15|秘書"_s, u"2|職稱2"_s}));
    // A new row stands at the end until the source is run again.
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    QCOMPARE(fixture.text(u"Text1(0)"_s), u"15"_s);
    fixture.press(u"CtrlCmd0(10)"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void Form1CodesTest::modifyAndCancel() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 2);
    fixture.open();
    fixture.press(u"CtrlCmd0(8)"_s);
    fixture.press(u"CtrlCmd0(1)"_s);
    fixture.type(u"Text1(1)"_s, u"改名"_s);
    fixture.press(u"CtrlCmd0(3)"_s);
    QCOMPARE(fixture.text(u"Text1(1)"_s), u"職稱2"_s);
    fixture.press(u"CtrlCmd0(1)"_s);
    fixture.type(u"Text1(1)"_s, u"改名"_s);
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Base01"_s), QStringList({u"1|職稱1"_s, u"2|改名"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:2/2"_s);
}

void Form1CodesTest::deleteGoesToTheLastRow() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 4);
    fixture.open();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(u"CtrlCmd0(2)"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"確定刪除這筆資料?"_s);
    QCOMPARE(fixture.answers.seen().constFirst().title, u"確認刪除"_s);
    QCOMPARE(fixture.answers.seen().constFirst().icon, MsgIcon::Question);
    QCOMPARE(rowsOf(fixture.database(), u"Base01"_s),
             QStringList({u"2|職稱2"_s, u"3|職稱3"_s, u"4|職稱4"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    QCOMPARE(fixture.text(u"Text1(0)"_s), u"4"_s);
}

void Form1CodesTest::anEmptyNameIsStored() {
    Form1Fixture fixture;
    insertRow(fixture.database(), u"Base01"_s, {{u"TitleNo", u"1"}, {u"Title", u"職稱1"}});
    fixture.open();
    fixture.press(u"CtrlCmd0(1)"_s);
    fixture.type(u"Text1(1)"_s, QString());
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Base01"_s), QStringList{u"1|null"_s});
}

void Form1CodesTest::aRepeatedCodeEndsTheProgram() {
    TestStore store;
    addTitles(store.database(), 1);
    OtherProcess program(store.folder(), u"saveARepeatedCode"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤 '3022':"_s),
             qUtf8Printable(lines.constFirst()));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList{u"1|職稱1"_s});
}

void Form1CodesTest::enterMovesOn() {
    Form1Fixture fixture;
    fixture.open();
    for (int tab = 0; tab < CodeTabs.size(); ++tab) {
        fixture.clickTab(tab);
        fixture.press(u"CtrlCmd%1(0)"_s.arg(tab));
        QCOMPARE(fixture.focused(), CodeTabs.at(tab).boxes + u"(0)"_s);
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.focused(), CodeTabs.at(tab).boxes + u"(1)"_s);
        fixture.press(u"CtrlCmd%1(3)"_s.arg(tab));
    }
}

void Form1CodesTest::panel8Unloads() {
    Form1Fixture fixture;
    fixture.open();
    QVERIFY(gDbOpen);
    fixture.press(u"StbTool(8)"_s);
    QVERIFY(!moduleWindow(1));
    QVERIFY(!gDbOpen);
    QCOMPARE(fixture.mainWindow().windowTitle(), u"Pontrel V1.1 - Norvale"_s);
}

void Form1CodesTest::aFailedOpenOfATabTells() {
    Form1Fixture fixture;
    fixture.open();
    QVERIFY(QFile::remove(fixture.store.path()));
    fixture.answers.expectMsgBox();
    fixture.clickTab(1);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    // The flag stands, the toolbar is free, and the window is loaded beneath Form0.
    QVERIFY(gOpenFailed);
    QVERIFY(fixture.mainWindow().Tb().isEnabled());
    QVERIFY(moduleWindow(1));
    QCOMPARE(fixture.mainWindow().windowTitle(), u"Pontrel V1.1 - Norvale"_s);
    gOpenFailed = false;
}

void Form1CodesTest::controlsAreNamedAndReached_data() {
    QTest::addColumn<int>("tab");
    for (int tab = 0; tab < 6; ++tab)
        QTest::addRow("tab %d", tab) << tab;
}

void Form1CodesTest::controlsAreNamedAndReached() {
    QFETCH(const int, tab);
    Form1Fixture fixture;
    addTitles(fixture.database(), 1);
    fixture.open(tab);
    QCOMPARE(controlFaults(fixture.form()), QStringList());
    fixture.press(u"CtrlCmd%1(0)"_s.arg(tab));
    QCOMPARE(controlFaults(fixture.form()), QStringList());
}

int main(int argc, char** argv) {
    return runTests<Form1CodesTest>(argc, argv, {{u"saveARepeatedCode"_s, saveARepeatedCode}});
}

#include "Form1CodesTest.moc"
