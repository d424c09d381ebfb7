#include "app/InputGateForm.h"

#include <QMouseEvent>
#include <QStyleHints>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A mouse, as a display server tells of it: by its own clock, every click to the window that lies under it
/// then.
class Mouse {
  public:
    explicit Mouse(QPoint place) : place_(place) {}

    /// The middle of a widget, on the screen.
    [[nodiscard]] static QPoint middleOf(const QWidget& widget) {
        return widget.mapToGlobal(widget.rect().center());
    }
    void moveBy(QPoint way) { place_ += way; }
    /// Presses and releases that long after the press before, in milliseconds.
    void click(QWidget& window, quint32 after, Qt::MouseButton button = Qt::LeftButton) {
        now_ += after;
        send(window, QEvent::MouseButtonPress, button);
        send(window, QEvent::MouseButtonRelease, button);
    }
    static constexpr quint32 LongAfter = 5000;

  private:
    void send(QWidget& window, QEvent::Type type, Qt::MouseButton button) {
        const QPointF within = window.mapFromGlobal(place_);
        const bool down = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, within, within, place_, button, down ? button : Qt::NoButton, Qt::NoModifier);
        event.setTimestamp(now_);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(window.windowHandle(), &event);
    }

    QPoint place_;
    quint32 now_ = 0xffffffff - 2 * LongAfter; // the clock goes round
};

} // namespace

/// Which of two quick clicks at one place count, where the windows that lie there change in between.
class InputGateMouseTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aDoubleClickEndsInTheWindowThatItBeganIn_data();
    void aDoubleClickEndsInTheWindowThatItBeganIn();
    void theReleaseOfASecondHalfIsDropped();
    void aPressThatQtRepeatsCounts();
};

void InputGateMouseTest::aDoubleClickEndsInTheWindowThatItBeganIn_data() {
    QTest::addColumn<bool>("sameWindow");
    QTest::addColumn<quint32>("after");
    QTest::addColumn<QPoint>("moved");
    QTest::addColumn<Qt::MouseButton>("first");
    QTest::addColumn<int>("clicks");
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const auto interval = static_cast<quint32>(hints.mouseDoubleClickInterval());
    const int distance = hints.mouseDoubleClickDistance();
    const auto left = Qt::LeftButton;
    QTest::newRow("at once") << false << quint32(1) << QPoint() << left << 0;
    QTest::newRow("as a hand does") << false << quint32(150) << QPoint() << left << 0;
    QTest::newRow("slowly") << false << interval - 1 << QPoint() << left << 0;
    QTest::newRow("too slowly") << false << interval << QPoint() << left << 1;
    QTest::newRow("trembling") << false << quint32(150) << QPoint(-distance, distance) << left << 0;
    QTest::newRow("beside it") << false << quint32(150) << QPoint(distance + 1, 0) << left << 1;
    QTest::newRow("below it") << false << quint32(150) << QPoint(0, distance + 1) << left << 1;
    QTest::newRow("another button") << false << quint32(150) << QPoint() << Qt::RightButton << 1;
    QTest::newRow("one window") << true << quint32(150) << QPoint() << left << 1;
}

void InputGateMouseTest::aDoubleClickEndsInTheWindowThatItBeganIn() {
    QFETCH(const bool, sameWindow);
    QFETCH(const quint32, after);
    QFETCH(const QPoint, moved);
    QFETCH(const Qt::MouseButton, first);
    QFETCH(const int, clicks);
    GateForm form;
    form.tells = false;
    QWidget above;
    above.show();
    QVERIFY(QTest::qWaitForWindowExposed(&above, PatienceMs));
    Mouse mouse(Mouse::middleOf(form.button));
    mouse.click(sameWindow ? form : above, Mouse::LongAfter, first);
    above.close();
    const int before = form.clicks;
    mouse.moveBy(moved);
    mouse.click(form, after);
    QCOMPARE(form.clicks - before, clicks);
    // Whatever became of that one, the next counts.
    mouse.click(form, Mouse::LongAfter);
    QCOMPARE(form.clicks - before, clicks + 1);
}

void InputGateMouseTest::theReleaseOfASecondHalfIsDropped() {
    GateForm form;
    form.tells = false;
    QWidget above;
    above.show();
    QVERIFY(QTest::qWaitForWindowExposed(&above, PatienceMs));
    QWidget& leave = control(form.bar, u"StbTool(8)"_s);
    Mouse mouse(Mouse::middleOf(leave));
    mouse.click(above, Mouse::LongAfter);
    above.close();
    // Three clicks of a hand that does not stop.
    mouse.click(form, 120);
    mouse.click(form, 120);
    QCOMPARE(form.leaves, 0);
    mouse.click(form, Mouse::LongAfter);
    QCOMPARE(form.leaves, 1);
}

void InputGateMouseTest::aPressThatQtRepeatsCounts() {
    GateForm form;
    form.tells = false;
    QWidget above;
    above.show();
    QVERIFY(QTest::qWaitForWindowExposed(&above, PatienceMs));
    Mouse mouse(Mouse::middleOf(form.button));
    // One that closes a popup by lying outside it, and then goes to what it lies on.
    mouse.click(above, Mouse::LongAfter);
    above.close();
    mouse.click(form, 0);
    QCOMPARE(form.clicks, 1);
    mouse.click(form, 150);
    QCOMPARE(form.clicks, 2);
}

int main(int argc, char** argv) {
    return runTests<InputGateMouseTest>(argc, argv);
}

#include "InputGateMouseTest.moc"
