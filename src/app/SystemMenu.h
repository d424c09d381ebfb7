#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace pontrel {

/// The entries of a top-level window's menu, in the system's words, as far as the program rules over them.
/// The frame follows: without the entry Close it has no close button.
class SystemMenu {
  public:
    enum Command : int {
        Size = 0xF000,
        Move = 0xF010,
        Minimize = 0xF020,
        Maximize = 0xF030,
        Close = 0xF060,
        Restore = 0xF120,
    };
    struct Entry {
        int command;
        QString text;
    };

    explicit SystemMenu(QWidget& window);

    [[nodiscard]] const QList<Entry>& entries() const { return entries_; }
    [[nodiscard]] bool has(int command) const;
    [[nodiscard]] QString text(int command) const; ///< Empty where there is no such entry.

    void remove(int command);                      ///< Nothing where there is no such entry.
    void append(int command, const QString& text); ///< At the end; nothing where the entry is there.

  private:
    [[nodiscard]] qsizetype indexOf(int command) const;

    QWidget& window_;
    QList<Entry> entries_;
};

/// Puts a button of a top-level window's frame there or takes it off, without hiding the window.
void setFrameButton(QWidget& window, Qt::WindowType button, bool on);

} // namespace pontrel
