#include "app/theme/SoftTheme.h"

namespace tallyview {

QColor SoftTheme::withOpacity(const QColor &color, qreal opacity) {
    QColor result = color;
    result.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return result;
}

AppearanceMode SoftTheme::appearanceMode(const QString &stored) {
    return AppearanceMode::ofSetting(stored);
}

QVariantList SoftTheme::appearanceModes() {
    QVariantList modes;
    for (const AppearanceMode mode : AppearanceMode::allCases()) {
        modes.append(QVariant::fromValue(mode));
    }
    return modes;
}

} // namespace tallyview
