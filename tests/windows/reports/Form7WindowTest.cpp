#include "app/ModuleProbes.h"
#include "support/TableTakenAway.h"
#include "windows/RegisterWindows.h"
#include "windows/reports/Form7Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// Two units, a class, an employment type; a current employee and one who has left.
void fill(Database& database) {
    database.execute(u"Update Syst01 Set CmpName = '範例機關'"_s);
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"2000"}, {u"Unit", u"人事課"}});
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
    insertRow(database, u"Base03"_s, {{u"WorkNo", u"A"}, {u"WorkType", u"正式"}});
    insertRow(database, u"Base05"_s, {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
    addEmployee(database, u"10002"_s, {{u"EmpName", u"陳美惠"}});
    addEmployee(database, u"10001"_s, {{u"EmpName", u"王小明"}});
    addEmployee(database, u"10003"_s, {{u"EmpName", u"張志明"}, {u"LeaveDate", QDate(2009, 12, 31)}});
    insertRow(database, u"Holi01"_s, {{u"HoliNo", u"03"}, {u"HoliType", u"事假"}});
    insertRow(database, u"Holi01"_s, {{u"HoliNo", u"1"}, {u"HoliType", u"公假"}});
    insertRow(database, u"Canc01"_s, {{u"CnlNo", u"01"}, {u"CnlName", u"忘記刷卡"}});
    insertRow(database, u"Canc01"_s, {{u"CnlNo", u"02"}});
}

QStringList entriesOf(const QListWidget& list) {
    QStringList texts;
    for (int entry = 0; entry < list.count(); ++entry)
        texts << list.item(entry)->text() + (list.item(entry)->isSelected() ? u"*"_s : QString());
    return texts;
}

QStringList entriesOf(const QComboBox& box) {
    QStringList texts;
    for (int entry = 0; entry < box.count(); ++entry)
        texts << box.itemText(entry);
    return texts;
}

} // namespace

/// The report window's opening with what its fields show and offer, the ways to it and out of it, and a load
/// that fails.
class Form7WindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void toolbarButton7OpensIt();
    void tabsAndButtons();
    void whatTheBoxesShowAtFirst();
    void aListWithoutEntriesSaysWhatToDoFirst();
    void whatTheBoxesOffer();
    void theListsAreSelectedWhole();
    void emptyTablesAreOffered();
    void theWindowsLeadToTheirTab_data();
    void theWindowsLeadToTheirTab();
    void leavingClosesNoConnection();
    void aFailedLoadIsTold_data();
    void aFailedLoadIsTold();
    void settingsWithoutARowAreAFailedLoad();
    void aFailedLoadStaysWithItsButtons();
};

void Form7WindowTest::toolbarButton7OpensIt() {
    Form7Fixture it;
    it.showIdle();
    click(button(7));
    QVERIFY(it.isOpen() && it.form().isVisible());
    QCOMPARE(it.form().objectName(), u"Form7"_s);
    QCOMPARE(it.form().geometry(), QRect(QPoint(0, 0), ModuleWindowSize));
    QCOMPARE(it.mainWindow().windowTitle(), u"報表列印"_s);
    QCOMPARE(enabledButtons(), QList<int>{7});
    QCOMPARE(it.tabs().currentIndex(), 0);
    QVERIFY(gDbOpen);
    QVERIFY(previews().isEmpty());
    QCOMPARE(it.formula(), QString());
}

void Form7WindowTest::tabsAndButtons() {
    Form7Fixture it;
    it.open();
    const QStringList captions{u"基本報表"_s, u"排班報表"_s, u"勤惰報表"_s,
                               u"請假報表"_s, u"註銷報表"_s, u"加班報表"_s};
    QCOMPARE(it.tabs().count(), 6);
    for (int tab = 0; tab < 6; ++tab) {
        QCOMPARE(it.tabs().tabText(tab), captions.at(tab));
        it.clickTab(tab);
        QCOMPARE(it.of<QPushButton>(u"Cmd"_s, tab, 0).text(), u"列印"_s);
        QCOMPARE(it.of<QPushButton>(u"Cmd"_s, tab, 1).text(), u"離開"_s);
        click(it.of(u"Cmd"_s, tab, 1));
        QVERIFY(!it.isOpen());
        QCOMPARE(it.mainWindow().windowTitle(), IdleCaption);
        OpenToolWindow(7);
    }
}

void Form7WindowTest::aListWithoutEntriesSaysWhatToDoFirst() {
    Form7Fixture it;
    it.open(3);
    const QList<std::pair<int, QString>> hints{
        {3, u"沒有假別。請先到「差假管理」的「假別設定」建立。"_s},
        {4, u"沒有註銷原因。請先到「註銷管理」的「註銷原因」建立。"_s}};
    for (const auto& [tab, hint] : hints) {
        it.clickTab(tab);
        QCOMPARE(it.list(tab).accessibleDescription(), hint);
        const QImage empty = it.list(tab).viewport()->grab().toImage();
        new QListWidgetItem(QString(), &it.list(tab));
        QVERIFY(it.list(tab).viewport()->grab().toImage() != empty);
    }
}

void Form7WindowTest::whatTheBoxesShowAtFirst() {
    Form7Fixture it;
    fill(it.database());
    it.open();
    const QStringList employees{u"000000"_s, u"ZZZZZZ"_s};
    const QStringList codes{u"0000"_s, u"ZZZZ"_s};
    const std::array<QStringList, 6> shown{codes + codes + employees + QStringList{u"1"_s},
                                           employees + codes,
                                           employees + codes + codes,
                                           employees + codes + codes,
                                           employees + codes + QStringList{u"1"_s},
                                           employees + codes + codes};
    const QString day = u"日    期："_s;
    const QString employee = u"員工代號："_s;
    const QString unit = u"單    位："_s;
    const QString work = u"聘僱類別："_s;
    const std::array<QStringList, 6> captions{
        QStringList{u"到職日期："_s, u"離職日期："_s, u"班    別："_s, unit, employee, u"月    份："_s},
        QStringList{day, employee, unit},
        QStringList{day, employee, unit, work, u"卡    別："_s},
        QStringList{u"假    別："_s, day, employee, unit, work},
        QStringList{u"註銷原因："_s, day, employee, unit, u"註銷次數："_s},
        QStringList{day, employee, unit, work}};
    for (int tab = 0; tab < 6; ++tab) {
        const auto place = static_cast<std::size_t>(tab);
        for (int index = 0; index < shown.at(place).size(); ++index)
            QCOMPARE(it.combo(tab, index).currentText(), shown.at(place).at(index));
        for (int index = 0; index < (tab == 0 ? 4 : 2); ++index) {
            QCOMPARE(it.mask(tab, index).value(), QString());
            QVERIFY(!it.date(tab, index).date().isValid());
        }
        QStringList told;
        for (const QLabel* each : it.tabs().widget(tab)->findChildren<QLabel*>()) {
            if (each->text() != u"～"_s)
                told << each->text();
        }
        QCOMPARE(told, captions.at(place));
    }
}

void Form7WindowTest::whatTheBoxesOffer() {
    Form7Fixture it;
    fill(it.database());
    it.open();
    const QStringList classes{u"D01-日班"_s};
    const QStringList units{u"1000-會計課"_s, u"2000-人事課"_s};
    const QStringList employees{u"10001-王小明"_s, u"10002-陳美惠"_s}; // none who has left
    const QStringList works{u"A-正式"_s};
    const QStringList months{u"1"_s, u"2"_s, u"3"_s, u"4"_s,  u"5"_s,  u"6"_s,
                             u"7"_s, u"8"_s, u"9"_s, u"10"_s, u"11"_s, u"12"_s};
    const QStringList counts = months.mid(0, 10);
    const std::array<QList<QStringList>, 6> offered{
        QList<QStringList>{classes, units, employees, months}, QList<QStringList>{employees, units},
        QList<QStringList>{employees, units, works},           QList<QStringList>{employees, units, works},
        QList<QStringList>{employees, units, counts},          QList<QStringList>{employees, units, works}};
    for (int tab = 0; tab < 6; ++tab) {
        for (int index = 0; index < Form7Fixture::comboCount(tab); ++index)
            QCOMPARE(entriesOf(it.combo(tab, index)),
                     offered.at(static_cast<std::size_t>(tab)).at(index / 2));
    }
}

void Form7WindowTest::theListsAreSelectedWhole() {
    Form7Fixture it;
    fill(it.database());
    it.open();
    QCOMPARE(entriesOf(it.list(3)), QStringList({u"03 事假*"_s, u"1 公假*"_s}));
    // A reason without a name is offered by its code.
    QCOMPARE(entriesOf(it.list(4)), QStringList({u"01 忘記刷卡*"_s, u"02 *"_s}));
    // A click chooses one alone, one with Ctrl adds or takes away.
    it.clickTab(3);
    const auto clickEntry = [&](int entry, Qt::KeyboardModifiers keys) {
        QTest::mouseClick(it.list(3).viewport(), Qt::LeftButton, keys,
                          it.list(3).visualItemRect(it.list(3).item(entry)).center());
    };
    clickEntry(1, Qt::ControlModifier);
    QCOMPARE(entriesOf(it.list(3)), QStringList({u"03 事假*"_s, u"1 公假"_s}));
    clickEntry(1, Qt::NoModifier);
    QCOMPARE(entriesOf(it.list(3)), QStringList({u"03 事假"_s, u"1 公假*"_s}));
}

void Form7WindowTest::emptyTablesAreOffered() {
    Form7Fixture it;
    it.open();
    QVERIFY(!gOpenFailed);
    QCOMPARE(it.list(3).count() + it.list(4).count(), 0);
    QCOMPARE(it.combo(0, 2).count(), 0);
    QCOMPARE(it.combo(0, 2).currentText(), u"0000"_s);
}

void Form7WindowTest::theWindowsLeadToTheirTab_data() {
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("reports");
    const auto row = [](const char* title, int module, int tab, const QString& name, int reports) {
        QTest::newRow(title) << module << tab << name << reports;
    };
    row("master data, titles", 1, 0, u"CtrlCmd0(11)"_s, 0);
    row("master data, employees", 1, 5, u"CtrlCmd5(11)"_s, 0);
    row("attendance, punch files", 3, 0, u"CtrlCmd0(7)"_s, 2);
    row("attendance, exceptions", 3, 2, u"CmdCtrl(4)"_s, 2);
    row("attendance, results", 3, 3, u"CmdCtrl(10)"_s, 2);
    row("leave, types", 4, 0, u"CtrlCmd0(11)"_s, 3);
    row("leave, grants", 4, 1, u"CtrlCmd1(11)"_s, 3);
    row("leave, notes", 4, 2, u"CtrlCmd2(11)"_s, 3);
    row("write-offs, reasons", 5, 0, u"CtrlCmd0(11)"_s, 4);
    row("write-offs, entries", 5, 2, u"CtrlCmd2(11)"_s, 4);
    row("overtime", 6, 0, u"CtrlCmd0(11)"_s, 5);
}

/// Past the right to the reports, as is meant.
void Form7WindowTest::theWindowsLeadToTheirTab() {
    QFETCH(const int, module);
    QFETCH(const int, tab);
    QFETCH(const QString, button);
    QFETCH(const int, reports);
    Form7Fixture it;
    it.showIdle();
    gF7 = false;
    UnlockToolbar();
    QVERIFY(!enabledButtons().contains(7));
    OpenToolWindow(static_cast<std::int16_t>(module));
    Window& from = *moduleWindow(module);
    control<QTabWidget>(from, u"SSTab1"_s).setCurrentIndex(tab);
    click(control(from, button));
    QVERIFY(!moduleWindow(module));
    QVERIFY(it.isOpen() && it.form().isVisible());
    QCOMPARE(it.tabs().currentIndex(), reports);
    QCOMPARE(it.mainWindow().windowTitle(), u"報表列印"_s);
    QCOMPARE(enabledButtons(), QList<int>{7});
    click(it.of(u"Cmd"_s, reports, 1));
    QVERIFY(!enabledButtons().contains(7));
}

void Form7WindowTest::leavingClosesNoConnection() {
    Form7Fixture it;
    it.open();
    QVERIFY(gDbOpen);
    click(it.of(u"Cmd"_s, 0, 1));
    QVERIFY(!it.isOpen());
    QVERIFY(gDbOpen);
    QVERIFY(enabledButtons().contains(1) && enabledButtons().contains(7));
    // The next window works on the connection that it finds.
    OpenToolWindow(1);
    moduleWindow(1)->unload();
    QVERIFY(!gDbOpen);
}

void Form7WindowTest::aFailedLoadIsTold_data() {
    QTest::addColumn<QString>("table");
    for (const auto* table : {"Syst01", "Holi01", "Canc01", "Base02", "Base03", "Base05", "Base06"})
        QTest::newRow(table) << QString::fromLatin1(table);
}

void Form7WindowTest::aFailedLoadIsTold() {
    QFETCH(const QString, table);
    Form7Fixture it;
    it.showIdle();
    {
        const TableTakenAway away(it.store.path(), table.toStdString());
        it.answers.expectMsgBox();
        click(button(7));
    }
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList{u"異常警告|報表開啟異常,請洽程式設計師|確定"_s});
    QVERIFY(!gOpenFailed);
    QCOMPARE(it.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(enabledButtons().contains(7));
}

void Form7WindowTest::settingsWithoutARowAreAFailedLoad() {
    Form7Fixture it;
    it.database().execute(u"delete * from Syst01"_s);
    it.showIdle();
    it.answers.expectMsgBox();
    click(button(7));
    QCOMPARE(it.seen(), QStringList{u"異常警告|報表開啟異常,請洽程式設計師|確定"_s});
}

void Form7WindowTest::aFailedLoadStaysWithItsButtons() {
    Form7Fixture it;
    fill(it.database());
    it.showIdle();
    {
        const TableTakenAway away(it.store.path(), "Canc01");
        it.answers.expectMsgBox();
        click(button(7));
    }
    QVERIFY(it.isOpen());
    // A further click brings up the same window, which reads nothing again.
    click(button(7));
    QVERIFY(it.form().isVisible());
    QCOMPARE(entriesOf(it.list(3)), QStringList({u"03 事假*"_s, u"1 公假*"_s}));
    QCOMPARE(it.list(4).count() + it.combo(0, 2).count(), 0);
    it.print(0);
    QCOMPARE(it.preview().windowTitle(), u"A01 職稱代碼一覽表"_s);
    QCOMPARE(it.named(u"Title"_s), u"範例機關"_s);
    click(it.of(u"Cmd"_s, 0, 1));
    QVERIFY(!it.isOpen());
    OpenToolWindow(7);
    QCOMPARE(it.list(4).count(), 2);
}

int main(int argc, char** argv) {
    return runTests<Form7WindowTest>(argc, argv);
}

#include "Form7WindowTest.moc"
