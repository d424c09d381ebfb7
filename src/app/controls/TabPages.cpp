#include "app/controls/TabPages.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTabBar>
#include <QWheelEvent>

namespace pontrel {

class TabPages::Tabs : public QTabBar {
  public:
    explicit Tabs(TabPages* pages) : QTabBar(pages), pages_(pages) { setFocusPolicy(Qt::StrongFocus); }

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        const bool inFront = tabAt(event->position().toPoint()) == currentIndex();
        QTabBar::mousePressEvent(event);
        if (inFront && event->button() == Qt::LeftButton)
            Q_EMIT pages_->frontTabClicked();
    }

    void wheelEvent(QWheelEvent* event) override { event->ignore(); } // it would turn the page unasked

  private:
    TabPages* pages_;
};

TabPages::TabPages(QWidget* parent, const QString& name, const QString& spokenName) : QTabWidget(parent) {
    setTabBar(new Tabs(this));
    setObjectName(name);
    setAccessibleName(spokenName);
    tabBar()->setObjectName(QStringLiteral("qt_tabwidget_tabbar")); // as Qt names its own
    tabBar()->setAccessibleName(spokenName);
}

void TabPages::keyPressEvent(QKeyEvent* event) {
    const bool turns = (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) &&
                       (event->modifiers() & Qt::ControlModifier);
    if (!turns) {
        QTabWidget::keyPressEvent(event);
        return;
    }
    if (!hasOtherPage())
        return;
    tabBar()->setFocus(Qt::OtherFocusReason);
    // The window may be inactive yet when a message box has just closed: its own notion of the focus counts.
    if (window()->focusWidget() != tabBar())
        return;
    QTabWidget::keyPressEvent(event);
    focusNextChild();
}

bool TabPages::hasOtherPage() const {
    for (int page = 0; page < count(); ++page) {
        if (page != currentIndex() && isTabEnabled(page))
            return true;
    }
    return false;
}

void setOtherTabsEnabled(QTabWidget& tabs, bool enabled) {
    for (int tab = 0; tab < tabs.count(); ++tab) {
        if (tab != tabs.currentIndex())
            tabs.setTabEnabled(tab, enabled);
    }
}

} // namespace pontrel
