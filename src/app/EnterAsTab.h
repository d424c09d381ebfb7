#pragma once

#include <QList>
#include <QObject>

class QPushButton;
class QWidget;

namespace pontrel {

/// Makes the Enter key move the focus to the next control of the tab order, as Tab does, in entry boxes,
/// check boxes and lists, and click the button that has the focus, once however long it is held down.
class EnterAsTab : public QObject {
    Q_OBJECT
  public:
    /// Watches all controls that the window has by now. Switches autoDefault of its push buttons off.
    static EnterAsTab* install(QWidget& window);

    /// Watches one control more, a box of any kind, with the widgets that it is made of.
    void watch(QWidget& control);

    /// Leaves the boxes in that area alone: Enter moves nowhere there. Its buttons are clicked as before.
    void leaveBoxesOf(QWidget& area);

    /// What Enter does in a box: sends the Tab key to the control with the focus.
    static void sendTab();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    explicit EnterAsTab(QObject* parent) : QObject(parent) {}
};

/// Places buttons that stand beside boxes behind another control in the tab order, "存檔" where there is one,
/// so that Enter leads from box to box and on to the saving, and presses none of them on its way.
void placeBehind(QWidget* control, const QList<QPushButton*>& buttons);

} // namespace pontrel
