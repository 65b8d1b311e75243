#include "app/drawing/SharedTexture.h"

#include <QImage>
#include <QQuickWindow>

#include <map>
#include <utility>

namespace tallyview {

std::shared_ptr<QSGTexture> sharedTexture(QQuickWindow *window, const QImage &image) {
    using Key = std::pair<QQuickWindow *, qint64>;
    thread_local std::map<Key, std::weak_ptr<QSGTexture>> textures;
    const Key key(window, image.cacheKey());
    std::weak_ptr<QSGTexture> &known = textures[key];
    std::shared_ptr<QSGTexture> texture = known.lock();
    if (!texture) {
        texture.reset(window->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel),
                      [key](QSGTexture *released) {
                          textures.erase(key);
                          delete released;
                      });
        known = texture;
    }
    return texture;
}

} // namespace tallyview
