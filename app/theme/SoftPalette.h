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

    // The same in light and dark.
    QColor accent = QColor::fromRgbF(0.16F, 0.38F, 0.91F); ///< what is chosen or leads on
    QColor accentInk = QColor::fromRgbF(1.0F, 1.0F, 1.0F); ///< texts on the accent
    QColor running = QColor::fromRgbF(0.1F, 0.68F, 0.48F);
    QColor warning = QColor::fromRgbF(0.94F, 0.36F, 0.3F);

    /// The palette of the light or the dark appearance. That of high contrast gives every text 4.5,
    /// and rims and symbols 3 times the lightness of their ground, or that part of it.
    static const SoftPalette &of(bool dark, bool highContrast);
};

} // namespace tallyview
