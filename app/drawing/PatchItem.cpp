#include "app/drawing/PatchItem.h"

#include "app/drawing/PatchNode.h"

#include <QQuickWindow>

namespace tallyview {

PatchItem::PatchItem(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setSmooth(false);
    connect(this, &QQuickItem::smoothChanged, this, &QQuickItem::update);
    connect(this, &QQuickItem::rotationChanged, this, &QQuickItem::update);
    connect(this, &QQuickItem::scaleChanged, this, &QQuickItem::update);
}

void PatchItem::updatePolish() {
    if (!window()) {
        return;
    }
    m_pixelRatio = window()->effectiveDevicePixelRatio();
    m_patch = makePatch(m_pixelRatio);
    update();
}

QSGNode *PatchItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *) {
    if (m_patch.image.isNull()) {
        delete node;
        return nullptr;
    }
    auto *shown = node ? static_cast<PatchNode *>(node) : new PatchNode;
    shown->show(window(), m_patch, m_pixelRatio, needsFilter());
    return shown;
}

void PatchItem::geometryChange(const QRectF &now, const QRectF &before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        polish();
    }
}

void PatchItem::itemChange(ItemChange change, const ItemChangeData &data) {
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        polish();
    }
    QQuickItem::itemChange(change, data);
}

} // namespace tallyview
