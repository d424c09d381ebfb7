#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

namespace pontrel::tour {

/// Why a step did not do what it should, as a sentence.
struct StepFailed {
    QString reason;
};

/// A place on the screen: a point of a widget.
struct Spot {
    QWidget* widget = nullptr;
    QPoint point;
};

/// The middle of a widget.
[[nodiscard]] Spot middleOf(QWidget& widget);

/// Drives the program's windows as a person does, from a thread of its own while the window thread stands in
/// whatever dialog is open: looks at the window in front, points and types into it, and waits until the
/// screen shows what comes next. Every wait looks again and again, for at most half a minute, and throws
/// StepFailed where it was in vain.
class Clerk {
  public:
    /// The folder must exist; pictures of the same name are replaced.
    explicit Clerk(QString pictureFolder) : pictureFolder_(std::move(pictureFolder)) {}

    /// Waits until the look at the window in front gives an answer, and returns it. The look runs on the
    /// window thread and must not throw. A message box that comes while something else is waited for is a
    /// failure at once.
    template<typename Answer>
    Answer see(const QString& what, const std::function<std::optional<Answer>(QWidget& front)>& look);
    /// Waits until the window in front answers yes.
    void seeThat(const QString& what, const std::function<bool(QWidget& front)>& look);

    /// Waits until the window of that object name is in front.
    void awaitWindow(const QString& name);
    /// Waits for a message box, which must have that title and text.
    void awaitMessage(const QString& title, const QString& text);
    /// Presses OK in the message box in front and waits until it has gone.
    void acknowledge();

    /// Clicks the control of that object name, once it is enabled and nothing covers it.
    void click(const QString& control);
    void click(const QString& what, const std::function<std::optional<Spot>(QWidget& front)>& find);
    /// Clicks there until the window in front answers yes, once a second: for a list that may still move its
    /// entries under the pointer.
    void clickUntil(const QString& what, const std::function<std::optional<Spot>(QWidget& front)>& find,
                    const std::function<bool(const QWidget& front)>& done);
    /// Types into the control that has the focus.
    void type(const QString& text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1);
    /// Waits until the window in front has the keyboard, which some keys ask for.
    void awaitKeyboard();
    /// A key that may stand for an action of the window in front, once that has the keyboard.
    void pressShortcut(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Closes the window in front by its frame's close button, and looks no more: the program may have ended.
    void closeWindow();

    /// Leaves a picture of the window in front, "<name>.png".
    void takePicture(const QString& name);
    /// Leaves a picture of the main window the first time that the bar stands at the value or beyond. To be
    /// called before what moves the bar; says afterwards whether it came to that.
    void watchProgress(const QString& name, int value);
    [[nodiscard]] bool progressSeen() const { return progressSeen_; }
    /// Leaves a picture of whatever is on the screen, as far as there is anything.
    void takePictureOfFailure(const QString& name);

    /// Ends the process with status 1, its connections closed, whatever dialogs are open.
    static void endProgram();

  private:
    /// One look: whether it has answered. Otherwise what stands in front instead.
    struct Glance {
        bool answered = false;
        bool unexpectedMessage = false;
        QString inFront;
    };
    [[nodiscard]] static Glance glance(const std::function<bool(QWidget& front)>& look);
    void keepLooking(const QString& what, const std::function<bool(QWidget& front)>& look) const;
    static void comeToRest();
    [[nodiscard]] bool save(QWidget& window, const QString& name) const;

    QString pictureFolder_;
    bool progressSeen_ = false;
};

template<typename Answer>
Answer Clerk::see(const QString& what, const std::function<std::optional<Answer>(QWidget& front)>& look) {
    std::optional<Answer> answer;
    keepLooking(what, [&](QWidget& front) {
        answer = look(front);
        return answer.has_value();
    });
    return *answer;
}

} // namespace pontrel::tour
