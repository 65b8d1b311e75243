#pragma once

#include "app/shell/DashboardMode.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tallyview {

class UserDefaults;

/// The user's settings of the window's layout and look, kept in the user defaults. Every change,
/// from wherever, shows at once. Main thread.
class LayoutSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the settings")
    Q_PROPERTY(
        double sidebarWidth READ sidebarWidth WRITE setSidebarWidth NOTIFY sidebarWidthChanged)
    Q_PROPERTY(double minimumSidebarWidth MEMBER minimumSidebarWidth CONSTANT)
    Q_PROPERTY(double maximumSidebarWidth MEMBER maximumSidebarWidth CONSTANT)
    Q_PROPERTY(double defaultSidebarWidth MEMBER defaultSidebarWidth CONSTANT)
    Q_PROPERTY(QString appearanceMode READ appearanceMode WRITE setAppearanceMode NOTIFY
                   appearanceModeChanged)

public:
    // In points.
    static constexpr double minimumSidebarWidth = 200;
    static constexpr double maximumSidebarWidth = 360;
    static constexpr double defaultSidebarWidth = 224;

    /// The defaults outlive this object.
    explicit LayoutSettings(UserDefaults &defaults);

    /// In points, always within the bounds, whatever is stored.
    double sidebarWidth() const;
    void setSidebarWidth(double width);
    /// If the stored width is out of bounds, stores the one in effect.
    Q_INVOKABLE void healSidebarWidth();

    /// As stored, whatever the text is; the standard mode's if there is none.
    QString dashboardModeRaw() const;
    void setDashboardMode(DashboardMode mode);
    /// The raw value of an AppearanceMode.
    QString appearanceMode() const;
    void setAppearanceMode(const QString &rawValue);

signals:
    // What is stored has changed, whether or not it means something else now.

    void sidebarWidthChanged();
    void dashboardModeChanged();
    void appearanceModeChanged();

private:
    void announce(const QString &key);

    UserDefaults &m_defaults;
};

} // namespace tallyview
