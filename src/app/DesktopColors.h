#pragma once

#include <QObject>
#include <QVariantMap>

class QDBusConnection;
class QDBusVariant;

namespace pontrel {

/// Dark and high-contrast colours for a desktop that has no colours of its own for Qt and only says on the
/// bus what its user prefers, as most desktops do; from then on it follows what the user chooses. Does
/// nothing where the desktop gives its colours, as far as Qt knows how to ask it, or says nothing.
class DesktopColors : public QObject {
    Q_OBJECT
    Q_MOC_INCLUDE(<QDBusVariant>)
  public:
    static constexpr int UsualPatienceMs = 500;

    /// Asks at once, and waits no longer than that for an answer.
    explicit DesktopColors(const QDBusConnection& bus, int patienceMs = UsualPatienceMs,
                           QObject* parent = nullptr);

    /// For the program's entry: asks the desktop of the session, where there is a session with a bus.
    static void follow(QObject& application);

  private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    void take(const QString& group, const QVariantMap& settings);
    void apply() const;

    bool isDark_ = false;
    bool prefersContrast_ = false; ///< By the setting that desktops share.
    bool hasContrast_ = false;     ///< By that of one of them.
};

} // namespace pontrel
