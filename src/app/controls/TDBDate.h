#pragma once

#include <QCalendarWidget>
#include <QComboBox>
#include <QDate>
#include <QFrame>
#include <QPointer>
#include <QVariant>

namespace pontrel {

/// A date, or none, with a calendar that drops down. It shows its date in full, as 2001/01/31, and takes no
/// typing: Up and Down move by a day, Page Up and Page Down by a month, with Ctrl by a year; Alt+Down, F4 and
/// the blank open the calendar, where a day may be typed in digits (TypedDay) and Enter and the blank choose;
/// Delete empties it where it may be empty.
/// Enter moves on as Tab does.
class TDBDate : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY changed USER true)
  public:
    explicit TDBDate(QWidget* parent = nullptr);

    [[nodiscard]] QDate date() const { return date_; } ///< Invalid when empty.
    void setDate(QDate date);                          ///< An invalid date empties the control.

    /// The date, or a null value when empty.
    [[nodiscard]] QVariant value() const;
    /// Takes a date, a date-time, or the text of a date; anything else empties the control.
    void setValue(const QVariant& value);

    /// Whether the user may empty the control; code may always. True at first.
    void setClearable(bool clearable) { clearable_ = clearable; }

    void showPopup() override;
    void hidePopup() override;
    /// The calendar that drops down; null before it was first opened.
    [[nodiscard]] QCalendarWidget* calendar() const { return calendar_; }

  Q_SIGNALS:
    void changed(); ///< The date is another one, chosen or set by code.
    void
    chosen(); ///< The user has chosen a day in the calendar, behind changed(), which may be the same day.

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void makePopup();
    void choose(QDate date);
    void moveBy(int days, int months);

    QDate date_;
    bool clearable_ = true;
    QPointer<QFrame> popup_;
    QPointer<QCalendarWidget> calendar_;
};

} // namespace pontrel
