#pragma once

#include <QSGTexture>

#include <memory>

class QImage;
class QQuickWindow;

namespace tallyview {

/// The texture of `image` in `window`, one for all nodes that show the image. Get and release it on
/// the render thread only.
std::shared_ptr<QSGTexture> sharedTexture(QQuickWindow *window, const QImage &image);

} // namespace tallyview
