import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// One choice of recency.
SoftChoice {
    id: capsule

    implicitWidth: label.implicitWidth + 32
    implicitHeight: 30

    SoftSurface {
        anchors.fill: parent
        radius: height / 2
        fill: capsule.chosen ? SoftTheme.accent : SoftTheme.raisedSurface
        outline: capsule.chosen ? SoftTheme.withOpacity(SoftTheme.rimLight, 0) : SoftTheme.rimLight
        darkShadow.color: capsule.chosen ? SoftTheme.withOpacity(SoftTheme.accent, 0.22) : SoftTheme.softShadowDark
        darkShadow.blur: 4
        darkShadow.x: 2
        darkShadow.y: 2

        Behavior on fill { ReplaceColorAnimation {} }
        Behavior on outline { ReplaceColorAnimation {} }
        Behavior on darkShadow.color { ReplaceColorAnimation {} }
    }
    SoftVeil {
        target: capsule
        radius: height / 2
    }
    SoftText {
        id: label

        anchors.centerIn: parent
        text: capsule.text
        size: 10
        weight: capsule.chosen ? Font.DemiBold : Font.Medium
        design: SoftFont.Rounded
        color: capsule.chosen ? SoftTheme.accentInk : SoftTheme.secondaryInk

        Behavior on color { ReplaceColorAnimation {} }
    }
    SoftFocusRing {
        target: capsule
        radius: capsule.height / 2
    }
}
