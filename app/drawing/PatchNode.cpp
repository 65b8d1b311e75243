#include "app/drawing/PatchNode.h"

#include "app/drawing/SharedTexture.h"

#include <QQuickWindow>

#include <utility>

namespace tallyview {
namespace {

/// Part of a device pixel by which unfiltered pieces are moved. At fractional
/// scale factors an item may begin exactly between two pixels; there every
/// sample would lie on the border of two texels and fall to either side.
constexpr qreal tieBreak = 1.0 / 16;

} // namespace

void PatchNode::show(QQuickWindow *window, const SoftPatch &patch, qreal pixelRatio, bool smooth) {
    // Until every piece shows the new texture the renderer compares it with the old one.
    const std::shared_ptr<QSGTexture> replaced =
        std::exchange(m_texture, sharedTexture(window, patch.image));
    matchPieceCount(window, patch.pieces.size());
    const qreal nudge = smooth ? 0 : tieBreak / pixelRatio;
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        m_pieces[i]->setTexture(m_texture.get());
        m_pieces[i]->setFiltering(smooth ? QSGTexture::Linear : QSGTexture::Nearest);
        m_pieces[i]->setRect(patch.pieces[i].target.translated(nudge, nudge));
        m_pieces[i]->setSourceRect(patch.pieces[i].source);
    }
}

void PatchNode::matchPieceCount(QQuickWindow *window, std::size_t count) {
    while (m_pieces.size() > count) {
        delete m_pieces.back();
        m_pieces.pop_back();
    }
    while (m_pieces.size() < count) {
        m_pieces.push_back(window->createImageNode());
        m_pieces.back()->setTexture(m_texture.get());
        appendChildNode(m_pieces.back());
    }
}

} // namespace tallyview
