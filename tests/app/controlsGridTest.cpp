#include "app/GridForm.h"
#include "support/Patience.h"

#include <QAccessible>
#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate Day(2001, 3, 5);

} // namespace

class controlsGridTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void showsCaptionsAndRows();
    void alignsColumns();
    void shownTexts_data();
    void shownTexts();
    void booleansAreCheckMarks();
    void codesShowNames();
    void aCodeWithoutANameShowsAsItIs();
    void anUnknownColumnShowsEmpty();
    void theGridFollowsTheSource();
    void theSourceFollowsAClick();
    void theSourceFollowsTheKeyboard();
    void aChoiceOfTheUserIsTold();
    void whatCodeDoesIsNoChoice();
    void theGridStaysWhileARowIsEdited();
    void noRowIsHighlightedWhileOneIsAdded();
    void aRowIsTakenByEnterOrADoubleClick();
    void nothingIsTakenFromAnEmptyList();
    void aNewRecordSourceShowsItsRows();
    void anEmptyListHasNoCurrentRow();
    void aRowIsShownAsItIsNow();
    void aRowDeletedElsewhereShowsEmpty();
    void tabLeavesTheGrid();
    void cellsAreReadOnly();
    void aClosedSourceShowsNoFurtherRows();
    void checkMarksAreSpoken();
    void captionsHaveHints();
};

void controlsGridTest::showsCaptionsAndRows() {
    GridForm form;
    form.addPunches(3);
    form.open();
    QStringList captions;
    for (int column = 0; column < 4; ++column)
        captions << form.grid.model()->headerData(column, Qt::Horizontal).toString();
    QCOMPARE(captions, QStringList({u"員工碼"_s, u"打卡日期"_s, u"打卡時間"_s, u"班別"_s}));
    QCOMPARE(form.grid.model()->rowCount(), 3);
    QStringList last;
    for (int column = 0; column < 4; ++column)
        last << form.text(2, column);
    QCOMPARE(last, QStringList({u"000003"_s, u"2001/3/5"_s, u"08:00"_s, u"255"_s}));
    QCOMPARE(form.grid.columnWidth(1), 90);
}

void controlsGridTest::alignsColumns() {
    GridForm form;
    form.addPunches(1);
    form.open();
    const auto alignment = [&](int column) {
        return form.grid.model()->index(0, column).data(Qt::TextAlignmentRole).toInt();
    };
    QCOMPARE(alignment(0), int(Qt::AlignLeft | Qt::AlignVCenter));
    QCOMPARE(alignment(2), int(Qt::AlignRight | Qt::AlignVCenter));
}

void controlsGridTest::shownTexts_data() {
    QTest::addColumn<Value>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << Value() << QString();
    QTest::newRow("text") << Value(u"王小明"_s) << u"王小明"_s;
    QTest::newRow("integer") << Value(-12) << u"-12"_s;
    QTest::newRow("real") << Value(1.4) << u"1.4"_s;
    QTest::newRow("short date") << Value(QDate(2001, 3, 5)) << u"2001/3/5"_s;
    QTest::newRow("short time") << Value(QTime(8, 5, 59)) << u"08:05"_s;
    QTest::newRow("date and time") << Value(QDateTime(QDate(2001, 3, 5), QTime(8, 5))) << u"2001/3/5 08:05"_s;
}

void controlsGridTest::shownTexts() {
    QFETCH(Value, value);
    QTEST(TDBGrid::shownText(value), "text");
}

void controlsGridTest::booleansAreCheckMarks() {
    GridForm form;
    insertRow(form.store.database(), u"Holi01"_s, {{u"HoliNo", u"01"}, {u"HoliDeduct", true}});
    insertRow(form.store.database(), u"Holi01"_s, {{u"HoliNo", u"02"}, {u"HoliDeduct", false}});
    form.grid.setColumns(
        {{u"假別"_s, u"HoliNo"_s, 60, Qt::AlignLeft, {}}, {u"扣"_s, u"HoliDeduct"_s, 60, Qt::AlignLeft, {}}});
    form.open(u"Holi01"_s);
    const auto mark = [&](int row, int column) {
        return form.grid.model()->index(row, column).data(Qt::CheckStateRole);
    };
    QCOMPARE(mark(0, 1).toInt(), int(Qt::Checked));
    QCOMPARE(mark(1, 1).toInt(), int(Qt::Unchecked));
    QVERIFY(!mark(0, 0).isValid());
    QCOMPARE(form.text(0, 1), QString());
}

void controlsGridTest::codesShowNames() {
    GridForm form;
    form.addPunches(2);
    TranslationList names;
    names.add(u"000001"_s, u"王小明"_s);
    form.grid.setColumns({{u"姓名"_s, u"EmpNo"_s, 60, Qt::AlignLeft,
                           [&](const Value& code) { return names.text(code.joined()); }}});
    form.open();
    QCOMPARE(form.text(0, 0), u"王小明"_s);
    QCOMPARE(form.text(1, 0), u"000002"_s);
}

void controlsGridTest::aCodeWithoutANameShowsAsItIs() {
    TranslationList names;
    names.add(u"Ab"_s, u"甲"_s);
    QCOMPARE(names.text(u"aB"_s), u"甲"_s);
    QCOMPARE(names.text(u"ab "_s), u"ab "_s);
    names.add(u"é"_s, u"乙"_s);
    QCOMPARE(names.text(u"É"_s), u"É"_s);
    names.clear();
    QCOMPARE(names.text(u"Ab"_s), u"Ab"_s);
}

void controlsGridTest::anUnknownColumnShowsEmpty() {
    GridForm form;
    form.addPunches(1);
    form.grid.setColumns({{u"無"_s, u"Missing"_s, 60, Qt::AlignLeft, {}}});
    form.open();
    QCOMPARE(form.grid.model()->rowCount(), 1);
    QCOMPARE(form.text(0, 0), QString());
}

void controlsGridTest::theGridFollowsTheSource() {
    GridForm form;
    form.addPunches(100);
    form.open();
    QCOMPARE(form.currentRow(), 0);
    form.source.MoveLast();
    QCOMPARE(form.selectedRows(), QList<int>{99});
    QVERIFY(form.grid.viewport()->rect().contains(form.grid.visualRect(form.grid.currentIndex()).center()));
    form.source.MovePrevious();
    QCOMPARE(form.selectedRows(), QList<int>{98});
    form.source.MoveFirst();
    QCOMPARE(form.selectedRows(), QList<int>{0});
}

void controlsGridTest::theSourceFollowsAClick() {
    GridForm form;
    form.addPunches(5);
    form.open();
    const QSignalSpy moves(&form.source, &DataSource::Reposition);
    const QPoint third = form.grid.visualRect(form.grid.model()->index(2, 1)).center();
    QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, third);
    QCOMPARE(form.source.recordset().AbsolutePosition(), 2);
    QCOMPARE(form.source.recordset().field(u"EmpNo"_s), Value(u"000003"_s));
    QCOMPARE(moves.count(), 1);
}

void controlsGridTest::theSourceFollowsTheKeyboard() {
    GridForm form;
    form.addPunches(5);
    form.open();
    form.grid.setFocus();
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QCOMPARE(form.source.recordset().AbsolutePosition(), 2);
    QTest::keyClick(&form.grid, Qt::Key_Up);
    QCOMPARE(form.source.recordset().AbsolutePosition(), 1);
}

void controlsGridTest::aChoiceOfTheUserIsTold() {
    GridForm form;
    form.addPunches(5);
    form.open();
    QStringList chosen;
    QObject::connect(&form.grid, &TDBGrid::rowChosen, &form,
                     [&] { chosen << form.source.recordset().field(u"EmpNo"_s).joined(); });
    const auto clickRow = [&form](int row, int column) {
        QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                          form.grid.visualRect(form.grid.model()->index(row, column)).center());
    };
    clickRow(2, 0);
    QCOMPARE(chosen, QStringList{u"000003"_s});
    clickRow(2, 1); // the current row again, another column
    QCOMPARE(chosen, QStringList({u"000003"_s, u"000003"_s}));
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QCOMPARE(chosen.size(), 3);
    QCOMPARE(chosen.constLast(), u"000004"_s);
    QTest::keyClick(&form.grid, Qt::Key_Right);
    QCOMPARE(chosen.size(), 3);
    form.source.Refresh();
    clickRow(0, 0); // current since the refresh, and chosen now
    QCOMPARE(chosen.size(), 4);
    QCOMPARE(chosen.constLast(), u"000001"_s);
}

void controlsGridTest::whatCodeDoesIsNoChoice() {
    GridForm form;
    form.addPunches(5);
    form.open();
    int chosen = 0;
    QObject::connect(&form.grid, &TDBGrid::rowChosen, &form, [&chosen] { ++chosen; });
    form.source.MoveLast();
    form.source.FindFirst(u"EmpNo ='000002'"_s);
    form.source.Refresh();
    form.source.setRecordSource(u"select * from Atte01 where EmpNo >'000003'"_s);
    form.source.Refresh();
    QCOMPARE(form.currentRow(), 0);
    form.source.Edit();
    QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                      form.grid.visualRect(form.grid.model()->index(0, 0)).center());
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(form.currentRow(), 0, PatienceMs);
    QCOMPARE(chosen, 0);
}

void controlsGridTest::theGridStaysWhileARowIsEdited() {
    GridForm form;
    form.addPunches(5);
    form.open();
    form.source.MoveNext();
    form.source.Edit();
    const QPoint fourth = form.grid.visualRect(form.grid.model()->index(3, 0)).center();
    QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, fourth);
    QCOMPARE(form.source.editMode(), EditMode::Edit);
    QCOMPARE(form.source.recordset().AbsolutePosition(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(form.selectedRows(), QList<int>{1}, PatienceMs);
    form.source.CancelUpdate();
    QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, fourth);
    QCOMPARE(form.source.recordset().AbsolutePosition(), 3);
}

void controlsGridTest::noRowIsHighlightedWhileOneIsAdded() {
    GridForm form;
    form.addPunches(50);
    form.open();
    form.source.moveTo(2);
    QCOMPARE(form.selectedRows(), QList<int>{2});
    form.source.AddNew();
    QCOMPARE(form.selectedRows(), QList<int>());
    QVERIFY(!form.grid.currentIndex().isValid());
    // Neither by the mouse nor by the keyboard.
    const QPoint fourth = form.grid.visualRect(form.grid.model()->index(3, 0)).center();
    QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, fourth);
    QTRY_COMPARE_WITH_TIMEOUT(form.selectedRows(), QList<int>(), PatienceMs);
    form.grid.setFocus();
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(form.selectedRows(), QList<int>(), PatienceMs);
    QCOMPARE(form.source.editMode(), EditMode::Add);
    form.source.CancelUpdate();
    QCOMPARE(form.selectedRows(), QList<int>{2});

    form.source.AddNew();
    QCOMPARE(form.selectedRows(), QList<int>());
    form.source.recordset().setField(u"EmpNo"_s, Value(u"A"_s));
    form.source.recordset().setField(u"UseDate"_s, Value(Day));
    form.source.recordset().setField(u"UseTime"_s, Value(QTime(8, 0)));
    form.source.recordset().setField(u"class"_s, Value(u"255"_s));
    form.source.recordset().setField(u"ReaderID"_s, Value(u"1"_s));
    form.source.Update();
    form.source.setBookmark(form.source.recordset().LastModified());
    QCOMPARE(form.selectedRows(), QList<int>{50});
    QCOMPARE(form.text(50, 0), u"A"_s);
}

void controlsGridTest::aRowIsTakenByEnterOrADoubleClick() {
    GridForm form;
    form.addPunches(5);
    form.open();
    form.grid.setFocus();
    QStringList taken;
    connect(&form.grid, &TDBGrid::rowTaken, &form,
            [&] { taken << form.source.recordset().field(u"EmpNo"_s).joined(); });
    const auto place = [&](int row) {
        return form.grid.visualRect(form.grid.model()->index(row, 1)).center();
    };
    QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, place(1));
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QTest::keyClick(&form.grid, Qt::Key_Return, Qt::ControlModifier);
    QTest::mouseDClick(form.grid.viewport(), Qt::RightButton, Qt::NoModifier, place(1));
    QCOMPARE(taken, QStringList());
    QTest::keyClick(&form.grid, Qt::Key_Return);
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QTest::keyClick(&form.grid, Qt::Key_Enter, Qt::KeypadModifier);
    QTest::mouseClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, place(0));
    QTest::mouseDClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, place(0));
    QCOMPARE(taken.size(), 3);
    QCOMPARE(taken.last(), u"000001"_s);
    // Behind the last row there is none.
    QTest::mouseDClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, place(4) + QPoint(0, 60));
    QCOMPARE(taken.size(), 3);
}

void controlsGridTest::nothingIsTakenFromAnEmptyList() {
    GridForm form;
    form.open();
    form.grid.setFocus();
    const QSignalSpy taken(&form.grid, &TDBGrid::rowTaken);
    QTest::keyClick(&form.grid, Qt::Key_Return);
    QTest::mouseDClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, {20, 20});
    QCOMPARE(taken.count(), 0);
}

void controlsGridTest::aNewRecordSourceShowsItsRows() {
    GridForm form;
    form.addPunches(5);
    addPunch(form.store.database(), u"A"_s, Day, QTime(8, 0));
    form.open();
    form.source.setRecordSource(u"Select * from Atte01 Where EmpNo = '000004'"_s);
    QCOMPARE(form.grid.model()->rowCount(), 5);
    form.source.Refresh();
    QCOMPARE(form.grid.model()->rowCount(), 1);
    QCOMPARE(form.text(0, 0), u"000004"_s);
    form.source.setRecordSource(u"Select * from AtteTemp"_s);
    form.source.Refresh();
    QCOMPARE(form.grid.model()->rowCount(), 1);
    QCOMPARE(form.text(0, 0), u"A"_s);
}

void controlsGridTest::anEmptyListHasNoCurrentRow() {
    GridForm form;
    form.addPunches(2);
    form.open();
    form.source.setRecordSource(u"Select * from Atte01 Where EmpNo = 'none'"_s);
    form.source.Refresh();
    QCOMPARE(form.grid.model()->rowCount(), 0);
    QVERIFY(!form.grid.currentIndex().isValid());
    form.source.setRecordSource(u"Atte01"_s);
    form.source.Refresh();
    QCOMPARE(form.selectedRows(), QList<int>{0});
}

void controlsGridTest::aRowIsShownAsItIsNow() {
    GridForm form;
    insertRow(form.store.database(), u"Base02"_s, {{u"UnitNo", u"01"}, {u"Unit", u"總務處"}});
    insertRow(form.store.database(), u"Base02"_s, {{u"UnitNo", u"02"}, {u"Unit", u"人事室"}});
    form.grid.setColumns({{u"單位"_s, u"Unit"_s, 100, Qt::AlignLeft, {}}});
    form.open(u"Base02"_s);
    QCOMPARE(form.text(1, 0), u"人事室"_s);
    form.store.database().execute(u"Update Base02 Set Unit = '會計室' Where UnitNo = '02'"_s);
    form.source.MoveLast();
    QCOMPARE(form.text(1, 0), u"會計室"_s);
}

void controlsGridTest::aRowDeletedElsewhereShowsEmpty() {
    GridForm form;
    form.addPunches(3);
    form.open();
    form.store.database().execute(u"delete * from Atte01 where EmpNo = '000002'"_s);
    form.source.MoveNext();
    QCOMPARE(form.grid.model()->rowCount(), 3);
    QCOMPARE(form.text(1, 0), QString());
    QCOMPARE(form.text(2, 0), u"000003"_s);
    form.source.Refresh();
    QCOMPARE(form.grid.model()->rowCount(), 2);
    QCOMPARE(form.text(1, 0), u"000003"_s);
}

void controlsGridTest::tabLeavesTheGrid() {
    GridForm form;
    form.addPunches(3);
    form.open();
    form.grid.setFocus();
    QTest::keyClick(&form.grid, Qt::Key_Tab);
    QVERIFY(form.next.hasFocus());
}

void controlsGridTest::cellsAreReadOnly() {
    GridForm form;
    form.addPunches(1);
    form.open();
    const QPoint cell = form.grid.visualRect(form.grid.model()->index(0, 0)).center();
    QTest::mouseDClick(form.grid.viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::keyClicks(&form.grid, u"x"_s);
    QVERIFY(form.grid.viewport()->findChildren<QLineEdit*>().isEmpty());
    QCOMPARE(form.text(0, 0), u"000001"_s);
}

void controlsGridTest::aClosedSourceShowsNoFurtherRows() {
    GridForm form;
    form.addPunches(500);
    form.open();
    form.source.close();
    form.grid.verticalScrollBar()->setValue(300);
    form.grid.grab();
    QCOMPARE(form.text(310, 0), QString());
}

void controlsGridTest::checkMarksAreSpoken() {
    GridForm form;
    insertRow(form.store.database(), u"Holi01"_s, {{u"HoliNo", u"01"}, {u"HoliDeduct", true}});
    insertRow(form.store.database(), u"Holi01"_s, {{u"HoliNo", u"02"}, {u"HoliDeduct", false}});
    GridColumn own{u"扣"_s, u"HoliDeduct"_s, 60, Qt::AlignLeft, {}};
    own.spokenMarks = {u"扣"_s, u"不扣"_s};
    form.grid.setColumns({{u"假別"_s, u"HoliNo"_s, 60, Qt::AlignLeft, {}},
                          {u"扣"_s, u"HoliDeduct"_s, 60, Qt::AlignLeft, {}},
                          own});
    form.open(u"Holi01"_s);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&form.grid);
    QVERIFY(spoken);
    QAccessibleTableInterface* table = spoken->tableInterface();
    QVERIFY(table);
    QStringList cells;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column)
            cells << table->cellAt(row, column)->text(QAccessible::Name);
    }
    QCOMPARE(cells, QStringList({u"01"_s, u"是"_s, u"扣"_s, u"02"_s, u"否"_s, u"不扣"_s}));
}

void controlsGridTest::captionsHaveHints() {
    GridForm form;
    GridColumn column{u"班別"_s, u"Class"_s, 60, Qt::AlignLeft, {}};
    column.hint = u"卡別"_s;
    form.grid.setColumns({column, {u"員工碼"_s, u"empno"_s, 80, Qt::AlignLeft, {}}});
    form.open();
    const QAbstractItemModel& model = *form.grid.model();
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString(), u"卡別"_s);
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::AccessibleDescriptionRole).toString(), u"卡別"_s);
    QVERIFY(!model.headerData(1, Qt::Horizontal, Qt::ToolTipRole).isValid());
}

int main(int argc, char** argv) {
    return runTests<controlsGridTest>(argc, argv);
}

#include "controlsGridTest.moc"
