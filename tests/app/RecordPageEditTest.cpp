#include "app/RecordFixture.h"
#include "support/Errors.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Add = u"CtrlCmd0(0)"_s;
const QString Edit = u"CtrlCmd0(1)"_s;
const QString Cancel = u"CtrlCmd0(3)"_s;
const QString Save = u"CtrlCmd0(4)"_s;
const QString Query = u"CtrlCmd0(5)"_s;
const QString Next = u"CtrlCmd0(8)"_s;
const QString Last = u"CtrlCmd0(9)"_s;
const QString Refresh = u"CtrlCmd0(10)"_s;
const QString Print = u"CtrlCmd0(11)"_s;
const QString Leave = u"CtrlCmd0(12)"_s;
const QString Back = u"CtrlCmd0(13)"_s;
const QString Code = u"Text1(0)"_s;
const QString Name = u"Text1(1)"_s;
const QList<int> Editing{3, 4};

} // namespace

/// What the buttons of a record page do to its rows, and where they lead.
class RecordPageEditTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNewRowIsSavedAndBecomesCurrent();
    void theFirstRowOfATableIsSaved();
    void anEditedRowIsSavedAndStaysCurrent();
    void enterAtTheLastBoxLeadsToTheSaving();
    void theListHighlightsNoOtherRowWhileOneIsAdded();
    void cancelDropsANewRow();
    void cancelDropsAnEdit();
    void stepsAfterAddAndEditRun();
    void aSaveThatStaysInEditLeavesFocusAndBar();
    void aSaveThatCancelsTheRowGoesBackToBrowse();
    void stepAfterASaveStandsOnTheSavedRow();
    void aFailedSaveIsNotTrapped_data();
    void aFailedSaveIsNotTrapped();
    void refreshRunsTheSourceAgain();
    void refreshMayChangeTheSource();
    void queryRunsItsStep();
    void printLeadsToItsTabOfTheReports();
    void backLeadsToTheExceptions();
    void leaveUnloadsTheWindow();
    void nothingIsRefreshedWhereTheSourceDidNotOpen();
};

void RecordPageEditTest::aNewRowIsSavedAndBecomesCurrent() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    fixture.press(Add);
    QCOMPARE(fixture.text(Code), QString());
    fixture.type(Code, u"0"_s);
    fixture.type(Name, u"經理"_s);
    fixture.press(Save);
    QCOMPARE(fixture.titles(), QStringList({u"0|經理"_s, u"1|職稱1"_s, u"2|職稱2"_s}));
    QCOMPARE(fixture.text(Code), u"0"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s); // at the end until the source is run again
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.at<TDBGrid>(u"TDBGrid2(0)"_s).currentIndex().row(), 2);
    fixture.press(Refresh);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void RecordPageEditTest::theFirstRowOfATableIsSaved() {
    RecordFixture fixture;
    fixture.open();
    fixture.press(Add);
    fixture.type(Code, u"7"_s);
    fixture.press(Save);
    QCOMPARE(fixture.titles(), QStringList{u"7|null"_s});
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 1, 2, 6, 7, 8, 9, 10, 12}));
}

void RecordPageEditTest::anEditedRowIsSavedAndStaysCurrent() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    fixture.press(Next);
    fixture.press(Edit);
    fixture.type(Name, u"主任"_s);
    fixture.press(Save);
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"2|主任"_s, u"3|職稱3"_s}));
    QCOMPARE(fixture.text(Code), u"2"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
}

void RecordPageEditTest::enterAtTheLastBoxLeadsToTheSaving() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.open();
    fixture.press(Edit);
    fixture.type(Name, u"主任"_s);
    const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
    fixture.at(Name).setFocus();
    press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), Save);
    press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), Cancel);
    press(Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget()->objectName(), Save);
    // They stand where they stood.
    QVERIFY(fixture.at(Cancel).mapTo(&fixture.form(), QPoint()).x() <
            fixture.at(Save).mapTo(&fixture.form(), QPoint()).x());
    press(Qt::Key_Return);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.titles(), QStringList{u"1|主任"_s});
}

void RecordPageEditTest::theListHighlightsNoOtherRowWhileOneIsAdded() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    const QItemSelectionModel& highlighted = *fixture.at<TDBGrid>(u"TDBGrid2(0)"_s).selectionModel();
    fixture.press(Next);
    fixture.press(Add);
    QCOMPARE(highlighted.selectedRows().size(), 0);
    fixture.press(Cancel);
    QCOMPARE(highlighted.selectedRows().constFirst().row(), 1);
    fixture.press(Edit);
    QCOMPARE(highlighted.selectedRows().constFirst().row(), 1);
    fixture.press(Cancel);
    fixture.press(Add);
    fixture.type(Code, u"9"_s);
    fixture.press(Save);
    QCOMPARE(highlighted.selectedRows().size(), 1);
    QCOMPARE(highlighted.selectedRows().constFirst().row(), 3);
    QCOMPARE(fixture.titles().last(), u"9|null"_s);
}

void RecordPageEditTest::cancelDropsANewRow() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    fixture.press(Last);
    fixture.press(Add);
    fixture.type(Code, u"9"_s);
    fixture.press(Cancel);
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"2|職稱2"_s}));
    QCOMPARE(fixture.text(Code), u"2"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/2"_s);
}

void RecordPageEditTest::cancelDropsAnEdit() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.open();
    fixture.press(Edit);
    fixture.type(Name, u"主任"_s);
    fixture.press(Cancel);
    QCOMPARE(fixture.titles(), QStringList{u"1|職稱1"_s});
    QCOMPARE(fixture.text(Name), u"職稱1"_s);
}

void RecordPageEditTest::stepsAfterAddAndEditRun() {
    RecordFixture fixture;
    fixture.addTitles(1);
    // What a step puts into a box counts as typed.
    fixture.plans[0].steps.afterAdd = [&] { fixture.at<QLineEdit>(Code).setText(u"N"_s); };
    fixture.plans[0].steps.afterEdit = [&] { fixture.at<QLineEdit>(Name).setText(u"改"_s); };
    fixture.open();
    fixture.press(Add);
    fixture.press(Save);
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"N|null"_s}));
    fixture.press(Edit);
    fixture.press(Save);
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"N|改"_s}));
}

void RecordPageEditTest::aSaveThatStaysInEditLeavesFocusAndBar() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.plans[0].steps.beforeSave = [&] {
        if (fixture.text(Name) == u"好"_s)
            return SaveStep::Save;
        fixture.at(Name).setFocus();
        return SaveStep::StayInEdit;
    };
    fixture.open();
    fixture.press(Edit);
    fixture.type(Name, u"壞"_s);
    fixture.press(Save);
    QVERIFY(fixture.at(Name).hasFocus());
    QCOMPARE(fixture.text(Name), u"壞"_s);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), Editing);
    QCOMPARE(fixture.titles(), QStringList{u"1|職稱1"_s});
    fixture.type(Name, u"好"_s);
    fixture.press(Save);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.titles(), QStringList{u"1|好"_s});
}

void RecordPageEditTest::aSaveThatCancelsTheRowGoesBackToBrowse() {
    RecordFixture fixture;
    fixture.addTitles(1);
    fixture.plans[0].steps.beforeSave = [] { return SaveStep::CancelRow; };
    bool afterSave = false;
    fixture.plans[0].steps.afterSave = [&afterSave] { afterSave = true; };
    fixture.open();
    fixture.press(Add);
    fixture.type(Code, u"9"_s);
    fixture.press(Save);
    QCOMPARE(fixture.titles(), QStringList{u"1|職稱1"_s});
    QCOMPARE(fixture.text(Code), u"1"_s);
    QCOMPARE(fixture.panel(2), QString());
    QVERIFY(fixture.at(Add).isEnabled());
    QVERIFY(!afterSave);
}

void RecordPageEditTest::stepAfterASaveStandsOnTheSavedRow() {
    RecordFixture fixture;
    fixture.addTitles(3);
    QStringList saved;
    fixture.plans[0].steps.afterSave = [&] { saved << fixture.text(Code); };
    fixture.open();
    fixture.press(Last);
    fixture.press(Add);
    fixture.type(Code, u"0"_s);
    fixture.press(Save);
    QCOMPARE(saved, QStringList{u"0"_s});
}

void RecordPageEditTest::aFailedSaveIsNotTrapped_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("number");
    QTest::addRow("a code that is taken") << u"2"_s << error::DuplicateKey;
    QTest::addRow("no code") << QString() << error::RequiredColumn;
}

void RecordPageEditTest::aFailedSaveIsNotTrapped() {
    QFETCH(const QString, code);
    QFETCH(const int, number);
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    fixture.press(Add);
    fixture.type(Code, code);
    QCOMPARE(errorOf([&] { fixture.form().page(0).perform(BarAction::Save); }), number);
    QCOMPARE(fixture.answers.seen().size(), 0);
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"2|職稱2"_s}));
}

void RecordPageEditTest::refreshRunsTheSourceAgain() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    fixture.press(Last);
    insertRow(fixture.store.database(), u"Base01"_s, {{u"TitleNo", u"0"}, {u"Title", u"新"}});
    QCOMPARE(fixture.panel(1), u"資料錄:2/2"_s);
    fixture.press(Refresh);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(fixture.text(Code), u"0"_s);
    QCOMPARE(fixture.at<TDBGrid>(u"TDBGrid2(0)"_s).model()->rowCount(), 3);
}

void RecordPageEditTest::refreshMayChangeTheSource() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.plans[0].steps.refresh = [&fixture] {
        fixture.form().source(0).setRecordSource(u"Select * from Base01 where TitleNo = '2'"_s);
        fixture.form().source(0).Refresh();
    };
    fixture.open();
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    fixture.press(Refresh);
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
    QCOMPARE(fixture.text(Code), u"2"_s);
}

void RecordPageEditTest::queryRunsItsStep() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.plans[0].rules.alsoWithRows = {BarAction::Query};
    fixture.plans[0].steps.query = [&fixture] { fixture.form().source(0).FindFirst(u"TitleNo ='3'"_s); };
    fixture.open();
    fixture.press(Query);
    QCOMPARE(fixture.text(Code), u"3"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
}

void RecordPageEditTest::printLeadsToItsTabOfTheReports() {
    RecordFixture fixture;
    fixture.hasReports = true;
    fixture.plans[0].rules.printTab = 3;
    fixture.open();
    setAllRights(false); // the jump leads there all the same
    fixture.press(Print);
    QVERIFY(!fixture.isOpen());
    QVERIFY(moduleWindow(7));
    QCOMPARE(control<QTabWidget>(*moduleWindow(7), u"SSTab1"_s).currentIndex(), 3);
    QCOMPARE(gMDI->windowTitle(), u"報表列印"_s);
    QVERIFY(!gMDI->Tb().isEnabled());
}

void RecordPageEditTest::backLeadsToTheExceptions() {
    RecordFixture fixture;
    fixture.plans[0].bar = wholeBarWithBack();
    fixture.plans[0].rules.leftAlone = {BarAction::Back};
    fixture.open();
    fixture.press(Add); // it leads away during an edit as well, where it is left alone
    fixture.press(Back);
    QVERIFY(!fixture.isOpen());
    QVERIFY(moduleWindow(3));
    const auto& tabs = control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s);
    QCOMPARE(tabs.currentIndex(), 2);
    QCOMPARE(tabs.tabText(2), u"異常處理"_s);
    QCOMPARE(gMDI->windowTitle(), u"出勤管理"_s);
    QCOMPARE(fixture.titles(), QStringList());
}

void RecordPageEditTest::leaveUnloadsTheWindow() {
    RecordFixture fixture;
    fixture.open();
    fixture.press(Leave);
    QVERIFY(!fixture.isOpen());
    QVERIFY(!gDbOpen);
    QCOMPARE(gMDI->windowTitle(), u"Pontrel V1.1 - Norvale"_s);
}

void RecordPageEditTest::nothingIsRefreshedWhereTheSourceDidNotOpen() {
    RecordFixture fixture;
    fixture.addTitles(2);
    bool opened = true;
    fixture.plans[0].steps.beforeBar = [&opened] { return opened; };
    fixture.open();
    QVERIFY(fixture.at(Edit).isEnabled());
    opened = false;
    fixture.press(Edit);
    QCOMPARE(fixture.panel(2), QString());
    QVERIFY(fixture.at(Edit).isEnabled());
    QVERIFY(!fixture.at(Save).isEnabled());
}

int main(int argc, char** argv) {
    return runTests<RecordPageEditTest>(argc, argv);
}

#include "RecordPageEditTest.moc"
