#include "app/platform/TextScale.h"

#include "tests/platform/FakePortal.h"

#include <QElapsedTimer>
#include <QTest>

#include <cmath>
#include <future>

using namespace tallyview;
using namespace tallyview::test;
using namespace std::chrono_literals;

namespace {

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

} // namespace

class TextScaleTest : public QObject {
    Q_OBJECT

private slots:
    void settingsBecomeVariables() {
        const QString larger = "QT_WAYLAND_FORCE_DPI=144";
        const std::tuple<QString, QVariant, QVariant, QString> cases[] = {
            {"", {}, {}, ""},
            {"", 1.0, "Noto Sans,10,-1,5,50,0,0,0,0,0", ""},
            {"", 1.5, {}, larger},
            {"", 1.15, {}, "QT_WAYLAND_FORCE_DPI=110"},
            {"", 0.75, {}, "QT_WAYLAND_FORCE_DPI=72"},
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
            {"", -1.5, "", ""},
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

    void asksThePortalForWhatCounts() {
        const QString wayland = "WAYLAND_DISPLAY=wayland-0";
        const QString kde = "XDG_CURRENT_DESKTOP=Neon:KDE";
        qputenv("QT_SCALE_FACTOR", "2");
        QCOMPARE(scalesWith(wayland), "2 "); // no portal
        FakePortal portal;
        QCOMPARE(scalesWith(wayland), "2 ");
        portal.set("org.gnome.desktop.interface", "text-scaling-factor", 1.25);
        portal.set("org.kde.kdeglobals.General", "font", "Noto Sans,12");
        QCOMPARE(scalesWith(""), "2 ");
        QCOMPARE(scalesWith(wayland), "2 120");
        QCOMPARE(scalesWith("XDG_SESSION_TYPE=wayland"), "2 120");
        QCOMPARE(scalesWith(kde), "2.4 ");
        QCOMPARE(scalesWith(kde + " " + wayland), "2.4 120");
        QCOMPARE(scales(), "2 ");
        QVERIFY(!qEnvironmentVariableIsSet("QT_WAYLAND_FORCE_DPI"));
        portal.fallSilent();
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(scalesWith(kde + " " + wayland), "2 ");
        QVERIFY(timer.elapsed() < 3000);
    }
};

QTEST_GUILESS_MAIN(TextScaleTest)
#include "TextScaleTest.moc"
