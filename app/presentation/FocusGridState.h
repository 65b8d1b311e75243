#pragma once

#include "app/presentation/ModelObserver.h"

#include <vector>

namespace tallyview {

/// What the header of the project grid shows, and what its content is made from: the projects and
/// the face.
class FocusGridState : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString projectCount READ projectCount NOTIFY changed)
    Q_PROPERTY(QString runningCount READ runningCount NOTIFY changed)
    Q_PROPERTY(QString totalCount READ totalCount NOTIFY changed)
    Q_PROPERTY(QString contentIdentity READ contentIdentity NOTIFY changed)

public:
    enum Face { Loading, Grid, Empty };
    Q_ENUM(Face)

    using ModelObserver::ModelObserver;

    QString projectCount() const { return m_projectCount; }
    QString runningCount() const { return m_runningCount; }
    QString totalCount() const { return m_totalCount; }
    /// Names the face; the content is replaced when it changes.
    QString contentIdentity() const { return QString::number(m_face); }

    Face face() const { return m_face; }
    /// Of the last update, latest activity first.
    const std::vector<ProjectSummary> &projects() const { return m_projects; }
    Instant evaluatedAt() const { return m_evaluatedAt; }

private:
    void update() override;
    Face currentFace() const;

    QString m_projectCount;
    QString m_runningCount;
    QString m_totalCount;
    Face m_face = Loading;
    std::vector<ProjectSummary> m_projects;
    Instant m_evaluatedAt;
};

} // namespace tallyview
