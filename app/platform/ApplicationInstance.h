#pragma once

#include <QObject>
#include <QString>

#include <expected>
#include <optional>

namespace tallyview {

/// This process among those of the same program in the user's session, only one of which is to run.
/// Main thread.
class ApplicationInstance : public QObject {
    Q_OBJECT

public:
    enum class Role {
        primary,   ///< the one that runs; also if the session cannot tell
        handedOver ///< another runs and shows its window if asked to
    };

    using QObject::QObject;

    /// Called once, before anything is shown; takes a bounded time. If another process runs, it is
    /// handed `activationToken` (may be empty), the desktop's permission to come to the front;
    /// without a token it is left alone. The error, a text for people: another runs but does not
    /// answer.
    virtual std::expected<Role, QString> claim(const std::optional<QString> &activationToken) = 0;

signals:
    /// The user started the program again: show the window in front. Sent to the primary only.
    void activated(const QString &activationToken);
};

} // namespace tallyview
