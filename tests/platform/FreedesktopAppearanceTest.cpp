#include "app/platform/FreedesktopAppearance.h"

#include <QDBusContext>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace tallyview;

namespace {

const QString appearance = "org.freedesktop.appearance";
const QString gnome = "org.gnome.desktop.interface";
const QString kde = "org.kde.kdeglobals.KDE";

} // namespace

/// The desktop portal's settings, on a bus connection of their own.
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal() {
        m_bus.registerObject("/org/freedesktop/portal/desktop", this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService("org.freedesktop.portal.Desktop");
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus("portal"); }

    void set(const QString &group, const QString &key, const QVariant &value) {
        m_settings.insert({group, key}, value);
        emit SettingChanged(group, key, QDBusVariant(value));
    }

public slots:
    QDBusVariant Read(const QString &group, const QString &key) {
        const QVariant value = m_settings.value({group, key});
        if (!value.isValid()) {
            sendErrorReply("org.freedesktop.portal.Error.NotFound", "Requested setting not found");
            return {};
        }
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }

signals:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
    QMap<std::pair<QString, QString>, QVariant> m_settings;
};

class FreedesktopAppearanceTest : public QObject {
    Q_OBJECT

private slots:
    void init() { setPalette(Qt::white, Qt::black); }

    // first, while the bus has yet to learn every type
    void noticesALatePortal() {
        const FreedesktopAppearance system;
        QTest::qWait(100);
        auto portal = std::make_unique<FakePortal>();
        portal->set(appearance, "color-scheme", 1U);
        QTRY_VERIFY(system.dark());
        portal->set(gnome, "enable-animations", false);
        QTRY_VERIFY(system.reducedMotion());
        portal.reset();
        QTest::qWait(100);
        QVERIFY(system.dark());
        portal = std::make_unique<FakePortal>();
        portal->set(appearance, "color-scheme", 2U);
        QTRY_VERIFY(!system.dark());
    }

    void followsThePalette() {
        const FreedesktopAppearance system;
        QVERIFY(!system.dark());
        QVERIFY(!system.reducedMotion());
        const QSignalSpy spy(&system, &SystemAppearance::darkChanged);
        setPalette(Qt::black, Qt::white);
        QTRY_VERIFY(system.dark());
        setPalette(Qt::white, Qt::black);
        QTRY_VERIFY(!system.dark());
        QCOMPARE(spy.count(), 2);
    }

    void readsThePortal_data() {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("darkPalette");
        QTest::addColumn<bool>("dark");
        QTest::addColumn<bool>("reducedMotion");
        const auto scheme = [](const char *name, uint value, bool darkPalette, bool dark) {
            QTest::newRow(name) << appearance << "color-scheme" << QVariant(value) << darkPalette
                                << dark << false;
        };
        scheme("dark", 1, false, true);
        scheme("light over a dark palette", 2, true, false);
        scheme("no preference", 0, true, true);
        scheme("unknown preference", 7, false, false);
        const auto motion = [](const char *name, const QString &group, const QString &key,
                               const QVariant &value, bool reduced) {
            QTest::newRow(name) << group << key << value << false << false << reduced;
        };
        motion("reduced motion", appearance, "reduced-motion", 1U, true);
        motion("motion without preference", appearance, "reduced-motion", 0U, false);
        motion("animations off", gnome, "enable-animations", false, true);
        motion("animations on", gnome, "enable-animations", true, false);
        motion("instant animations", kde, "AnimationDurationFactor", "0", true);
        motion("instant animations as a number", kde, "AnimationDurationFactor", 0.0, true);
        motion("slower animations", kde, "AnimationDurationFactor", "0.5", false);
        motion("factor not a number", kde, "AnimationDurationFactor", "", false);
    }

    void readsThePortal() {
        QFETCH(const QString, group);
        QFETCH(const QString, key);
        QFETCH(const QVariant, value);
        QFETCH(const bool, darkPalette);
        setPalette(darkPalette ? Qt::black : Qt::white, darkPalette ? Qt::white : Qt::black);
        FakePortal portal;
        portal.set(group, key, value);
        const FreedesktopAppearance system;
        QCOMPARE(system.dark(), darkPalette);
        QTest::qWait(100);
        QTEST(system.dark(), "dark");
        QTEST(system.reducedMotion(), "reducedMotion");
    }

    void followsThePortal() {
        FakePortal portal;
        portal.set(appearance, "color-scheme", 2U);
        const FreedesktopAppearance system;
        const QSignalSpy darkSpy(&system, &SystemAppearance::darkChanged);
        const QSignalSpy motionSpy(&system, &SystemAppearance::reducedMotionChanged);
        portal.set(appearance, "color-scheme", 1U);
        QTRY_VERIFY(system.dark());
        portal.set(gnome, "enable-animations", false);
        QTRY_VERIFY(system.reducedMotion());
        portal.set(appearance, "reduced-motion", 1U);
        portal.set(gnome, "enable-animations", true);
        portal.set(appearance, "accent-color", 3U);
        portal.set(appearance, "color-scheme", 2U);
        QTRY_VERIFY(!system.dark());
        QVERIFY(system.reducedMotion());
        QCOMPARE(darkSpy.count(), 2);
        QCOMPARE(motionSpy.count(), 1);
    }

private:
    static void setPalette(const QColor &window, const QColor &text) {
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::WindowText, text);
        QGuiApplication::setPalette(palette);
    }
};

QTEST_MAIN(FreedesktopAppearanceTest)
#include "FreedesktopAppearanceTest.moc"
