#include "app/platform/FreedesktopAppearance.h"
#include "app/platform/FreedesktopBackgroundPresence.h"
#include "app/platform/TextScale.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <future>
#include <optional>

using namespace tallyview;
using namespace std::chrono_literals;

namespace {

using Setting = std::pair<QString, QString>;
const Setting colorScheme{"org.freedesktop.appearance", "color-scheme"};
const Setting contrast{"org.freedesktop.appearance", "contrast"};
const Setting reducedMotion{"org.freedesktop.appearance", "reduced-motion"};
const Setting enableAnimations{"org.gnome.desktop.interface", "enable-animations"};

QProcessEnvironment environment(const QString &variables) {
    QProcessEnvironment result;
    for (const QString &variable : variables.split(' ', Qt::SkipEmptyParts)) {
        result.insert(variable.section('=', 0, 0), variable.section('=', 1));
    }
    return result;
}

QByteArray scales() { return qgetenv("QT_SCALE_FACTOR") + " " + qgetenv("QT_WAYLAND_FORCE_DPI"); }

/// The scales while a TextScale lives that finds `variables`. It asks on a thread of its own, so
/// that the portal answers on this one.
QByteArray scalesWith(const QString &variables) {
    const QProcessEnvironment set = environment(variables);
    for (const QString &name : set.keys()) {
        qputenv(name.toUtf8(), set.value(name).toUtf8());
    }
    auto answer = std::async(std::launch::async, [] {
        const TextScale scale(300ms);
        return scales();
    });
    [[maybe_unused]] const bool done =
        QTest::qWaitFor([&] { return answer.wait_for(0s) == std::future_status::ready; });
    for (const QString &name : set.keys()) {
        qunsetenv(name.toUtf8());
    }
    return answer.get();
}

void setPalette(bool dark) {
    QPalette palette;
    palette.setColor(QPalette::Window, dark ? Qt::black : Qt::white);
    palette.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
    QGuiApplication::setPalette(palette);
}

QString shown(const SystemAppearance &system) {
    return QString(system.dark() ? "dark" : "light") + (system.highContrast() ? ", clear" : "") +
           (system.reducedMotion() ? ", still" : "");
}

} // namespace

/// The part for processes without a window, as it is for a program in a sandbox.
class BackgroundOfThePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Background")

public:
    Q_SLOT void SetStatus(const QVariantMap &options) { statuses.append(options); }

    QList<QVariantMap> statuses;
};

/// The desktop's portal with its settings, on a bus connection of its own.
class FakePortal : public BackgroundOfThePortal, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(QMap<Setting, QVariant> settings = {}) : m_settings(std::move(settings)) {
        m_bus.registerObject("/org/freedesktop/portal/desktop", this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService("org.freedesktop.portal.Desktop");
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus("portal"); }

    void set(const Setting &setting, const QVariant &value) {
        m_settings.insert(setting, value);
        emit SettingChanged(setting.first, setting.second, QDBusVariant(value));
    }

    Q_SLOT QDBusVariant Read(const QString &group, const QString &key) {
        setDelayedReply(isSilent || oddAnswer);
        ++asked;
        if (oddAnswer) {
            m_bus.send(message().createReply(*oddAnswer));
        }
        const QVariant value = m_settings.value({group, key});
        if (!value.isValid() && !isSilent) {
            sendErrorReply("org.freedesktop.portal.Error.NotFound", "Requested setting not found");
            return {};
        }
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }

    bool isSilent = false;                 ///< it hears questions and answers none
    std::optional<QVariantList> oddAnswer; ///< to each question
    int asked = 0;

signals:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
    QMap<Setting, QVariant> m_settings;
};

/// What the desktop's portal tells, and what it is told.
class PortalTest : public QObject {
    Q_OBJECT

private slots:
    void init() { setPalette(false); }

    // first, while the bus has yet to learn every type
    void aLatePortalIsNoticed() {
        const FreedesktopAppearance system;
        QTest::qWait(100);
        for (const uint scheme : {1U, 2U}) {
            const FakePortal portal({{colorScheme, scheme}});
            QTRY_COMPARE(system.dark(), scheme == 1);
        }
    }

    void theAppearanceFollowsIt() {
        const Setting factor{"org.kde.kdeglobals.KDE", "AnimationDurationFactor"};
        const std::tuple<bool, Setting, QVariant, QString> cases[] = {
            {false, colorScheme, 1U, "dark"},
            {true, colorScheme, 2U, "light"},
            {true, colorScheme, 0U, "dark"},
            {false, colorScheme, 7U, "light"},
            {false, contrast, 1U, "light, clear"},
            {false, contrast, 2U, "light"},
            {false, reducedMotion, 1U, "light, still"},
            {false, enableAnimations, false, "light, still"},
            {false, factor, "0", "light, still"},
            {false, factor, "0.5", "light"},
            {false, factor, "", "light"},
        };
        for (const auto &[darkPalette, setting, value, expected] : cases) {
            FakePortal portal({{setting, value}});
            const FreedesktopAppearance system;
            setPalette(darkPalette);
            QTest::qWait(100);
            const QString question = setting.second + value.toString() + ' ';
            QTRY_COMPARE(question + shown(system), question + expected);
        }
    }

    void whatIsNoSettingIsNone() {
        const QVariant odd[] = {QVariantList{1U},
                                QVariantMap{{"a", true}},
                                -1,
                                7.5,
                                QByteArray("\x01"),
                                QVariant::fromValue(QDBusObjectPath("/"))};
        for (const QVariant &value : odd) {
            FakePortal portal;
            const QVariant wrapped = QVariant::fromValue(QDBusVariant(value));
            for (const QVariantList &answer : {QVariantList{value}, {wrapped}, {wrapped, 1}, {}}) {
                portal.oddAnswer = answer;
                const FreedesktopAppearance system;
                QTRY_COMPARE(portal.asked, 6);
                portal.asked = 0;
                portal.set(contrast, 1U);
                QTRY_COMPARE(shown(system), "light, clear");
                QCOMPARE(system.windowButtons(), WindowButtons::all());
            }
        }
    }

    void signalsTellWhatBecomesDifferent() {
        FakePortal portal({{colorScheme, 2U}});
        const FreedesktopAppearance system;
        const QSignalSpy darkSpy(&system, &SystemAppearance::darkChanged);
        const QSignalSpy motionSpy(&system, &SystemAppearance::reducedMotionChanged);
        portal.set(enableAnimations, false);
        QTRY_VERIFY(system.reducedMotion());
        portal.set(reducedMotion, 1U);
        portal.set(enableAnimations, true);
        portal.set({"org.freedesktop.appearance", "accent-color"}, 3U);
        portal.set(contrast, 1U);
        portal.set(colorScheme, 1U);
        QTRY_COMPARE(shown(system), "dark, clear, still");
        QCOMPARE(system.windowButtons(), WindowButtons::all());
        portal.set({"org.gnome.desktop.wm.preferences", "button-layout"}, "close:maximize");
        QTRY_COMPARE(system.windowButtons(), (WindowButtons{{"close"}, {"maximize"}}));
        QCOMPARE(darkSpy.count() + motionSpy.count(), 2);
    }

    void settingsOfTextsBecomeVariables() {
        const QString larger = "QT_WAYLAND_FORCE_DPI=144";
        const std::tuple<QString, QVariant, QVariant, QString> cases[] = {
            {"", {}, {}, ""},
            {"", 1.0, "Noto Sans,10,-1,5,50,0,0,0,0,0", ""},
            {"", 1.15, {}, "QT_WAYLAND_FORCE_DPI=110"},
            {"QT_WAYLAND_FORCE_DPI=120", 1.5, {}, ""},
            {"", {}, "Noto Sans,15,-1,5,400,0,0,0,0,0,0,0,0,0,0,1", "QT_SCALE_FACTOR=1.5"},
            {"", {}, "Noto Sans,9.5", "QT_SCALE_FACTOR=0.95"},
            {"QT_SCALE_FACTOR=2", {}, "Noto Sans,12", "QT_SCALE_FACTOR=2.4"},
            {"QT_SCALE_FACTOR=x", {}, "Noto Sans,12", "QT_SCALE_FACTOR=1.2"},
            {"", 1.5, "Noto Sans,12", "QT_SCALE_FACTOR=1.2 " + larger},
            // nothing that a desktop means
            {"", 1e9, "Noto Sans,1e9", "QT_SCALE_FACTOR=3 QT_WAYLAND_FORCE_DPI=288"},
            {"", 1e-9, "Noto Sans,1", "QT_SCALE_FACTOR=0.5 QT_WAYLAND_FORCE_DPI=48"},
            {"", 0.0, "Noto Sans,-1,13", ""},
            {"", std::nan(""), "Noto Sans,nan", ""},
            {"", HUGE_VAL, "Noto Sans,inf", ""},
            {"", "large", ",", ""},
            {"", QVariantList{1.5}, 15, ""},
        };
        for (const auto &[own, factor, font, variables] : cases) {
            QStringList written;
            const auto scaled = textScaleVariables(environment(own), {factor, font});
            for (const auto &[name, value] : scaled.asKeyValueRange()) {
                written.append(name + "=" + value);
            }
            QCOMPARE(written.join(' '), variables);
        }
    }

    void textsAreScaledByWhatCounts() {
        const QString wayland = "WAYLAND_DISPLAY=wayland-0";
        const QString kde = "XDG_CURRENT_DESKTOP=Neon:KDE";
        qputenv("QT_SCALE_FACTOR", "2");
        QCOMPARE(scalesWith(wayland), "2 "); // no portal
        FakePortal portal;
        QCOMPARE(scalesWith(wayland), "2 ");
        portal.set({"org.gnome.desktop.interface", "text-scaling-factor"}, 1.25);
        portal.set({"org.kde.kdeglobals.General", "font"}, "Noto Sans,12");
        const std::pair<QString, const char *> cases[] = {{"", "2 "},
                                                          {wayland, "2 120"},
                                                          {"XDG_SESSION_TYPE=wayland", "2 120"},
                                                          {kde, "2.4 "},
                                                          {kde + " " + wayland, "2.4 120"}};
        for (const auto &[variables, expected] : cases) {
            QCOMPARE(scalesWith(variables), expected);
            QCOMPARE(scales(), "2 ");
        }
        QVERIFY(!qEnvironmentVariableIsSet("QT_WAYLAND_FORCE_DPI"));
        portal.isSilent = true;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(scalesWith(kde + " " + wayland), "2 ");
        QVERIFY(timer.elapsed() < 3000);
        qunsetenv("QT_SCALE_FACTOR");
    }

    void itIsToldWhatRunsWithoutAWindow() {
        const FakePortal portal;
        FreedesktopBackgroundPresence().describe("3 个任务进行中");
        const QList<QVariantMap> expected{{{"message", "3 个任务进行中"}}};
        QTRY_COMPARE(portal.statuses, expected);
    }
};

QTEST_MAIN(PortalTest)
#include "PortalTest.moc"
