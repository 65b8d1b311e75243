#pragma once

namespace tallyview {

class TaskNotificationService;

/// What happens once, when the application has finished launching. Main thread.
class AppDelegate {
public:
    explicit AppDelegate(TaskNotificationService &notifications) : m_notifications(notifications) {}

    /// Sets the application's icon and asks for permission to notify. Windows never group into
    /// tabs on this platform, so nothing has to be switched off. Does not refresh.
    void applicationDidFinishLaunching();

private:
    TaskNotificationService &m_notifications;
};

} // namespace tallyview
