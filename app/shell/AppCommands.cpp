#include "app/shell/AppCommands.h"

#include "app/model/TaskNotificationService.h"
#include "app/presentation/SearchRequest.h"

#include <QCoreApplication>

namespace tallyview {

AppCommands::AppCommands(DashboardModel &model, TaskNotificationService &notifications)
    : m_notifications(notifications) {
    setModel(&model);
}

void AppCommands::focusTaskSearch() { SearchRequest::post(); }

void AppCommands::openSelected() const {
    if (const auto thread = model()->selectedThread()) {
        model()->open(*thread);
    }
}

void AppCommands::refresh() const { model()->refresh(); }

void AppCommands::sendTestNotification() const { m_notifications.sendTestNotification(); }

void AppCommands::quit() { QCoreApplication::quit(); }

void AppCommands::update() { m_canOpenSelected = model()->selectedThread().has_value(); }

} // namespace tallyview
