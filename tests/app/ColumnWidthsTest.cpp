#include "app/GridForm.h"
#include "app/Habits.h"
#include "app/Lookup.h"
#include "app/Module1.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "windows/RegisterWindows.h"

#include <QAction>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Key = u"columns/Form3.TDBGrid1(0)"_s;
const QList<int> StatedWidths{80, 90, 80, 60};

/// A grid of punches as it stands in a window of the program.
struct NamedForm : GridForm {
    NamedForm() {
        setObjectName(u"Form3"_s);
        grid.setObjectName(u"TDBGrid1(0)"_s);
        addPunches(2);
    }
};

QList<int> widthsOf(const QTableView& grid) {
    QList<int> widths;
    for (int column = 0; column < grid.model()->columnCount(); ++column)
        widths << grid.columnWidth(column);
    return widths;
}

/// The border behind a column, in the grid's head.
QPoint borderOf(const QTableView& grid, int column) {
    const QHeaderView& head = *grid.horizontalHeader();
    return {head.sectionViewportPosition(column) + head.sectionSize(column) - 1, head.height() / 2};
}

void drag(const QTableView& grid, int column, int by) {
    QWidget* head = grid.horizontalHeader()->viewport();
    const QPoint from = borderOf(grid, column);
    QTest::mousePress(head, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent moved(QEvent::MouseMove, from + QPoint(by, 0), head->mapToGlobal(from + QPoint(by, 0)),
                      Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(head, &moved);
    QTest::mouseRelease(head, Qt::LeftButton, Qt::NoModifier, from + QPoint(by, 0));
}

QString kept() {
    return Habits::ofUser().value(Key);
}

} // namespace

/// The widths that a user gives to the columns of a grid.
class ColumnWidthsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { Habits::ofUser().leave(); }

    void aDraggedWidthIsKeptAndGivenBack();
    void aDoubleClickOnABorderIsKept();
    void whatCodeDoesIsNotKept();
    void eachGridHasItsOwn();
    void columnsThatWentMissingOrCameHaveTheStatedWidth();
    void damagedEntriesAreTheStatedWidth();
    void columnsOfTheSameNameAreToldApart();
    void aLastColumnThatFillsTheRestIsNotKept();
    void theWidthsGoBackToTheStatedOnes();
    void aWidthDraggedBackIsForgotten();
    void aGridWithoutANameKeepsNothing();
    void columnsMadeAnewHaveTheKeptWidths();
    void aLookupAndAModuleWindowKeepTheirs();
};

void ColumnWidthsTest::aDraggedWidthIsKeptAndGivenBack() {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"habits.ini"_s);
    Habits::ofUser().keepIn(file);
    {
        NamedForm form;
        form.open();
        QCOMPARE(widthsOf(form.grid), StatedWidths);
        drag(form.grid, 1, 35);
        drag(form.grid, 3, -20);
        QCOMPARE(widthsOf(form.grid), QList<int>({80, 125, 80, 40}));
    }
    QCOMPARE(kept(), u"Class:40 UseDate:125"_s);
    Habits::ofUser().keepIn(file); // as at the next start
    NamedForm form;
    form.open();
    QCOMPARE(widthsOf(form.grid), QList<int>({80, 125, 80, 40}));
    form.hide();
    form.show();
    QCOMPARE(widthsOf(form.grid), QList<int>({80, 125, 80, 40}));
}

void ColumnWidthsTest::aDoubleClickOnABorderIsKept() {
    NamedForm form;
    form.open();
    QTest::mouseDClick(form.grid.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       borderOf(form.grid, 1));
    const int width = form.grid.columnWidth(1);
    QVERIFY(width != 90);
    QCOMPARE(kept(), u"UseDate:%1"_s.arg(width));
}

void ColumnWidthsTest::whatCodeDoesIsNotKept() {
    NamedForm form;
    form.open();
    form.grid.setColumnWidth(0, 200);
    QTest::mouseClick(form.grid.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, {20, 8});
    QCOMPARE(kept(), QString());
}

void ColumnWidthsTest::eachGridHasItsOwn() {
    NamedForm first;
    first.open();
    drag(first.grid, 0, 30);
    NamedForm second;
    second.grid.setObjectName(u"TDBGrid1(1)"_s);
    second.open();
    QCOMPARE(widthsOf(second.grid), StatedWidths);
    NamedForm third;
    third.setObjectName(u"Form4"_s);
    third.open();
    QCOMPARE(widthsOf(third.grid), StatedWidths);
    drag(third.grid, 0, 5);
    QCOMPARE(kept(), u"empno:110"_s);
    QCOMPARE(Habits::ofUser().value(u"columns/Form4.TDBGrid1(0)"_s), u"empno:85"_s);
}

void ColumnWidthsTest::columnsThatWentMissingOrCameHaveTheStatedWidth() {
    Habits::ofUser().setValue(Key, u"Gone:300 UseTime:99"_s);
    NamedForm form;
    form.open();
    QCOMPARE(widthsOf(form.grid), QList<int>({80, 90, 99, 60}));
    // An entry that is of no use now may be of use to another version.
    drag(form.grid, 0, 10);
    QCOMPARE(kept(), u"Gone:300 UseTime:99 empno:90"_s);
}

void ColumnWidthsTest::damagedEntriesAreTheStatedWidth() {
    Habits::ofUser().setValue(Key, u"empno:wide UseDate:-5 UseTime:1000000 Class ::: :60"_s);
    NamedForm form;
    form.open();
    QCOMPARE(widthsOf(form.grid), StatedWidths);
}

void ColumnWidthsTest::columnsOfTheSameNameAreToldApart() {
    const std::vector<GridColumn> columns{{u"一"_s, u"UseDate"_s, 70}, {u"二"_s, u"UseDate"_s, 80}};
    {
        NamedForm form;
        form.grid.setColumns(columns);
        form.open();
        drag(form.grid, 1, 12);
    }
    QCOMPARE(kept(), u"UseDate#2:92"_s);
    NamedForm form;
    form.grid.setColumns(columns);
    form.open();
    QCOMPARE(widthsOf(form.grid), QList<int>({70, 92}));
}

void ColumnWidthsTest::aLastColumnThatFillsTheRestIsNotKept() {
    NamedForm form;
    form.grid.horizontalHeader()->setStretchLastSection(true);
    form.open();
    const int before = form.grid.columnWidth(3);
    drag(form.grid, 0, 30);
    QCOMPARE(form.grid.columnWidth(3), before - 30);
    QCOMPARE(kept(), u"empno:110"_s);
}

void ColumnWidthsTest::theWidthsGoBackToTheStatedOnes() {
    NamedForm form;
    form.open();
    drag(form.grid, 0, 30);
    drag(form.grid, 2, 30);
    auto& action = control<QAction>(form.grid, u"RestoreWidths"_s);
    QCOMPARE(action.text(), u"還原欄寬"_s);
    QVERIFY(!form.grid.actions().contains(&action)); // the menu has it at its end
    action.trigger();
    QCOMPARE(widthsOf(form.grid), StatedWidths);
    QCOMPARE(kept(), QString());
}

void ColumnWidthsTest::aWidthDraggedBackIsForgotten() {
    NamedForm form;
    form.open();
    drag(form.grid, 0, 30);
    drag(form.grid, 1, 10);
    drag(form.grid, 0, -30);
    QCOMPARE(kept(), u"UseDate:100"_s);
}

void ColumnWidthsTest::aGridWithoutANameKeepsNothing() {
    NamedForm form;
    form.grid.setObjectName(QString());
    form.open();
    drag(form.grid, 0, 30);
    QCOMPARE(form.grid.columnWidth(0), 110);
    QCOMPARE(Habits::ofUser().value(u"columns/Form3."_s), QString());
}

void ColumnWidthsTest::columnsMadeAnewHaveTheKeptWidths() {
    NamedForm form;
    form.open();
    drag(form.grid, 0, 30);
    form.grid.setColumns({{u"員工碼"_s, u"empno"_s, 70}, {u"班別"_s, u"Class"_s, 50}});
    QCOMPARE(widthsOf(form.grid), QList<int>({110, 50}));
}

void ColumnWidthsTest::aLookupAndAModuleWindowKeepTheirs() {
    TestStore store;
    addEmployee(store.database(), u"10001"_s);
    const Shell shell(store);
    OpenToolWindow(3);
    auto& tabs = control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s);
    tabs.setCurrentIndex(2);
    TDBGrid* shown = nullptr;
    for (TDBGrid* grid : tabs.currentWidget()->findChildren<TDBGrid*>()) {
        if (!shown && !grid->horizontalHeader()->stretchLastSection())
            shown = grid;
    }
    QVERIFY(shown);
    const int before = shown->columnWidth(0);
    drag(*shown, 0, 17);
    QMap<QString, int> widths = Habits::ofUser().columnWidths(u"Form3."_s + shown->objectName());
    QCOMPARE(widths.values(), QList<int>{before + 17});
    PromptAnswers answers;
    answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        auto& grid = *dialog.findChild<TDBGrid*>();
        drag(grid, 0, 21);
        const QMap<QString, int> kept = Habits::ofUser().columnWidths(u"QFrmEmpNO."_s + grid.objectName());
        QCOMPARE(kept.values(), QList<int>{grid.columnWidth(0)});
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        auto& grid = *dialog.findChild<TDBGrid*>();
        const QMap<QString, int> kept = Habits::ofUser().columnWidths(u"QFrmEmpNO."_s + grid.objectName());
        QCOMPARE(kept.values(), QList<int>{grid.columnWidth(0)});
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Lookup::ask(LookupKind::QFrmEmpNO, gMDI);
    Lookup::ask(LookupKind::QFrmEmpNO, gMDI);
    QCOMPARE(answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<ColumnWidthsTest>(argc, argv);
}

#include "ColumnWidthsTest.moc"
