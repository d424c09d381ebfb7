#include "support/Builders.h"
#include "windows/help/HelpFixture.h"

#include <QComboBox>
#include <QPushButton>
#include <QStringList>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The chapter of each module window and the section of each window and dialog beside them.
const std::map<QString, QString> Places{
    {u"Form1"_s, u"master.md#"_s},
    {u"Form2"_s, u"schedule.md#"_s},
    {u"Form3"_s, u"attendance.md#"_s},
    {u"Form4"_s, u"leave.md#"_s},
    {u"Form5"_s, u"writeoff.md#"_s},
    {u"Form6"_s, u"overtime.md#"_s},
    {u"Form7"_s, u"reports.md#"_s},
    {u"Form8"_s, u"system.md#"_s},
    {u"FrmPsw"_s, u"system.md#權限管理"_s},
    {u"FrmSysSet"_s, u"system.md#系統設定"_s},
    {u"FrmBrower"_s, u"system.md#瀏覽資料夾"_s},
    {u"FrmI1Date"_s, u"basics.md#輸入日期"_s},
    {u"FrmI2Date"_s, u"basics.md#輸入日期起迄"_s},
    {u"IFrmQuery"_s, u"basics.md#查詢選項"_s},
    {u"frmLogin"_s, u"basics.md#登入"_s},
    {u"InputBox"_s, u"basics.md#輸入框"_s},
    {u"ProgressBox"_s, u"basics.md#進度視窗"_s},
    {u"DayJudgement"_s, u"attendance.md#當日判讀"_s},
    {u"MsgBox"_s, u"messages.md#共同的訊息"_s},
};

QString placeOf(const QString& objectName) {
    if (objectName.startsWith(u"QFrm"))
        return u"basics.md#代碼查詢"_s;
    const auto place = Places.find(objectName);
    return place == Places.end() ? u"not told"_s : place->second;
}

} // namespace

/// F1 in every window and dialog.
class HelpTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { closeHelp(); }
    void everyTabOpensTheHelpAtItsSection_data() { addEveryWindow(); }
    void everyTabOpensTheHelpAtItsSection();
    void everyDialogOpensTheHelpAtItsSection_data() { addEveryDialog(); }
    void everyDialogOpensTheHelpAtItsSection();
    void theIdleMainWindowHasASectionOfItsOwn();
    void aMessageOpensTheHelpAtItsExplanation();
    void helpThatIsOpenCanBeUsedBesideADialogThatComesLater();
    void whatIsBeingEditedStays();
    void aListThatHasDroppedDownGivesWay();
    void aHeldKeyOpensItOnce();
    void closedAndAskedForAtOnceItIsThereAgain();
    void keysWithModifiersAreNotTaken();
    void itClosesWithTheMainWindow();
};

void HelpTest::everyTabOpensTheHelpAtItsSection() {
    QFETCH(const std::size_t, window);
    const TestStore store;
    const Shell shell(store);
    const EveryWindow each = everyWindow().at(window);
    each.open();
    QVERIFY(each.opened());
    QString chapter = placeOf(each.title).section(u'#', 0, 0) + u'#';
    onEveryPage(*each.opened(), each.title, [&](const QString& page) {
        const QString tab = page.section(u'/', -1);
        pressHelpKey(*gMDI);
        QCOMPARE(placeInHelp(), tab == each.title ? placeOf(each.title) : chapter + tab);
        QVERIFY(HelpWindow::current()->isVisible());
        QCOMPARE(helpWindows(), 1);
    });
    closeHelp();
    QCOMPARE(helpWindows(), 0);
    QVERIFY(each.opened());
    QVERIFY(each.opened()->isVisible());
}

void HelpTest::everyDialogOpensTheHelpAtItsSection() {
    QFETCH(const std::size_t, dialog);
    const TestStore store;
    const Shell shell(store);
    const EveryDialog each = everyDialog().at(dialog);
    PromptAnswers answers;
    answers.expect(each.objectName, [&each](QWidget& shown) {
        pressHelpKey(shown);
        QCOMPARE(placeInHelp(), placeOf(each.objectName));
        QCOMPARE(helpWindows(), 1);
        // It can be used, the dialog being modal or not.
        auto& wanted = control<QLineEdit>(*HelpWindow::current(), u"TxtFind"_s);
        click(wanted);
        QTRY_VERIFY(HelpWindow::current()->isActiveWindow());
        for (const char letter : {'x', 'l', 's', 'x'})
            QTest::keyClick(HelpWindow::current()->windowHandle(), letter);
        QCOMPARE(wanted.text(), u"xlsx"_s);
        closeHelp();
        QCOMPARE(helpWindows(), 0);
        QVERIFY(shown.isVisible());
        closeDialog(shown);
    });
    each.show();
    QCOMPARE(answers.trouble(), QString());
}

void HelpTest::theIdleMainWindowHasASectionOfItsOwn() {
    const TestStore store;
    const Shell shell(store);
    pressHelpKey(*gMDI);
    QCOMPARE(placeInHelp(), u"basics.md#主視窗"_s);
    pressHelpKey(*HelpWindow::current());
    QCOMPARE(placeInHelp(), u"basics.md#使用說明"_s);
    QCOMPARE(helpWindows(), 1);
}

void HelpTest::aMessageOpensTheHelpAtItsExplanation() {
    const TestStore store;
    const Shell shell(store);
    PromptAnswers answers;
    const auto look = [&answers](const QString& message, const QString& selected) {
        answers.expect(u"MsgBox"_s, [selected](QWidget& shown) {
            pressHelpKey(shown);
            QCOMPARE(placeInHelp().section(u'#', 0, 0), u"messages.md"_s);
            QCOMPARE(helpText().textCursor().selectedText(), selected);
            closeHelp();
            closeDialog(shown);
        });
        MsgBox(message);
    };
    look(u"這一天的資料已經轉入,是否要取代掉?"_s, u"這一天的資料已經轉入,是否要取代掉?"_s);
    look(u"2010/3/1異常處理已完成!!"_s, u"〈日期〉異常處理已完成!!"_s);
    look(u"無此【班別代碼】,請重新輸入"_s, u"無此【〈代碼的種類〉】,請重新輸入"_s);
    look(u"執行階段錯誤 '3022':\n\n代碼重複,資料無法存檔\n\n程式即將結束。"_s, u"代碼重複,資料無法存檔"_s);
    look(u"a text that no message has"_s, QString());
    QCOMPARE(answers.trouble(), QString());
}

void HelpTest::helpThatIsOpenCanBeUsedBesideADialogThatComesLater() {
    const TestStore store;
    const Shell shell(store);
    pressHelpKey(*gMDI);
    PromptAnswers answers;
    answers.expect(u"FrmI1Date"_s, [](QWidget& shown) {
        QCoreApplication::processEvents();
        click(control(*HelpWindow::current(), u"TxtFind"_s));
        QCOMPARE(HelpWindow::current()->focusWidget()->objectName(), u"TxtFind"_s);
        QTest::keyClick(HelpWindow::current()->windowHandle(), 'x');
        QCOMPARE(control<QLineEdit>(*HelpWindow::current(), u"TxtFind"_s).text(), u"x"_s);
        pressHelpKey(shown);
        QCOMPARE(placeInHelp(), u"basics.md#輸入日期"_s);
        shown.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &shown);
        closeDialog(shown);
    });
    FrmI1Date::ask(gMDI);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(HelpWindow::current());
    click(control(*HelpWindow::current(), u"CmdClose"_s));
    QTRY_COMPARE(helpWindows(), 0);
}

void HelpTest::whatIsBeingEditedStays() {
    const TestStore store;
    const Shell shell(store);
    registerWindows();
    OpenToolWindow(1);
    QWidget& form = *moduleWindow(1);
    click(control(form, u"CtrlCmd0(0)"_s));
    auto& box = control<QLineEdit>(form, u"Text1(0)"_s);
    QTest::keyClicks(&box, u"T01"_s);
    pressHelpKey(*gMDI);
    closeHelp();
    QTRY_VERIFY(gMDI->isActiveWindow());
    QCOMPARE(box.text(), u"T01"_s);
    QVERIFY(box.hasFocus());
    QVERIFY(control(form, u"CtrlCmd0(4)"_s).isEnabled());
    QTest::keyClick(gMDI->windowHandle(), Qt::Key_2);
    QCOMPARE(box.text(), u"T012"_s);
}

void HelpTest::aListThatHasDroppedDownGivesWay() {
    const TestStore store;
    const Shell shell(store);
    registerWindows();
    OpenToolWindow(1);
    auto& tabs = control<QTabWidget>(*moduleWindow(1), u"SSTab1"_s);
    tabs.setCurrentIndex(3);
    click(control(*moduleWindow(1), u"CtrlCmd3(0)"_s));
    auto& list = control<QComboBox>(*moduleWindow(1), u"Combo1"_s);
    list.showPopup();
    QTRY_VERIFY(QApplication::activePopupWidget());
    QTest::keyClick(QApplication::activePopupWidget()->windowHandle(), Qt::Key_F1);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(placeInHelp(), u"master.md#時段設定"_s);
    QCOMPARE(list.currentIndex(), -1);
}

void HelpTest::aHeldKeyOpensItOnce() {
    const TestStore store;
    const Shell shell(store);
    pressHelpKey(*gMDI);
    keyInHelp(Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(gMDI, &repeat);
    QCOMPARE(helpWindows(), 0);
}

void HelpTest::closedAndAskedForAtOnceItIsThereAgain() {
    const TestStore store;
    const Shell shell(store);
    pressHelpKey(*gMDI);
    keyInHelp(Qt::Key_Escape);
    QVERIFY(!HelpWindow::current());
    pressHelpKey(*gMDI);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(helpWindows(), 1);
    QVERIFY(HelpWindow::current()->isVisible());
}

void HelpTest::keysWithModifiersAreNotTaken() {
    const TestStore store;
    const Shell shell(store);
    for (const auto modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
        QTest::keyClick(gMDI->windowHandle(), Qt::Key_F1, modifier);
        QCOMPARE(helpWindows(), 0);
    }
}

void HelpTest::itClosesWithTheMainWindow() {
    const TestStore store;
    {
        const Shell shell(store);
        pressHelpKey(*gMDI);
        QCOMPARE(helpWindows(), 1);
    }
    QCOMPARE(helpWindows(), 0);
    const Shell shell(store);
    pressHelpKey(*gMDI);
    QVERIFY(gMDI->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(helpWindows(), 0);
}

int main(int argc, char** argv) {
    return runTests<HelpTest>(argc, argv);
}

#include "HelpTest.moc"
