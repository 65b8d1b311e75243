#pragma once

#include "app/presentation/ModelObserver.h"

#include <QtQmlIntegration>

namespace tallyview {

class TaskNotificationService;

/// The commands of the menu bar and of the tray item. Main thread.
class AppCommands : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the commands")
    Q_PROPERTY(bool canOpenSelected READ canOpenSelected NOTIFY changed)

public:
    /// Neither is owned; both outlive the commands.
    AppCommands(DashboardModel &model, TaskNotificationService &notifications);

    bool canOpenSelected() const { return m_canOpenSelected; }

    /// Moves the keyboard's focus to the search field, where there is one.
    Q_INVOKABLE static void focusTaskSearch();
    Q_INVOKABLE void openSelected() const;
    /// Starts a refresh and does not wait for it.
    Q_INVOKABLE void refresh() const;
    Q_INVOKABLE void sendTestNotification() const;
    /// Ends the process, not just the window.
    Q_INVOKABLE static void quit();

signals:
    /// Asks to show the window in front.
    void showWindow();

private:
    void update() override;

    TaskNotificationService &m_notifications;
    bool m_canOpenSelected = false;
};

} // namespace tallyview
