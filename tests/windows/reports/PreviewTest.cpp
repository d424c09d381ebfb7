#include "support/Patience.h"
#include "windows/reports/PreviewFixture.h"

#include <QScrollBar>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// A report on screen, by keys and mouse.
class PreviewTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void tellsWhatItShows();
    void everyControlIsInOrder();
    void keysTurnPages();
    void buttonsTurnPages();
    void aPageNumberIsTyped();
    void scrollingTurnsPages();
    void onlyPagesInSightArePainted();
    void zoomsByKeysWheelAndList();
    void opensAtAGoodSize();
    void aPageStaysWhereItIsWhileZooming();
    void escapeCloses();
    void offersNoMoreThanItIsTold();
    void anEmptyReportIsOnePage();
    void severalEndWithTheMainWindow();
    void theStoreIsSavedMeanwhile();
};

void PreviewTest::tellsWhatItShows() {
    PreviewFixture fixture;
    const ReportPreview& preview = fixture.open();
    QVERIFY(fixture.pageCount() > 5);
    QCOMPARE(preview.windowTitle(), u"X01 員工名冊"_s);
    QCOMPARE(preview.accessibleName(), u"員工名冊"_s);
    QCOMPARE(fixture.label(u"LblStatus"_s), u"360 筆，%1 頁"_s.arg(fixture.pageCount()));
    QCOMPARE(fixture.text(u"TxtPage"_s), u"1"_s);
    QCOMPARE(fixture.label(u"LblPages"_s).trimmed(), u"/ %1"_s.arg(fixture.pageCount()));
    QCOMPARE(fixture.pages().accessibleName(), u"員工名冊"_s);
    fixture.key(Qt::Key_PageDown);
    const QString told = fixture.pages().accessibleDescription();
    QVERIFY2(told.startsWith(u"第 2 頁，共 %1 頁\n"_s.arg(fixture.pageCount())), qUtf8Printable(told));
    QVERIFY(told.endsWith(preview.document().textOf(1)));
    QVERIFY(fixture.pages().hasFocus());
    QCOMPARE(fixture.answers.trouble(), QString());
}

void PreviewTest::everyControlIsInOrder() {
    PreviewFixture fixture;
    ReportPreview& preview = fixture.open();
    QCOMPARE(controlFaults(preview), QStringList());
    for (QToolButton* button : preview.findChildren<QToolButton*>()) {
        if (!button->objectName().startsWith(u"qt_"))
            QVERIFY2(!button->toolTip().isEmpty(), qPrintable(button->objectName()));
    }
    fixture.key(Qt::Key_F4);
    fixture.key(Qt::Key_F, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.at(u"FindBar"_s).isVisible() && fixture.at(u"GroupTree"_s).isVisible(),
                             PatienceMs);
    QCOMPARE(controlFaults(preview), QStringList());
    fixture.at(u"TxtFind"_s).setFocus();
    QCOMPARE(tabFaults(preview), QStringList());
}

void PreviewTest::keysTurnPages() {
    PreviewFixture fixture;
    fixture.open();
    const int last = fixture.pageCount() - 1;
    const auto after = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        fixture.key(key, modifiers);
        return fixture.pages().page();
    };
    QCOMPARE(after(Qt::Key_PageUp), 0);
    QCOMPARE(after(Qt::Key_PageDown), 1);
    QCOMPARE(after(Qt::Key_PageDown), 2);
    QCOMPARE(fixture.text(u"TxtPage"_s), u"3"_s);
    QCOMPARE(after(Qt::Key_PageUp), 1);
    QCOMPARE(after(Qt::Key_End, Qt::ControlModifier), last);
    QCOMPARE(after(Qt::Key_PageDown), last);
    QCOMPARE(after(Qt::Key_PageUp), last - 1);
    QCOMPARE(after(Qt::Key_Home, Qt::ControlModifier), 0);
}

void PreviewTest::buttonsTurnPages() {
    PreviewFixture fixture;
    fixture.open().resize(1400, 700);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.at(u"Tools"_s).width(), 1400, PatienceMs);
    const auto on = [&] {
        QStringList names;
        for (const QString& name : {u"CmdFirst"_s, u"CmdPrevious"_s, u"CmdNext"_s, u"CmdLast"_s}) {
            if (fixture.at(name).isEnabled())
                names << name;
        }
        return names;
    };
    QCOMPARE(on(), (QStringList{u"CmdNext"_s, u"CmdLast"_s}));
    fixture.press(u"CmdNext"_s);
    QCOMPARE(fixture.pages().page(), 1);
    QCOMPARE(on().size(), 4);
    fixture.press(u"CmdLast"_s);
    QCOMPARE(fixture.pages().page(), fixture.pageCount() - 1);
    QCOMPARE(on(), (QStringList{u"CmdFirst"_s, u"CmdPrevious"_s}));
    fixture.press(u"CmdPrevious"_s);
    QCOMPARE(fixture.pages().page(), fixture.pageCount() - 2);
    fixture.press(u"CmdFirst"_s);
    QCOMPARE(fixture.pages().page(), 0);
}

void PreviewTest::aPageNumberIsTyped() {
    PreviewFixture fixture;
    fixture.open();
    int bells = 0;
    setBell([&bells] { ++bells; });
    const auto typed = [&](const QString& text) {
        fixture.key(Qt::Key_G, Qt::ControlModifier);
        if (!fixture.at(u"TxtPage"_s).hasFocus())
            return -1;
        fixture.type(text);
        fixture.key(Qt::Key_Return);
        return fixture.pages().page() + 1;
    };
    QCOMPARE(typed(u"4"_s), 4);
    QVERIFY(fixture.pages().hasFocus());
    QCOMPARE(typed(u"9999"_s), fixture.pageCount());
    QCOMPARE(fixture.text(u"TxtPage"_s), QString::number(fixture.pageCount()));
    QCOMPARE(typed(u"0"_s), 1);
    QCOMPARE(typed(u"2"_s), 2);
    QCOMPARE(bells, 0);
    QCOMPARE(typed(u"x"_s), 2);
    QCOMPARE(bells, 1);
    QCOMPARE(fixture.text(u"TxtPage"_s), u"2"_s);
    setBell({});
}

void PreviewTest::scrollingTurnsPages() {
    PreviewFixture fixture;
    fixture.open();
    int spaces = 0;
    for (; fixture.pages().page() < 2 && spaces < 20; ++spaces)
        fixture.key(Qt::Key_Space);
    QCOMPARE(fixture.pages().page(), 2);
    QCOMPARE(fixture.text(u"TxtPage"_s), u"3"_s);
    for (int turn = 0; fixture.pages().page() > 0 && turn < 100; ++turn)
        turnWheel(*fixture.pages().viewport(), true);
    QCOMPARE(fixture.text(u"TxtPage"_s), u"1"_s);
}

void PreviewTest::onlyPagesInSightArePainted() {
    PreviewFixture fixture;
    fixture.open();
    fixture.key(Qt::Key_0, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.pages().painted() > 0, PatienceMs);
    QVERIFY2(fixture.pages().painted() <= 6, qPrintable(QString::number(fixture.pages().painted())));
    QCoreApplication::processEvents();
    const auto paintedBy = [&](const std::function<void()>& action) {
        const int before = fixture.pages().painted();
        action();
        fixture.pages().viewport()->repaint();
        return fixture.pages().painted() - before;
    };
    // One page fills the view, and repainting it paints that one alone.
    QCOMPARE(paintedBy([] {}), 1);
    QVERIFY(paintedBy([&] { fixture.key(Qt::Key_End, Qt::ControlModifier); }) <= 2);
    QCOMPARE(paintedBy([] {}), 1);
    // Searching all of them paints none but the one gone to.
    fixture.key(Qt::Key_Home, Qt::ControlModifier);
    fixture.key(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(fixture.at(u"FindBar"_s).isVisible());
    QCoreApplication::processEvents();
    const int before = fixture.pages().painted();
    fixture.at<QLineEdit>(u"TxtFind"_s).setText(u"300119"_s);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.label(u"LblFound"_s), u"第 1 處，共 1 處"_s, PatienceMs);
    QCOMPARE(fixture.pages().page(), fixture.pageCount() - 1);
    fixture.pages().viewport()->repaint();
    QVERIFY2(fixture.pages().painted() - before <= 4,
             qPrintable(QString::number(fixture.pages().painted() - before)));
}

void PreviewTest::zoomsByKeysWheelAndList() {
    PreviewFixture fixture;
    fixture.open();
    auto& list = fixture.at<QComboBox>(u"CboZoom"_s);
    fixture.key(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(fixture.pages().zoom(), 100.0);
    QCOMPARE(list.currentText(), u"100 %"_s);
    fixture.key(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(list.currentText(), u"125 %"_s);
    fixture.key(Qt::Key_Equal, Qt::ControlModifier);
    QCOMPARE(fixture.pages().zoom(), 150.0);
    fixture.key(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(fixture.pages().zoom(), 125.0);
    for (int step = 0; step < 12; ++step)
        fixture.key(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(fixture.pages().zoom(), 400.0);
    for (int step = 0; step < 12; ++step)
        fixture.key(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(fixture.pages().zoom(), 25.0);
    QCOMPARE(list.currentText(), u"25 %"_s);

    fixture.key(Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(fixture.pages().fit(), PageView::Fit::PageWidth);
    QCOMPARE(list.currentText(), u"頁寬"_s);
    const double wide = fixture.pages().zoom();
    fixture.key(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(list.currentText(), u"整頁"_s);
    QVERIFY(fixture.pages().zoom() < wide);
    // A fit follows the window.
    const double whole = fixture.pages().zoom();
    fixture.preview().resize(1000, 500);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.pages().zoom() < whole, PatienceMs);

    const QPointF middle = fixture.pages().viewport()->rect().center();
    const auto turned = [&](int angle) {
        QWheelEvent wheel(middle, fixture.pages().viewport()->mapToGlobal(middle), {}, {0, angle},
                          Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(fixture.pages().viewport(), &wheel);
        return fixture.pages().zoom();
    };
    fixture.pages().setZoom(100);
    QCOMPARE(turned(120), 125.0);
    QCOMPARE(turned(-120), 100.0);
    list.setFocus();
    fixture.key(Qt::Key_Down);
    QCOMPARE(fixture.pages().zoom(), 125.0);
}

/// The whole width is seen at first, on a large window not larger than is good to read.
void PreviewTest::opensAtAGoodSize() {
    PreviewFixture fixture;
    fixture.open();
    const auto zoomAt = [&](int width) {
        fixture.preview().resize(width, 700);
        if (!QTest::qWaitFor([&] { return fixture.at(u"Tools"_s).width() == width; }, PatienceMs))
            return -1.0;
        return fixture.pages().zoom();
    };
    QCOMPARE(zoomAt(1000), 100.0); // 794 pixels of paper
    QCOMPARE(zoomAt(1100), 125.0);
    QCOMPARE(zoomAt(1900), 150.0);
    QCOMPARE(fixture.at<QComboBox>(u"CboZoom"_s).currentText(), u"150 %"_s);
    const double narrow = zoomAt(600);
    QVERIFY(narrow > 25 && narrow < 75);
    QCOMPARE(fixture.at<QComboBox>(u"CboZoom"_s).currentText(), u"頁寬"_s);
    QCOMPARE(fixture.pages().horizontalScrollBar()->maximum(), 0);
    // Once somebody has zoomed, it stays.
    fixture.key(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(zoomAt(1900), 100.0);
}

void PreviewTest::aPageStaysWhereItIsWhileZooming() {
    PreviewFixture fixture;
    fixture.open();
    fixture.pages().goTo(4);
    for (const double percent : {200.0, 25.0, 400.0, 100.0}) {
        fixture.pages().setZoom(percent);
        QCOMPARE(fixture.pages().page(), 4);
    }
    fixture.pages().setFit(PageView::Fit::WholePage);
    QCOMPARE(fixture.pages().page(), 4);
}

void PreviewTest::escapeCloses() {
    PreviewFixture fixture;
    const QPointer<ReportPreview> preview = &fixture.open();
    fixture.key(Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(!preview, PatienceMs);
    QVERIFY(fixture.mainWindow().isVisible());
    const QPointer<ReportPreview> other = &fixture.open();
    other->resize(1400, 700);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.at(u"Tools"_s).width(), 1400, PatienceMs);
    fixture.press(u"CmdClose"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!other, PatienceMs);
}

void PreviewTest::offersNoMoreThanItIsTold() {
    PreviewFixture fixture;
    const auto offered = [&] {
        QStringList names;
        for (const QString& name : {u"CmdPrint"_s, u"CmdPdf"_s, u"CmdSheet"_s, u"CmdCsv"_s, u"CmdFind"_s}) {
            if (fixture.preview().findChild<QToolButton*>(name))
                names << name;
        }
        return names;
    };
    fixture.control.showPrint = false;
    fixture.control.showExport = false;
    fixture.open();
    QCOMPARE(offered(), QStringList{u"CmdFind"_s});
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_S, Qt::Key_E})
        fixture.key(key, Qt::ControlModifier);
    fixture.control.showPrint = true;
    fixture.open();
    QCOMPARE(offered(), (QStringList{u"CmdPrint"_s, u"CmdFind"_s}));
    fixture.control.showExport = true;
    fixture.open();
    QCOMPARE(offered().size(), 5);
    QCOMPARE(fixture.answers.trouble(), QString()); // no dialog has come
}

void PreviewTest::anEmptyReportIsOnePage() {
    PreviewFixture fixture(u"{Base06.EmpNo} = 'nobody'"_s);
    const paper::ReportDocument& document = fixture.open().document();
    QCOMPARE(fixture.label(u"LblStatus"_s), u"0 筆，1 頁"_s);
    QVERIFY(document.textOf(0).contains(u"員工碼"_s));
    QVERIFY(!fixture.at(u"CmdNext"_s).isEnabled());
    QVERIFY(!fixture.at(u"CmdTree"_s).isEnabled());
    fixture.key(Qt::Key_F4);
    QVERIFY(!fixture.at(u"GroupTree"_s).isVisible());
    fixture.key(Qt::Key_F, Qt::ControlModifier);
    fixture.type(u"x"_s);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.label(u"LblFound"_s), u"找不到"_s, PatienceMs);
    fixture.key(Qt::Key_Escape);
    fixture.key(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(fixture.pages().page(), 0);
}

void PreviewTest::severalEndWithTheMainWindow() {
    PreviewFixture fixture;
    const QPointer<ReportPreview> first = &fixture.open();
    const QPointer<ReportPreview> second = &fixture.open();
    QVERIFY(first && second && first != second);
    QVERIFY(first->isVisible() && second->isVisible());
    // They are no part of the main window, which can come to the front of them.
    QCOMPARE(first->parentWidget(), nullptr);
    fixture.mainWindow().activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(fixture.mainWindow().isActiveWindow(), PatienceMs);
    fixture.mainWindow().close();
    QTRY_VERIFY_WITH_TIMEOUT(!first && !second, PatienceMs);
}

void PreviewTest::theStoreIsSavedMeanwhile() {
    PreviewFixture fixture;
    const ReportPreview& preview = fixture.open();
    const QString before = preview.document().textOf(0);
    Database& database = fixture.store.database();
    database.execute(u"delete * from Base06 where EmpNo = '100001'"_s);
    database.execute(u"Update Base02 set Unit = '新課' where UnitNo = '1000'"_s);
    insertRow(database, u"Base01"_s, {{u"TitleNo", u"0001"_s}});
    const auto other = fixture.store.connect();
    QCOMPARE(other->select(u"select Unit from Base02 where UnitNo = '1000'"_s).at(0, 0).toText(), u"新課"_s);
    QCOMPARE(other->select(u"select count(*) as cnt from Base06"_s).at(0, 0).toInteger(), 359);
    // It shows what was so when it was made, on all pages.
    QCOMPARE(preview.document().textOf(0), before);
    fixture.key(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(fixture.pages().page(), fixture.pageCount() - 1);
    QVERIFY(preview.document().textOf(fixture.pageCount() - 1).contains(u"共 360 人"_s));
    // A new one shows the new state.
    QVERIFY(fixture.open().document().textOf(0).contains(u"新課"_s));
}

int main(int argc, char** argv) {
    return runTests<PreviewTest>(argc, argv);
}
#include "PreviewTest.moc"
