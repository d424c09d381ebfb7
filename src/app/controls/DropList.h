#pragma once

#include <QComboBox>

namespace pontrel {

/// A list that drops down, from which one entry is chosen. The wheel turns it only while it has the keyboard,
/// so that a page scrolled past it changes nothing.
class DropList : public QComboBox {
    Q_OBJECT
  public:
    explicit DropList(QWidget* parent = nullptr);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace pontrel
