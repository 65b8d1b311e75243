#pragma once

#include "app/theme/AppearanceMode.h"
#include "app/theme/SoftPalette.h"

#include <QObject>
#include <QVariantList>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// The look in effect, for QML: one object per engine, main thread only.
/// The shell writes `dark`, `highContrast`, `reducedMotion`, `unseen` and `windowRim`; everything
/// else follows.
class SoftTheme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark WRITE setDark NOTIFY paletteChanged)
    /// The desktop asks for texts and rims that stand out from their ground.
    Q_PROPERTY(bool highContrast READ highContrast WRITE setHighContrast NOTIFY paletteChanged)
    /// The desktop asks for less motion.
    Q_PROPERTY(bool reducedMotion MEMBER m_reducedMotion NOTIFY motionChanged)
    /// Nobody sees the window: motion would only cost time.
    Q_PROPERTY(bool unseen MEMBER m_unseen NOTIFY motionChanged)
    /// Nothing moves, for either reason.
    Q_PROPERTY(bool still READ still NOTIFY motionChanged)

    /// Points along the edges of the window that resize it; scrollers keep clear of them.
    Q_PROPERTY(double windowRim MEMBER m_windowRim NOTIFY windowRimChanged)

    Q_PROPERTY(QColor canvas READ canvas NOTIFY paletteChanged)
    Q_PROPERTY(QColor raisedSurface READ raisedSurface NOTIFY paletteChanged)
    Q_PROPERTY(QColor insetSurface READ insetSurface NOTIFY paletteChanged)
    Q_PROPERTY(QColor liftedSurface READ liftedSurface NOTIFY paletteChanged)
    Q_PROPERTY(QColor primaryInk READ primaryInk NOTIFY paletteChanged)
    Q_PROPERTY(QColor secondaryInk READ secondaryInk NOTIFY paletteChanged)
    Q_PROPERTY(QColor mutedInk READ mutedInk NOTIFY paletteChanged)
    Q_PROPERTY(QColor softShadowDark READ softShadowDark NOTIFY paletteChanged)
    Q_PROPERTY(QColor softShadowLight READ softShadowLight NOTIFY paletteChanged)
    Q_PROPERTY(QColor rimLight READ rimLight NOTIFY paletteChanged)
    Q_PROPERTY(QColor hairline READ hairline NOTIFY paletteChanged)
    Q_PROPERTY(QColor knobFill READ knobFill NOTIFY paletteChanged)
    Q_PROPERTY(QColor knobRim READ knobRim NOTIFY paletteChanged)
    Q_PROPERTY(QColor knobShadow READ knobShadow NOTIFY paletteChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY paletteChanged)
    Q_PROPERTY(QColor accentInk READ accentInk NOTIFY paletteChanged)
    Q_PROPERTY(QColor running READ running NOTIFY paletteChanged)
    Q_PROPERTY(QColor warning READ warning NOTIFY paletteChanged)
    Q_PROPERTY(QColor clear READ clear CONSTANT)

    /// Milliseconds. One-shot changes take no time while nothing moves; the spin,
    /// which is endless, keeps its period and must not run then.
    Q_PROPERTY(int replaceDuration READ replaceDuration NOTIFY motionChanged)
    Q_PROPERTY(int hoverDuration READ hoverDuration NOTIFY motionChanged)
    Q_PROPERTY(int focusSlideDuration READ focusSlideDuration NOTIFY motionChanged)
    Q_PROPERTY(int spinDuration READ spinDuration CONSTANT)

    /// The choices of the appearance picker, in its order.
    Q_PROPERTY(QVariantList appearanceModes READ appearanceModes CONSTANT)

public:
    using QObject::QObject;

    /// `color` with its opacity multiplied by `opacity` (0 to 1).
    Q_INVOKABLE static QColor withOpacity(const QColor &color, qreal opacity);

    bool dark() const { return m_dark; }
    /// Colours change at once, even those whose changes are animated.
    void setDark(bool dark) { turn(m_dark, dark); }
    bool highContrast() const { return m_highContrast; }
    void setHighContrast(bool highContrast) { turn(m_highContrast, highContrast); }

    QColor canvas() const { return current().canvas; }
    QColor raisedSurface() const { return current().raisedSurface; }
    QColor insetSurface() const { return current().insetSurface; }
    QColor liftedSurface() const { return current().liftedSurface; }
    QColor primaryInk() const { return current().primaryInk; }
    QColor secondaryInk() const { return current().secondaryInk; }
    QColor mutedInk() const { return current().mutedInk; }
    QColor softShadowDark() const { return current().softShadowDark; }
    QColor softShadowLight() const { return current().softShadowLight; }
    QColor rimLight() const { return current().rimLight; }
    QColor hairline() const { return current().hairline; }
    QColor knobFill() const { return current().knobFill; }
    QColor knobRim() const { return current().knobRim; }
    QColor knobShadow() const { return current().knobShadow; }
    QColor accent() const { return current().accent; }
    QColor accentInk() const { return current().accentInk; }
    QColor running() const { return current().running; }
    QColor warning() const { return current().warning; }
    static QColor clear() { return Qt::transparent; }

    bool still() const { return m_reducedMotion || m_unseen; }
    int replaceDuration() const { return unlessStill(240); }
    int hoverDuration() const { return unlessStill(180); }
    int focusSlideDuration() const { return unlessStill(280); }
    static int pulseDuration() { return 1100; }
    static int spinDuration() { return 800; }

    static QVariantList appearanceModes();

signals:
    void paletteChanged();
    void motionChanged();
    void windowRimChanged();

private:
    void turn(bool &property, bool value);
    const SoftPalette &current() const { return SoftPalette::of(m_dark, m_highContrast); }
    int unlessStill(int duration) const { return still() || m_turning ? 0 : duration; }

    bool m_dark = false;
    bool m_highContrast = false;
    bool m_turning = false; ///< from one palette to another
    bool m_reducedMotion = false;
    bool m_unseen = false;
    double m_windowRim = 0;
};

} // namespace tallyview
