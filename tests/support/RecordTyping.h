#pragma once

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>

#include <algorithm>

namespace pontrel::test {

/// Types into an entry box in place of what it holds: by keys, or where a character has none, through the
/// input method.
inline void typeInto(QLineEdit& box, const QString& text) {
    box.selectAll();
    box.del();
    if (std::all_of(text.cbegin(), text.cend(), [](QChar each) { return each.unicode() < 0x80; })) {
        QTest::keyClicks(&box, text);
        return;
    }
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&box, &event);
}

} // namespace pontrel::test
