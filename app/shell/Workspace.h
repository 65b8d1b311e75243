#pragma once

#include "app/presentation/FocusProject.h"
#include "app/shell/DashboardMode.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tallyview {

class LayoutSettings;

/// What is right of the sidebar: which workspace, and the project open in the focus workspace.
/// Follows the setting of the mode; when its text changes, no project is open or selected any more.
/// Main thread.
class Workspace : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the workspace")
    Q_PROPERTY(bool focusMode READ isFocusMode NOTIFY focusModeChanged)
    Q_PROPERTY(tallyview::FocusProject *focusProject READ focusProject CONSTANT)

public:
    /// Both outlive this object.
    Workspace(DashboardModel &model, LayoutSettings &layout);

    bool isFocusMode() const { return DashboardMode::ofSetting(m_modeRaw) == DashboardMode::focus; }
    FocusProject *focusProject() { return &m_focusProject; }

    /// Chooses and stores the other mode.
    Q_INVOKABLE void toggleMode();

signals:
    void focusModeChanged();

private:
    void followMode();

    DashboardModel &m_model;
    LayoutSettings &m_layout;
    FocusProject m_focusProject;
    QString m_modeRaw;
};

} // namespace tallyview
