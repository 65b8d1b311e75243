#pragma once

#include "app/presentation/ModelObserver.h"

namespace tallyview {

/// What the sidebar tells in figures and about the agent's database.
class SidebarState : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool readFailed READ readFailed NOTIFY changed)
    Q_PROPERTY(QString databaseLabel READ databaseLabel NOTIFY changed)
    Q_PROPERTY(QString projectCount READ projectCount NOTIFY changed)
    Q_PROPERTY(QString runningCount READ runningCount NOTIFY changed)

public:
    using ModelObserver::ModelObserver;

    bool readFailed() const { return m_readFailed; }
    /// Whether the database could be read, in words.
    QString databaseLabel() const;
    QString projectCount() const { return m_projectCount; }
    QString runningCount() const { return m_runningCount; }

signals:
    void changed();

private:
    void update() override;

    std::optional<std::uint64_t> m_counted; ///< the revision of the threads that were counted
    bool m_readFailed = false;
    QString m_projectCount;
    QString m_runningCount;
};

} // namespace tallyview
