#pragma once

#include <QMetaType>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

#include <array>
#include <optional>

namespace tallyview {

/// The person's choice of appearance. Plain value, any thread; it is its raw
/// value that is stored, compared and hashed.
class AppearanceMode {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString rawValue READ rawValue CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString symbol READ symbol CONSTANT)

public:
    enum Case { light, dark, system };

    constexpr AppearanceMode(Case value = system) : m_value(value) {}

    /// In the order of the picker.
    static constexpr std::array<AppearanceMode, 3> allCases() { return {light, dark, system}; }

    /// The case whose raw value is exactly `text` (case-sensitive), or nothing.
    static std::optional<AppearanceMode> fromRawValue(QStringView text);

    /// As `fromRawValue`, but any other text behaves as `system`.
    static AppearanceMode ofSetting(QStringView text);

    QString rawValue() const;
    QString id() const { return rawValue(); }
    QString title() const;
    /// System symbol name, see `SymbolImage`.
    QString symbol() const;

    /// Whether this mode asks for the dark scheme; nothing when it leaves the
    /// choice to the desktop.
    std::optional<bool> prefersDark() const;

    constexpr operator Case() const { return m_value; }

private:
    Case m_value;
};

} // namespace tallyview
