#pragma once

#include "app/drawing/SoftPatch.h"

#include <QSGImageNode>
#include <QSGNode>
#include <QSGTexture>

#include <memory>
#include <vector>

class QQuickWindow;

namespace tallyview {

/// Shows a patch in the scene graph of any renderer. Render thread only, as every
/// node.
class PatchNode : public QSGNode {
public:
    /// Shows `patch` with the item's origin at its surface's corner. Pixels are
    /// copied one to one unless `smooth`, which suits turned and scaled items.
    void show(QQuickWindow *window, const SoftPatch &patch, qreal pixelRatio, bool smooth);

private:
    void matchPieceCount(QQuickWindow *window, std::size_t count);

    std::shared_ptr<QSGTexture> m_texture;
    std::vector<QSGImageNode *> m_pieces; ///< owned by the tree
};

} // namespace tallyview
