#pragma once

#include "app/theme/SoftPatch.h"

#include <QSGImageNode>
#include <QSGNode>
#include <QSGTexture>

#include <memory>
#include <vector>

class QQuickWindow;

namespace tallyview {

/// Shows a patch in the scene graph of any renderer; owns its texture. Render
/// thread only, as every node.
class PatchNode : public QSGNode {
public:
    /// Shows `patch` with the item's origin at its surface's corner. Pixels are
    /// copied one to one unless `smooth`, which suits turned and scaled items.
    /// The texture is made anew only when the picture is another one.
    void show(QQuickWindow *window, const SoftPatch &patch, qreal pixelRatio, bool smooth);

private:
    void matchPieceCount(QQuickWindow *window, std::size_t count);

    qint64 m_imageKey = 0;
    std::unique_ptr<QSGTexture> m_texture;
    std::vector<QSGImageNode *> m_pieces; ///< owned by the tree
};

} // namespace tallyview
