#pragma once

#include <QTabWidget>

namespace pontrel {

/// Pages under tabs. The tabs take the focus before they change the page, by mouse and by Ctrl+Tab, so that
/// what a box has to say when it is left comes while its page is still there; where it puts the focus back,
/// the page stays.
class TabPages : public QTabWidget {
    Q_OBJECT
  public:
    TabPages(QWidget* parent, const QString& name, const QString& spokenName);

  Q_SIGNALS:
    /// The tab that is in front already was clicked, with the left button.
    void frontTabClicked();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    class Tabs;

    [[nodiscard]] bool hasOtherPage() const;
};

/// Switches all tabs on or off but the one in front.
void setOtherTabsEnabled(QTabWidget& tabs, bool enabled);

} // namespace pontrel
