#pragma once

#include "app/model/DashboardModel.h"

#include <QObject>
#include <QPointer>
#include <QtQmlIntegration>

namespace tallyview {

/// What a view shows of the dashboard, worked out once for all changes in one turn of the event
/// loop; every view has a type derived from this. While its view is being replaced it is not `live`
/// and keeps what it shows. Main thread.
class ModelObserver : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(tallyview::DashboardModel *model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(bool live READ isLive WRITE setLive NOTIFY liveChanged)

public:
    using QObject::QObject;

    DashboardModel *model() const { return m_model; }
    /// The model is not owned. What is shown follows at once.
    void setModel(DashboardModel *model);
    bool isLive() const { return m_live; }
    void setLive(bool live);

signals:
    void modelChanged();
    void liveChanged();
    /// What is shown has been worked out anew.
    void changed();

protected:
    /// Recomputes what is shown. Called with a model only.
    virtual void update() = 0;
    /// Follows the model through `source`: updates right after it, to build on what it has worked
    /// out.
    void follow(const ModelObserver &source);

private:
    void takeModel(DashboardModel *model);
    void scheduleUpdate();
    void updateNow();

    QPointer<DashboardModel> m_model;
    bool m_live = true;
    bool m_updateIsScheduled = false;
};

} // namespace tallyview
