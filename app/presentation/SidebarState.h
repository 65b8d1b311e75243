#pragma once

#include "app/presentation/ModelObserver.h"

namespace tallyview {

/// The figures that the sidebar shows beside the focus workspace.
class SidebarState : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString projectCount READ projectCount NOTIFY changed)
    Q_PROPERTY(QString runningCount READ runningCount NOTIFY changed)

public:
    using ModelObserver::ModelObserver;

    QString projectCount() const { return m_projectCount; }
    QString runningCount() const { return m_runningCount; }

private:
    void update() override;

    std::optional<std::uint64_t> m_counted; ///< the revision of the threads that were counted
    QString m_projectCount;
    QString m_runningCount;
};

} // namespace tallyview
