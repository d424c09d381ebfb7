#include "app/Zoom.h"

#include "app/Application.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Start.h"
#include "support/AppSupport.h"
#include "support/OwnScreen.h"
#include "support/Patience.h"
#include "support/TestStore.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString StartedOption = u"--start-with"_s;

/// The notice in a window; empty where there is none.
QString noticeIn(const QWidget& window) {
    const auto* notice = window.findChild<QLabel*>(u"Notice"_s, Qt::FindDirectChildrenOnly);
    return notice && notice->isVisible() ? notice->text() : QString();
}

void press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    QTest::keyClick(window.windowHandle(), key, modifiers);
}

/// As the program's entry does with that file of habits; tells what came of it.
int startWith(const QString& habits, char** arguments) {
    Habits::ofUser().keepIn(habits);
    const auto application = zoom::startApplication(arguments);
    MDI window;
    placeMainWindow(window);
    writeLine(u"zoom %1"_s.arg(zoom::inForce()));
    writeLine(u"ratio %1"_s.arg(window.devicePixelRatioF()));
    writeLine(u"picture %1 x %2"_s.arg(window.grab().width()).arg(window.grab().height()));
    writeLine(u"room %1 x %2"_s.arg(zoom::screenRoom().width()).arg(zoom::screenRoom().height()));
    writeLine(u"place %1, %2"_s.arg(window.x()).arg(window.y()));
    writeLine(u"for others %1"_s.arg(qEnvironmentVariable("QT_SCALE_FACTOR", u"none"_s)));
    writeLine(u"style %1"_s.arg(QApplication::font().family()));
    writeLine(u"habit %1"_s.arg(Habits::ofUser().zoom()));
    return 0;
}

} // namespace

class ZoomTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { Habits::ofUser().leave(); }

    void onlyTheStepsAreZooms();
    void theLargestStepHasRoomOnTheScreen_data();
    void theLargestStepHasRoomOnTheScreen();
    void keysGoThroughTheSteps();
    void keysStopAtWhatFitsOnTheScreen();
    void everyKeyOfTheKindCounts_data();
    void everyKeyOfTheKindCounts();
    void keysCountWhereverTheFocusIs();
    void keysCountInDialogsOverTheMainWindow();
    void keysCountInTheLoginThatStandsAlone();
    void windowsBesideTheMainWindowKeepTheirKeys();
    void theNoticeTakesNothing();
    void theNoticeGoes();
    void theProgramStartsWithItsZoom_data();
    void theProgramStartsWithItsZoom();

  private:
    QTemporaryDir folder_;
};

void ZoomTest::onlyTheStepsAreZooms() {
    for (const int step : {100, 125, 150, 175, 200, 250, 300})
        QCOMPARE(zoom::stepOf(step), step);
    for (const int none : {-100, 0, 99, 101, 137, 225, 301, 30000})
        QCOMPARE(zoom::stepOf(none), 100);
}

void ZoomTest::theLargestStepHasRoomOnTheScreen_data() {
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<int>("fitting");
    QTest::addColumn<int>("proposed");
    QTest::addRow("smaller than the window") << QSize(600, 400) << 100 << 100;
    QTest::addRow("800 x 600") << QSize(800, 600) << 125 << 100;
    QTest::addRow("a point too narrow") << QSize(799, 600) << 100 << 100;
    QTest::addRow("a point too low for the frame") << QSize(1000, 594) << 100 << 100;
    QTest::addRow("just high enough") << QSize(1000, 595) << 125 << 100;
    QTest::addRow("1024 x 768") << QSize(1024, 768) << 150 << 125;
    QTest::addRow("1366 x 768") << QSize(1366, 768) << 150 << 125;
    QTest::addRow("1920 x 1080") << QSize(1920, 1080) << 200 << 200;
    QTest::addRow("1920 x 1080 less a panel") << QSize(1920, 1040) << 200 << 200;
    QTest::addRow("2560 x 1440") << QSize(2560, 1440) << 300 << 250;
    QTest::addRow("3840 x 2160") << QSize(3840, 2160) << 300 << 300;
    QTest::addRow("upright") << QSize(1080, 1920) << 150 << 150;
    // A window of 800 x 563 on areas of 751000 and 750000 points.
    QTest::addRow("just 60 percent") << QSize(1000, 751) << 150 << 125;
    QTest::addRow("a little more than 60 percent") << QSize(1000, 750) << 150 << 100;
}

void ZoomTest::theLargestStepHasRoomOnTheScreen() {
    QFETCH(const QSize, screen);
    QTEST(zoom::largestFitting(screen), "fitting");
    QTEST(zoom::proposed(screen), "proposed");
}

void ZoomTest::keysGoThroughTheSteps() {
    const TestStore store;
    Shell shell(store);
    MDI& window = shell.window();
    press(window, Qt::Key_Plus);
    QCOMPARE(Habits::ofUser().zoom(), 125);
    QCOMPARE(noticeIn(window), u"顯示比例 125%，下次啟動時生效"_s);
    press(window, Qt::Key_Minus);
    QCOMPARE(Habits::ofUser().zoom(), 100);
    QCOMPARE(noticeIn(window), u"顯示比例 100%"_s);
    press(window, Qt::Key_Minus);
    QCOMPARE(Habits::ofUser().zoom(), 100);
    QCOMPARE(noticeIn(window), u"顯示比例 100%（最小）"_s);
    press(window, Qt::Key_Plus);
    press(window, Qt::Key_0);
    QCOMPARE(Habits::ofUser().zoom(), 100);
    QCOMPARE(noticeIn(window), u"顯示比例 100%"_s);
    QCOMPARE(window.size(), QSize(640, 450));
    QCOMPARE(window.findChildren<QLabel*>(u"Notice"_s).size(), 1);
}

void ZoomTest::keysStopAtWhatFitsOnTheScreen() {
    const int most = zoom::largestFitting(zoom::screenRoom());
    const TestStore store;
    Shell shell(store);
    MDI& window = shell.window();
    Habits::ofUser().setZoom(300); // of another screen
    if (most < 300) {
        press(window, Qt::Key_Plus);
        QCOMPARE(noticeIn(window),
                 u"顯示比例 %1%（最大）"_s.arg(most) + (most > 100 ? u"，下次啟動時生效"_s : QString()));
        QCOMPARE(Habits::ofUser().zoom(), most);
    }
    Habits::ofUser().setZoom(137); // damaged: the full size
    press(window, Qt::Key_Minus);
    QCOMPARE(Habits::ofUser().zoom(), 100);
}

void ZoomTest::everyKeyOfTheKindCounts_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::addColumn<int>("zoom");
    const auto row = [](const char* title, Qt::Key key, Qt::KeyboardModifiers held, int zoom) {
        QTest::addRow("%s", title) << key << held << zoom;
    };
    constexpr auto Ctrl = Qt::ControlModifier;
    row("plus", Qt::Key_Plus, Ctrl, 125);
    row("plus with Shift", Qt::Key_Plus, Ctrl | Qt::ShiftModifier, 125);
    row("the key of the plus", Qt::Key_Equal, Ctrl, 125);
    row("plus of the keypad", Qt::Key_Plus, Ctrl | Qt::KeypadModifier, 125);
    row("plus alone", Qt::Key_Plus, Qt::NoModifier, 100);
    row("plus with Alt", Qt::Key_Plus, Ctrl | Qt::AltModifier, 100);
    row("another key", Qt::Key_1, Ctrl, 100);
}

void ZoomTest::everyKeyOfTheKindCounts() {
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, held);
    const TestStore store;
    Shell shell(store);
    press(shell.window(), key, held);
    QTEST(Habits::ofUser().zoom(), "zoom");
    QCOMPARE(noticeIn(shell.window()).isEmpty(), Habits::ofUser().zoom() == 100);
}

void ZoomTest::keysCountWhereverTheFocusIs() {
    const TestStore store;
    Shell shell(store);
    QLineEdit box(&shell.window());
    QComboBox list(&shell.window());
    list.addItems({u"一"_s, u"二"_s});
    box.show();
    list.show();
    box.setFocus();
    press(shell.window(), Qt::Key_Plus);
    QCOMPARE(Habits::ofUser().zoom(), 125);
    QCOMPARE(box.text(), QString());
    // Down in a list, the line stands in the window.
    list.showPopup();
    QTRY_VERIFY(QApplication::activePopupWidget());
    press(*QApplication::activePopupWidget(), Qt::Key_0);
    QCOMPARE(Habits::ofUser().zoom(), 100);
    QCOMPARE(noticeIn(shell.window()), u"顯示比例 100%"_s);
    list.hidePopup();
}

void ZoomTest::keysCountInDialogsOverTheMainWindow() {
    const TestStore store;
    Shell shell(store);
    QDialog dialog(&shell.window());
    dialog.resize(500, 100);
    dialog.show();
    QTRY_VERIFY(dialog.windowHandle() && dialog.isVisible());
    press(dialog, Qt::Key_Plus);
    QCOMPARE(Habits::ofUser().zoom(), 125);
    QCOMPARE(noticeIn(dialog), u"顯示比例 125%，下次啟動時生效"_s);
    QCOMPARE(noticeIn(shell.window()), QString());
}

void ZoomTest::keysCountInTheLoginThatStandsAlone() {
    QDialog login;
    login.resize(100, 150);
    login.show();
    press(login, Qt::Key_Plus);
    QCOMPARE(Habits::ofUser().zoom(), 125);
    // Too narrow for the line, which takes several then.
    const auto& notice = control<QLabel>(login, u"Notice"_s);
    QVERIFY(login.rect().contains(notice.geometry()));
    QVERIFY(notice.height() > 2 * notice.fontMetrics().height());
}

void ZoomTest::windowsBesideTheMainWindowKeepTheirKeys() {
    const TestStore store;
    Shell shell(store);
    QWidget beside;
    beside.show();
    QDialog over(&beside);
    over.show();
    QTRY_VERIFY(beside.windowHandle() && over.windowHandle());
    for (QWidget* window : {&beside, static_cast<QWidget*>(&over)}) {
        press(*window, Qt::Key_Plus);
        QCOMPARE(Habits::ofUser().zoom(), 100);
        QCOMPARE(noticeIn(*window), QString());
    }
}

void ZoomTest::theNoticeTakesNothing() {
    const TestStore store;
    Shell shell(store);
    MDI& window = shell.window();
    const QWidget* focus = window.focusWidget();
    press(window, Qt::Key_Plus);
    const auto& notice = control<QLabel>(window, u"Notice"_s);
    QCOMPARE(window.focusWidget(), focus);
    QCOMPARE(notice.focusPolicy(), Qt::NoFocus);
    QVERIFY(window.rect().contains(notice.geometry()));
    QCOMPARE(notice.accessibleName(), notice.text());
    QVERIFY(notice.testAttribute(Qt::WA_TransparentForMouseEvents));
    QVERIFY(notice.width() >= notice.fontMetrics().horizontalAdvance(notice.text()));
}

void ZoomTest::theNoticeGoes() {
    const TestStore store;
    Shell shell(store);
    press(shell.window(), Qt::Key_Plus);
    QVERIFY(!noticeIn(shell.window()).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(noticeIn(shell.window()).isEmpty(), PatienceMs);
}

void ZoomTest::theProgramStartsWithItsZoom_data() {
    QTest::addColumn<QString>("habit");
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<QString>("factor"); ///< Of the desktop; none where empty.
    QTest::addColumn<QStringList>("told");
    const auto row = [](const char* title, const QString& habit, QSize screen, const QString& factor,
                        const QStringList& told) {
        QTest::addRow("%s", title) << habit << screen << factor << told;
    };
    constexpr QSize Large(3840, 2160);
    constexpr QSize Small(1366, 768);
    row("no habit", {}, Large, {},
        {u"zoom 100"_s, u"ratio 1"_s, u"picture 640 x 450"_s, u"room 3840 x 2160"_s, u"place 1600, 841"_s,
         u"for others none"_s});
    row("125 percent", u"125"_s, Large, {},
        {u"zoom 125"_s, u"ratio 1.25"_s, u"picture 800 x 563"_s, u"room 3840 x 2160"_s,
         u"for others none"_s});
    row("300 percent", u"300"_s, Large, {},
        {u"zoom 300"_s, u"ratio 3"_s, u"picture 1920 x 1350"_s, u"room 3840 x 2160"_s, u"place 320, 121"_s,
         u"for others none"_s});
    row("larger than the screen", u"300"_s, Small, {},
        {u"zoom 150"_s, u"ratio 1.5"_s, u"picture 960 x 675"_s, u"room 1367 x 768"_s, u"for others none"_s,
         u"habit 300"_s});
    row("on a desktop with a factor", u"150"_s, Large, u"2"_s,
        {u"zoom 150"_s, u"ratio 3"_s, u"picture 1920 x 1350"_s, u"room 1920 x 1080"_s, u"for others 2"_s});
    row("larger than the screen with a factor", u"250"_s, Large, u"2"_s,
        {u"zoom 200"_s, u"ratio 4"_s, u"picture 2560 x 1800"_s, u"room 1920 x 1080"_s, u"for others 2"_s});
    row("a factor that is none", u"200"_s, Large, u"much"_s,
        {u"zoom 200"_s, u"ratio 2"_s, u"picture 1280 x 900"_s, u"for others much"_s});
    row("a damaged habit", u"137"_s, Large, {}, {u"zoom 100"_s, u"ratio 1"_s, u"habit 137"_s});
}

void ZoomTest::theProgramStartsWithItsZoom() {
    QFETCH(const QString, habit);
    QFETCH(const QSize, screen);
    QFETCH(const QString, factor);
    QFETCH(const QStringList, told);
    const QString habits = folder_.filePath(u"habits.ini"_s);
    QFile::remove(habits);
    if (!habit.isEmpty()) {
        Habits kept;
        kept.keepIn(habits);
        kept.setValue(u"zoom"_s, habit);
    }
    QProcess process;
    process.setProcessEnvironment(environmentOfScreen(folder_.path(), screen, factor));
    process.start(QCoreApplication::applicationFilePath(), {StartedOption, habits});
    QVERIFY(process.waitForFinished(PatienceMs));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n');
    QVERIFY2(lines.contains(u"style Noto Sans CJK TC"_s), qPrintable(lines.join(u'\n')));
    for (const QString& line : told)
        QVERIFY2(lines.contains(line), qPrintable(line + u" is not among\n"_s + lines.join(u'\n')));
}

int main(int argc, char** argv) {
    if (argc == 3 && QString::fromLocal8Bit(argv[1]) == StartedOption)
        return startWith(QString::fromLocal8Bit(argv[2]), argv);
    return runTests<ZoomTest>(argc, argv);
}

#include "ZoomTest.moc"
