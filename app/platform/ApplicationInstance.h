#pragma once

#include <QObject>
#include <QString>

#include <expected>
#include <optional>

namespace tallyview {

/// This process among those of the same program in the user's session, of which one is to run.
/// Main thread.
class ApplicationInstance : public QObject {
    Q_OBJECT

public:
    enum class Role {
        primary,   ///< the one that runs; also where the session cannot tell
        handedOver ///< another runs and shows its window, if that was asked for
    };

    using QObject::QObject;

    /// Called once, before anything is shown; takes a bounded time. `activationToken` (may be
    /// empty) is the desktop's leave to come to the front, which is handed to the one that runs;
    /// without one that is left as it is.
    /// The error, a text for people: another runs but does not answer.
    virtual std::expected<Role, QString> claim(const std::optional<QString> &activationToken) = 0;

signals:
    /// The user started the program again: the window is to show, in front. Only to the primary.
    void activated(const QString &activationToken);
};

} // namespace tallyview
