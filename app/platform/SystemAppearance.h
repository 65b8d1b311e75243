#pragma once

#include "app/platform/WindowButtons.h"

#include <QObject>

namespace tallyview {

/// How the user wants every application of the desktop to look and move. Live; main thread.
class SystemAppearance : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY darkChanged)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY highContrastChanged)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY reducedMotionChanged)

public:
    using QObject::QObject;

    virtual bool dark() const = 0;
    virtual bool highContrast() const = 0;
    /// Animations and transitions are to be dropped.
    virtual bool reducedMotion() const = 0;
    /// Of windows that draw their own title bar.
    virtual WindowButtons windowButtons() const = 0;

signals:
    void darkChanged();
    void highContrastChanged();
    void reducedMotionChanged();
    void windowButtonsChanged();
};

} // namespace tallyview
