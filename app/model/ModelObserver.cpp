#include "app/model/ModelObserver.h"

#include <utility>

namespace tallyview {

void ModelObserver::setModel(DashboardModel *model) {
    if (m_model == model) {
        return;
    }
    if (m_model) {
        disconnect(m_model, nullptr, this, nullptr);
    }
    m_model = model;
    if (model) {
        connect(model, &DashboardModel::aboutToChange, this, &ModelObserver::scheduleUpdate);
        update();
    }
    emit modelChanged();
}

void ModelObserver::setLive(bool live) {
    if (std::exchange(m_live, live) != live) {
        scheduleUpdate();
        emit liveChanged();
    }
}

void ModelObserver::scheduleUpdate() {
    if (!std::exchange(m_updateIsScheduled, true)) {
        QMetaObject::invokeMethod(this, &ModelObserver::updateNow, Qt::QueuedConnection);
    }
}

void ModelObserver::updateNow() {
    m_updateIsScheduled = false;
    if (m_model && m_live) {
        update();
    }
}

} // namespace tallyview
