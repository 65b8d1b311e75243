import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// One thread as a raised card: a click selects it, the chevron selects and opens it.
Item {
    id: view

    required property taskRow row

    readonly property bool hovering: hover.hovered
    readonly property bool lifted: row.selected || hovering

    signal chosen()
    signal openRequested()

    height: 58

    HoverHandler {
        id: hover
    }

    // The card alone grows: texts are drawn at whole pixels, and so small a growth would distort
    // them without moving them by one.
    SoftSurface {
        anchors.fill: parent
        scale: view.hovering ? 1.002 : 1
        radius: 11
        fill: view.row.selected ? SoftTheme.liftedSurface : SoftTheme.raisedSurface
        outline: view.row.selected ? SoftTheme.withOpacity(SoftTheme.accent, 0.72) : SoftTheme.hairline
        outlineWidth: view.row.selected ? 1.5 : 1
        darkShadow.color: SoftTheme.withOpacity(SoftTheme.softShadowDark, view.lifted ? 1 : 0.45)
        darkShadow.blur: view.lifted ? 6 : 3
        darkShadow.x: 3
        darkShadow.y: 3
        lightShadow.color: SoftTheme.softShadowLight
        lightShadow.blur: 4
        lightShadow.x: -2
        lightShadow.y: -2

        Behavior on scale { HoverAnimation {} }
        Behavior on fill { HoverColorAnimation {} }
        Behavior on outline { HoverColorAnimation {} }
        Behavior on outlineWidth { HoverAnimation {} }
        Behavior on darkShadow.color { HoverColorAnimation {} }
        Behavior on darkShadow.blur { HoverAnimation {} }
    }

    T.AbstractButton {
        id: main

        anchors.left: parent.left
        anchors.right: openButton.left
        height: parent.height
        Accessible.name: view.row.title
        Accessible.description: view.row.description
        Accessible.onPressAction: view.chosen()
        onClicked: view.chosen()

        TaskStatusMark {
            id: mark

            x: 11
            anchors.verticalCenter: parent.verticalCenter
            active: view.row.active
            label: view.row.stateLabel
        }
        Item {
            id: texts

            anchors.left: mark.right
            anchors.leftMargin: 13
            anchors.right: age.left
            // The spacing of the row on either side of a spacer of at least 10 points.
            anchors.rightMargin: 13 + 10 + 13

            // By their baselines, which the fonts of Han set lower: neighbours stand alike.
            SoftText {
                y: Math.round(26 - baselineOffset)
                width: texts.width
                text: view.row.title
                size: 12
                weight: Font.DemiBold
                design: SoftFont.Rounded
                maximumLineCount: 1
            }
            SoftText {
                y: Math.round(41.5 - baselineOffset)
                width: texts.width
                text: view.row.meta
                size: 8
                weight: Font.Medium
                design: SoftFont.Monospaced
                color: SoftTheme.withOpacity(SoftTheme.accent, 0.78)
                maximumLineCount: 1
            }
        }
        SoftText {
            id: age

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 78
            horizontalAlignment: Text.AlignRight
            text: view.row.age
            size: 9
            design: SoftFont.Rounded
            color: SoftTheme.secondaryInk
            maximumLineCount: 1
        }
    }
    SoftFocusRing {
        anchors.fill: parent
        target: main
        radius: 11
    }
    T.AbstractButton {
        id: openButton

        anchors.right: parent.right
        width: 42
        height: parent.height
        hoverEnabled: true
        Accessible.name: view.row.openLabel
        Accessible.onPressAction: view.openRequested()
        onClicked: view.openRequested()

        SoftSymbol {
            anchors.centerIn: parent
            name: "chevron.right"
            size: 12
            weight: Font.Bold
            opacity: openButton.down ? 0.7 : 1
            color: view.row.selected ? SoftTheme.accent : openButton.hovered ? SoftTheme.primaryInk : SoftTheme.secondaryInk

            Behavior on color { HoverColorAnimation {} }
        }
        SoftFocusRing {
            anchors.margins: 8
            target: openButton
            radius: 8
        }
        SoftToolTip {
            about: openButton
            text: "在 Orvik 中打开"
            wanted: openButton.hovered || openButton.visualFocus
        }
    }
}
