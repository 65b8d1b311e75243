#include "app/shell/LayoutSettings.h"

#include "app/shell/Workspace.h"
#include "tests/model/ModelFixture.h"

using namespace tallyview;
using namespace tallyview::test;

class LayoutSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void aWidthOutOfBoundsHeals_data() {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<double>("shown");
        QTest::addColumn<QVariant>("healed");
        QTest::newRow("nothing") << QVariant() << 224.0 << QVariant("224");
        QTest::newRow("too narrow") << QVariant("150") << 200.0 << QVariant("200");
        QTest::newRow("too wide") << QVariant("500") << 360.0 << QVariant("360");
        QTest::newRow("fraction") << QVariant("224.7") << 224.7 << QVariant("224.7");
        QTest::newRow("no number") << QVariant("wide") << 224.0 << QVariant("224");
    }
    void aWidthOutOfBoundsHeals() {
        QFETCH(QVariant, stored);
        MemoryDefaults defaults;
        if (stored.isValid()) {
            defaults.setValue("sidebarWidth", stored);
        }
        LayoutSettings layout(defaults);
        QTEST(layout.sidebarWidth(), "shown");
        layout.healSidebarWidth();
        QTEST(defaults.value("sidebarWidth"), "healed");
    }

    void changesFromAnywhereShow() {
        MemoryDefaults defaults;
        LayoutSettings layout(defaults);
        QSignalSpy width(&layout, &LayoutSettings::sidebarWidthChanged);
        QSignalSpy mode(&layout, &LayoutSettings::dashboardModeChanged);
        QSignalSpy appearance(&layout, &LayoutSettings::appearanceModeChanged);
        QCOMPARE(layout.dashboardMode() + "|" + layout.appearanceMode(), "standard|system");
        defaults.setValue("sidebarWidth", "300");
        defaults.setValue("dashboardMode", "focus");
        defaults.setValue("appearanceMode", "dark");
        defaults.setValue("pinnedThreadIDs", QStringList("a"));
        QCOMPARE(layout.sidebarWidth(), 300.0);
        QCOMPARE(layout.dashboardMode() + "|" + layout.appearanceMode(), "focus|dark");
        QCOMPARE(width.count() + mode.count() + appearance.count(), 3);
        layout.setAppearanceMode("light");
        layout.setDashboardMode("standard");
        QCOMPARE(defaults.text("appearanceMode"), "light");
        QCOMPARE(defaults.text("dashboardMode"), "standard");
    }

    void onlyTheExactTextIsTheFocusMode_data() {
        QTest::addColumn<bool>("focus");
        QTest::newRow("focus") << true;
        for (const char *text : {"Focus", "grid", "", "standard"}) {
            QTest::newRow(text) << false;
        }
    }
    void onlyTheExactTextIsTheFocusMode() {
        ModelFixture f;
        f.defaults.setValue("dashboardMode", QTest::currentDataTag());
        LayoutSettings layout(f.defaults);
        QTEST(Workspace(f.model, layout).isFocusMode(), "focus");
    }

    void aModeChangeClosesAndDeselectsTheProject() {
        ModelFixture f;
        LayoutSettings layout(f.defaults);
        Workspace workspace(f.model, layout);
        f.model.setSelectedProject("atlas");
        workspace.toggleMode();
        QCOMPARE(f.defaults.text("dashboardMode"), "focus");
        QVERIFY(workspace.isFocusMode() && !f.model.selectedProject());

        workspace.focusProject()->open("atlas");
        QStringList order;
        connect(&workspace, &Workspace::focusModeChanged, this, [&] {
            order.append(f.model.selectedProject() ? "selected" : "deselected");
            order.append(workspace.focusProject()->title());
        });
        f.defaults.setValue("dashboardMode", "standard");
        // Seen by those who replace the workspace: it goes with its project still open.
        QCOMPARE(order.join(u'|'), "deselected|atlas · 任务动态");
        QVERIFY(!workspace.focusProject()->name());
    }
};

QTEST_GUILESS_MAIN(LayoutSettingsTest)
#include "LayoutSettingsTest.moc"
