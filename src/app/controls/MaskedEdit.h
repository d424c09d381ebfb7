#pragma once

#include <QLineEdit>

namespace pontrel {

/// What the entry boxes of a fixed number of digits share: a mask that shows its blank places as "_", digits
/// that become plain ones however they came in (typed, by an input method, pasted), and typing that starts at
/// the left after the keyboard has come to it, a blank mask was clicked, or code has put a text in. The input
/// method is off in it.
class MaskedEdit : public QLineEdit {
    Q_OBJECT
  protected:
    static constexpr QChar Blank = u'_';

    explicit MaskedEdit(QWidget* parent);

    /// The mask as the base class takes it, without its blank. Its places are to be "permitted" ("0"), not
    /// "required" ones: a mask with required places keeps Enter to itself until it is full.
    void setPlaces(const QString& mask);

    /// Puts a text in, its blank places as blanks, with the cursor before the first place.
    void putText(const QString& text);

    /// No place is filled.
    [[nodiscard]] bool isBlank() const;

    /// Runs when another text is shown, typed or set by code.
    virtual void noteText() = 0;

    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void takeText();
};

} // namespace pontrel
