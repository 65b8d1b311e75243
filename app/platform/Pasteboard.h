#pragma once

#include <QString>

namespace tallyview {

/// What the person has copied. Main thread.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Replaces whatever is there with `text`, as plain text. Other applications can paste it for
    /// as long as this process runs.
    virtual void setText(const QString &text) = 0;
};

/// The desktop's general pasteboard; needs a QGuiApplication by the time it is used.
Pasteboard &generalPasteboard();

} // namespace tallyview
