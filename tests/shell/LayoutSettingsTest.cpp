#include "app/shell/LayoutSettings.h"

#include "app/shell/Workspace.h"
#include "tests/support/ModelFixture.h"

using namespace tallyview;
using namespace tallyview::test;

class LayoutSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void aWidthOutOfBoundsHeals() {
        for (const auto &[stored, shown, healed] :
             {std::tuple(QVariant(), 224.0, "224"), std::tuple(QVariant("150"), 200.0, "200"),
              std::tuple(QVariant("500"), 360.0, "360"), std::tuple(QVariant("wide"), 224.0, "224"),
              std::tuple(QVariant("224.7"), 224.7, "224.7")}) {
            MemoryDefaults defaults;
            defaults.setValue("sidebarWidth", stored);
            LayoutSettings layout(defaults);
            QCOMPARE(layout.sidebarWidth(), shown);
            layout.healSidebarWidth();
            QCOMPARE(defaults.text("sidebarWidth"), healed);
        }
    }

    void onlyTheExactTextIsTheFocusMode() {
        for (const char *text : {"focus", "Focus", "grid", ""}) {
            ModelFixture f;
            f.defaults.setValue("dashboardMode", text);
            LayoutSettings layout(f.defaults);
            QCOMPARE(Workspace(f.model, layout).isFocusMode(), QString("focus") == text);
        }
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
        QVERIFY(workspace.focusProject()->title().isEmpty());

        // Another text for the same mode, or none, changes nothing.
        f.model.setSelectedProject("atlas");
        for (const QVariant &text : {QVariant("grid"), QVariant(), QVariant("standard")}) {
            f.defaults.setValue("dashboardMode", text);
            QVERIFY(f.model.selectedProject() == "atlas");
        }
        QCOMPARE(order.size(), 2);
    }
};

QTEST_GUILESS_MAIN(LayoutSettingsTest)
#include "LayoutSettingsTest.moc"
