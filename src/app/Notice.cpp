#include "app/Notice.h"

#include <QAccessible>
#include <QLabel>
#include <QTimer>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int ShownMs = 5000;
constexpr int Margin = 8;
constexpr int Distance = 30; ///< From the window's edge: a status bar stays in sight.

/// The line, which goes with its window or when its time is over.
class Notice : public QLabel {
  public:
    explicit Notice(QWidget& window) : QLabel(&window) {
        setObjectName(u"Notice"_s);
        setTextFormat(Qt::PlainText);
        setAlignment(Qt::AlignCenter);
        setMargin(Margin);
        setFrameStyle(QFrame::Box | QFrame::Plain);
        setAutoFillBackground(true);
        setBackgroundRole(QPalette::ToolTipBase);
        setForegroundRole(QPalette::ToolTipText);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        time_.setSingleShot(true);
        connect(&time_, &QTimer::timeout, this, &QObject::deleteLater);
    }

    void tell(const QString& text) {
        setText(text);
        setAccessibleName(text);
        const QWidget& window = *parentWidget();
        setWordWrap(sizeHint().width() > window.width());
        const int width = std::min(sizeHint().width(), window.width());
        const int height = wordWrap() ? heightForWidth(width) : sizeHint().height();
        setGeometry((window.width() - width) / 2, std::max(0, window.height() - Distance - height), width,
                    height);
        raise();
        show();
        time_.start(ShownMs);
        QAccessibleEvent spoken(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&spoken);
    }

  private:
    QTimer time_;
};

} // namespace

void tellBriefly(QWidget& window, const QString& text) {
    const auto& parts = window.children();
    const auto shown = std::find_if(parts.begin(), parts.end(),
                                    [](QObject* part) { return dynamic_cast<Notice*>(part) != nullptr; });
    auto* notice = shown == parts.end() ? new Notice(window) : static_cast<Notice*>(*shown);
    notice->tell(text);
}

} // namespace pontrel
