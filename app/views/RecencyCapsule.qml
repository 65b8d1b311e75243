import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Theme

// One choice of recency.
T.AbstractButton {
    id: capsule

    required property bool selected

    implicitWidth: label.implicitWidth + 32
    implicitHeight: 30
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: selected
    Accessible.onPressAction: clicked()

    SoftSurface {
        anchors.fill: parent
        radius: height / 2
        fill: capsule.selected ? SoftTheme.accent : SoftTheme.raisedSurface
        outline: capsule.selected ? SoftTheme.withOpacity(SoftTheme.rimLight, 0) : SoftTheme.rimLight
        outlineWidth: 1
        darkShadow.color: capsule.selected ? SoftTheme.withOpacity(SoftTheme.accent, 0.22) : SoftTheme.softShadowDark
        darkShadow.blur: 4
        darkShadow.x: 2
        darkShadow.y: 2

        Behavior on fill { ReplaceColorAnimation {} }
        Behavior on outline { ReplaceColorAnimation {} }
        Behavior on darkShadow.color { ReplaceColorAnimation {} }
    }
    SoftText {
        id: label

        anchors.centerIn: parent
        text: capsule.text
        size: 10
        weight: capsule.selected ? Font.DemiBold : Font.Medium
        design: SoftFont.Rounded
        color: capsule.selected ? SoftTheme.accentInk : SoftTheme.secondaryInk

        Behavior on color { ReplaceColorAnimation {} }
    }
    SoftFocusRing {
        target: capsule
        radius: capsule.height / 2
    }
}
