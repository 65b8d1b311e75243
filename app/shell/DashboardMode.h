#pragma once

#include <QString>

#include <array>
#include <optional>

namespace tallyview {

/// The layout of the window right of the sidebar. Plain value, any thread; it is its raw value
/// that is stored, compared and hashed.
class DashboardMode {
public:
    enum Case { standard, focus };

    constexpr DashboardMode(Case value = standard) : m_value(value) {}

    static constexpr std::array<DashboardMode, 2> allCases() { return {standard, focus}; }

    /// The case whose raw value is exactly `text` (case-sensitive), or nothing.
    static std::optional<DashboardMode> fromRawValue(QStringView text);

    /// As `fromRawValue`, but any other text behaves as `standard`.
    static DashboardMode ofSetting(QStringView text);

    QString rawValue() const;
    /// Identity in lists: the raw value.
    QString id() const { return rawValue(); }

    constexpr operator Case() const { return m_value; }

private:
    Case m_value;
};

} // namespace tallyview
