#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// The order in which assistive technology reads items. Main thread.
class ReadingOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Has the items inside `parent` read, and drawn, from top to bottom.
    Q_INVOKABLE static void sortByTop(QQuickItem *parent);
};

} // namespace tallyview
