#pragma once

#include "app/presentation/ModelObserver.h"
#include "app/presentation/ThreadDetail.h"

namespace tallyview {

/// The selected thread as the detail panel shows it, and what can be done with it.
class DetailState : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString identity READ identity NOTIFY changed)
    Q_PROPERTY(tallyview::ThreadDetail detail READ detail NOTIFY changed)

public:
    using ModelObserver::ModelObserver;

    /// The selected id, or "empty-detail": the panel's content is replaced when it changes and
    /// redrawn in place otherwise.
    QString identity() const { return m_identity; }
    const ThreadDetail &detail() const { return m_detail; }

    // Without effect when no thread is shown.

    Q_INVOKABLE void togglePin();
    /// In the agent's own application.
    Q_INVOKABLE void open() const;
    Q_INVOKABLE void copyID() const;

    /// Puts a part of what the panel shows on the pasteboard.
    Q_INVOKABLE void copyText(const QString &text) const;

private:
    void update() override;

    std::optional<ThreadFormatting::Number> m_number;
    std::optional<ThreadRecord> m_thread;
    QString m_identity = QStringLiteral("empty-detail");
    ThreadDetail m_detail;
};

} // namespace tallyview
