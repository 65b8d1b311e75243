#include "app/shell/OrvikTallyviewApp.h"

#include <QDir>
#include <QGuiApplication>
#include <QQuickWindow>

namespace tallyview {

OrvikTallyviewApp::OrvikTallyviewApp()
    : m_notifications(m_notificationCenter, m_defaults, m_urlOpener, systemNow)
    , m_appDelegate(m_notifications)
    , m_model(OrvikThreadStore(databaseURL()), {.defaults = m_defaults, .urlOpener = m_urlOpener})
    , m_commands(m_model, m_notifications)
    , m_windowAppearance(m_defaults, m_appearance)
    , m_layout(m_defaults)
    , m_workspace(m_model, m_layout) {
    QObject::connect(
        &m_model, &DashboardModel::taskCompleted, &m_model,
        [this](const ThreadRecord &thread) { m_notifications.notifyCompletion(thread); });
}

std::filesystem::path OrvikTallyviewApp::databaseURL() {
    return std::filesystem::path(QFile::encodeName(QDir::homePath()).toStdString()) /
           ".orvik/state_5.sqlite";
}

bool OrvikTallyviewApp::start() {
    m_appDelegate.applicationDidFinishLaunching();
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_engine.setInitialProperties(
        {{QStringLiteral("model"), QVariant::fromValue(&m_model)},
         {QStringLiteral("commands"), QVariant::fromValue(&m_commands)},
         {QStringLiteral("appearance"), QVariant::fromValue(&m_windowAppearance)},
         {QStringLiteral("layout"), QVariant::fromValue(&m_layout)},
         {QStringLiteral("workspace"), QVariant::fromValue(&m_workspace)}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Orvik/Tallyview/Shell/MainWindow.qml")));
    return !m_engine.rootObjects().isEmpty();
}

int runTallyview(int argc, char **argv) {
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("org.orvik.Tallyview"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Orvik Tallyview"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.orvik.Tallyview"));
    OrvikTallyviewApp app;
    return app.start() ? QGuiApplication::exec() : EXIT_FAILURE;
}

} // namespace tallyview
