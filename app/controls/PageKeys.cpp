#include "app/controls/PageKeys.h"

namespace tallyview {

void PageKeys::offer(QQuickItem *view) {
    m_views.append(view);
    connect(view, &QObject::destroyed, this, [this, view] {
        m_views.removeOne(view);
        emit takerChanged();
    });
    emit takerChanged();
}

} // namespace tallyview
