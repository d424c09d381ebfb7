#pragma once

#include "rules/ActionHost.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

class QDialog;

namespace pontrel {

/// The picture of a message box.
enum class MsgIcon { None, Information, Question, Exclamation, Critical };
/// Enter presses Yes, or with YesNoDefaultNo No: for a question about what cannot be undone.
enum class MsgButtons { Ok, YesNo, YesNoDefaultNo };
enum class MsgAnswer { Ok, Yes, No };

/// The one routine that shows a message box, modal over the active window, its object name "MsgBox". Closing
/// it by Escape or its close box answers Ok, or No where there is a No.
MsgAnswer MsgBox(const QString& text, const QString& title = ProgramTitle, MsgIcon icon = MsgIcon::None,
                 MsgButtons buttons = MsgButtons::Ok);

/// The one file-open dialog, object name "CommonDialog1": an existing file chosen by a filter such as
/// "Text (*.txt)"; nothing on cancel. It opens in the folder or, where that is missing, in the nearest one
/// above it that is there.
[[nodiscard]] std::optional<QString> chooseFile(const QString& folder, const QString& filter);

/// What a file is saved as: its filter, such as "PDF (*.pdf)", and the ending that a name without one gets.
struct SaveKind {
    QString filter;
    QString ending;
};

/// The one file-save dialog, object name "CommonDialog1" as well: a path for a file, nothing on cancel. It
/// opens in the folder of the proposal, or the nearest one above it that is there, with its name. Where there
/// is such a file already, it asks whether to replace it.
[[nodiscard]] std::optional<QString> chooseSaveFile(const QString& proposal, const SaveKind& kind);

/// The window over which a prompt opens: another prompt, or the one that PromptsOver names, or the active
/// one, or where another program is active, the one that would be; null where there is none.
[[nodiscard]] QWidget* promptParent();

/// While it stands, prompts open over that window, and give the keyboard back to it. For one that is not the
/// main window: which of the two is active between two prompts is up to the desktop.
class PromptsOver {
  public:
    explicit PromptsOver(QWidget& window);
    ~PromptsOver();
    PromptsOver(const PromptsOver&) = delete;
    PromptsOver& operator=(const PromptsOver&) = delete;

  private:
    QPointer<QWidget> before_;
};

/// The one input box, object name "InputBox"; nothing on cancel.
[[nodiscard]] std::optional<QString> inputBox(const QString& prompt, const QString& title);

/// Shows a dialog modally and gives the keyboard back to the window beneath it. Returns the dialog's result.
/// What the user does between the dialog's end and the return of the event routine that called is dropped.
[[nodiscard]] int runModal(QDialog& dialog);

/// The pointer over all windows of the program: one settable state, not a stack.
void setHourglass(bool on);
[[nodiscard]] bool hourglass();

/// The hourglass while it stands; behind it the pointer is as it was before.
class Hourglass {
  public:
    Hourglass() : before_(hourglass()) { setHourglass(true); }
    ~Hourglass() { setHourglass(before_); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    bool before_;
};

/// Sounds the bell.
void beep();

/// Replaces the bell, for tests; an empty function goes back to the machine's.
void setBell(std::function<void()> bell);

} // namespace pontrel
