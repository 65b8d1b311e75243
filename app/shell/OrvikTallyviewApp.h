#pragma once

#include "app/model/DashboardModel.h"
#include "app/model/TaskNotificationService.h"
#include "app/platform/DesktopUrlOpener.h"
#include "app/platform/FreedesktopAppearance.h"
#include "app/platform/FreedesktopNotificationCenter.h"
#include "app/platform/IniUserDefaults.h"
#include "app/shell/AppCommands.h"
#include "app/shell/AppDelegate.h"
#include "app/shell/LayoutSettings.h"
#include "app/shell/WindowAppearance.h"
#include "app/shell/Workspace.h"

#include <QQmlApplicationEngine>

#include <filesystem>

namespace tallyview {

/// The application: owns the one model, the desktop behind it and the window. Main thread; lives
/// as long as the process.
class OrvikTallyviewApp {
public:
    /// Needs a QGuiApplication.
    OrvikTallyviewApp();

    /// Opens the window. False when it could not be loaded; standard error says why.
    bool start();

    /// Where the agent keeps its state, in the current user's home directory.
    static std::filesystem::path databaseURL();

private:
    IniUserDefaults m_defaults;
    DesktopUrlOpener m_urlOpener;
    FreedesktopAppearance m_appearance;
    FreedesktopNotificationCenter m_notificationCenter;
    TaskNotificationService m_notifications;
    AppDelegate m_appDelegate;
    DashboardModel m_model;
    AppCommands m_commands;
    WindowAppearance m_windowAppearance;
    LayoutSettings m_layout;
    Workspace m_workspace;
    QQmlApplicationEngine m_engine;
};

/// The process: runs the application until the user quits. Returns the exit status.
int runTallyview(int argc, char **argv);

} // namespace tallyview
