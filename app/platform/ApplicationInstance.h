#pragma once

#include <QObject>
#include <QString>

#include <expected>

namespace tallyview {

/// This process among those of the same program in the user's session, of which one is to run.
/// Main thread.
class ApplicationInstance : public QObject {
    Q_OBJECT

public:
    enum class Role {
        primary,   ///< the one that runs; also where the session cannot tell
        handedOver ///< another runs and has been asked to show its window
    };

    using QObject::QObject;

    /// Called once, before anything is shown; takes a bounded time. `activationToken` (may be
    /// empty) is the desktop's leave to come to the front, which is handed to the one that runs.
    /// The error, a text for people: another runs but does not answer.
    virtual std::expected<Role, QString> claim(const QString &activationToken) = 0;

signals:
    /// The user started the program again: the window is to show, in front. Only to the primary.
    void activated(const QString &activationToken);
};

} // namespace tallyview
