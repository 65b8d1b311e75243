#include "app/theme/AppearanceMode.h"

#include "app/theme/SoftTheme.h"

#include <QSignalSpy>
#include <QTest>

using namespace tallyview;

class AppearanceModeTest : public QObject {
    Q_OBJECT

private slots:
    void casesInTheOrderOfThePicker() {
        QStringList lines;
        for (const AppearanceMode mode : AppearanceMode::allCases()) {
            lines << mode.rawValue() + u' ' + mode.title() + u' ' + mode.symbol();
        }
        QCOMPARE(lines, QStringList({QStringLiteral("light 浅色 sun.max"),
                                     QStringLiteral("dark 深色 moon"),
                                     QStringLiteral("system 跟随系统 display")}));
    }

    void storedTexts_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("known");
        QTest::addColumn<std::optional<bool>>("dark");
        QTest::newRow("light") << "light" << true << std::optional(false);
        QTest::newRow("dark") << "dark" << true << std::optional(true);
        QTest::newRow("system") << "system" << true << std::optional<bool>();
        QTest::newRow("Light") << "Light" << false << std::optional<bool>();
        QTest::newRow("empty") << "" << false << std::optional<bool>();
        QTest::newRow("dark with a space") << "dark " << false << std::optional<bool>();
    }
    void storedTexts() {
        QFETCH(QString, stored);
        QFETCH(bool, known);
        QFETCH(std::optional<bool>, dark);
        QCOMPARE(AppearanceMode::fromRawValue(stored).has_value(), known);
        QCOMPARE(AppearanceMode::ofSetting(stored).prefersDark() == dark, true);
        QCOMPARE(AppearanceMode::ofSetting(stored).rawValue(),
                 known ? stored : QStringLiteral("system"));
    }

    void themeFollowsItsTwoSwitches() {
        SoftTheme theme;
        QSignalSpy colours(&theme, &SoftTheme::darkChanged);
        QSignalSpy motion(&theme, &SoftTheme::reducedMotionChanged);
        theme.setProperty("dark", true);
        theme.setProperty("dark", true);
        theme.setProperty("reducedMotion", true);
        QCOMPARE(colours.count(), 1);
        QCOMPARE(motion.count(), 1);
        QCOMPARE(theme.raisedSurface(), QColor::fromRgbF(0.102F, 0.14F, 0.16F));
        QCOMPARE(theme.rimLight(), QColor::fromRgbF(1, 1, 1, 0.08F));
        QCOMPARE(theme.softShadowDark(), QColor::fromRgbF(0, 0, 0, 0.42F));
        QCOMPARE(theme.replaceDuration() + theme.hoverDuration() + theme.focusSlideDuration(), 0);
        QVERIFY(theme.spinDuration() > 0);
    }
};

QTEST_GUILESS_MAIN(AppearanceModeTest)
#include "AppearanceModeTest.moc"
