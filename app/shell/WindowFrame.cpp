#include "app/shell/WindowFrame.h"

#include <algorithm>

namespace tallyview {

namespace {

qint64 sharedArea(const QRect &a, const QRect &b) {
    const QRect shared = a.intersected(b);
    return shared.isEmpty() ? 0 : qint64(shared.width()) * shared.height();
}

/// Where to put a stretch of `length`, wanted at `start`, between `low` and `high`; if it does not
/// fit, it begins at `low`.
int placed(int start, int length, int low, int high) {
    return std::max(low, std::min(start, high - length));
}

} // namespace

QRect fittedFrame(const QRect &frame, const QSize &minimum, const QList<QRect> &screens) {
    const auto screen =
        std::max_element(screens.begin(), screens.end(), [&](const QRect &a, const QRect &b) {
            return sharedArea(frame, a) < sharedArea(frame, b);
        });
    if (screen == screens.end()) {
        return frame;
    }
    const QSize size = frame.size().boundedTo(screen->size()).expandedTo(minimum);
    const int x = placed(frame.x(), size.width(), screen->x(), screen->x() + screen->width());
    const int y = placed(frame.y(), size.height(), screen->y(), screen->y() + screen->height());
    return {QPoint(x, y), size};
}

} // namespace tallyview
