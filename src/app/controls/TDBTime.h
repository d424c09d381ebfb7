#pragma once

#include "app/controls/MaskedEdit.h"

#include <QTime>
#include <QVariant>

namespace pontrel {

/// A time of day, or none, in a mask "__:__" that is typed over. A blank mask is no time.
///
/// While the mask holds neither a time nor nothing ("1_:30", "25:00"), the box's time is the one that stood
/// there before; when the box is left, or Enter pressed in it, the mask shows that time again and the bell
/// sounds. So nothing that the user cannot see is ever the value. Where the box had been emptied before, it
/// is empty again.
///
/// "8:30" may be typed as it is said: the colon moves a single digit to the second place. Enter does nothing
/// else of its own; EnterAsTab makes it move on where the page wants that.
class TDBTime : public MaskedEdit {
    Q_OBJECT
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY changed USER true)
  public:
    explicit TDBTime(QWidget* parent = nullptr);

    /// Whether it shows and takes seconds, "__:__:__". Not at first.
    void setShowSeconds(bool shown);

    /// Invalid when the box is empty. The seconds of a time set by code stay, also unseen, until another time
    /// is typed.
    [[nodiscard]] QTime time() const;
    void setTime(QTime time); ///< An invalid time empties the box.
    void clear();             ///< Empties the box.
    [[nodiscard]] bool isNull() const { return !time().isValid(); }

    /// The time, or a null value when empty.
    [[nodiscard]] QVariant value() const;
    /// Takes a time, a date-time, or the text of a time; anything else empties the box.
    void setValue(const QVariant& value);

    [[nodiscard]] QSize sizeHint() const override; ///< As wide as the mask needs.
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  Q_SIGNALS:
    void changed(); ///< The time is another one, typed or set by code.

  protected:
    void noteText() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    [[nodiscard]] QString shownText(QTime time) const;
    [[nodiscard]] QTime typedTime() const;
    void endNumber();
    void settle();

    bool showSeconds_ = false;
    QTime settled_; ///< What stood in the box before the present typing.
    QTime known_;   ///< As last told by changed().
};

} // namespace pontrel
