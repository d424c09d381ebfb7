#include "app/SystemMenu.h"

#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

SystemMenu::SystemMenu(QWidget& window)
    : window_(window)
    , entries_{{Restore, u"還原(&R)"_s},    {Move, u"移動(&M)"_s},       {Size, u"大小(&S)"_s},
               {Minimize, u"最小化(&N)"_s}, {Maximize, u"最大化(&X)"_s}, {Close, u"關閉(&C)"_s}} {}

bool SystemMenu::has(int command) const {
    return indexOf(command) >= 0;
}

QString SystemMenu::text(int command) const {
    const qsizetype index = indexOf(command);
    return index < 0 ? QString() : entries_.at(index).text;
}

void SystemMenu::remove(int command) {
    const qsizetype index = indexOf(command);
    if (index < 0)
        return;
    entries_.removeAt(index);
    if (command == Close)
        setFrameButton(window_, Qt::WindowCloseButtonHint, false);
}

void SystemMenu::append(int command, const QString& text) {
    if (has(command))
        return;
    entries_.append({command, text});
    if (command == Close)
        setFrameButton(window_, Qt::WindowCloseButtonHint, true);
}

qsizetype SystemMenu::indexOf(int command) const {
    const auto found = std::find_if(entries_.cbegin(), entries_.cend(),
                                    [command](const Entry& entry) { return entry.command == command; });
    return found == entries_.cend() ? -1 : found - entries_.cbegin();
}

void setFrameButton(QWidget& window, Qt::WindowType button, bool on) {
    // The widget's own setWindowFlag would hide the window; its copy of the flags is only kept in step here.
    Qt::WindowFlags flags = window.windowFlags();
    flags.setFlag(button, on);
    window.overrideWindowFlags(flags);
    if (QWindow* frame = window.windowHandle())
        frame->setFlag(button, on);
}

} // namespace pontrel
