#pragma once

#include <QHash>
#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// Where views were left that are gone, by name, in points from their top. Main thread.
class ScrollPlaces : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// 0 for a name that is not known.
    Q_INVOKABLE double top(const QString &name) const { return m_tops.value(name); }
    /// What has no name is not kept.
    Q_INVOKABLE void keep(const QString &name, double top) {
        if (!name.isEmpty()) {
            m_tops.insert(name, top);
        }
    }

private:
    QHash<QString, double> m_tops;
};

} // namespace tallyview
