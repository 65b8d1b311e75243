#pragma once

#include "app/model/DashboardModel.h"
#include "app/model/TaskNotificationService.h"
#include "app/platform/ApplicationInstance.h"
#include "app/platform/DesktopUrlOpener.h"
#include "app/platform/FreedesktopAppearance.h"
#include "app/platform/FreedesktopBackgroundPresence.h"
#include "app/platform/FreedesktopNotificationCenter.h"
#include "app/platform/IniUserDefaults.h"
#include "app/presentation/TaskSummary.h"
#include "app/shell/AppCommands.h"
#include "app/shell/AppDelegate.h"
#include "app/shell/LayoutSettings.h"
#include "app/shell/WindowAppearance.h"
#include "app/shell/WindowChrome.h"
#include "app/shell/WindowKeeper.h"
#include "app/shell/Workspace.h"

#include <QQmlApplicationEngine>

#include <optional>

namespace tallyview {

/// The application: owns the one model, the desktop behind it and the window. Main thread; lives
/// as long as the process, which goes on when the window is closed: the model keeps watching, the
/// desktop shows that it does, and the window shows again when the application is activated.
class OrvikTallyviewApp {
public:
    /// Needs a QGuiApplication. `instance` is the session's one and outlives the application.
    explicit OrvikTallyviewApp(const ApplicationInstance &instance);

    /// Starts watching and opens the window; `activationToken` (may be empty) is the permission to
    /// open it in front, and without one it stays closed. False when it could not be loaded;
    /// standard error says why.
    bool start(const std::optional<QString> &activationToken);

    /// To be called when the event loop has ended. If the background reading waits for something
    /// that may never come, writes all settings and ends the process here and now.
    void finish(int status);

private:
    bool loadWindow();
    void showPresence();
    void loadTrayItem();

    const ApplicationInstance &m_instance;
    IniUserDefaults m_defaults;
    DesktopUrlOpener m_urlOpener;
    FreedesktopAppearance m_appearance;
    FreedesktopNotificationCenter m_notificationCenter;
    TaskNotificationService m_notifications;
    AppDelegate m_appDelegate;
    DashboardModel m_model;
    TaskSummary m_summary;
    FreedesktopBackgroundPresence m_presence;
    AppCommands m_commands;
    LayoutSettings m_layout;
    WindowAppearance m_windowAppearance;
    WindowChrome m_chrome;
    Workspace m_workspace;
    QQmlApplicationEngine m_engine;
    std::optional<WindowKeeper> m_windowKeeper; ///< of the engine's window
    bool m_hasTrayItem = false;
};

/// The process: runs the application until the user or the end of the session quits it, or has
/// the one that runs already show its window. Returns the exit status: 2 for arguments that it
/// does not understand.
int runTallyview(int argc, char **argv);

} // namespace tallyview
