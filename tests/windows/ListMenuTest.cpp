#include "app/ListForm.h"
#include "support/RealInput.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

/// The menu of a list under a real mouse and keyboard, of which a desktop makes a request for a menu, a key,
/// or both.
class ListMenuTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aRightClickOpensIt();
    void keysOpenIt_data();
    void keysOpenIt();

  private:
    static void closeMenu(RealInput& input) {
        input.tap(Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(ListForm::menu() == nullptr, PatienceMs);
    }
};

void ListMenuTest::aRightClickOpensIt() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.source.moveTo(1);
    const QSignalSpy chosen(&form.grid, &TDBGrid::rowChosen);
    RealInput input;
    const auto placeOf = [&form](int row) {
        return form.grid.viewport()->mapToGlobal(
            form.grid.visualRect(form.grid.model()->index(row, 1)).center());
    };
    input.clickAt(placeOf(2), Qt::RightButton);
    QTRY_VERIFY_WITH_TIMEOUT(ListForm::menu() != nullptr, PatienceMs);
    QCOMPARE(ListForm::menu()->pos(), placeOf(2));
    QCOMPARE(form.selectedRows(), QList<int>{1});
    closeMenu(input);
    QCOMPARE(chosen.count(), 0);
    // The next click of the left button is one.
    input.clickAt(placeOf(2));
    QTRY_COMPARE_WITH_TIMEOUT(chosen.count(), 1, PatienceMs);
    QCOMPARE(form.selectedRows(), QList<int>{2});
}

void ListMenuTest::keysOpenIt_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("withShift");
    QTest::newRow("menu key") << Qt::Key_Menu << false;
    QTest::newRow("Shift+F10") << Qt::Key_F10 << true;
}

void ListMenuTest::keysOpenIt() {
    QFETCH(const Qt::Key, key);
    QFETCH(const bool, withShift);
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.grid.setFocus();
    RealInput input;
    if (withShift)
        input.press(Qt::Key_Shift);
    input.tap(key);
    if (withShift)
        input.release(Qt::Key_Shift);
    QTRY_VERIFY_WITH_TIMEOUT(ListForm::menu() != nullptr, PatienceMs);
    // Its first entry, by the keyboard alone.
    QGuiApplication::clipboard()->setText(u"(before)"_s);
    input.tap(Qt::Key_Down);
    input.tap(Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(ListForm::menu() == nullptr, PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::clipboard()->text(),
                              u"007\t王小明\t2026/1/5\t18:05\t3\t是\t趕工\t2026/1/6 09:30"_s, PatienceMs);
    // There was one menu, and the list goes on.
    input.tap(Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(form.selectedRows(), QList<int>{1}, PatienceMs);
    QVERIFY(ListForm::menu() == nullptr);
}

int main(int argc, char** argv) {
    return runTests<ListMenuTest>(argc, argv);
}

#include "ListMenuTest.moc"
