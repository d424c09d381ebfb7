#include "app/ListForm.h"
#include "app/ProgressBox.h"
#include "support/PressWhenShown.h"

#include <QContextMenuEvent>
#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The entries of a menu: texts, a dash for a line between them, in brackets what is off.
QStringList entriesOf(const QMenu& menu) {
    QStringList entries;
    for (const QAction* action : menu.actions()) {
        const QString text = action->isSeparator() ? u"-"_s : action->text();
        entries << (action->isEnabled() || action->isSeparator() ? text : u'(' + text + u')');
    }
    return entries;
}

const QStringList AllEntries{u"-"_s,
                             u"複製選取的列(&C)"_s,
                             u"複製全部的列(&A)"_s,
                             u"-"_s,
                             u"匯出成 CSV 檔(&V)…"_s,
                             u"匯出成試算表(&S)…"_s,
                             u"-"_s,
                             u"還原欄寬"_s};

/// The place of a grid's row in its window.
QPoint placeOf(const ListForm& form, int row) {
    const QPoint inView = form.grid.visualRect(form.grid.model()->index(row, 1)).center();
    return form.grid.viewport()->mapTo(&form, inView);
}

/// A press and release of the right button as a desktop sends it, which asks for the menu.
void rightClick(ListForm& form, QPoint place) {
    QTest::mouseClick(form.windowHandle(), Qt::RightButton, Qt::NoModifier, place);
}

} // namespace

/// The context menu of a list, and the keys that belong to it.
class GridMenuTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() {
        if (QMenu* open = ListForm::menu())
            open->close();
    }

    void aRightClickOpensTheMenuAndChoosesNoRow();
    void theMenuOpensOverTheCaptionsToo();
    void theKeyboardOpensTheMenu_data();
    void theKeyboardOpensTheMenu();
    void theMenuStandsBelowTheSelectedRow();
    void thereIsNoSecondMenu();
    void theGridsOwnActionsComeFirst();
    void whatCannotBeDoneIsOff();
    void theSelectedRowIsCopied();
    void copyingNeedsARow();
    void aTextBoxCopiesItsOwnText();
    void allRowsAreCopied();
    void textsThatWouldTearALineAreQuoted();
    void copyingEverythingCanBeStopped();
};

void GridMenuTest::aRightClickOpensTheMenuAndChoosesNoRow() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.source.moveTo(1);
    const QSignalSpy chosen(&form.grid, &TDBGrid::rowChosen);
    const QSignalSpy moved(&form.source, &DataSource::Reposition);
    for (const int row : {0, 1, 2}) {
        rightClick(form, placeOf(form, row));
        QMenu* menu = ListForm::menu();
        QVERIFY(menu);
        QCOMPARE(menu->objectName(), u"GridMenu"_s);
        QCOMPARE(menu->accessibleName(), u"清單功能"_s);
        QCOMPARE(entriesOf(*menu), AllEntries);
        QCOMPARE(menu->pos(), form.mapToGlobal(placeOf(form, row)));
        QTest::keyClick(menu, Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(ListForm::menu() == nullptr, PatienceMs);
        QCOMPARE(form.selectedRows(), QList<int>{1});
        QCOMPARE(form.source.recordset().AbsolutePosition(), 1);
    }
    QCOMPARE(chosen.count(), 0);
    QCOMPARE(moved.count(), 0);
    // The left button chooses as before.
    QTest::mouseClick(form.windowHandle(), Qt::LeftButton, Qt::NoModifier, placeOf(form, 2));
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(form.source.recordset().AbsolutePosition(), 2);
}

void GridMenuTest::theMenuOpensOverTheCaptionsToo() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    const QWidget* captions = form.grid.horizontalHeader()->viewport();
    rightClick(form, captions->mapTo(&form, captions->rect().center()));
    QVERIFY(ListForm::menu());
    QCOMPARE(entriesOf(*ListForm::menu()), AllEntries);
}

void GridMenuTest::theKeyboardOpensTheMenu_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("menu key") << Qt::Key_Menu << Qt::KeyboardModifiers();
    QTest::newRow("Shift+F10") << Qt::Key_F10 << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void GridMenuTest::theKeyboardOpensTheMenu() {
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.source.moveTo(2);
    form.grid.setFocus();
    QTest::keyClick(form.windowHandle(), key, modifiers);
    QMenu* menu = ListForm::menu();
    QVERIFY(menu);
    QCOMPARE(entriesOf(*menu), AllEntries);
    // And works it.
    const QString copied = ListForm::copiedBy([&] {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Up);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QVERIFY2(copied.startsWith(u"=1+1\t=1+1\t1899/5/1\t"_s), qPrintable(copied));
    QTRY_VERIFY_WITH_TIMEOUT(ListForm::menu() == nullptr, PatienceMs);
    QVERIFY(form.grid.hasFocus());
    QCOMPARE(form.selectedRows(), QList<int>{2});
}

void GridMenuTest::theMenuStandsBelowTheSelectedRow() {
    ListForm form;
    form.addPunches(100);
    form.open();
    form.grid.setFocus();
    form.source.moveTo(3);
    const auto placeOfMenu = [&form] {
        QTest::keyClick(form.windowHandle(), Qt::Key_Menu);
        const QPoint place = ListForm::menu() ? ListForm::menu()->pos() : QPoint(-1, -1);
        if (ListForm::menu())
            ListForm::menu()->close();
        return form.grid.viewport()->mapFromGlobal(place);
    };
    QCOMPARE(placeOfMenu(), QPoint(0, form.grid.visualRect(form.grid.currentIndex()).bottom()));
    form.grid.verticalScrollBar()->setValue(50); // out of sight
    QCOMPARE(placeOfMenu(), QPoint(0, 0));
}

void GridMenuTest::thereIsNoSecondMenu() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.grid.setFocus();
    QTest::keyClick(&form.grid, Qt::Key_Menu);
    const QMenu* first = ListForm::menu();
    QVERIFY(first);
    // A desktop that makes an event of the key as well.
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&form.grid, &asked);
    QCOMPARE(form.grid.findChildren<QMenu*>().size(), 1);
    QCOMPARE(ListForm::menu(), first);
    ListForm::menu()->close();
    QApplication::sendEvent(&form.grid, &asked);
    QVERIFY(ListForm::menu());
}

void GridMenuTest::theGridsOwnActionsComeFirst() {
    ListForm form;
    form.addThree();
    auto* own = new QAction(u"當日判讀"_s, &form.grid);
    form.grid.addAction(own);
    const QSignalSpy pressed(own, &QAction::triggered);
    form.openOvertime();
    rightClick(form, placeOf(form, 0));
    QMenu* menu = ListForm::menu();
    QVERIFY(menu);
    QCOMPARE(entriesOf(*menu), QStringList{u"當日判讀"_s} + AllEntries);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(own).center());
    QCOMPARE(pressed.count(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(ListForm::menu() == nullptr, PatienceMs);
    rightClick(form, placeOf(form, 0));
    QCOMPARE(entriesOf(*ListForm::menu()), QStringList{u"當日判讀"_s} + AllEntries);
    ListForm::menu()->close();
    form.grid.removeAction(own);
    rightClick(form, placeOf(form, 0));
    QCOMPARE(entriesOf(*ListForm::menu()), AllEntries);
}

void GridMenuTest::whatCannotBeDoneIsOff() {
    ListForm form;
    form.openOvertime();
    form.grid.setFocus();
    const auto entries = [&form] {
        QTest::keyClick(&form.grid, Qt::Key_Menu);
        const QStringList all = ListForm::menu() ? entriesOf(*ListForm::menu()) : QStringList();
        if (ListForm::menu())
            ListForm::menu()->close();
        return all;
    };
    QStringList withoutRow = AllEntries;
    withoutRow[1] = u"(複製選取的列(&C))"_s;
    QCOMPARE(entries(), withoutRow);
    form.addThree();
    form.source.Refresh();
    QCOMPARE(entries(), AllEntries);
    form.source.AddNew();
    QCOMPARE(entries(), withoutRow);
    form.source.CancelUpdate();
    form.source.close();
    QCOMPARE(entries(),
             (QStringList{u"-"_s, u"(複製選取的列(&C))"_s, u"(複製全部的列(&A))"_s, u"-"_s,
                          u"(匯出成 CSV 檔(&V)…)"_s, u"(匯出成試算表(&S)…)"_s, u"-"_s, u"還原欄寬"_s}));
}

void GridMenuTest::theSelectedRowIsCopied() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.grid.setFocus();
    const auto copied = [&form] {
        return ListForm::copiedBy([&form] { QTest::keyClick(&form.grid, Qt::Key_C, Qt::ControlModifier); });
    };
    const QString first = u"007\t王小明\t2026/1/5\t18:05\t3\t是\t趕工\t2026/1/6 09:30"_s;
    QCOMPARE(copied(), first);
    QCOMPARE(ListForm::copiedBy([&form] { form.choose(u"ActCopyRow"_s); }), first);
    QTest::keyClick(&form.grid, Qt::Key_Down);
    QCOMPARE(copied(), u"0010\t0010\t\t\t\t否\t\t"_s);
    form.grid.setColumnHidden(1, true);
    QCOMPARE(copied(), u"0010\t\t\t\t否\t\t"_s);
    // As the list shows it: during an edit, as it stands in the store.
    form.source.moveTo(0);
    form.grid.setColumnHidden(1, false);
    form.source.Edit();
    form.source.recordset().setField(u"Memo"_s, Value(u"未存"_s));
    QCOMPARE(copied(), first);
    QCOMPARE(form.answers.trouble(), QString());
}

void GridMenuTest::copyingNeedsARow() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.grid.setFocus();
    const auto copied = [&form] {
        return ListForm::copiedBy([&form] { QTest::keyClick(&form.grid, Qt::Key_C, Qt::ControlModifier); });
    };
    form.source.AddNew();
    QCOMPARE(copied(), u"(before)"_s);
    form.source.CancelUpdate();
    form.source.setRecordSource(u"select * from Over01 where EmpNo ='none'"_s);
    form.source.Refresh();
    QCOMPARE(copied(), u"(before)"_s);
    form.source.close();
    QCOMPARE(copied(), u"(before)"_s);
}

void GridMenuTest::aTextBoxCopiesItsOwnText() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.next.setText(u"盒中"_s);
    form.next.setFocus();
    form.next.selectAll();
    QCOMPARE(ListForm::copiedBy([&] { QTest::keyClick(&form.next, Qt::Key_C, Qt::ControlModifier); }),
             u"盒中"_s);
    form.next.deselect();
    QCOMPARE(ListForm::copiedBy([&] { QTest::keyClick(&form.next, Qt::Key_C, Qt::ControlModifier); }),
             u"(before)"_s);
}

void GridMenuTest::allRowsAreCopied() {
    ListForm form;
    const QString captions = u"員工碼\t姓名\t日期\t開始\t時數\t補休\t備註\t輸入時間\n"_s;
    form.openOvertime();
    QCOMPARE(ListForm::copiedBy([&form] { form.choose(u"ActCopyAll"_s); }), captions);
    form.addThree();
    form.source.Refresh();
    QCOMPARE(ListForm::copiedBy([&form] { form.choose(u"ActCopyAll"_s); }),
             captions + u"007\t王小明\t2026/1/5\t18:05\t3\t是\t趕工\t2026/1/6 09:30\n"_s +
                 u"0010\t0010\t\t\t\t否\t\t\n"_s + u"=1+1\t=1+1\t1899/5/1\t00:00\t-12\t否\t"_s +
                 u"\"他說\"\"好\"\", 再\n來\t\U00020BB7\"\t1850/12/31 23:59\n"_s);
    QCOMPARE(form.selectedRows(), QList<int>{0});
    QCOMPARE(form.answers.trouble(), QString());
}

void GridMenuTest::textsThatWouldTearALineAreQuoted() {
    ListForm form;
    for (const char16_t* memo : {u"a\tb", u"a\nb", u"a\rb", u"\"a", u"a\"b", u"a,b"})
        form.addOvertime({{u"EmpNo", u"1"}, {u"Memo", memo}});
    form.grid.setColumns({{u"備註"_s, u"Memo"_s, 60}});
    form.openOvertime();
    QCOMPARE(ListForm::copiedBy([&form] { form.choose(u"ActCopyAll"_s); }),
             u"備註\n\"a\tb\"\n\"a\nb\"\n\"a\rb\"\n\"\"\"a\"\na\"b\na,b\n"_s);
}

void GridMenuTest::copyingEverythingCanBeStopped() {
    ListForm form;
    form.addPunches(2500);
    form.grid.setColumns({{u"員工碼"_s, u"EmpNo"_s, 60}});
    form.open();
    setProgressDelay(0);
    PressWhenShown cancel;
    QCOMPARE(ListForm::copiedBy([&form] { form.choose(u"ActCopyAll"_s); }), u"(before)"_s);
    QCOMPARE(cancel.pressed, 1);
    setProgressDelay(-1);
    const QStringList lines =
        ListForm::copiedBy([&form] { form.choose(u"ActCopyAll"_s); }).split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2501);
    for (int line = 1; line <= 2500; ++line)
        QCOMPARE(lines.at(line), u"%1"_s.arg(line, 6, 10, QLatin1Char('0')));
}

int main(int argc, char** argv) {
    return runTests<GridMenuTest>(argc, argv);
}

#include "GridMenuTest.moc"
