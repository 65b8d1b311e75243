#pragma once

#include <QObject>
#include <QtQmlIntegration>

#include <optional>

namespace tallyview {

class LayoutSettings;
class SystemAppearance;

/// The appearance and motion that the window is to have: the appearance that the user chose or,
/// where the choice is left to the desktop, the desktop's; and the desktop's reduced motion.
/// Follows changes of either at once. Main thread.
class WindowAppearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the appearance")
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed)

public:
    /// Both outlive this object.
    WindowAppearance(const LayoutSettings &layout, const SystemAppearance &system);

    bool dark() const;
    /// Whether the user chose dark; nothing where the choice is left to the desktop.
    std::optional<bool> chosen() const;
    bool highContrast() const;
    bool reducedMotion() const;

signals:
    void changed();

private:
    const LayoutSettings &m_layout;
    const SystemAppearance &m_system;
};

} // namespace tallyview
