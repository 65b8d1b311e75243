#include "app/shell/DashboardMode.h"

namespace tallyview {

std::optional<DashboardMode> DashboardMode::fromRawValue(QStringView text) {
    for (const DashboardMode mode : allCases()) {
        if (mode.rawValue() == text) {
            return mode;
        }
    }
    return std::nullopt;
}

DashboardMode DashboardMode::ofSetting(QStringView text) {
    return fromRawValue(text).value_or(standard);
}

QString DashboardMode::rawValue() const {
    return m_value == focus ? QStringLiteral("focus") : QStringLiteral("standard");
}

} // namespace tallyview
