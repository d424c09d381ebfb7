#pragma once

#include <QObject>

class QKeyEvent;

namespace pontrel {

/// The states of Caps Lock, Num Lock and Insert. The first two are the keyboard's own where the platform
/// tells them; otherwise, and for Insert always, they start as off and follow the keys pressed in the
/// program's windows.
class LockKeys : public QObject {
    Q_OBJECT
  public:
    /// The one object of the application; needs the application object.
    [[nodiscard]] static LockKeys& instance();

    [[nodiscard]] bool caps() const { return caps_; }
    [[nodiscard]] bool num() const { return num_; }
    [[nodiscard]] bool ins() const { return ins_; }

    /// Asks the platform anew, for changes made while another program had the keyboard.
    void poll();

  Q_SIGNALS:
    void changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    explicit LockKeys(QObject* parent);
    void noteKey(const QKeyEvent& event, bool press);
    void set(bool caps, bool num, bool ins);

    bool caps_ = false;
    bool num_ = false;
    bool ins_ = false;
};

} // namespace pontrel
