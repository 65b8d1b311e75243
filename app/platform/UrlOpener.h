#pragma once

#include <QByteArray>
#include <QString>

namespace tallyview {

/// Hands URLs to the applications that the desktop has registered for them.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;

    /// Opens `url`, an absolute URL already percent-encoded, which reaches its handler unchanged.
    /// Main thread; returns at once, whatever the handler does, and reports nothing.
    /// `activationToken` (may be empty) is the desktop's permission for the handler to come to the
    /// front.
    virtual void open(const QByteArray &url, const QString &activationToken) = 0;
};

} // namespace tallyview
