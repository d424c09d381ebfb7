#include "app/controls/TabPages.h"
#include "windows/Walk.h"
#include "windows/leave/Form4Fixture.h"
#include "windows/system/FrmPswFixture.h"

#include <QShortcut>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The key of each caption that has one, wherever a button bears it.
const QMap<QString, QString> Keys = {
    {u"新增資料"_s, u"Ctrl+N"_s}, {u"新增"_s, u"Ctrl+N"_s},     {u"修改"_s, u"F2"_s},
    {u"存檔"_s, u"Ctrl+S"_s},     {u"儲存設定"_s, u"Ctrl+S"_s}, {u"存檔／取消"_s, u"Ctrl+S"_s},
    {u"查詢"_s, u"Ctrl+F"_s},     {u"開始查詢"_s, u"Ctrl+F"_s}, {u"更新"_s, u"F5"_s},
    {u"列印"_s, u"Ctrl+P"_s},     {u"報表管理"_s, u"Ctrl+P"_s}};

/// A small button beside a code box is no query, whatever its caption.
QString keyFor(const QAbstractButton& button) {
    return button.objectName().startsWith(u"Search") ? QString() : Keys.value(button.text());
}

/// What a walk has found: buttons without their key or with another one, keys with two buttons.
class Findings {
  public:
    void look(const Window& window, const QString& place) {
        QMap<QString, QStringList> buttonsOf;
        for (const auto* button : window.findChildren<QAbstractButton*>()) {
            const auto* shortcut = button->findChild<QShortcut*>();
            const QString has = shortcut ? shortcut->key().toString() : QString();
            const QString says = u"%1（%2）"_s.arg(button->text(), has);
            if (has != keyFor(*button) || (!has.isEmpty() && button->toolTip() != says))
                faults_ << u"%1: %2 has \"%3\""_s.arg(place, button->objectName(), has);
            if (!has.isEmpty() && button->isVisible() && button->isEnabled())
                buttonsOf[has] << button->objectName();
        }
        for (const QStringList& buttons : std::as_const(buttonsOf)) {
            if (buttons.size() > 1)
                faults_ << u"%1: one key for %2"_s.arg(place, buttons.join(u' '));
        }
        keys_ += static_cast<int>(buttonsOf.size());
    }
    [[nodiscard]] QString told() const { return faults_.join(u'\n'); }
    [[nodiscard]] int keys() const { return keys_; }

  private:
    QStringList faults_;
    int keys_ = 0;
};

const QString BadDate = u"警告訊息|日期格式輸入錯誤,請重新輸入"_s;

/// Form1.
struct MasterData : ModuleFixture {
    MasterData() : ModuleFixture(1) {}
    void open() { openModule(1); }
};

/// The same over two titles.
struct Titles : MasterData {
    Titles() {
        insertRow(database(), u"Base01"_s, {{u"TitleNo", u"0001"}, {u"Title", u"課長"}});
        insertRow(database(), u"Base01"_s, {{u"TitleNo", u"0002"}, {u"Title", u"科員"}});
    }
    [[nodiscard]] QStringList rows() { return rowsOf(database(), u"Base01"_s); }
    [[nodiscard]] QString state() const { return panel(2); }
};

} // namespace

/// The keys of the actions that many windows have: each does what a click on its button does.
class ActionKeysTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void eachButtonTellsItsKeyAndNoKeyHasTwo_data() { addEveryWindow(); }
    void eachButtonTellsItsKeyAndNoKeyHasTwo();
    void aRowIsAddedEditedAndSaved();
    void refreshShowsWhatHasComeMeanwhile();
    void queryAsks();
    void printLeadsToTheReports();
    void whatIsOffDoesNothing();
    void aNoteIsSavedFromWithinItsLastBox();
    void aKeyIsDroppedWhereTheFocusIsPutBack();
    void aMessageTakesTheKeyAsItTakesAClick();
    void aDialogHasNone();
    void theBatchIsOpenedAndCancelled();
    void aWindowOverAnotherHasItsOwn();
};

void ActionKeysTest::eachButtonTellsItsKeyAndNoKeyHasTwo() {
    QFETCH(const std::size_t, window);
    Walk walk;
    Window& form = walk.open(window);
    Findings findings;
    inEveryState(
        form, [&](const QString& place, bool /*isEdit*/) { findings.look(form, place); }, &walk.answers);
    QVERIFY2(findings.told().isEmpty(), qPrintable(findings.told()));
    QCOMPARE(findings.keys() > 0, form.objectName() != u"Form8"_s);
    QCOMPARE(walk.answers.trouble(), QString());
}

void ActionKeysTest::aRowIsAddedEditedAndSaved() {
    Titles it;
    it.open();
    it.key(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(it.state(), u"新增資料"_s);
    QCOMPARE(it.focused(), u"Text1(0)"_s);
    it.keys(u"0003"_s);
    it.type(u"Text1(1)"_s, u"股長"_s);
    it.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(it.state(), QString());
    QCOMPARE(it.rows(),
             QStringList({expectedRow(u"Base01"_s, {{u"TitleNo", u"0001"}, {u"Title", u"課長"}}),
                          expectedRow(u"Base01"_s, {{u"TitleNo", u"0002"}, {u"Title", u"科員"}}),
                          expectedRow(u"Base01"_s, {{u"TitleNo", u"0003"}, {u"Title", u"股長"}})}));
    it.key(Qt::Key_F2);
    QCOMPARE(it.state(), u"修改資料"_s);
    it.type(u"Text1(1)"_s, u"主任"_s);
    it.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(it.rows().last(), expectedRow(u"Base01"_s, {{u"TitleNo", u"0003"}, {u"Title", u"主任"}}));
    QCOMPARE(it.panel(1), u"資料錄:3/3"_s);
}

void ActionKeysTest::refreshShowsWhatHasComeMeanwhile() {
    Titles it;
    it.open();
    insertRow(it.database(), u"Base01"_s, {{u"TitleNo", u"0000"}, {u"Title", u"處長"}});
    QCOMPARE(it.shown(u"TDBGrid2(0)"_s).size(), 2);
    it.key(Qt::Key_F5);
    QCOMPARE(it.shown(u"TDBGrid2(0)"_s), QStringList({u"0000|處長"_s, u"0001|課長"_s, u"0002|科員"_s}));
    QCOMPARE(it.focused(), u"CtrlCmd0(10)"_s);
}

void ActionKeysTest::queryAsks() {
    Titles it;
    addEmployee(it.database(), u"10001"_s, {{u"EmpName", u"王小明"}});
    addEmployee(it.database(), u"10002"_s, {{u"EmpName", u"陳美惠"}});
    it.open();
    it.key(Qt::Key_F, Qt::ControlModifier); // no query on the titles
    it.clickTab(5);
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.key(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(it.seen(), QStringList{u"QFrmEmpNO"_s});
    QCOMPARE(it.text(u"Text6(0)"_s), u"10002"_s);
    QCOMPARE(it.answers.trouble(), QString());
}

void ActionKeysTest::printLeadsToTheReports() {
    Titles it;
    it.open();
    it.key(Qt::Key_P, Qt::ControlModifier);
    QVERIFY(!it.isOpen());
    const Window* reports = moduleWindow(7);
    QVERIFY(reports && reports->isVisible());
    QCOMPARE(control<TabPages>(*reports, u"SSTab1"_s).currentIndex(), 0);
}

void ActionKeysTest::whatIsOffDoesNothing() {
    Titles it;
    it.open();
    const QStringList before = it.rows();
    const QString focus = it.focused();
    it.key(Qt::Key_S, Qt::ControlModifier); // nothing is being edited
    QCOMPARE(it.state(), QString());
    QCOMPARE(it.focused(), focus);
    it.key(Qt::Key_F2);
    QCOMPARE(it.state(), u"修改資料"_s);
    it.type(u"Text1(1)"_s, u"改過"_s);
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_P, Qt::Key_F})
        it.key(key, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_F5})
        it.key(key);
    QCOMPARE(it.state(), u"修改資料"_s);
    QCOMPARE(it.focused(), u"Text1(1)"_s);
    QCOMPARE(it.text(u"Text1(1)"_s), u"改過"_s);
    QCOMPARE(it.rows(), before);
    it.press(u"CtrlCmd0(3)"_s);
    it.database().execute(u"delete * from Base01"_s);
    it.key(Qt::Key_F5);
    it.key(Qt::Key_F2); // there is no row
    QCOMPARE(it.state(), QString());
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
}

void ActionKeysTest::aNoteIsSavedFromWithinItsLastBox() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.open(NotesTab);
    it.key(Qt::Key_N, Qt::ControlModifier);
    it.fillNote(u"10001"_s, u"03"_s, u"900305"_s, u"0800"_s, u"1700"_s);
    it.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(it.notes(), it.expectedNotes({it.wholeNote(FirstNumber, u"10001"_s, u"03"_s, Monday)}));
    QCOMPARE(it.panel(2), QString());
    QCOMPARE(it.seen(), QStringList());
}

void ActionKeysTest::aKeyIsDroppedWhereTheFocusIsPutBack() {
    Form4Fixture it;
    it.open(NotesTab);
    it.key(Qt::Key_N, Qt::ControlModifier);
    it.typeDate(0, u"901345"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(it.seen(), QStringList{BadDate});
    QCOMPARE(it.focused(), u"TDBMask1(0)"_s);
    QCOMPARE(it.panel(2), u"新增資料"_s);
    QCOMPARE(it.notes(), QStringList());
    QCOMPARE(it.answers.trouble(), QString());
}

void ActionKeysTest::aMessageTakesTheKeyAsItTakesAClick() {
    for (const bool byKey : {false, true}) {
        MasterData it;
        addEmployee(it.database(), u"10001"_s, {{u"EmpName", u"王小明"}});
        it.open();
        it.clickTab(5);
        it.press(u"CtrlCmd5(1)"_s);
        it.type(u"Text6(1)"_s, u"李大同"_s);
        it.typeDate(0, u"901345"_s);
        const QStringList before = rowsOf(it.database(), u"Base06"_s);
        it.answers.expectMsgBox();
        if (byKey)
            it.key(Qt::Key_S, Qt::ControlModifier);
        else
            it.press(u"CtrlCmd5(4)"_s);
        QCOMPARE(it.seen(), QStringList{BadDate});
        QCOMPARE(it.focused(), u"CtrlCmd5(4)"_s);
        QCOMPARE(it.panel(2), u"修改資料"_s);
        QCOMPARE(rowsOf(it.database(), u"Base06"_s), before);
    }
}

void ActionKeysTest::aDialogHasNone() {
    Titles it;
    addEmployee(it.database(), u"10001"_s, {{u"EmpName", u"王小明"}});
    it.open();
    it.clickTab(5);
    it.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        for (const Qt::Key key : {Qt::Key_N, Qt::Key_F, Qt::Key_P})
            QTest::keyClick(dialog.windowHandle(), key, Qt::ControlModifier);
        for (const Qt::Key key : {Qt::Key_F2, Qt::Key_F5})
            QTest::keyClick(dialog.windowHandle(), key);
        QVERIFY(dialog.isVisible());
        clickOk(dialog);
    });
    it.key(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(it.state(), QString());
    QVERIFY(it.isOpen());
    QCOMPARE(it.seen(), QStringList{u"QFrmEmpNO"_s});
    QCOMPARE(it.answers.trouble(), QString());
}

void ActionKeysTest::theBatchIsOpenedAndCancelled() {
    Form4Fixture it;
    it.open(BatchTab);
    it.key(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(it.panel(2), u"新增資料"_s);
    QCOMPARE(it.entriesOf(u"List1"_s), QStringList({u"10001  王小明"_s, u"10002  陳美惠"_s}));
    it.answers.expectMsgBox(MsgAnswer::No);
    it.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(it.seen(), QStringList{u"警告訊息|是否確定執行假單批次 ?"_s});
    QCOMPARE(it.panel(2), QString());
    QCOMPARE(it.notes(), QStringList());
}

void ActionKeysTest::aWindowOverAnotherHasItsOwn() {
    FrmPswFixture it;
    it.open();
    it.key(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(it.buttonsOn(), QList<int>({3, 4, 9}));
    it.press(u"CtrlCmd(3)"_s);
    QVERIFY(it.buttonsOn().contains(0));
}

int main(int argc, char** argv) {
    return runTests<ActionKeysTest>(argc, argv);
}

#include "ActionKeysTest.moc"
