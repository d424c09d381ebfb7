#include "app/FocusWatch.h"
#include "app/controls/TabPages.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTabBar>
#include <QVBoxLayout>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A window of two pages with a box on each; a box that holds an x is not left.
struct Form : QWidget {
    TabPages pages{nullptr, u"SSTab1"_s, u"頁籤"_s};
    QLineEdit first;
    QLineEdit second;
    FocusWatch watch{this};
    QList<int> pagesWhenLeft;

    Form() {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&pages);
        pages.addTab(pageOf(first), u"一"_s);
        pages.addTab(pageOf(second), u"二"_s);
        for (QLineEdit* box : {&first, &second}) {
            watch.onLostFocus(box, [this, box] {
                pagesWhenLeft << pages.currentIndex();
                if (box->text() == u"x")
                    box->setFocus();
            });
        }
        show();
        if (!QTest::qWaitForWindowActive(this, PatienceMs))
            qFatal("the window does not become active");
        first.setFocus();
    }
    ~Form() override {
        for (QLineEdit* box : {&first, &second})
            box->setParent(nullptr); // They are not the page's to delete.
    }
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    static QWidget* pageOf(QLineEdit& box) {
        auto* page = new QWidget;
        (new QVBoxLayout(page))->addWidget(&box);
        return page;
    }
    void clickTab(int index, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(windowHandle(), button, Qt::NoModifier,
                          pages.tabBar()->mapTo(this, pages.tabBar()->tabRect(index).center()));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(windowHandle(), key, modifiers);
    }
};

} // namespace

class controlsTabPagesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void namesItselfAndItsTabs();
    void aClickLeavesTheBoxBeforeItsPageGoes();
    void aBoxThatIsNotLeftKeepsItsPageFromAClick();
    void controlTabTurnsToTheNextPagesBox();
    void aBoxThatIsNotLeftKeepsItsPageFromControlTab();
    void controlTabWithoutAnotherPageDoesNothing();
    void theWheelTurnsNoPage();
    void aClickOnTheTabInFrontIsTold_data();
    void aClickOnTheTabInFrontIsTold();
};

void controlsTabPagesTest::namesItselfAndItsTabs() {
    const Form form;
    QCOMPARE(form.pages.objectName(), u"SSTab1"_s);
    QCOMPARE(form.pages.accessibleName(), u"頁籤"_s);
    QCOMPARE(form.pages.tabBar()->accessibleName(), u"頁籤"_s);
}

void controlsTabPagesTest::aClickLeavesTheBoxBeforeItsPageGoes() {
    Form form;
    form.clickTab(1);
    QCOMPARE(form.pagesWhenLeft, QList<int>{0});
    QCOMPARE(form.pages.currentIndex(), 1);
}

void controlsTabPagesTest::aBoxThatIsNotLeftKeepsItsPageFromAClick() {
    Form form;
    form.first.setText(u"x"_s);
    form.clickTab(1);
    QCOMPARE(form.pagesWhenLeft, QList<int>{0});
    QCOMPARE(form.pages.currentIndex(), 0);
    QVERIFY(form.first.hasFocus());
    form.first.clear();
    form.clickTab(1);
    QCOMPARE(form.pages.currentIndex(), 1);
}

void controlsTabPagesTest::controlTabTurnsToTheNextPagesBox() {
    Form form;
    form.key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(form.pagesWhenLeft, QList<int>{0});
    QCOMPARE(form.pages.currentIndex(), 1);
    QVERIFY(form.second.hasFocus());
    form.key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(form.pagesWhenLeft, QList<int>({0, 1}));
    QCOMPARE(form.pages.currentIndex(), 0);
    QVERIFY(form.first.hasFocus());
}

void controlsTabPagesTest::aBoxThatIsNotLeftKeepsItsPageFromControlTab() {
    Form form;
    form.first.setText(u"x"_s);
    form.key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(form.pagesWhenLeft, QList<int>{0});
    QCOMPARE(form.pages.currentIndex(), 0);
    QVERIFY(form.first.hasFocus());
}

void controlsTabPagesTest::controlTabWithoutAnotherPageDoesNothing() {
    Form form;
    form.pages.setTabEnabled(1, false);
    form.key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(form.pagesWhenLeft, QList<int>());
    QCOMPARE(form.pages.currentIndex(), 0);
    QVERIFY(form.first.hasFocus());
}

void controlsTabPagesTest::theWheelTurnsNoPage() {
    Form form;
    for (const bool up : {false, true}) {
        turnWheel(*form.pages.tabBar(), up);
        QCOMPARE(form.pages.currentIndex(), 0);
    }
    QCOMPARE(form.pagesWhenLeft, QList<int>());
    QVERIFY(form.first.hasFocus());
}

void controlsTabPagesTest::aClickOnTheTabInFrontIsTold_data() {
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("told");
    QTest::newRow("the tab in front") << Qt::LeftButton << 0 << 1;
    QTest::newRow("by another button") << Qt::RightButton << 0 << 0;
    QTest::newRow("by the wheel") << Qt::MiddleButton << 0 << 0;
    QTest::newRow("the tab behind") << Qt::LeftButton << 1 << 0;
}

void controlsTabPagesTest::aClickOnTheTabInFrontIsTold() {
    QFETCH(const Qt::MouseButton, button);
    QFETCH(const int, tab);
    Form form;
    const QSignalSpy told(&form.pages, &TabPages::frontTabClicked);
    form.clickTab(tab, button);
    QTEST(static_cast<int>(told.size()), "told");
    QCOMPARE(form.pages.currentIndex(), tab);
}

int main(int argc, char** argv) {
    return runTests<controlsTabPagesTest>(argc, argv);
}

#include "controlsTabPagesTest.moc"
