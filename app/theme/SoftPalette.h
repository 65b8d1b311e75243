#pragma once

#include <QColor>

namespace tallyview {

/// The colours of one appearance, named by role. Plain value, any thread.
/// Components are sRGB; a colour is opaque unless its value says otherwise.
struct SoftPalette {
    QColor canvas;          ///< the window and the thread index
    QColor raisedSurface;   ///< raised cards, idle icon buttons, the side columns
    QColor insetSurface;    ///< wells, placeholders, pressed icon buttons
    QColor liftedSurface;   ///< a selected card, a metric tile
    QColor primaryInk;      ///< titles and body text
    QColor secondaryInk;    ///< secondary text and icons
    QColor mutedInk;        ///< captions and placeholders
    QColor softShadowDark;  ///< shadow to the lower right
    QColor softShadowLight; ///< highlight to the upper left
    QColor rimLight;        ///< rim of a raised surface
    QColor hairline;        ///< dividers and the rim of an icon button
    QColor knobFill;        ///< knob of a scroller
    QColor knobRim;
    QColor knobShadow;

    /// The palette of the light or the dark appearance.
    static const SoftPalette &of(bool dark);
};

/// Colours that are the same in both appearances.
namespace softcolor {
inline const QColor accent = QColor::fromRgbF(0.16F, 0.38F, 0.91F);
inline const QColor accentInk = QColor::fromRgbF(1.0F, 1.0F, 1.0F);
inline const QColor running = QColor::fromRgbF(0.1F, 0.68F, 0.48F);
inline const QColor warning = QColor::fromRgbF(0.94F, 0.36F, 0.3F);
} // namespace softcolor

} // namespace tallyview
