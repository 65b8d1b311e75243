#include "app/shell/SceneRenderer.h"

#include <QDir>
#include <QQuickWindow>

namespace tallyview {

bool hasGraphicsProcessor(const QString &devices) {
    // The kernel's drivers make render nodes; these two bring nodes of their own.
    const QDir folder(devices);
    const QDir nodes(folder.filePath(QStringLiteral("dri")), QStringLiteral("renderD*"), {},
                     QDir::Files | QDir::System);
    return nodes.count() > 0 || folder.exists(QStringLiteral("nvidia0")) ||
           folder.exists(QStringLiteral("dxg"));
}

void chooseSceneRenderer() {
#ifdef Q_OS_LINUX
    const bool isNamed = qEnvironmentVariableIsSet("QT_QUICK_BACKEND") ||
                         qEnvironmentVariableIsSet("QMLSCENE_DEVICE") ||
                         qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    if (!isNamed && !hasGraphicsProcessor(QStringLiteral("/dev"))) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
#endif
}

} // namespace tallyview
