#pragma once

#include <QListWidget>

namespace pontrel {

/// A list that tells what to do first while it has no entries.
class HintedList : public QListWidget {
    Q_OBJECT
  public:
    explicit HintedList(QWidget* parent);

    /// Shown in place of the entries while there are none, and told to assistive technology.
    void setEmptyText(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString emptyText_;
};

} // namespace pontrel
