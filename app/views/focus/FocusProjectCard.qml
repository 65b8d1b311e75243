pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// One project. A press opens it.
T.AbstractButton {
    id: card

    required property projectCard row
    required property real smallestHeight

    readonly property real inset: 18
    readonly property real textTop: badge.y + badge.height + 20

    implicitHeight: Math.max(smallestHeight, updated.y + updated.height + 20 + metrics.height + inset)
    hoverEnabled: true
    containmentMask: surface
    Accessible.name: row.label
    Accessible.description: "打开该项目的任务动态"
    Accessible.onPressAction: clicked()

    // The surface alone grows: texts are drawn at whole pixels and would be distorted.
    SoftSurface {
        id: surface

        anchors.fill: parent
        scale: card.hovered && !SoftTheme.reducedMotion ? 1.008 : 1
        radius: 16
        fill: SoftTheme.raisedSurface
        outline: card.hovered ? SoftTheme.withOpacity(SoftTheme.accent, SoftTheme.highContrast ? 1 : 0.42) : SoftTheme.hairline
        darkShadow.color: SoftTheme.withOpacity(SoftTheme.softShadowDark, card.hovered ? 0.82 : 0.48)
        darkShadow.blur: card.hovered ? 9 : 5
        darkShadow.x: 5
        darkShadow.y: 6
        lightShadow.color: SoftTheme.softShadowLight
        lightShadow.blur: 6
        lightShadow.x: -4
        lightShadow.y: -4

        SoftVeil {
            anchors.fill: parent
            target: card
            radius: 16
            level: card.down ? 0.3 : 0
        }
        Behavior on scale { HoverAnimation {} }
        Behavior on outline { HoverColorAnimation {} }
        Behavior on darkShadow.color { HoverColorAnimation {} }
        Behavior on darkShadow.blur { HoverAnimation {} }
    }
    SoftSurface {
        id: badge

        x: card.inset
        y: card.inset
        width: 38
        height: 38
        radius: 10
        fill: SoftTheme.withOpacity(SoftTheme.accent, 0.11)

        SoftText {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 4
            text: card.row.code
            size: 10
            weight: Font.Bold
            color: SoftTheme.accent
        }
    }
    SoftSurface {
        anchors.right: parent.right
        anchors.rightMargin: card.inset
        y: card.inset
        width: 32
        height: 32
        radius: 9
        continuous: false
        fill: SoftTheme.withOpacity(SoftTheme.insetSurface, 0.7)

        SoftSymbol {
            anchors.centerIn: parent
            name: "arrow.up.right"
            size: 11
            weight: Font.DemiBold
            color: SoftTheme.secondaryInk
        }
    }
    // By its baseline, which the fonts of Han set lower: the names of a row of cards stand on one line.
    SoftText {
        id: name

        x: card.inset
        y: card.textTop + Math.round(15.5 - baselineOffset)
        width: metrics.width
        text: card.row.name
        size: 16
        weight: Font.Bold
        lineHeightMode: Text.FixedHeight
        lineHeight: 22
        wrapMode: Text.Wrap
        maximumLineCount: 2
    }
    SoftText {
        id: updated

        x: card.inset
        y: card.textTop + 20 + (name.lineCount - 1) * name.lineHeight + 6
        width: metrics.width
        text: card.row.updated
        size: 9
        color: SoftTheme.mutedInk
        maximumLineCount: 1
    }
    Item {
        id: metrics

        x: card.inset
        y: card.height - card.inset - height
        width: card.width - 2 * card.inset
        height: count.implicitHeight

        Row {
            id: figures

            readonly property real room: parent.width - count.implicitWidth - spacing

            anchors.verticalCenter: parent.verticalCenter
            spacing: 13

            ProjectMetric {
                text: card.row.running
                tint: SoftTheme.running
            }
            ProjectMetric {
                room: figures.room - x
                text: card.row.completed
            }
        }
        SoftText {
            id: count

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: card.row.count
            size: 9
            weight: Font.Medium
            color: SoftTheme.secondaryInk
        }
    }
    SoftToolTip {
        about: card
        text: card.row.helpText
        wanted: card.hovered || card.visualFocus
    }
    SoftFocusRing {
        target: card
        radius: 16
    }
}
