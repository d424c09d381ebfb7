#include "windows/master/Form1Pages.h"

#include <SQLiteCpp/SQLiteCpp.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// Makes a table of the store one that no source opens.
void dropTable(const TestStore& store, const QString& table) {
    SQLite::Database file(store.path().toStdString(), SQLite::OPEN_READWRITE);
    file.exec("drop table " + table.toStdString());
}

/// Whether the empty window lies over everything in the client area.
bool form0InFront(MDI& window) {
    const QWidget* each = window.clientArea()->childAt(window.clientArea()->rect().center());
    while (each && each->objectName() != u"Form0")
        each = each->parentWidget();
    return each != nullptr;
}

QList<int> loadedWindows() {
    QList<int> loaded;
    for (int index = 1; index <= 8; ++index) {
        if (moduleWindow(index))
            loaded << index;
    }
    return loaded;
}

QList<int> buttonsByRights() {
    QList<int> numbers;
    for (int number = 1; number <= 8; ++number) {
        if (hasModuleWindow(number))
            numbers << number;
    }
    return numbers;
}

} // namespace

/// The master data's window: opening, leaving, failing to open.
class Form1WindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void toolbarButton1OpensIt();
    void withoutTheRightItsButtonIsDead();
    void leavingItGoesBackToTheIdleState();
    void itOpensOnTheFirstTabEachTime();
    void enterGoesWhereTabGoes_data();
    void enterGoesWhereTabGoes();
    void aFailedOpenOfTheFirstTabClosesIt();
    void aFailedOpenOfATabLeavesItBeneathForm0_data();
    void aFailedOpenOfATabLeavesItBeneathForm0();
    void theNextWindowIsClosedAtOnceWithIt_data();
    void theNextWindowIsClosedAtOnceWithIt();
    void afterThatItOpensAgain();
};

void Form1WindowTest::toolbarButton1OpensIt() {
    PlainPageFixture fixture(0);
    fixture.addCodes(2);
    fixture.openPage();
    fixture.press(fixture.button(12));
    QVERIFY(!moduleWindow(1));
    click(button(1));
    QVERIFY(moduleWindow(1) && moduleWindow(1)->isVisible());
    QCOMPARE(moduleWindow(1)->objectName(), u"Form1"_s);
    QCOMPARE(moduleWindow(1)->geometry(), QRect(QPoint(0, 0), ModuleWindowSize));
    QCOMPARE(fixture.mainWindow().windowTitle(), u"基本資料"_s);
    QVERIFY(!fixture.mainWindow().Tb().isEnabled());
    QCOMPARE(enabledButtons(), QList<int>{1});
    QVERIFY(!gSysMenu->has(SystemMenu::Close));
    QVERIFY(gDbOpen);
    QVERIFY(!form0InFront(fixture.mainWindow()));
    QCOMPARE(fixture.shown(), u"資料錄:1/2|1|名1"_s);
    // None of the toolbar's buttons answers while it is open.
    click(button(2));
    QCOMPARE(loadedWindows(), QList<int>{1});
}

void Form1WindowTest::withoutTheRightItsButtonIsDead() {
    PlainPageFixture fixture(0);
    fixture.openPage();
    gF1 = false;
    fixture.press(fixture.button(12));
    click(button(1));
    QCOMPARE(loadedWindows(), QList<int>());
    QVERIFY(!enabledButtons().contains(1));
}

void Form1WindowTest::leavingItGoesBackToTheIdleState() {
    PlainPageFixture fixture(3);
    fixture.openPage();
    fixture.press(fixture.button(12));
    QCOMPARE(loadedWindows(), QList<int>());
    QVERIFY(!gDbOpen);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(fixture.mainWindow().Tb().isEnabled());
    QCOMPARE(enabledButtons(), buttonsByRights());
    QVERIFY(gSysMenu->has(SystemMenu::Close));
    QVERIFY(form0InFront(fixture.mainWindow()));
}

void Form1WindowTest::itOpensOnTheFirstTabEachTime() {
    PlainPageFixture fixture(4);
    insertRow(fixture.database(), u"Base01"_s, {{u"TitleNo", u"T"}});
    fixture.openPage();
    fixture.press(fixture.button(12));
    click(button(1));
    QCOMPARE(fixture.tabs().currentIndex(), 0);
    QCOMPARE(fixture.text(u"Text1(0)"_s), u"T"_s);
}

void Form1WindowTest::enterGoesWhereTabGoes_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("box");
    QTest::addColumn<bool>("moves");
    for (int tab = 0; tab < PlainPages.size(); ++tab) {
        for (int box = 0; box < 2; ++box)
            QTest::addRow("Text%d(%d)", tab + 1, box) << tab << box << (tab < 3);
    }
}

void Form1WindowTest::enterGoesWhereTabGoes() {
    QFETCH(const int, tab);
    QFETCH(const int, box);
    QFETCH(const bool, moves);
    PlainPageFixture fixture(tab);
    fixture.addCodes(1);
    fixture.openPage();
    fixture.pressButton(1);
    const QString name = u"Text%1(%2)"_s.arg(tab + 1).arg(box);
    fixture.box(name).setFocus();
    fixture.key(Qt::Key_Tab);
    const QString next = fixture.focused();
    QVERIFY(next != name);
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        fixture.box(name).setFocus();
        fixture.key(enter);
        QCOMPARE(fixture.focused(), moves ? next : name);
    }
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
}

void Form1WindowTest::aFailedOpenOfTheFirstTabClosesIt() {
    PlainPageFixture fixture(0);
    dropTable(fixture.store, u"Base01"_s);
    fixture.answers.expectMsgBox();
    fixture.openPage();
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& message = fixture.answers.seen().constFirst();
    QCOMPARE(message.title, u"異常警告"_s);
    QCOMPARE(message.text, u"資料庫開啟異常,請洽程式設計師"_s);
    QCOMPARE(message.buttons, QStringList{u"確定"_s});
    QCOMPARE(loadedWindows(), QList<int>());
    QVERIFY(!gOpenFailed);
    QVERIFY(!gDbOpen);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    QCOMPARE(enabledButtons(), buttonsByRights());
    QVERIFY(form0InFront(fixture.mainWindow()));
}

void Form1WindowTest::aFailedOpenOfATabLeavesItBeneathForm0_data() {
    QTest::addColumn<int>("tab");
    for (int tab = 1; tab < PlainPages.size(); ++tab)
        QTest::newRow(qUtf8Printable(PlainPages.at(tab).caption)) << tab;
}

void Form1WindowTest::aFailedOpenOfATabLeavesItBeneathForm0() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(0);
    fixture.openPage();
    dropTable(fixture.store, PlainPages.at(tab).table);
    fixture.answers.expectMsgBox();
    fixture.clickTab(tab);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& message = fixture.answers.seen().constFirst();
    QCOMPARE(message.title, u"異常警告"_s);
    QCOMPARE(message.text, u"資料庫開啟異常,請洽程式設計師"_s);
    QCOMPARE(message.buttons, QStringList{u"確定"_s});
    QVERIFY(gOpenFailed);
    QCOMPARE(loadedWindows(), QList<int>{1});
    QVERIFY(form0InFront(fixture.mainWindow()));
    QVERIFY(fixture.mainWindow().Tb().isEnabled());
    QCOMPARE(enabledButtons(), buttonsByRights());
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(gSysMenu->has(SystemMenu::Close));
    // The keyboard has left the window beneath, and comes to the toolbar alone.
    QSet<QString> reached{fixture.focused()};
    for (int press = 0; press < 20; ++press) {
        fixture.key(Qt::Key_Tab);
        reached << fixture.focused();
    }
    QSet<QString> toolbar{QString()};
    for (const int number : enabledButtons())
        toolbar << u"Tb(%1)"_s.arg(number);
    QCOMPARE(reached, toolbar);
}

void Form1WindowTest::theNextWindowIsClosedAtOnceWithIt_data() {
    QTest::addColumn<int>("next");
    QTest::addColumn<QList<int>>("left");
    QTest::newRow("Form1 itself") << 1 << QList<int>();
    QTest::newRow("Form2") << 2 << QList<int>();
    QTest::newRow("Form3") << 3 << QList<int>();
    QTest::newRow("Form8, which stays") << 8 << QList<int>{8};
}

void Form1WindowTest::theNextWindowIsClosedAtOnceWithIt() {
    QFETCH(const int, next);
    QFETCH(const QList<int>, left);
    PlainPageFixture fixture(0);
    fixture.openPage();
    dropTable(fixture.store, u"Base02"_s);
    fixture.answers.expectMsgBox();
    fixture.clickTab(1);
    click(button(next));
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(!gOpenFailed);
    QCOMPARE(loadedWindows(), left);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(fixture.mainWindow().Tb().isEnabled());
    QCOMPARE(enabledButtons(), buttonsByRights());
}

void Form1WindowTest::afterThatItOpensAgain() {
    PlainPageFixture fixture(0);
    fixture.addCodes(2);
    fixture.openPage();
    dropTable(fixture.store, u"Base02"_s);
    fixture.answers.expectMsgBox();
    fixture.clickTab(1);
    click(button(1));
    QCOMPARE(loadedWindows(), QList<int>());
    click(button(1));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(loadedWindows(), QList<int>{1});
    QCOMPARE(fixture.shown(), u"資料錄:1/2|1|名1"_s);
    QCOMPARE(fixture.on(), QList<int>({0, 1, 2, 6, 7, 8, 9, 10, 11, 12}));
}

int main(int argc, char** argv) {
    return runTests<Form1WindowTest>(argc, argv);
}

#include "Form1WindowTest.moc"
