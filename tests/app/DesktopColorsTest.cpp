#include "app/DesktopColors.h"

#include "app/controls/Colors.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusServer>
#include <QDBusVariant>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

using Settings = QMap<QString, QVariantMap>;

const QString Path = u"/org/freedesktop/portal/desktop"_s;
const QString Appearance = u"org.freedesktop.appearance"_s;
const QString Accessibility = u"org.gnome.desktop.a11y.interface"_s;

/// What a desktop says of itself.
class Portal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
  public:
    Settings settings;
    bool isSilent = false;

  public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList& groups) {
        if (isSilent)
            setDelayedReply(true);
        Settings asked;
        for (const QString& group : groups) {
            if (settings.contains(group))
                asked.insert(group, settings.value(group));
        }
        return asked;
    }
};

/// A bus with that desktop on it, which answers on a thread of its own, as another program does.
class Desktop {
  public:
    Portal* portal = new Portal;

    explicit Desktop(const Settings& settings = {}, bool isSilent = false) {
        portal->settings = settings;
        portal->isSilent = isSilent;
        portal->moveToThread(&thread_);
        const auto listen = [this](const QDBusConnection& connection) {
            QMetaObject::invokeMethod(portal, [this, connection] {
                desktopsEnd_ = connection;
                desktopsEnd_.registerObject(Path, portal, QDBusConnection::ExportAllSlots);
                isThere_.storeRelease(1);
            });
        };
        QObject::connect(&server_, &QDBusServer::newConnection, portal, listen, Qt::DirectConnection);
        thread_.start();
        bus_ = QDBusConnection::connectToPeer(server_.address(), u"peer"_s);
    }
    ~Desktop() {
        QDBusConnection::disconnectFromPeer(u"peer"_s);
        thread_.quit();
        thread_.wait();
        delete portal;
    }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Once it listens.
    [[nodiscard]] const QDBusConnection& bus() {
        if (!QTest::qWaitFor([this] { return isThere_.loadAcquire() == 1; }, PatienceMs))
            qFatal("the bus does not come up");
        return bus_;
    }
    void change(const QString& group, const QString& key, const QVariant& value) const {
        QDBusMessage told =
            QDBusMessage::createSignal(Path, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        told << group << key << QVariant::fromValue(QDBusVariant(value));
        QVERIFY(desktopsEnd_.send(told));
    }

  private:
    QThread thread_;
    QDBusServer server_;
    QDBusConnection bus_{u"none"_s};
    QDBusConnection desktopsEnd_{u"none"_s};
    QAtomicInt isThere_;
};

Settings saying(uint scheme, uint contrast = 0) {
    return {{Appearance, {{u"color-scheme"_s, scheme}, {u"contrast"_s, contrast}}}};
}

bool isShownDark() {
    return colors::isDark(QApplication::palette());
}

bool isShownInHighContrast() {
    return colors::isHighContrast(QApplication::palette());
}

} // namespace

/// Desktops that say what their users prefer.
class DesktopColorsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { qDBusRegisterMetaType<Settings>(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void whatTheDesktopSaysIsShown_data();
    void whatTheDesktopSaysIsShown();
    void aChangeIsFollowed();
    void aDesktopThatDoesNotAnswerIsNotWaitedFor();
    void coloursOfTheDesktopsOwnStay();
    void withoutABusNothingHappens();
};

void DesktopColorsTest::whatTheDesktopSaysIsShown_data() {
    QTest::addColumn<Settings>("settings");
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<bool>("isHighContrast");
    QTest::addRow("nothing") << Settings() << false << false;
    QTest::addRow("no preference") << saying(0) << false << false;
    QTest::addRow("dark") << saying(1) << true << false;
    QTest::addRow("light") << saying(2) << false << false;
    QTest::addRow("an unknown one") << saying(7, 7) << false << false;
    QTest::addRow("high contrast") << saying(0, 1) << false << true;
    QTest::addRow("dark, high contrast") << saying(1, 1) << true << true;
    QTest::addRow("high contrast in the desktop's own words")
        << Settings{{Accessibility, {{u"high-contrast"_s, true}}}} << false << true;
    QTest::addRow("no high contrast in the desktop's own words")
        << Settings{{Accessibility, {{u"high-contrast"_s, false}}}} << false << false;
    QTest::addRow("values of another kind")
        << Settings{{Appearance, {{u"color-scheme"_s, u"dark"_s}, {u"contrast"_s, u"much"_s}}}} << false
        << false;
}

void DesktopColorsTest::whatTheDesktopSaysIsShown() {
    QFETCH(const Settings, settings);
    Desktop desktop(settings);
    const DesktopColors colors(desktop.bus(), PatienceMs);
    QTEST(isShownDark(), "isDark");
    QTEST(isShownInHighContrast(), "isHighContrast");
    // As legible as the colours of any desktop.
    QCOMPARE(colors::readable(QApplication::palette()), QApplication::palette());
}

void DesktopColorsTest::aChangeIsFollowed() {
    Desktop desktop(saying(1));
    const DesktopColors colors(desktop.bus(), PatienceMs);
    QVERIFY(isShownDark());
    desktop.change(Appearance, u"color-scheme"_s, 2U);
    QTRY_VERIFY_WITH_TIMEOUT(!isShownDark(), PatienceMs);
    QCOMPARE(QApplication::palette().color(QPalette::Window), QColor(0xef, 0xef, 0xef));
    desktop.change(Accessibility, u"high-contrast"_s, true);
    QTRY_VERIFY_WITH_TIMEOUT(isShownInHighContrast(), PatienceMs);
    desktop.change(Appearance, u"color-scheme"_s, 1U);
    QTRY_VERIFY_WITH_TIMEOUT(isShownDark(), PatienceMs);
    QVERIFY(isShownInHighContrast());
    desktop.change(u"org.example"_s, u"color-scheme"_s, 2U); // of something else
    desktop.change(Accessibility, u"high-contrast"_s, false);
    QTRY_VERIFY_WITH_TIMEOUT(!isShownInHighContrast(), PatienceMs);
    QVERIFY(isShownDark());
}

void DesktopColorsTest::aDesktopThatDoesNotAnswerIsNotWaitedFor() {
    Desktop desktop(saying(1), true);
    const DesktopColors colors(desktop.bus(), 50); // comes back
    QVERIFY(!isShownDark());
}

void DesktopColorsTest::coloursOfTheDesktopsOwnStay() {
    QPalette own = colors::readable(QApplication::style()->standardPalette());
    own.setColor(QPalette::Window, QColor(0xff, 0xf8, 0xe8));
    QApplication::setPalette(own);
    Desktop desktop(saying(1, 1));
    const DesktopColors colors(desktop.bus(), PatienceMs);
    QCOMPARE(QApplication::palette().color(QPalette::Window), QColor(0xff, 0xf8, 0xe8));
    QVERIFY(!isShownDark());
}

void DesktopColorsTest::withoutABusNothingHappens() {
    const QPalette before = QApplication::palette();
    const DesktopColors colors{QDBusConnection(u"none"_s)};
    QCOMPARE(QApplication::palette(), before);
    QObject application;
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    DesktopColors::follow(application);
    QCOMPARE(QApplication::palette(), before);
}

int main(int argc, char** argv) {
    return runTests<DesktopColorsTest>(argc, argv);
}

#include "DesktopColorsTest.moc"
