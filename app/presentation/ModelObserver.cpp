#include "app/presentation/ModelObserver.h"

#include <utility>

namespace tallyview {

void ModelObserver::setModel(DashboardModel *model) {
    if (m_model == model) {
        return;
    }
    if (m_model) {
        disconnect(m_model, nullptr, this, nullptr);
    }
    if (model) {
        connect(model, &DashboardModel::aboutToChange, this, &ModelObserver::scheduleUpdate);
    }
    takeModel(model);
    emit modelChanged();
}

void ModelObserver::setLive(bool live) {
    if (std::exchange(m_live, live) != live) {
        scheduleUpdate();
        emit liveChanged();
    }
}

void ModelObserver::follow(const ModelObserver &source) {
    connect(&source, &ModelObserver::changed, this, [this, &source] {
        if (m_live) {
            takeModel(source.model());
        }
    });
    takeModel(source.model());
}

void ModelObserver::takeModel(DashboardModel *model) {
    m_model = model;
    if (model) {
        update();
        emit changed();
    }
}

void ModelObserver::scheduleUpdate() {
    if (!std::exchange(m_updateIsScheduled, true)) {
        QMetaObject::invokeMethod(this, &ModelObserver::updateNow, Qt::QueuedConnection);
    }
}

void ModelObserver::updateNow() {
    m_updateIsScheduled = false;
    if (m_live) {
        takeModel(m_model);
    }
}

} // namespace tallyview
