#include "app/GridTexts.h"
#include "app/MDI.h"
#include "app/RecordFixture.h"

Q_DECLARE_METATYPE(pontrel::Opening)

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Next = u"CtrlCmd0(8)"_s;

QList<bool> openSources(PlannedWindow& form, int count) {
    QList<bool> open;
    for (int tab = 0; tab < count; ++tab)
        open << form.source(tab).recordset().isOpen();
    return open;
}

/// A window with a tab that only shows rows, behind one that edits them.
class ListWindow : public RecordWindow {
  public:
    class ListTab : public RecordTab {
      public:
        ListTab() : RecordTab({.index = 1, .caption = u"明細"_s, .table = u"Base02"_s}) {
            TDBGrid* grid = makeGrid(u"TDBG1(0)"_s);
            grid->setColumns({{u"單位代碼"_s, u"UnitNo"_s, 100, Qt::AlignLeft, {}}});
            rows().addWidget(grid);
        }
    };

    explicit ListWindow(QWidget* parent) : RecordWindow(parent, u"Form1"_s, u"記錄"_s, Opening::AtLoad) {
        addTab(new PlannedTab(0, {u"Base01"_s, {u"TitleNo"_s, u"Title"_s}}));
        addTab(new ListTab);
        completeTabs();
    }
};

} // namespace

/// How a record window opens its tabs' sources and keeps their bars.
class RecordWindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void atLoadAllSourcesAreOpened();
    void aSourceOpenedAtLoadKeepsItsRow();
    void lazilyASourceIsOpenedWhenItsTabComesToTheFront();
    void aSourceOpenedLazilyStartsAnewAtEachReturn();
    void aClickOnTheTabInFrontOpensItsSourceAnew();
    void aClickOnTheTabInFrontTakesNoEditAway();
    void whatCannotBeOpenedIsToldOnce_data();
    void whatCannotBeOpenedIsToldOnce();
    void aTabMayOnlyShowRows();
};

void RecordWindowTest::atLoadAllSourcesAreOpened() {
    RecordFixture fixture;
    fixture.open();
    QCOMPARE(openSources(fixture.form(), 3), QList<bool>({true, true, true}));
}

void RecordWindowTest::aSourceOpenedAtLoadKeepsItsRow() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    fixture.press(Next);
    fixture.clickTab(1);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
    fixture.clickTab(0); // in front already
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
}

void RecordWindowTest::lazilyASourceIsOpenedWhenItsTabComesToTheFront() {
    RecordFixture fixture;
    fixture.opening = Opening::Lazily;
    fixture.open();
    QCOMPARE(openSources(fixture.form(), 3), QList<bool>({true, false, false}));
    fixture.clickTab(2);
    QCOMPARE(openSources(fixture.form(), 3), QList<bool>({true, false, true}));
}

void RecordWindowTest::aSourceOpenedLazilyStartsAnewAtEachReturn() {
    RecordFixture fixture;
    fixture.opening = Opening::Lazily;
    fixture.addTitles(3);
    fixture.open();
    fixture.press(Next);
    fixture.clickTab(1);
    insertRow(fixture.store.database(), u"Base01"_s, {{u"TitleNo", u"4"}});
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
}

void RecordWindowTest::aClickOnTheTabInFrontOpensItsSourceAnew() {
    RecordFixture fixture;
    fixture.opening = Opening::Lazily;
    fixture.addTitles(3);
    fixture.open();
    fixture.press(Next);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void RecordWindowTest::aClickOnTheTabInFrontTakesNoEditAway() {
    RecordFixture fixture;
    fixture.opening = Opening::Lazily;
    fixture.addTitles(3);
    fixture.open();
    fixture.press(Next);
    fixture.press(u"CtrlCmd0(1)"_s);
    fixture.type(u"Text1(1)"_s, u"new"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    fixture.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"2|new"_s, u"3|職稱3"_s}));
}

void RecordWindowTest::whatCannotBeOpenedIsToldOnce_data() {
    QTest::addColumn<Opening>("opening");
    QTest::addRow("lazily") << Opening::Lazily;
    QTest::addRow("at load") << Opening::AtLoad;
}

void RecordWindowTest::whatCannotBeOpenedIsToldOnce() {
    QFETCH(const Opening, opening);
    RecordFixture fixture;
    fixture.opening = opening;
    fixture.plans[0].table = u"NoSuchTable"_s;
    fixture.answers.expectMsgBox();
    fixture.open();
    QCOMPARE(fixture.answers.seen().size(), 1);
    QCOMPARE(fixture.answers.seen().at(0).text, u"資料庫開啟異常,請洽程式設計師"_s);
    QCOMPARE(fixture.answers.seen().at(0).title, u"異常警告"_s);
    QVERIFY(!fixture.isOpen());
    QVERIFY(gMDI->Tb().isEnabled());
    QCOMPARE(fixture.answers.trouble(), QString());
}

void RecordWindowTest::aTabMayOnlyShowRows() {
    RecordFixture fixture;
    insertRow(fixture.store.database(), u"Base02"_s, {{u"UnitNo", u"10"}, {u"Unit", u"總務"}});
    insertRow(fixture.store.database(), u"Base02"_s, {{u"UnitNo", u"20"}, {u"Unit", u"人事"}});
    fixture.openOther([](QWidget* parent) -> Window* { return new ListWindow(parent); });
    fixture.clickTab(1);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
    auto& grid = fixture.at<TDBGrid>(u"TDBG1(0)"_s);
    QCOMPARE(shownRows(grid), QStringList({u"10"_s, u"20"_s}));
    QVERIFY(!moduleWindow(1)->findChild<QWidget*>(u"Frame1(1)"_s));
    QVERIFY(!moduleWindow(1)->findChild<QWidget*>(u"CtrlCmd1(12)"_s));
}

int main(int argc, char** argv) {
    return runTests<RecordWindowTest>(argc, argv);
}

#include "RecordWindowTest.moc"
