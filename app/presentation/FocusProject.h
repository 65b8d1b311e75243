#pragma once

#include "app/model/DashboardModel.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tallyview {

/// The project that is open in the focus workspace, if any. Main thread.
class FocusProject : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The workspace owns the open project")
    Q_PROPERTY(QString title READ title NOTIFY changed)

public:
    /// The model outlives this object.
    explicit FocusProject(DashboardModel &model) : m_model(model) {}

    /// Heads the threads of the open project; empty exactly when none is open.
    QString title() const;

    /// Opens the project of this exact name; the model then shows its threads only.
    Q_INVOKABLE void open(const QString &name);
    /// Closes the project, if one is open; the model then shows the threads of every project.
    Q_INVOKABLE void close();
    /// Closes the project and leaves the model alone.
    void forget();

signals:
    void changed();

private:
    void show(std::optional<QString> name);

    DashboardModel &m_model;
    std::optional<QString> m_name;
};

} // namespace tallyview
