#include "app/theme/AppearanceMode.h"

namespace tallyview {

std::optional<AppearanceMode> AppearanceMode::fromRawValue(QStringView text) {
    for (const AppearanceMode mode : allCases()) {
        if (mode.rawValue() == text) {
            return mode;
        }
    }
    return std::nullopt;
}

AppearanceMode AppearanceMode::ofSetting(QStringView text) {
    return fromRawValue(text).value_or(system);
}

QString AppearanceMode::rawValue() const {
    switch (m_value) {
    case light:
        return QStringLiteral("light");
    case dark:
        return QStringLiteral("dark");
    case system:
        break;
    }
    return QStringLiteral("system");
}

QString AppearanceMode::title() const {
    switch (m_value) {
    case light:
        return QStringLiteral("浅色");
    case dark:
        return QStringLiteral("深色");
    case system:
        break;
    }
    return QStringLiteral("跟随系统");
}

QString AppearanceMode::symbol() const {
    switch (m_value) {
    case light:
        return QStringLiteral("sun.max");
    case dark:
        return QStringLiteral("moon");
    case system:
        break;
    }
    return QStringLiteral("display");
}

std::optional<bool> AppearanceMode::prefersDark() const {
    return m_value == system ? std::nullopt : std::optional(m_value == dark);
}

} // namespace tallyview
