#include "app/shell/OrvikTallyviewApp.h"

#include "app/platform/FreedesktopInstance.h"
#include "app/platform/ProcessMemory.h"
#include "app/platform/TerminationSignals.h"
#include "app/platform/TextScale.h"
#include "app/shell/CommandLine.h"
#include "app/shell/SceneRenderer.h"
#include "core/HomeDirectory.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QThreadPool>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tallyview {

namespace {

/// Qt's application, with windows scaled as the desktop wants texts. Nobody waits for one that
/// starts in the background, as at login, when the desktop may still be starting too.
QGuiApplication makeApplication(int &argc, char **argv, bool inBackground) {
    const TextScale scale(inBackground ? std::chrono::seconds(10) : std::chrono::milliseconds(500));
    return QGuiApplication(argc, argv);
}

} // namespace

OrvikTallyviewApp::OrvikTallyviewApp(const ApplicationInstance &instance)
    : m_instance(instance)
    , m_notifications(m_notificationCenter, m_defaults, m_urlOpener, systemNow)
    , m_appDelegate(m_notifications)
    , m_model(OrvikThreadStore(agentDatabase()), {.defaults = m_defaults, .urlOpener = m_urlOpener})
    , m_commands(m_model, m_notifications)
    , m_layout(m_defaults)
    , m_windowAppearance(m_layout, m_appearance)
    , m_chrome(m_windowAppearance, m_appearance)
    , m_workspace(m_model, m_layout) {
    QObject::connect(
        &m_model, &DashboardModel::taskCompleted, &m_model,
        [this](const ThreadRecord &thread) { m_notifications.notifyCompletion(thread); });
    // Queued: after the views have let go of what they showed. A reading needs as much memory again
    // as the threads have, but only for a moment every 30 seconds.
    QObject::connect(&m_model, &DashboardModel::refreshFinished, &m_model, returnFreedMemory,
                     Qt::QueuedConnection);
    m_summary.setModel(&m_model);
}

bool OrvikTallyviewApp::start(const std::optional<QString> &activationToken) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_appDelegate.applicationDidFinishLaunching();
    if (!loadWindow()) {
        return false;
    }
    QObject::connect(&m_instance, &ApplicationInstance::activated, &*m_windowKeeper,
                     &WindowKeeper::present);
    QObject::connect(&m_commands, &AppCommands::showWindow, &*m_windowKeeper,
                     [this] { m_windowKeeper->present({}); });
    QObject::connect(&m_presence, &BackgroundPresence::hasTrayChanged, &m_engine,
                     [this] { showPresence(); });
    QObject::connect(&m_summary, &TaskSummary::textChanged, &m_engine, [this] { showPresence(); });
    if (activationToken) {
        m_windowKeeper->present(*activationToken);
    }
    return true;
}

bool OrvikTallyviewApp::loadWindow() {
    // The first text has the files of all fonts looked through; by then that may be done.
    QThreadPool::globalInstance()->start([] { QFontDatabase::families(); });
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_engine.setInitialProperties(
        {{QStringLiteral("model"), QVariant::fromValue(&m_model)},
         {QStringLiteral("commands"), QVariant::fromValue(&m_commands)},
         {QStringLiteral("appearance"), QVariant::fromValue(&m_windowAppearance)},
         {QStringLiteral("chrome"), QVariant::fromValue(&m_chrome)},
         {QStringLiteral("layout"), QVariant::fromValue(&m_layout)},
         {QStringLiteral("workspace"), QVariant::fromValue(&m_workspace)}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Orvik/Tallyview/Shell/MainWindow.qml")));
    auto *window = qobject_cast<QWindow *>(m_engine.rootObjects().value(0));
    if (window) {
        m_chrome.setWindow(*window);
        m_windowKeeper.emplace(*window, m_chrome, m_defaults);
    }
    return window != nullptr;
}

/// An item in the tray or, where there is none, a line in the desktop's list.
void OrvikTallyviewApp::showPresence() {
    if (!m_presence.hasTray()) {
        m_presence.describe(m_summary.text());
    } else if (!std::exchange(m_hasTrayItem, true)) {
        loadTrayItem();
    }
}

void OrvikTallyviewApp::loadTrayItem() {
    m_engine.setInitialProperties({{QStringLiteral("summary"), QVariant::fromValue(&m_summary)},
                                   {QStringLiteral("commands"), QVariant::fromValue(&m_commands)}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Orvik/Tallyview/Shell/TrayItem.qml")));
}

void OrvikTallyviewApp::finish(int status) {
    m_defaults.flush();
    if (!m_model.stopReading(std::chrono::milliseconds(100))) {
        std::_Exit(status);
    }
}

int runTallyview(int argc, char **argv) {
    const QStringList arguments(argv + 1, argv + argc);
    if (const auto answer = commandLineAnswer(arguments)) {
        std::fputs(qPrintable(*answer), stdout);
        return EXIT_SUCCESS;
    }
    const QString activationToken = FreedesktopInstance::environmentToken();
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    chooseSceneRenderer();
    const QGuiApplication application = makeApplication(argc, argv, isInBackground(arguments));
    QGuiApplication::setApplicationName(QStringLiteral("org.orvik.Tallyview"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Orvik Tallyview"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.orvik.Tallyview"));
    const TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::received, &application,
                     &QCoreApplication::quit);

    const auto start = readCommandLine(QGuiApplication::arguments().mid(1));
    if (!start) {
        std::fputs(qPrintable(start.error()), stderr);
        return 2;
    }
    const auto activation =
        *start == Start::withWindow ? std::optional(activationToken) : std::nullopt;
    FreedesktopInstance instance;
    const auto role = instance.claim(activation);
    if (!role) {
        qCritical("Orvik Tallyview runs already but does not answer: %s", qPrintable(role.error()));
        return EXIT_FAILURE;
    }
    if (*role == ApplicationInstance::Role::handedOver) {
        return EXIT_SUCCESS;
    }
    OrvikTallyviewApp app(instance);
    const int status = app.start(activation) ? QGuiApplication::exec() : EXIT_FAILURE;
    app.finish(status);
    return status;
}

} // namespace tallyview
