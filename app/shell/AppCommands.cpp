#include "app/shell/AppCommands.h"

#include "app/model/TaskNotificationService.h"

#include <QCoreApplication>

#include <utility>

namespace tallyview {

AppCommands::AppCommands(DashboardModel &model, TaskNotificationService &notifications)
    : m_notifications(notifications) {
    setModel(&model);
}

void AppCommands::openSelected() const {
    if (const auto thread = model()->selectedThread()) {
        model()->open(*thread);
    }
}

void AppCommands::refresh() const { model()->refresh(); }

void AppCommands::sendTestNotification() const { m_notifications.sendTestNotification(); }

void AppCommands::quit() { QCoreApplication::quit(); }

void AppCommands::update() {
    const bool canOpen = model()->selectedThread().has_value();
    if (std::exchange(m_canOpenSelected, canOpen) != canOpen) {
        emit canOpenSelectedChanged();
    }
}

} // namespace tallyview
