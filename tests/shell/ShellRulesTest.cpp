#include "app/shell/LayoutSettings.h"
#include "app/shell/SceneRenderer.h"
#include "app/shell/Workspace.h"
#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFile>

using namespace tallyview;
using namespace tallyview::test;

/// What the shell decides without a window.
class ShellRulesTest : public QObject {
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

    void aModeChangeClosesTheProjectLast() {
        ModelFixture f;
        LayoutSettings layout(f.defaults);
        Workspace workspace(f.model, layout);
        workspace.toggleMode();
        workspace.focusProject()->open("atlas");
        QString title;
        connect(&workspace, &Workspace::focusModeChanged, this, [&] {
            // Seen by those who replace the workspace: it goes with its project still open.
            title = f.model.selectedProject() ? "selected" : workspace.focusProject()->title();
        });
        workspace.toggleMode();
        QCOMPARE(title, "atlas · 任务动态");
        QVERIFY(workspace.focusProject()->title().isEmpty());

        // No text means the standard mode.
        f.model.setSelectedProject("atlas");
        f.defaults.setValue("dashboardMode", QVariant());
        QVERIFY(f.model.selectedProject() == "atlas");
        f.defaults.setValue("dashboardMode", "grid");
        QVERIFY(!f.model.selectedProject());
    }

    void aGraphicsProcessorIsFound() {
        for (const auto &[file, isFound] : {std::pair("dri", false),
                                            {"dri/card0", false}, // a screen that nothing draws for
                                            {"dri/renderD128", true},
                                            {"nvidia0", true},
                                            {"dxg", true}}) {
            const QTemporaryDir devices;
            QDir(devices.path()).mkdir("dri");
            [[maybe_unused]] const bool made =
                QFile(devices.filePath(file)).open(QIODevice::WriteOnly);
            QCOMPARE(hasGraphicsProcessor(devices.path()), isFound);
        }
    }
};

QTEST_GUILESS_MAIN(ShellRulesTest)
#include "ShellRulesTest.moc"
