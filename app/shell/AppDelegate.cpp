#include "app/shell/AppDelegate.h"

#include "app/drawing/AppAssets.h"
#include "app/model/TaskNotificationService.h"

#include <QGuiApplication>

namespace tallyview {

void AppDelegate::applicationDidFinishLaunching() {
    QGuiApplication::setWindowIcon(AppAssets::orvikIcon());
    m_notifications.configure();
}

} // namespace tallyview
