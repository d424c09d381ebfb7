#pragma once

#include "app/controls/MaskedEdit.h"

namespace pontrel {

/// A text mask "99/99/99" of six places that is shown with its slashes. Its value is the six places without
/// them ("900131"); an empty mask's value is the empty text. Enter moves on as Tab does, also from an
/// incomplete mask.
class TDBMask : public MaskedEdit {
    Q_OBJECT
    Q_PROPERTY(QString value READ value WRITE setValue NOTIFY changed)
  public:
    static constexpr int Places = 6;

    explicit TDBMask(QWidget* parent = nullptr);

    /// The places' characters; a blank place before a filled one is a blank, those at the end are left out.
    [[nodiscard]] QString value() const;

    /// Puts the characters into the places from the left. A text of more than six cannot be held: the mask is
    /// then shown blank without changed().
    void setValue(const QString& value);

  Q_SIGNALS:
    void changed(); ///< The value is another one, typed or set by code.

  protected:
    void noteText() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QString known_;
};

} // namespace pontrel
