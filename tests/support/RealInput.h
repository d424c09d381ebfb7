#pragma once

#include <QPoint>
#include <QString>

namespace pontrel::test {

/// The keyboard and the mouse of the display on which the test runs. What they do comes to the windows of
/// every program through the display server, as a clerk's does, held keys with their repeats. Needs an X
/// server; the test ends where it cannot be moved.
class RealInput {
  public:
    RealInput();

    void press(Qt::Key key);
    void release(Qt::Key key);
    /// Presses and releases, slowly enough for a hand.
    void tap(Qt::Key key);
    /// Clicks with the left or the right button at a place of the screen.
    void clickAt(QPoint place, Qt::MouseButton button = Qt::LeftButton);

    /// The number by which the server knows the key.
    [[nodiscard]] unsigned int code(Qt::Key key) const;

  private:
    void move(Qt::Key key, bool down);
};

} // namespace pontrel::test
