#pragma once

#include <QLabel>
#include <QObject>

class QAbstractItemView;
class QComboBox;
class QLineEdit;

namespace pontrel {

/// What a box shows of a text that is too long for it: while the keyboard is elsewhere its beginning and a
/// mark that it goes on, and at any time the whole text in the tooltip, above the box's own one. Lists that
/// drop down and the entries of lists and grids, which cut their texts themselves, tell the whole text
/// likewise. One object serves any number of them; boxes that hide what is typed stay as they are.
class LongTexts : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;

    void watch(QLineEdit& box);
    void watch(QComboBox& list);
    void watch(QAbstractItemView& view);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// A label of one line that does the same with a text from the store, so that a long one moves nothing
/// beside it.
class LongLabel : public QLabel {
    Q_OBJECT
  public:
    explicit LongLabel(QWidget* parent);

    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] bool isCut() const;
};

} // namespace pontrel
