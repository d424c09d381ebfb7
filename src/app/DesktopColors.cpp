#include "app/DesktopColors.h"

#include "app/controls/Colors.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QFileInfo>
#include <QStyle>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

using Settings = QMap<QString, QVariantMap>;

const QString Service = u"org.freedesktop.portal.Desktop"_s;
const QString Path = u"/org/freedesktop/portal/desktop"_s;
const QString Interface = u"org.freedesktop.portal.Settings"_s;
const QString Appearance = u"org.freedesktop.appearance"_s;
const QString Accessibility = u"org.gnome.desktop.a11y.interface"_s;
constexpr uint PrefersDark = 1;
constexpr uint PrefersContrast = 1;

/// Whether Qt has the desktop's own colours.
bool hasOwnColors() {
    const QPalette usual = colors::readable(QApplication::style()->standardPalette());
    const QPalette present = QApplication::palette();
    const auto differs = [&](QPalette::ColorRole role) {
        return usual.color(QPalette::Active, role) != present.color(QPalette::Active, role);
    };
    return differs(QPalette::Window) || differs(QPalette::Base) || differs(QPalette::WindowText);
}

bool hasSessionBus() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
}

} // namespace

DesktopColors::DesktopColors(const QDBusConnection& bus, int patienceMs, QObject* parent) : QObject(parent) {
    if (!bus.isConnected() || hasOwnColors())
        return;
    qDBusRegisterMetaType<Settings>();
    QDBusConnection(bus).connect(QString(), Path, Interface, u"SettingChanged"_s, this,
                                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(Service, Path, Interface, u"ReadAll"_s);
    question.setAutoStartService(false); // what does not run yet has nothing to say
    question << QStringList{Appearance, Accessibility};
    const QDBusReply<Settings> answer = bus.call(question, QDBus::Block, patienceMs);
    if (!answer.isValid())
        return;
    const Settings settings = answer.value();
    for (auto each = settings.cbegin(); each != settings.cend(); ++each)
        take(each.key(), each.value());
    apply();
}

void DesktopColors::follow(QObject& application) {
    if (hasSessionBus())
        new DesktopColors(QDBusConnection::sessionBus(), UsualPatienceMs, &application);
}

void DesktopColors::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    take(group, {{key, value.variant()}});
    apply();
}

void DesktopColors::take(const QString& group, const QVariantMap& settings) {
    const auto takeFrom = [&](const QString& wantedGroup, const QString& key, bool& setting, uint on) {
        if (group == wantedGroup && settings.contains(key))
            setting = settings.value(key).toUInt() == on;
    };
    takeFrom(Appearance, u"color-scheme"_s, isDark_, PrefersDark);
    takeFrom(Appearance, u"contrast"_s, prefersContrast_, PrefersContrast);
    takeFrom(Accessibility, u"high-contrast"_s, hasContrast_, 1);
}

void DesktopColors::apply() const {
    if (prefersContrast_ || hasContrast_)
        QApplication::setPalette(colors::readable(colors::highContrastPalette(isDark_)));
    else if (isDark_)
        QApplication::setPalette(colors::readable(colors::darkPalette()));
    else
        QApplication::setPalette(QPalette());
}

} // namespace pontrel
