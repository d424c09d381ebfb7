#include "windows/system/FrmSysSet.h"

#include "app/RecordChildFixture.h"
#include "windows/attendance/Form3.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Edit = u"CtrlCmd(0)"_s;
const QString Cancel = u"CtrlCmd(1)"_s;
const QString Save = u"CtrlCmd(2)"_s;
const QString Leave = u"CtrlCmd(3)"_s;
const QString Path = u"Text1(0)"_s;
const QString CodeLength = u"Text1(1)"_s;
const QDate Day(2001, 3, 5);

QString box(int index) {
    return u"Text1(%1)"_s.arg(index);
}

class Fixture : public RecordChildFixture {
  public:
    Fixture() : RecordChildFixture(u"FrmSysSet"_s, u"CmdSet(0)"_s) { gHandPath.clear(); }
    ~Fixture() { gHandPath.clear(); }

    [[nodiscard]] QStringList settings() { return rowsOf(database(), u"Syst01"_s); }
    [[nodiscard]] QStringList boxes() const {
        QStringList texts;
        for (int index = 0; index < 10; ++index)
            texts << text(::box(index));
        return texts;
    }
    [[nodiscard]] QString storedRow() const { return store.punchFolder() + u"|5|10|60|60|01|02|03|04|"_s; }

    /// Opens the attendance window, reads a day's file of one punch of card 10001, and leaves it.
    void importDay(QDate day) {
        const QString file = store.writePunchFile(day.toString(u"yyyyMMdd"_s) + u".txt"_s,
                                                  punchLine("10001", day, QTime(8, 0)));
        Form3::registerWindow(); // in place of the probe
        OpenToolWindow(3);
        answers.expectFile(file).expectMsgBox();
        click(control(*moduleWindow(3), u"CtrlCmd0(0)"_s));
        moduleWindow(3)->unload();
    }
};

int saveATextAsANumber(const QStringList&) {
    return runInChild(u"FrmSysSet"_s, [](Window& form) {
        click(control(form, Edit));
        control<QLineEdit>(form, CodeLength).clear();
        QTest::keyClicks(&control(form, CodeLength), u"five"_s);
        click(control(form, Save));
    });
}

int editWithoutARow(const QStringList&) {
    return runInChild(u"FrmSysSet"_s, [](Window& form) { click(control(form, Edit)); });
}

const Scenarios AllScenarios = {{u"saveATextAsANumber"_s, saveATextAsANumber},
                                {u"editWithoutARow"_s, editWithoutARow}};

} // namespace

class FrmSysSetTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void captionsAreToTheCharacter();
    void buttonsFollowTheState();
    void boxesShowTheRow();
    void everyBoxIsItsColumn();
    void cancelBringsTheRowBack();
    void anEmptyBoxIsSavedAsItIs();
    void leaveCodesHaveTwoCharacters();
    void leaveCodesMayNameNoLeaveType();
    void leavingClosesTheConnectionAndShowsForm8();
    void theBrowseButtonIsOnOnlyDuringAnEdit();
    void theFolderChosenIsSaved();
    void aCancelInTheFolderDialogJustAfterTheStartEmptiesTheBox();
    void aCancelInTheFolderDialogAfterAnImportShowsItsFolder();
    void aLongerCodeChangesTheNextImport();
    void aTextAsANumberEndsTheProgram();
    void editWithoutARowEndsTheProgram();
    void aFailedOpenTells();
    void enterMovesOn();
    void everySettingSaysWhatItDoes();
    void unitsSayThatTheyHaveNoEffect();
    void itFillsThePlaceOfAModuleWindow();
};

void FrmSysSetTest::captionsAreToTheCharacter() {
    Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.form().windowTitle(), u"系統設定"_s);
    QCOMPARE(fixture.at<QLabel>(u"Caption"_s).text(), u"系統設定"_s);
    QStringList captions;
    for (int index = 0; index < 10; ++index) {
        const auto& label = fixture.at<QLabel>(u"Label1(%1)"_s.arg(index));
        captions << label.text();
        QCOMPARE(label.buddy(), &fixture.at(box(index)));
    }
    QCOMPARE(captions, QStringList({u"使用記錄來源路徑："_s, u"員工代碼長度："_s, u"間隔秒數："_s,
                                    u"請假基本單位："_s, u"加班基本單位："_s, u"休假代碼："_s,
                                    u"去年保留休假："_s, u"事假："_s, u"病假："_s, u"公司機關名稱："_s}));
    qsizetype units = 0;
    for (const QLabel* label : fixture.form().findChildren<QLabel*>())
        units += label->text() == u"分"_s ? 1 : 0;
    QCOMPARE(units, 2);
    QCOMPARE(fixture.barCaptions(), QStringList({u"修改"_s, u"取消"_s, u"存檔"_s, u"離開"_s}));
    QCOMPARE(fixture.at<QPushButton>(u"CmdBrow"_s).text(), u"瀏覽"_s);
    QVERIFY(!QApplication::activeModalWidget());
}

void FrmSysSetTest::buttonsFollowTheState() {
    Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.buttonsOn(), QList<int>({0, 3}));
    QVERIFY(!fixture.at(u"Frame1"_s).isEnabled());
    for (const QString& end : {Cancel, Save}) {
        fixture.press(Edit);
        QCOMPARE(fixture.buttonsOn(), QList<int>({1, 2}));
        QVERIFY(fixture.at(u"Frame1"_s).isEnabled());
        fixture.press(end);
        QCOMPARE(fixture.buttonsOn(), QList<int>({0, 3}));
        QVERIFY(!fixture.at(u"Frame1"_s).isEnabled());
    }
    QCOMPARE(fixture.settings(), QStringList{fixture.storedRow()});
}

void FrmSysSetTest::boxesShowTheRow() {
    Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.boxes(), fixture.storedRow().split(u'|'));
}

void FrmSysSetTest::everyBoxIsItsColumn() {
    Fixture fixture;
    fixture.open();
    fixture.press(Edit);
    const QStringList texts{
        u"/punches/today"_s, u"6"_s, u"20"_s, u"30"_s, u"90"_s, u"A1"_s, u"B2"_s, u"C3"_s, u"D4"_s,
        u"某某縣政府"_s};
    for (int index = 0; index < 10; ++index) {
        fixture.type(box(index), texts.at(index));
    }
    fixture.press(Save);
    QCOMPARE(fixture.settings(), QStringList{texts.join(u'|')});
    QCOMPARE(fixture.boxes(), texts);
    fixture.press(Leave);
    fixture.open();
    QCOMPARE(fixture.boxes(), texts);
}

void FrmSysSetTest::cancelBringsTheRowBack() {
    Fixture fixture;
    fixture.open();
    fixture.press(Edit);
    fixture.type(CodeLength, u"9"_s);
    fixture.press(Cancel);
    QCOMPARE(fixture.text(CodeLength), u"5"_s);
    QCOMPARE(fixture.settings(), QStringList{fixture.storedRow()});
}

void FrmSysSetTest::anEmptyBoxIsSavedAsItIs() {
    Fixture fixture;
    fixture.open();
    fixture.press(Edit);
    fixture.at<QLineEdit>(CodeLength).clear();
    fixture.at<QLineEdit>(box(7)).clear();
    fixture.press(Save);
    QCOMPARE(fixture.settings(),
             QStringList{fixture.store.punchFolder() + u"|null|10|60|60|01|02|null|04|"_s});
}

void FrmSysSetTest::leaveCodesHaveTwoCharacters() {
    Fixture fixture;
    fixture.open();
    fixture.press(Edit);
    for (int index = 5; index <= 8; ++index) {
        fixture.type(box(index), u"123"_s);
        QCOMPARE(fixture.text(box(index)), u"12"_s);
    }
    // Characters that the text's encoding writes with two units each count as one.
    const QString rare = QString::fromUcs4(U"\U00020000\U00020001");
    auto& code = fixture.at<QLineEdit>(box(5));
    typeInto(code, rare);
    QCOMPARE(code.text(), rare);
    QTest::keyClicks(&code, u"1"_s);
    QCOMPARE(code.text(), rare);
}

void FrmSysSetTest::leaveCodesMayNameNoLeaveType() {
    Fixture fixture;
    insertRow(fixture.database(), u"Holi01"_s, {{u"HoliNo", u"01"}, {u"HoliType", u"休假"}});
    fixture.open();
    fixture.press(Edit);
    for (int index = 5; index <= 8; ++index)
        fixture.type(box(index), u"9%1"_s.arg(index));
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.settings(), QStringList{fixture.store.punchFolder() + u"|5|10|60|60|95|96|97|98|"_s});
}

void FrmSysSetTest::leavingClosesTheConnectionAndShowsForm8() {
    Fixture fixture;
    fixture.open();
    QVERIFY(gDbOpen);
    QVERIFY(fixture.form().geometry().contains(moduleWindow(8)->geometry()));
    fixture.press(Leave);
    QVERIFY(!fixture.isOpen());
    QVERIFY(!gDbOpen);
    QVERIFY(moduleWindow(8)->isVisible());
    QVERIFY(moduleWindow(8)->isAncestorOf(QApplication::focusWidget()));
    QCOMPARE(enabledButtons(), QList<int>{8});
    QVERIFY(!gMDI->Tb().isEnabled());
}

void FrmSysSetTest::theBrowseButtonIsOnOnlyDuringAnEdit() {
    Fixture fixture;
    fixture.open();
    QVERIFY(!fixture.at(u"CmdBrow"_s).isEnabled());
    fixture.press(u"CmdBrow"_s);
    QVERIFY(!QApplication::activeModalWidget());
    fixture.press(Edit);
    QVERIFY(fixture.at(u"CmdBrow"_s).isEnabled());
}

void FrmSysSetTest::theFolderChosenIsSaved() {
    Fixture fixture;
    fixture.open();
    fixture.press(Edit);
    fixture.answers.expect(u"FrmBrower"_s, [](QWidget& dialog) {
        QTest::keyClicks(&control(dialog, u"FolderPath"_s), u"/punches/new"_s);
        click(control(dialog, u"CmdOk"_s));
    });
    fixture.press(u"CmdBrow"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.text(Path), u"/punches/new"_s);
    fixture.press(Save);
    QCOMPARE(fixture.settings(), QStringList{u"/punches/new|5|10|60|60|01|02|03|04|"_s});
}

void FrmSysSetTest::aCancelInTheFolderDialogJustAfterTheStartEmptiesTheBox() {
    Fixture fixture;
    fixture.open();
    fixture.press(Edit);
    fixture.answers.expectClick(u"FrmBrower"_s, u"CmdCancel"_s);
    fixture.press(u"CmdBrow"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.text(Path), QString());
    fixture.press(Cancel);
    QCOMPARE(fixture.text(Path), fixture.store.punchFolder());
    QCOMPARE(fixture.settings(), QStringList{fixture.storedRow()});
}

void FrmSysSetTest::aCancelInTheFolderDialogAfterAnImportShowsItsFolder() {
    Fixture fixture;
    fixture.open();
    fixture.press(Leave);
    moduleWindow(8)->unload();
    fixture.importDay(Day);
    fixture.database().execute(u"update Syst01 set HandPath = '/elsewhere'"_s);
    fixture.open();
    QCOMPARE(fixture.text(Path), u"/elsewhere"_s);
    fixture.press(Edit);
    fixture.answers.expectClick(u"FrmBrower"_s, u"CmdCancel"_s);
    fixture.press(u"CmdBrow"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.text(Path), fixture.store.punchFolder());
    fixture.press(Save); // a change by code counts as typed
    QCOMPARE(fixture.settings(), QStringList{fixture.storedRow()});
}

void FrmSysSetTest::aLongerCodeChangesTheNextImport() {
    Fixture fixture;
    addSlot(fixture.database(), u"A"_s);
    for (const QString& code : {u"10001"_s, u"010001"_s}) {
        addEmployee(fixture.database(), code);
        addRoster(fixture.database(), code, Day, u"A"_s);
    }
    const QStringList employees = rowsOf(fixture.database(), u"Base06"_s);
    const QStringList roster = rowsOf(fixture.database(), u"Rule03"_s);
    fixture.open();
    fixture.press(Leave);
    moduleWindow(8)->unload();
    fixture.importDay(Day);
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList{u"10001|2001-03-05|08:00:00|255|001"_s});

    fixture.open();
    fixture.press(Edit);
    fixture.type(CodeLength, u"6"_s);
    fixture.press(Save);
    fixture.press(Leave);
    moduleWindow(8)->unload();
    QCOMPARE(rowsOf(fixture.database(), u"Base06"_s), employees);
    QCOMPARE(rowsOf(fixture.database(), u"Rule03"_s), roster);
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList{u"10001|2001-03-05|08:00:00|255|001"_s});

    fixture.importDay(Day.addDays(1));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s),
             QStringList({u"10001|2001-03-05|08:00:00|255|001"_s, u"010001|2001-03-06|08:00:00|255|001"_s}));
    QCOMPARE(rowsOf(fixture.database(), u"Base06"_s), employees);
    QCOMPARE(rowsOf(fixture.database(), u"Rule03"_s), roster);
}

void FrmSysSetTest::aTextAsANumberEndsTheProgram() {
    TestStore store;
    const QStringList before = rowsOf(store.database(), u"Syst01"_s);
    OtherProcess program(store.folder(), u"saveATextAsANumber"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤 '3421':"_s),
             qUtf8Printable(lines.constFirst()));
    QCOMPARE(rowsOf(store.database(), u"Syst01"_s), before);
}

void FrmSysSetTest::editWithoutARowEndsTheProgram() {
    TestStore store;
    store.database().execute(u"delete * from Syst01"_s);
    OtherProcess program(store.folder(), u"editWithoutARow"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤 '3021':"_s),
             qUtf8Printable(lines.constFirst()));
}

void FrmSysSetTest::aFailedOpenTells() {
    Fixture fixture;
    fixture.open();
    fixture.press(Leave);
    OpenDB();
    gDbPath = u"/nowhere/DB/"_s;
    fixture.answers.expectMsgBox();
    fixture.open();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QVERIFY(fixture.isOpen());
    QVERIFY(gOpenFailed);
}

void FrmSysSetTest::enterMovesOn() {
    Fixture fixture;
    fixture.open();
    fixture.press(Edit);
    QVERIFY(fixture.at(Path).hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    // Past the choice of a folder, whose cancel would change the path.
    for (int index = 1; index < 10; ++index) {
        QVERIFY(fixture.at(box(index)).hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter, Qt::KeypadModifier);
    }
    // To the saving ahead of all other buttons.
    QVERIFY(fixture.at(Save).hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(fixture.at(u"CmdBrow"_s).hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(fixture.at(Cancel).hasFocus());
}

void FrmSysSetTest::everySettingSaysWhatItDoes() {
    Fixture fixture;
    fixture.open();
    const QStringList words{u"讀取記錄"_s, u"卡號欄"_s,   u"功能鍵"_s, u"只作記錄"_s, u"只作記錄"_s,
                            u"休假"_s,     u"去年保留"_s, u"事假"_s,   u"病假"_s,     u"報表的標題"_s};
    for (int index = 0; index < words.size(); ++index)
        QVERIFY2(fixture.at(box(index)).toolTip().contains(words.at(index)), qPrintable(words.at(index)));
    QVERIFY(fixture.at(u"CmdBrow"_s).toolTip().contains(u"按「取消」"_s));
}

void FrmSysSetTest::unitsSayThatTheyHaveNoEffect() {
    Fixture fixture;
    fixture.open();
    const QString hint = u"單位：分鐘\n只作記錄：請假與加班的時數不按此值計算。"_s;
    QStringList hinted;
    for (int index = 0; index < 10; ++index) {
        const QWidget& each = fixture.at(box(index));
        QCOMPARE(each.accessibleDescription(), each.toolTip());
        QCOMPARE(fixture.at(u"Label1(%1)"_s.arg(index)).toolTip(), each.toolTip());
        if (each.toolTip() == hint)
            hinted << each.objectName();
    }
    QCOMPARE(hinted, QStringList({box(3), box(4)}));
}

void FrmSysSetTest::itFillsThePlaceOfAModuleWindow() {
    Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.form().size(), QSize(574, 418));
}

int main(int argc, char** argv) {
    return runTests<FrmSysSetTest>(argc, argv, AllScenarios);
}

#include "FrmSysSetTest.moc"
