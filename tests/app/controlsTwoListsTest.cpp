#include "app/EnterAsTab.h"
#include "app/TwoLists.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Chen = u"000001  陳一"_s;
const QString Lin = u"000002  林二"_s;
const QString Wang = u"000003  王三"_s;
const QString Lee = u"000004  李四"_s;

/// A window with the two lists, filled with four employees.
struct ListsForm : QWidget {
    TwoLists lists;
    ListsForm() {
        auto* rows = new QVBoxLayout(this);
        setAccessibleName(u"名單"_s);
        rows->addWidget(&lists);
        resize(420, 240);
        lists.setEntries({Chen, Lin, Wang, Lee});
        EnterAsTab::install(*this);
        show();
    }
    [[nodiscard]] bool waitActive() { return QTest::qWaitForWindowActive(this, PatienceMs); }
    void clickButton(int index) { click(control<QPushButton>(lists, u"CMDCTRL(%1)"_s.arg(index))); }
    static QPoint placeOf(const QListWidget& list, int row) {
        return list.visualItemRect(list.item(row)).center();
    }
    static void clickEntry(QListWidget& list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, placeOf(list, row));
    }
    static void doubleClickEntry(QListWidget& list, int row) {
        clickEntry(list, row);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(list, row));
    }
    [[nodiscard]] QStringList selected() const {
        QStringList texts;
        for (const QListWidget* list : {lists.list1(), lists.list2()}) {
            for (const QListWidgetItem* item : list->selectedItems())
                texts << item->text();
        }
        return texts;
    }
    /// The entries of both lists in order, and the numbers shown below them.
    [[nodiscard]] QList<QStringList> shown() const {
        const auto number = [&](int index) {
            return control<QLabel>(lists, u"Label3(%1)"_s.arg(index)).text();
        };
        return {lists.remaining(), lists.chosen(), {number(0), number(1)}};
    }
};

} // namespace

class controlsTwoListsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void namesItsControls();
    void startsWithoutEntries();
    void entriesStandInTheOrderGiven();
    void newEntriesTakeThePlaceOfAll();
    void oneMovesToTheOtherListsEnd();
    void oneMovesBackToTheEnd();
    void withNothingSelectedSaysSo_data();
    void withNothingSelectedSaysSo();
    void aMessageLeavesTheOtherListsSelection();
    void nothingIsSelectedAfterAMove();
    void severalMoveInTheOrderInWhichTheyStood();
    void allMoveTheSelectedOneFirst();
    void allMoveFromTheTopWithNothingSelected();
    void allMoveBackTheSelectedOneFirst();
    void allOfAnEmptyListDoNothing();
    void aDoubleClickMovesAnEntry();
    void aDoubleClickMovesAnEntryBack();
    void aDoubleClickBesideTheEntriesDoesNothing();
    void theMouseHeldAfterADoubleClickSelectsNothing();
    void enterMovesAnEntryOfTheFirstList();
    void enterSelectsTheFirstEntryWhereThatIsWanted();
    void enterWithNothingSelectedSaysNothing();
    void enterInTheSecondListMovesNothing();
    void theKeyboardGoesOnFromWhereAnEntryWas();
    void manyEntriesMoveAtOnce();
    void disabledListsTakeNothing();
};

void controlsTwoListsTest::namesItsControls() {
    ListsForm form;
    QVERIFY(form.waitActive());
    QStringList captions;
    for (int index = 0; index < 4; ++index)
        captions << control<QPushButton>(form, u"CMDCTRL(%1)"_s.arg(index)).text();
    QCOMPARE(captions, QStringList({u">"_s, u">>"_s, u"<"_s, u"<<"_s}));
    QCOMPARE(control<QLabel>(form, u"Label4(98)"_s).text(), u"剩餘人數："_s);
    QCOMPARE(control<QLabel>(form, u"Label4(99)"_s).text(), u"選取人數："_s);
    QCOMPARE(&control<QListWidget>(form, u"List1"_s), form.lists.list1());
    QCOMPARE(&control<QListWidget>(form, u"List2"_s), form.lists.list2());
    QCOMPARE(controlFaults(form), QStringList());
}

void controlsTwoListsTest::startsWithoutEntries() {
    const TwoLists lists;
    QCOMPARE(lists.remaining(), QStringList());
    QCOMPARE(lists.chosen(), QStringList());
    QCOMPARE(control<QLabel>(lists, u"Label3(0)"_s).text(), u"0"_s);
    QCOMPARE(control<QLabel>(lists, u"Label3(1)"_s).text(), u"0"_s);
}

void controlsTwoListsTest::entriesStandInTheOrderGiven() {
    ListsForm form;
    form.lists.setEntries({Lee, Chen, Wang});
    QCOMPARE(form.shown(), (QList<QStringList>{{Lee, Chen, Wang}, {}, {u"3"_s, u"0"_s}}));
    QCOMPARE(form.selected(), QStringList());
}

void controlsTwoListsTest::newEntriesTakeThePlaceOfAll() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickEntry(*form.lists.list1(), 1);
    form.clickButton(0);
    form.lists.setEntries({Lin});
    QCOMPARE(form.shown(), (QList<QStringList>{{Lin}, {}, {u"1"_s, u"0"_s}}));
    form.clickButton(1);
    form.lists.clear();
    QCOMPARE(form.shown(), (QList<QStringList>{{}, {}, {u"0"_s, u"0"_s}}));
}

void controlsTwoListsTest::oneMovesToTheOtherListsEnd() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickEntry(*form.lists.list1(), 2);
    form.clickButton(0);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Lin, Lee}, {Wang}, {u"3"_s, u"1"_s}}));
    form.clickEntry(*form.lists.list1(), 0);
    form.clickButton(0);
    QCOMPARE(form.shown(), (QList<QStringList>{{Lin, Lee}, {Wang, Chen}, {u"2"_s, u"2"_s}}));
}

void controlsTwoListsTest::oneMovesBackToTheEnd() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickButton(1);
    form.clickEntry(*form.lists.list2(), 3);
    form.clickButton(2);
    form.clickEntry(*form.lists.list2(), 0);
    form.clickButton(2);
    QCOMPARE(form.shown(), (QList<QStringList>{{Lee, Chen}, {Lin, Wang}, {u"2"_s, u"2"_s}}));
}

void controlsTwoListsTest::withNothingSelectedSaysSo_data() {
    QTest::addColumn<int>("button");
    QTest::newRow("choosing") << 0;
    QTest::newRow("taking back") << 2;
}

void controlsTwoListsTest::withNothingSelectedSaysSo() {
    QFETCH(int, button);
    ListsForm form;
    QVERIFY(form.waitActive());
    PromptAnswers answers;
    answers.expectMsgBox();
    const auto before = form.shown();
    form.clickButton(button);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(answers.seen().constFirst().title, u"錯誤訊息"_s);
    QCOMPARE(answers.seen().constFirst().text, u"請選擇員工編號及姓名..."_s);
    QCOMPARE(form.shown(), before);
}

void controlsTwoListsTest::aMessageLeavesTheOtherListsSelection() {
    ListsForm form;
    QVERIFY(form.waitActive());
    PromptAnswers answers;
    answers.expectMsgBox();
    form.clickEntry(*form.lists.list1(), 1);
    form.clickButton(2);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(form.selected(), QStringList{Lin});
}

void controlsTwoListsTest::nothingIsSelectedAfterAMove() {
    ListsForm form;
    QVERIFY(form.waitActive());
    for (int row : {1, 0}) {
        form.clickEntry(*form.lists.list1(), row);
        QVERIFY(!form.selected().isEmpty());
        form.clickButton(0);
        QCOMPARE(form.selected(), QStringList());
    }
    form.clickEntry(*form.lists.list2(), 0);
    form.clickEntry(*form.lists.list1(), 1);
    form.clickButton(2);
    QCOMPARE(form.selected(), QStringList());
    form.clickEntry(*form.lists.list1(), 1);
    form.clickButton(1);
    QCOMPARE(form.selected(), QStringList());
}

void controlsTwoListsTest::severalMoveInTheOrderInWhichTheyStood() {
    ListsForm form;
    QVERIFY(form.waitActive());
    QListWidget& list = *form.lists.list1();
    form.clickEntry(list, 3);
    form.clickEntry(list, 0, Qt::ControlModifier);
    form.clickEntry(list, 1, Qt::ControlModifier);
    form.clickButton(0);
    QCOMPARE(form.shown(), (QList<QStringList>{{Wang}, {Chen, Lin, Lee}, {u"1"_s, u"3"_s}}));
    QCOMPARE(form.selected(), QStringList());
}

void controlsTwoListsTest::allMoveTheSelectedOneFirst() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickEntry(*form.lists.list1(), 2);
    form.clickButton(1);
    QCOMPARE(form.shown(), (QList<QStringList>{{}, {Wang, Chen, Lin, Lee}, {u"0"_s, u"4"_s}}));
}

void controlsTwoListsTest::allMoveFromTheTopWithNothingSelected() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickEntry(*form.lists.list1(), 3);
    form.clickButton(0);
    form.clickButton(1);
    QCOMPARE(form.shown(), (QList<QStringList>{{}, {Lee, Chen, Lin, Wang}, {u"0"_s, u"4"_s}}));
}

void controlsTwoListsTest::allMoveBackTheSelectedOneFirst() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickButton(1);
    form.clickEntry(*form.lists.list2(), 1);
    form.clickButton(3);
    QCOMPARE(form.shown(), (QList<QStringList>{{Lin, Chen, Wang, Lee}, {}, {u"4"_s, u"0"_s}}));
}

void controlsTwoListsTest::allOfAnEmptyListDoNothing() {
    ListsForm form;
    QVERIFY(form.waitActive());
    const PromptAnswers answers;
    form.clickButton(3);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Lin, Wang, Lee}, {}, {u"4"_s, u"0"_s}}));
    form.clickButton(1);
    form.clickEntry(*form.lists.list2(), 2);
    form.clickButton(1);
    QCOMPARE(form.shown(), (QList<QStringList>{{}, {Chen, Lin, Wang, Lee}, {u"0"_s, u"4"_s}}));
    // Nor to what is selected in the other list.
    form.clickButton(2);
    QCOMPARE(form.shown(), (QList<QStringList>{{Wang}, {Chen, Lin, Lee}, {u"1"_s, u"3"_s}}));
    QCOMPARE(answers.trouble(), QString());
}

void controlsTwoListsTest::aDoubleClickMovesAnEntry() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.doubleClickEntry(*form.lists.list1(), 1);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Wang, Lee}, {Lin}, {u"3"_s, u"1"_s}}));
    QCOMPARE(form.selected(), QStringList());
}

void controlsTwoListsTest::aDoubleClickMovesAnEntryBack() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickButton(1);
    form.doubleClickEntry(*form.lists.list2(), 1);
    QCOMPARE(form.shown(), (QList<QStringList>{{Lin}, {Chen, Wang, Lee}, {u"1"_s, u"3"_s}}));
}

void controlsTwoListsTest::aDoubleClickBesideTheEntriesDoesNothing() {
    ListsForm form;
    QVERIFY(form.waitActive());
    const PromptAnswers answers;
    QListWidget& list = *form.lists.list1();
    const QPoint below = list.viewport()->rect().bottomLeft() + QPoint(20, -5);
    QVERIFY(!list.itemAt(below));
    form.clickEntry(list, 1);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, below);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Lin, Wang, Lee}, {}, {u"4"_s, u"0"_s}}));
    QCOMPARE(answers.trouble(), QString());
}

void controlsTwoListsTest::theMouseHeldAfterADoubleClickSelectsNothing() {
    ListsForm form;
    QVERIFY(form.waitActive());
    QListWidget& list = *form.lists.list1();
    const QPoint place = form.placeOf(list, 1);
    const auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons down) {
        QMouseEvent event(type, at, list.viewport()->mapToGlobal(QPointF(at)), button, down, Qt::NoModifier);
        QCoreApplication::sendEvent(list.viewport(), &event);
    };
    form.clickEntry(list, 1);
    send(QEvent::MouseButtonDblClick, place, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, place + QPoint(4, 3), Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, place + QPoint(4, 3), Qt::LeftButton, Qt::NoButton);
    QCOMPARE(form.lists.chosen(), QStringList{Lin});
    QCOMPARE(form.selected(), QStringList());
    form.clickEntry(list, 1);
    QCOMPARE(form.selected(), QStringList{Wang});
}

void controlsTwoListsTest::enterMovesAnEntryOfTheFirstList() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickEntry(*form.lists.list1(), 1);
    QTest::keyClick(form.lists.list1(), Qt::Key_Return);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Wang, Lee}, {Lin}, {u"3"_s, u"1"_s}}));
    QCOMPARE(form.selected(), QStringList());
    QVERIFY(form.lists.list1()->hasFocus());
}

void controlsTwoListsTest::enterSelectsTheFirstEntryWhereThatIsWanted() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.lists.setEnterSelectsFirst(true);
    form.clickEntry(*form.lists.list1(), 2);
    QTest::keyClick(form.lists.list1(), Qt::Key_Return);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Lin, Lee}, {Wang}, {u"3"_s, u"1"_s}}));
    QCOMPARE(form.selected(), QStringList{Chen});
    for (int presses = 0; presses < 3; ++presses)
        QTest::keyClick(form.lists.list1(), Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(form.shown(), (QList<QStringList>{{}, {Wang, Chen, Lin, Lee}, {u"0"_s, u"4"_s}}));
    QTest::keyClick(form.lists.list1(), Qt::Key_Return);
    QCOMPARE(form.lists.chosen().size(), 4);
}

void controlsTwoListsTest::enterWithNothingSelectedSaysNothing() {
    ListsForm form;
    QVERIFY(form.waitActive());
    const PromptAnswers answers;
    form.lists.list1()->setFocus();
    QTest::keyClick(form.lists.list1(), Qt::Key_Return);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Lin, Wang, Lee}, {}, {u"4"_s, u"0"_s}}));
    QCOMPARE(answers.trouble(), QString());
}

void controlsTwoListsTest::enterInTheSecondListMovesNothing() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.clickButton(1);
    form.clickEntry(*form.lists.list2(), 1);
    QTest::keyClick(form.lists.list2(), Qt::Key_Return);
    QCOMPARE(form.shown(), (QList<QStringList>{{}, {Chen, Lin, Wang, Lee}, {u"0"_s, u"4"_s}}));
    QCOMPARE(form.selected(), QStringList{Lin});
}

void controlsTwoListsTest::theKeyboardGoesOnFromWhereAnEntryWas() {
    ListsForm form;
    QVERIFY(form.waitActive());
    QListWidget& list = *form.lists.list1();
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(form.lists.chosen(), QStringList{Wang});
    QTest::keyClick(&list, Qt::Key_Space); // selects the entry that has moved up
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(form.lists.chosen(), QStringList({Wang, Lee}));
    QTest::keyClick(&list, Qt::Key_Up);
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(form.lists.chosen(), QStringList({Wang, Lee, Chen}));
}

void controlsTwoListsTest::manyEntriesMoveAtOnce() {
    ListsForm form;
    QVERIFY(form.waitActive());
    QStringList entries;
    for (int number = 0; number < 10'000; ++number)
        entries << u"%1  員工"_s.arg(number, 6, 10, QLatin1Char('0'));
    form.lists.setEntries(entries);
    form.lists.list1()->selectAll();
    form.clickButton(0);
    QCOMPARE(form.shown(), (QList<QStringList>{{}, entries, {u"0"_s, u"10000"_s}}));
    form.clickButton(3);
    QCOMPARE(form.shown(), (QList<QStringList>{entries, {}, {u"10000"_s, u"0"_s}}));
}

void controlsTwoListsTest::disabledListsTakeNothing() {
    ListsForm form;
    QVERIFY(form.waitActive());
    form.lists.setEnabled(false);
    for (int index = 0; index < 4; ++index)
        form.clickButton(index);
    QCOMPARE(form.shown(), (QList<QStringList>{{Chen, Lin, Wang, Lee}, {}, {u"4"_s, u"0"_s}}));
}

int main(int argc, char** argv) {
    return pontrel::test::runTests<controlsTwoListsTest>(argc, argv);
}

#include "controlsTwoListsTest.moc"
