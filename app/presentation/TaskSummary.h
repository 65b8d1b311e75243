#pragma once

#include "app/presentation/ModelObserver.h"

#include <cstdint>
#include <optional>

namespace tallyview {

/// One line about the tasks, for where the desktop shows the application without its window.
class TaskSummary : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString toolTip READ toolTip NOTIFY textChanged)

public:
    using ModelObserver::ModelObserver;

    /// How many tasks run, or that the database could not be read; empty before the first refresh.
    QString text() const { return m_text; }
    /// The same after the application's name.
    QString toolTip() const;

signals:
    void textChanged();

private:
    void update() override;
    QString runningText();

    std::optional<std::uint64_t> m_counted; ///< the revision of the threads that were counted
    std::size_t m_runningCount = 0;
    QString m_text;
};

} // namespace tallyview
