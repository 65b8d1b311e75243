#include "app/shell/OrvikTallyviewApp.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <QtQml/qqmlextensionplugin.h>

using namespace tallyview;

Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ShellPlugin)
Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ViewsPlugin)

namespace {

class OnlyInstance : public ApplicationInstance {
public:
    std::expected<Role, QString> claim(const QString &) override { return Role::primary; }
};

/// Runs the application for a while; what it ended with if it did not last.
int run(std::chrono::milliseconds time) {
    constexpr int stillRunning = 77;
    QTimer::singleShot(time, [] { QCoreApplication::exit(stillRunning); });
    const int status = QCoreApplication::exec();
    return status == stillRunning ? -1 : status;
}

} // namespace

class OrvikTallyviewAppTest : public QObject {
    Q_OBJECT

private slots:
    void theProcessOutlivesItsWindow() {
        const QTemporaryDir home;
        for (const char *name : {"HOME", "XDG_CONFIG_HOME"}) {
            qputenv(name, home.path().toUtf8());
        }
        OnlyInstance instance;
        OrvikTallyviewApp app(instance);
        QVERIFY(app.start({}));
        const QWindowList windows = QGuiApplication::topLevelWindows();
        QCOMPARE(windows.size(), 1);
        QVERIFY(windows[0]->isVisible());

        for (int time = 0; time < 2; ++time) {
            QTimer::singleShot(100, windows[0], &QWindow::close);
            QCOMPARE(run(std::chrono::milliseconds(400)), -1);
            QVERIFY(!windows[0]->isVisible());
            emit instance.activated({});
            QVERIFY(windows[0]->isVisible());
        }
        QTimer::singleShot(100, &QCoreApplication::quit);
        QCOMPARE(run(std::chrono::seconds(5)), 0);
        QVERIFY(!windows[0]->isVisible());
    }
};

QTEST_MAIN(OrvikTallyviewAppTest)
#include "OrvikTallyviewAppTest.moc"
