#include "app/MDI.h"

#include "app/Events.h"
#include "app/Form0.h"
#include "app/Module1.h"
#include "app/Toolbar.h"
#include "app/WayOut.h"

#include <QCloseEvent>

namespace pontrel {

using namespace Qt::StringLiterals;

MDI::MDI()
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint)
    , systemMenu_(*this)
    , clientArea_(new QWidget(this))
    , Tb_(new Toolbar(this))
    , Form0_(new Form0(clientArea_)) {
    setObjectName(u"MDI"_s);
    // Deliberate: two blanks. Every login replaces this caption before it is seen.
    setWindowTitle(u"Pontrel  V1.1 - Norvale"_s);
    setAccessibleName(u"出勤管理系統"_s);
    setFixedSize(MainWindowSize);
    clientArea_->setObjectName(u"clientArea"_s);
    clientArea_->setGeometry(0, 0, MainWindowSize.width() - Toolbar::Width, MainWindowSize.height());
    Tb_->setGeometry(clientArea_->width(), 0, Toolbar::Width, MainWindowSize.height());
    onEvent(Tb_, &Toolbar::ButtonClick, this,
            [](int number) { OpenToolWindow(static_cast<std::int16_t>(number)); });
}

void MDI::showForm0() {
    show();
    Form0_->open();
}

void MDI::takeAlong(QWidget& window) {
    connect(this, &MDI::closed, &window, &QWidget::close);
    connect(this, &QObject::destroyed, &window, [&window] { delete &window; });
}

// The keyboard is the toolbar's here: a window in front has it already, and one that is covered must not get
// it.
bool MDI::focusNextPrevChild(bool next) {
    const auto step = [next](const QWidget* from) {
        return next ? from->nextInFocusChain() : from->previousInFocusChain();
    };
    const QWidget* start = focusWidget() ? focusWidget() : this;
    for (QWidget* control = step(start); control != start; control = step(control)) {
        if ((control->focusPolicy() & Qt::TabFocus) && Tb_->isAncestorOf(control) && control->isEnabled()) {
            control->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

void MDI::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // A window manager may ignore the fixed size.
    if (!isMinimized() && !isMaximized() && size() != MainWindowSize)
        resize(MainWindowSize);
}

void MDI::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && (isMaximized() || isFullScreen()))
        setWindowState(windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
}

const Window* MDI::frontWindow() const {
    const QObjectList& windows = clientArea_->children(); // in the order in which they lie upon each other
    for (auto each = windows.crbegin(); each != windows.crend(); ++each) {
        if (const auto* window = qobject_cast<const Window*>(*each); window && window->isVisible())
            return window;
    }
    return nullptr;
}

void MDI::closeEvent(QCloseEvent* event) {
    if (!systemMenu_.has(SystemMenu::Close)) {
        event->ignore();
        if (const Window* front = frontWindow())
            pointOutTheWayOut(*front);
        return;
    }
    event->accept();
    Q_EMIT closed();
}

} // namespace pontrel
