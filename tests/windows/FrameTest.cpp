#include "app/ModuleProbes.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QPushButton>
#include <QScreen>
#include <QWindow>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// What the display server tells of a property of the main window.
QString windowProperty(const QString& name) {
    QProcess xprop;
    xprop.start(u"xprop"_s, {u"-id"_s, QString::number(gMDI->winId()), name});
    if (!xprop.waitForFinished(PatienceMs))
        qFatal("xprop does not answer");
    return QString::fromUtf8(xprop.readAllStandardOutput()).trimmed();
}

/// Whether the window manager lets a user maximise the main window. Ends the test where it tells of nothing.
bool offersMaximise() {
    const QString actions = windowProperty(u"_NET_WM_ALLOWED_ACTIONS"_s);
    if (!actions.contains(u"_NET_WM_ACTION_MOVE"_s))
        qFatal("%s", qUtf8Printable(actions));
    return actions.contains(u"_NET_WM_ACTION_MAXIMIZE"_s);
}

/// Whether the main window asks for a close button: bit 5 of the functions, the second of its hints.
bool asksForClose() {
    const QStringList hints = windowProperty(u"_MOTIF_WM_HINTS"_s).section(u'=', 1).split(u", "_s);
    return hints.size() > 1 && (hints.at(1).toInt(nullptr, 16) & 0x20) != 0;
}

/// Counts how often a widget is hidden.
class HideCounter : public QObject {
  public:
    explicit HideCounter(QWidget& widget) { widget.installEventFilter(this); }
    int hides = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        hides += event->type() == QEvent::Hide ? 1 : 0;
        return false;
    }
};

} // namespace

class FrameTest : public QObject {
    Q_OBJECT

  private:
    ModuleProbes probes_;

  private Q_SLOTS:
    void theMainWindowStandsAboveTheMiddleOfTheScreen();
    void theFrameOffersNoMaximise();
    void theFrameAsksForCloseInIdleOnly();
    void theWindowManagerCannotMaximise();
    void aMessageGivesTheKeyboardBack();
};

void FrameTest::theMainWindowStandsAboveTheMiddleOfTheScreen() {
    const TestStore store;
    Shell shell(store);
    const QSize screen = QGuiApplication::primaryScreen()->size();
    QCOMPARE(shell.window().size(), QSize(640, 450));
    QTRY_COMPARE_WITH_TIMEOUT(shell.window().pos(),
                              QPoint((screen.width() - 640) / 2, (screen.height() - 450) / 2 - 14),
                              PatienceMs);
}

void FrameTest::theFrameOffersNoMaximise() {
    const TestStore store;
    const Shell shell(store);
    probes_.registerAll();
    QVERIFY(!offersMaximise());
    OpenToolWindow(1);
    QTRY_VERIFY_WITH_TIMEOUT(!asksForClose(), PatienceMs);
    QVERIFY(!offersMaximise());
    moduleWindow(1)->unload();
    QTRY_VERIFY_WITH_TIMEOUT(asksForClose(), PatienceMs);
    QVERIFY(!offersMaximise());
}

void FrameTest::theFrameAsksForCloseInIdleOnly() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    const HideCounter counter(shell.window());
    for (int round = 0; round < 3; ++round) {
        QTRY_VERIFY_WITH_TIMEOUT(asksForClose(), PatienceMs);
        click(button(2));
        QTRY_VERIFY_WITH_TIMEOUT(!asksForClose(), PatienceMs);
        click(control(*moduleWindow(2), u"Leave"_s));
    }
    QTRY_VERIFY_WITH_TIMEOUT(asksForClose(), PatienceMs);
    QCOMPARE(counter.hides, 0);
}

void FrameTest::theWindowManagerCannotMaximise() {
    const TestStore store;
    Shell shell(store);
    shell.window().windowHandle()->showMaximized();
    QTRY_VERIFY_WITH_TIMEOUT(!windowProperty(u"_NET_WM_STATE"_s).contains(u"MAXIMIZED"_s), PatienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(!shell.window().isMaximized(), PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(shell.window().size(), QSize(640, 450), PatienceMs);
}

void FrameTest::aMessageGivesTheKeyboardBack() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    OpenToolWindow(1);
    auto& leave = control(*moduleWindow(1), u"Leave"_s);
    QTRY_VERIFY_WITH_TIMEOUT(leave.hasFocus(), PatienceMs);
    PromptAnswers answers;
    answers.expectMsgBox();
    MsgBox(u"訊息"_s);
    QCOMPARE(answers.trouble(), QString());
    QTRY_VERIFY_WITH_TIMEOUT(shell.window().isActiveWindow(), PatienceMs);
    QVERIFY(leave.hasFocus());
}

int main(int argc, char** argv) {
    return runTests<FrameTest>(argc, argv);
}

#include "FrameTest.moc"
