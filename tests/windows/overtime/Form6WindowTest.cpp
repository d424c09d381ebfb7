#include "app/ModuleProbes.h"
#include "support/TableTakenAway.h"
#include "windows/overtime/Form6Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

class IdleFixture : public Form6Fixture {
  public:
    IdleFixture() { showMainWindow(); }
};

} // namespace

/// The overtime window's opening, its ways out and a load that fails.
class Form6WindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void toolbarButton6OpensIt();
    void theAttendanceWindowLeadsToIt_data();
    void theAttendanceWindowLeadsToIt();
    void button13LeadsBackToTheExceptions();
    void everyTabStandsOnItsFirstRow();
    void aFailedLoadIsTold();
};

void Form6WindowTest::toolbarButton6OpensIt() {
    IdleFixture it;
    click(button(6));
    // Unlike the windows ahead of it, it stays loaded, with its buttons, beneath the empty one.
    QVERIFY(it.isOpen() && !it.form().isUnloaded());
    QCOMPARE(it.form().objectName(), u"Form6"_s);
    QCOMPARE(it.form().geometry(), QRect(QPoint(0, 0), ModuleWindowSize));
    QCOMPARE(it.mainWindow().windowTitle(), u"加班管理"_s);
    QCOMPARE(enabledButtons(), QList<int>{6});
    QVERIFY(gDbOpen);
    QStringList captions;
    for (int tab = 0; tab < it.tabs().count(); ++tab)
        captions << it.tabs().tabText(tab);
    QCOMPARE(captions, QStringList({u"加班輸入"_s, u"加班批次"_s, u"加班明細"_s, u"加班查詢"_s}));
    QCOMPARE(it.tabs().currentIndex(), 0);
    it.press(entry::Leave);
    QVERIFY(!it.isOpen() && !gDbOpen);
    QVERIFY(enabledButtons().contains(6));
}

void Form6WindowTest::theAttendanceWindowLeadsToIt_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("button");
    QTest::addRow("from the exceptions") << 2 << u"CmdCtrl(2)"_s;
    QTest::addRow("from the results") << 3 << u"CmdCtrl(8)"_s;
}

void Form6WindowTest::theAttendanceWindowLeadsToIt() {
    QFETCH(const int, tab);
    QFETCH(const QString, button);
    IdleFixture it;
    QCOMPARE(leaveAttendanceBy(tab, button), u"加班管理"_s);
    QVERIFY(!moduleWindow(3));
    QVERIFY(it.isOpen());
    QCOMPARE(it.tabs().currentIndex(), 0);
    QCOMPARE(it.mainWindow().windowTitle(), u"加班管理"_s);
}

void Form6WindowTest::button13LeadsBackToTheExceptions() {
    Form6Fixture it;
    it.open();
    it.press(entry::Back);
    QVERIFY(!it.isOpen());
    QVERIFY(moduleWindow(3) && moduleWindow(3)->isVisible());
    QCOMPARE(control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s).currentIndex(), 2);
}

void Form6WindowTest::everyTabStandsOnItsFirstRow() {
    Form6Fixture it;
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    it.add(Form6Fixture::evening(u"10002"_s, 2, 3));
    it.open();
    QCOMPARE(it.text(u"Text1(0)"_s) + u'|' + it.names(), u"10001|王小明|會計課|科員|日班"_s);
    QCOMPARE(it.mask(1).displayText(), u"99/03/01"_s);
    for (int tab = 0; tab < 4; ++tab) {
        it.clickTab(tab);
        QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
        QVERIFY(it.panel8Raised());
    }
    it.clickTab(0);
    it.press(entry::Next);
    QCOMPARE(it.panel(1) + it.names(), u"資料錄:2/2陳美惠|人事課|課長|夜班"_s);
}

void Form6WindowTest::aFailedLoadIsTold() {
    IdleFixture it;
    {
        const TableTakenAway away(it.store.path(), "Over01");
        it.answers.expectMsgBox();
        click(button(6));
    }
    QCOMPARE(it.seen(), QStringList{u"異常警告|資料庫開啟異常,請洽程式設計師|確定"_s});
    QVERIFY(!gOpenFailed);
    QCOMPARE(it.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(enabledButtons().contains(6));
    QVERIFY(it.isOpen() && it.form().isVisible());
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>({0, 2}));
    click(button(6));
    it.press(entry::Leave);
    QVERIFY(!it.isOpen() && !gDbOpen);
    QCOMPARE(it.seen().size(), 1);
}

int main(int argc, char** argv) {
    return runTests<Form6WindowTest>(argc, argv);
}

#include "Form6WindowTest.moc"
