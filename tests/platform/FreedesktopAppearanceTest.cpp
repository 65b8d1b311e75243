#include "app/platform/FreedesktopAppearance.h"

#include "tests/platform/FakePortal.h"

#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

using namespace tallyview;
using namespace tallyview::test;

namespace {

const QString appearance = "org.freedesktop.appearance";
const QString gnome = "org.gnome.desktop.interface";
const QString kde = "org.kde.kdeglobals.KDE";

} // namespace

class FreedesktopAppearanceTest : public QObject {
    Q_OBJECT

    static void setPalette(bool dark) {
        QPalette palette;
        palette.setColor(QPalette::Window, dark ? Qt::black : Qt::white);
        palette.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
        QGuiApplication::setPalette(palette);
    }
    static QString shown(const SystemAppearance &system) {
        return QString(system.dark() ? "dark" : "light") +
               (system.highContrast() ? ", clear" : "") + (system.reducedMotion() ? ", still" : "");
    }

private slots:
    void init() { setPalette(false); }

    // first, while the bus has yet to learn every type
    void noticesALatePortal() {
        const FreedesktopAppearance system;
        QTest::qWait(100);
        for (const uint scheme : {1U, 2U}) {
            const FakePortal portal({{{appearance, "color-scheme"}, scheme}});
            QTRY_COMPARE(system.dark(), scheme == 1);
        }
    }

    void followsThePalette() {
        const FreedesktopAppearance system;
        QVERIFY(!system.dark());
        setPalette(true);
        QTRY_VERIFY(system.dark());
    }

    void readsThePortal() {
        const QString scheme = "color-scheme";
        const QString factor = "AnimationDurationFactor";
        const std::tuple<bool, QString, QString, QVariant, QString> cases[] = {
            {false, appearance, scheme, 1U, "dark"},
            {true, appearance, scheme, 2U, "light"},
            {true, appearance, scheme, 0U, "dark"},
            {false, appearance, scheme, 7U, "light"},
            {false, appearance, "contrast", 1U, "light, clear"},
            {false, appearance, "contrast", 2U, "light"},
            {false, appearance, "reduced-motion", 1U, "light, still"},
            {false, gnome, "enable-animations", false, "light, still"},
            {false, kde, factor, "0", "light, still"},
            {false, kde, factor, "0.5", "light"},
            {false, kde, factor, "", "light"},
        };
        for (const auto &[darkPalette, group, key, value, expected] : cases) {
            setPalette(darkPalette);
            FakePortal portal;
            portal.set(group, key, value);
            const FreedesktopAppearance system;
            QTest::qWait(100);
            QTRY_COMPARE(key + value.toString() + shown(system), key + value.toString() + expected);
        }
    }

    void readsTheButtonsOfTitleBars() {
        FakePortal portal;
        const FreedesktopAppearance system;
        QCOMPARE(system.windowButtons(), WindowButtons::all());
        const std::tuple<QString, QStringList, QStringList> cases[] = {
            {"appmenu:close", {}, {"close"}},
            {"close,minimize:appmenu", {"close", "minimize"}, {}},
            {"icon:minimize, maximize ,spacer,close", {}, {"minimize", "maximize", "close"}},
            {"maximize,close", {"maximize", "close"}, {}},
            {"close,close:minimize,close", {"close"}, {"minimize"}},
            {":", {}, {}},
        };
        for (const auto &[layout, left, right] : cases) {
            const WindowButtons expected{left, right};
            portal.set("org.gnome.desktop.wm.preferences", "button-layout", layout);
            QTRY_VERIFY(system.windowButtons() == expected);
        }
    }

    void signalsWhatBecomesDifferent() {
        FakePortal portal;
        portal.set(appearance, "color-scheme", 2U);
        const FreedesktopAppearance system;
        const QSignalSpy darkSpy(&system, &SystemAppearance::darkChanged);
        const QSignalSpy motionSpy(&system, &SystemAppearance::reducedMotionChanged);
        portal.set(gnome, "enable-animations", false);
        QTRY_VERIFY(system.reducedMotion());
        portal.set(appearance, "reduced-motion", 1U);
        portal.set(gnome, "enable-animations", true);
        portal.set(appearance, "accent-color", 3U);
        portal.set(appearance, "contrast", 1U);
        portal.set(appearance, "color-scheme", 1U);
        QTRY_COMPARE(shown(system), "dark, clear, still");
        QCOMPARE(darkSpy.count() + motionSpy.count(), 2);
    }
};

QTEST_MAIN(FreedesktopAppearanceTest)
#include "FreedesktopAppearanceTest.moc"
