#pragma once

#include <QApplication>
#include <QInputMethodEvent>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <cstdlib>

namespace pontrel::test {

/// A clerk without a mouse: every key goes to what has the focus.
class Clerk {
  public:
    explicit Clerk(QWidget& window) : window_(window) {}

    void key(Qt::Key key, int times = 1) {
        for (int press = 0; press < times; ++press)
            QTest::keyClick(window_.windowHandle(), key);
    }
    [[nodiscard]] QString focused() const {
        const QWidget* focus = window_.focusWidget();
        return focus ? focus->objectName() : QString();
    }
    /// Tab until the control is reached; says where the way ended where it is not.
    [[nodiscard]] bool reach(const QString& name) {
        return reach(name, [this, &name] { return focused() == name; });
    }
    /// The headers of tabs have no name of their own.
    [[nodiscard]] bool reach(const QTabWidget& tabs) {
        return reach(tabs.objectName(), [this, &tabs] { return window_.focusWidget() == tabs.tabBar(); });
    }
    /// Goes to a tab by the arrow keys on its headers.
    [[nodiscard]] bool turnTo(const QTabWidget& tabs, int index) {
        const int way = index - tabs.currentIndex();
        if (!reach(tabs))
            return false;
        key(way > 0 ? Qt::Key_Right : Qt::Key_Left, std::abs(way));
        return tabs.currentIndex() == index;
    }
    /// Reaches a button or check box and presses it.
    [[nodiscard]] bool press(const QString& name) {
        const bool reached = reach(name);
        if (reached)
            key(Qt::Key_Space);
        return reached;
    }
    /// Letters and digits by key, Han text as an input method hands it over.
    void write(const QString& text) {
        for (const QChar each : text) {
            if (each.unicode() < 0x80) {
                QTest::keyClick(window_.windowHandle(), each.toLatin1());
                continue;
            }
            QInputMethodEvent event;
            event.setCommitString(each);
            QApplication::sendEvent(window_.focusWidget(), &event);
        }
    }
    [[nodiscard]] bool fill(const QString& name, const QString& text) {
        const bool reached = reach(name);
        if (reached)
            write(text);
        return reached;
    }

  private:
    static constexpr int LongestWay = 80; // In presses of Tab, more than a window has controls.

    template<typename IsThere>
    [[nodiscard]] bool reach(const QString& name, const IsThere& isThere) {
        for (int press = 0; press < LongestWay && !isThere(); ++press)
            key(Qt::Key_Tab);
        if (isThere())
            return true;
        qWarning("Tab does not lead to %s but to %s", qUtf8Printable(name), qUtf8Printable(focused()));
        return false;
    }

    QWidget& window_;
};

} // namespace pontrel::test
