#include "app/ModuleProbes.h"
#include "support/TableTakenAway.h"
#include "windows/leave/Form4Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The leave window: opening, leaving, and the ways between it and others.
class Form4WindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void toolbarButton4OpensIt();
    void leavingItGoesBackToTheIdleState_data();
    void leavingItGoesBackToTheIdleState();
    void theAttendanceWindowLeadsToTheNotes_data();
    void theAttendanceWindowLeadsToTheNotes();
    void theNotesLeadBackToTheExceptions();
    void withoutReportsPrintIsOff();
    void printLeadsToTheLeaveReports_data();
    void printLeadsToTheLeaveReports();
    void aFailedOpenClosesIt_data();
    void aFailedOpenClosesIt();
    void settingsWithoutCodesOpenIt();
    void sixTabsOpenEmpty();
};

void Form4WindowTest::toolbarButton4OpensIt() {
    Form4Fixture it;
    it.open(TypesTab);
    it.form().unload();
    QVERIFY(enabledButtons().contains(4));
    click(button(4));
    QVERIFY(moduleWindow(4) && moduleWindow(4)->isVisible());
    QCOMPARE(moduleWindow(4)->geometry(), QRect(QPoint(0, 0), ModuleWindowSize));
    QCOMPARE(it.mainWindow().windowTitle(), u"差假管理"_s);
    QCOMPARE(enabledButtons(), QList<int>{4});
    QStringList tabs;
    for (int tab = 0; tab < it.tabs().count(); ++tab)
        tabs << it.tabs().tabText(tab);
    QCOMPARE(tabs, QStringList({u"假別設定"_s, u"給假規定"_s, u"輸入假單"_s, u"假單批次"_s, u"瀏覽"_s,
                                u"假時查詢"_s}));
    QCOMPARE(it.tabs().currentIndex(), 0);
    QVERIFY(gDbOpen);
}

void Form4WindowTest::leavingItGoesBackToTheIdleState_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("button");
    QTest::newRow("types") << int(TypesTab) << u"CtrlCmd0(12)"_s;
    QTest::newRow("grants") << int(GrantsTab) << u"CtrlCmd1(12)"_s;
    QTest::newRow("notes") << int(NotesTab) << u"CtrlCmd2(12)"_s;
    QTest::newRow("batch") << int(BatchTab) << u"StbTool(8)"_s;
}

void Form4WindowTest::leavingItGoesBackToTheIdleState() {
    QFETCH(const int, tab);
    QFETCH(const QString, button);
    Form4Fixture it;
    it.open(tab);
    it.press(button);
    QVERIFY(!moduleWindow(4));
    QVERIFY(!gDbOpen);
    QCOMPARE(it.mainWindow().windowTitle(), IdleCaption);
}

void Form4WindowTest::theAttendanceWindowLeadsToTheNotes_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("name");
    QTest::newRow("from the exceptions") << 2 << u"CmdCtrl(0)"_s;
    QTest::newRow("from the results") << 3 << u"CmdCtrl(6)"_s;
}

void Form4WindowTest::theAttendanceWindowLeadsToTheNotes() {
    QFETCH(const int, tab);
    QFETCH(const QString, name);
    Form4Fixture it;
    it.open(TypesTab);
    it.form().unload();
    OpenToolWindow(3);
    control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s).setCurrentIndex(tab);
    auto& jump = control<QPushButton>(*moduleWindow(3), name);
    QVERIFY(jump.isEnabled());
    click(jump);
    QVERIFY(!moduleWindow(3));
    QCOMPARE(it.tabs().currentIndex(), int(NotesTab));
    QCOMPARE(it.mainWindow().windowTitle(), u"差假管理"_s);
}

void Form4WindowTest::theNotesLeadBackToTheExceptions() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    QVERIFY(!it.at(u"CtrlCmd2(13)"_s).isEnabled());
    it.press(3);
    it.press(13);
    QVERIFY(!moduleWindow(4));
    const auto& tabs = control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s);
    QCOMPARE(tabs.tabText(tabs.currentIndex()), u"異常處理"_s);
}

void Form4WindowTest::withoutReportsPrintIsOff() {
    Form4Fixture it;
    it.open(TypesTab);
    for (const bool hasReports : {true, false}) {
        it.form().unload();
        if (!hasReports)
            registerModuleWindow(7, {});
        OpenToolWindow(4);
        for (int tab = 0; tab < 3; ++tab) {
            it.clickTab(tab);
            QCOMPARE(it.at(u"CtrlCmd%1(11)"_s.arg(tab)).isEnabled(), hasReports);
        }
    }
}

void Form4WindowTest::printLeadsToTheLeaveReports_data() {
    QTest::addColumn<int>("tab");
    QTest::newRow("types") << int(TypesTab);
    QTest::newRow("grants") << int(GrantsTab);
    QTest::newRow("notes") << int(NotesTab);
}

void Form4WindowTest::printLeadsToTheLeaveReports() {
    QFETCH(const int, tab);
    Form4Fixture it;
    it.open(tab);
    it.press(11);
    QVERIFY(!moduleWindow(4));
    QCOMPARE(control<QTabWidget>(*moduleWindow(7), u"SSTab1"_s).currentIndex(), 3);
}

void Form4WindowTest::aFailedOpenClosesIt_data() {
    QTest::addColumn<QString>("table");
    for (const QString& table :
         {u"Holi01"_s, u"Holi02"_s, u"Holi03"_s, u"Holi04"_s, u"Syst01"_s, u"Syst03"_s})
        QTest::newRow(qPrintable(table)) << table;
}

void Form4WindowTest::aFailedOpenClosesIt() {
    QFETCH(const QString, table);
    Form4Fixture it;
    it.open(TypesTab);
    it.form().unload();
    {
        const TableTakenAway away(it.store.path(), table.toStdString());
        it.answers.expectMsgBox();
        OpenToolWindow(4);
    }
    QCOMPARE(it.seen(), QStringList{u"異常警告|資料庫開啟異常,請洽程式設計師"_s});
    QVERIFY(!moduleWindow(4));
    QVERIFY(!gOpenFailed && !gDbOpen);
    QCOMPARE(it.mainWindow().windowTitle(), IdleCaption);
    OpenToolWindow(4);
    QVERIFY(moduleWindow(4));
    QCOMPARE(it.shown(u"TDBGrid1(0)"_s).size(), 5);
}

void Form4WindowTest::settingsWithoutCodesOpenIt() {
    Form4Fixture it;
    it.database().execute(
        u"Update Syst01 Set ThisYearRest = null, LastYearRest = null, Leave = null, Sick = null"_s);
    it.open(BatchTab);
    QVERIFY(it.seen().isEmpty());
    QVERIFY(it.at(u"CmdBat(0)"_s).isEnabled());
}

void Form4WindowTest::sixTabsOpenEmpty() {
    Form4Fixture it;
    for (const QString& table : {u"Holi01"_s, u"Base06"_s, u"Base04"_s, u"Syst03"_s})
        it.database().execute(u"delete * from "_s + table);
    it.open(TypesTab);
    for (int tab = 0; tab < 6; ++tab) {
        it.clickTab(tab);
        QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
        if (tab <= NotesTab)
            QVERIFY(!it.buttonsOn(tab).contains(1));
    }
    it.clickTab(BatchTab);
    it.press(u"CmdBat(0)"_s);
    it.typeDate(2, u"900305"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.time(2).time(), QTime(0, 0)); // as a program starts
    QCOMPARE(it.label(u"Label3(0)"_s), u"0"_s);
}

int main(int argc, char** argv) {
    return runTests<Form4WindowTest>(argc, argv);
}

#include "Form4WindowTest.moc"
