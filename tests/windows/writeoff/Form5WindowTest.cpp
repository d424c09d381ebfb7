#include "app/ModuleProbes.h"
#include "app/RecordFixture.h"
#include "support/TableTakenAway.h"
#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

class IdleFixture : public Form5Fixture {
  public:
    IdleFixture() { showMainWindow(); }
};

int tabOf(int module) {
    return control<QTabWidget>(*moduleWindow(module), u"SSTab1"_s).currentIndex();
}

} // namespace

/// The write-off window's opening, its ways out and a load that fails.
class Form5WindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void toolbarButton5OpensIt();
    void theTabsHaveTheirSources();
    void theAttendanceWindowLeadsToTheBatch_data();
    void theAttendanceWindowLeadsToTheBatch();
    void button13LeadsBackToTheExceptions_data();
    void button13LeadsBackToTheExceptions();
    void theBatchLeadsBackToTheExceptions();
    void printLeadsToTheReports_data();
    void printLeadsToTheReports();
    void panelEightLeaves();
    void aFailedLoadIsTold();
};

void Form5WindowTest::toolbarButton5OpensIt() {
    IdleFixture it;
    click(button(5));
    QVERIFY(it.isOpen() && it.form().isVisible());
    QCOMPARE(it.form().objectName(), u"Form5"_s);
    QCOMPARE(it.form().geometry(), QRect(QPoint(0, 0), ModuleWindowSize));
    QCOMPARE(it.mainWindow().windowTitle(), u"註銷管理"_s);
    QCOMPARE(enabledButtons(), QList<int>{5});
    QVERIFY(gDbOpen);
    it.press(u"CtrlCmd0(12)"_s);
    QVERIFY(!it.isOpen() && !gDbOpen);
    QVERIFY(enabledButtons().contains(5));
}

void Form5WindowTest::theTabsHaveTheirSources() {
    Form5Fixture it;
    it.addPeople();
    it.open(Reasons);
    QStringList captions;
    QStringList sources;
    for (int tab = 0; tab < it.tabs().count(); ++tab) {
        captions << it.tabs().tabText(tab);
        sources
            << it.at<QWidget>(u"SSTab1"_s).findChild<DataSource*>(u"Data1(%1)"_s.arg(tab))->RecordSource();
    }
    QCOMPARE(captions, QStringList({u"註銷原因"_s, u"註銷批次"_s, u"註銷明細"_s, u"註銷查詢"_s}));
    QCOMPARE(sources, QStringList({u"Canc01"_s, u"Canc01"_s, u"Canc02"_s, u"View01"_s}));
    for (const auto& [tab, rows] : {std::pair(0, 3), {1, 3}, {2, 0}, {3, 0}}) {
        it.clickTab(tab);
        QCOMPARE(it.panel(1), u"資料錄:1/%1"_s.arg(rows));
        QVERIFY(it.panel8Raised());
    }
}

void Form5WindowTest::theAttendanceWindowLeadsToTheBatch_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("button");
    QTest::addRow("from the exceptions") << 2 << u"CmdCtrl(1)"_s;
    QTest::addRow("from the results") << 3 << u"CmdCtrl(7)"_s;
}

void Form5WindowTest::theAttendanceWindowLeadsToTheBatch() {
    QFETCH(const int, tab);
    QFETCH(const QString, button);
    IdleFixture it;
    QCOMPARE(leaveAttendanceBy(tab, button), u"註銷管理"_s);
    QVERIFY(!moduleWindow(3));
    QVERIFY(it.isOpen());
    QCOMPARE(it.tabs().currentIndex(), int(Batch));
    QCOMPARE(it.mainWindow().windowTitle(), u"註銷管理"_s);
}

void Form5WindowTest::button13LeadsBackToTheExceptions_data() {
    QTest::addColumn<bool>("inEdit");
    QTest::addRow("while rows are looked at") << false;
    QTest::addRow("in an edit, which is lost") << true;
}

void Form5WindowTest::button13LeadsBackToTheExceptions() {
    QFETCH(const bool, inEdit);
    Form5Fixture it;
    it.addPeople();
    it.open(Entries);
    if (inEdit) {
        it.press(u"CtrlCmd2(0)"_s);
        it.keys(u"900307"_s);
    }
    it.press(u"CtrlCmd2(13)"_s);
    QVERIFY(!it.isOpen());
    QVERIFY(moduleWindow(3) && moduleWindow(3)->isVisible());
    QCOMPARE(tabOf(3), 2);
    QCOMPARE(it.rows(u"Canc02"_s), QStringList());
}

void Form5WindowTest::theBatchLeadsBackToTheExceptions() {
    Form5Fixture it;
    it.open(Batch);
    it.press(u"CmdBat(3)"_s);
    QVERIFY(!it.isOpen());
    QVERIFY(moduleWindow(3) && moduleWindow(3)->isVisible());
    QCOMPARE(tabOf(3), 2);
    // And from there to it again.
    click(control(*moduleWindow(3), u"CmdCtrl(1)"_s));
    QVERIFY(!moduleWindow(3));
    QCOMPARE(it.tabs().currentIndex(), int(Batch));
}

void Form5WindowTest::printLeadsToTheReports_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("button");
    QTest::addRow("from the reasons") << int(Reasons) << u"CtrlCmd0(11)"_s;
    QTest::addRow("from the entries") << int(Entries) << u"CtrlCmd2(11)"_s;
}

void Form5WindowTest::printLeadsToTheReports() {
    QFETCH(const int, tab);
    QFETCH(const QString, button);
    IdleFixture it;
    registerModuleWindow(7, {}); // a program without reports
    OpenToolWindow(5);
    QVERIFY(!it.button(button).isEnabled());
    it.form().unload();
    RecordFixture::registerReports();
    OpenToolWindow(5);
    it.clickTab(tab);
    it.press(button);
    QVERIFY(!it.isOpen());
    QCOMPARE(tabOf(7), 4);
    moduleWindow(7)->unload();
    registerModuleWindow(7, {});
}

void Form5WindowTest::panelEightLeaves() {
    Form5Fixture it;
    it.addPeople();
    it.open(Reasons);
    it.press(u"CtrlCmd0(1)"_s);
    it.press(u"StbTool(8)"_s);
    QVERIFY(it.isOpen());
    it.press(u"CtrlCmd0(4)"_s);
    it.press(u"StbTool(8)"_s);
    QVERIFY(!it.isOpen());
    QVERIFY(!gDbOpen);
}

void Form5WindowTest::aFailedLoadIsTold() {
    IdleFixture it;
    {
        const TableTakenAway away(it.store.path(), "View01");
        it.answers.expectMsgBox();
        click(button(5));
    }
    QCOMPARE(it.seen(), QStringList{u"異常警告|資料庫開啟異常,請洽程式設計師"_s});
    QVERIFY(!gOpenFailed);
    QCOMPARE(it.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(enabledButtons().contains(5));
    QVERIFY(it.isOpen()); // as it is
}

int main(int argc, char** argv) {
    return runTests<Form5WindowTest>(argc, argv);
}

#include "Form5WindowTest.moc"
