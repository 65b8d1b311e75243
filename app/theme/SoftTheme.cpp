#include "app/theme/SoftTheme.h"

#include <utility>

namespace tallyview {

QColor SoftTheme::withOpacity(const QColor &color, qreal opacity) {
    QColor result = color;
    result.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return result;
}

void SoftTheme::turn(bool &property, bool value) {
    if (std::exchange(property, value) == value) {
        return;
    }
    m_turning = true;
    emit motionChanged();
    emit paletteChanged();
    m_turning = false;
    emit motionChanged();
}

QVariantList SoftTheme::appearanceModes() {
    QVariantList modes;
    for (const AppearanceMode mode : AppearanceMode::allCases()) {
        modes.append(QVariant::fromValue(mode));
    }
    return modes;
}

} // namespace tallyview
