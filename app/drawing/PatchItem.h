#pragma once

#include "app/drawing/SoftPatch.h"

#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// An item that shows one patch, made anew when its look, its size or the
/// window's pixel ratio changes. Main thread.
///
/// Pixels are copied one to one while the item is neither turned nor scaled;
/// set `smooth` while an item around it is.
class PatchItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

protected:
    explicit PatchItem(QQuickItem *parent);

    /// The patch to show at the item's present size; a null image shows nothing.
    virtual SoftPatch makePatch(qreal pixelRatio) const = 0;

    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    bool needsFilter() const { return smooth() || rotation() != 0 || scale() != 1; }

    SoftPatch m_patch;
    qreal m_pixelRatio = 1;
};

} // namespace tallyview
