import QtQuick
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A surface that seems pressed out of the window. Its children lie on it;
/// `strength` scales the shadows, 0 is flat.
SoftSurface {
    property real strength: 1

    fill: SoftTheme.raisedSurface
    outline: SoftTheme.rimLight
    outlineWidth: 1
    darkShadow.color: strength > 0 ? SoftTheme.softShadowDark : SoftTheme.clear
    darkShadow.blur: 7 * strength
    darkShadow.x: 5 * strength
    darkShadow.y: 5 * strength
    lightShadow.color: strength > 0 ? SoftTheme.softShadowLight : SoftTheme.clear
    lightShadow.blur: 6 * strength
    lightShadow.x: -4 * strength
    lightShadow.y: -4 * strength
}
