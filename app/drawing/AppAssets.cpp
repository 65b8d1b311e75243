#include "app/drawing/AppAssets.h"

#include <QPixmap>

namespace tallyview::AppAssets {

namespace {

QIcon loadIcon() {
    const QPixmap own(QStringLiteral(":/qt/qml/Orvik/Tallyview/Drawing/OrvikIcon.png"));
    if (!own.isNull()) {
        return QIcon(own);
    }
    const QIcon generic = QIcon::fromTheme(QStringLiteral("application-x-executable"));
    if (!generic.isNull()) {
        return generic;
    }
    QPixmap empty(64, 64);
    empty.fill(Qt::transparent);
    return QIcon(empty);
}

} // namespace

const QIcon &orvikIcon() {
    static const QIcon icon = loadIcon();
    return icon;
}

} // namespace tallyview::AppAssets
