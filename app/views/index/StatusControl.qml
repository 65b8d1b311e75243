pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// One segment per status; the three share the width equally.
SoftRaised {
    id: control

    required property ThreadIndexState index

    height: 44
    radius: 11
    strength: 0.72

    Row {
        id: segments

        anchors.fill: parent
        anchors.margins: 4
        spacing: 4

        Repeater {
            id: repeater

            model: control.index.statusTitles

            delegate: SoftChoice {
                id: segment

                required property int index
                required property string modelData

                width: (segments.width - (repeater.count - 1) * segments.spacing) / repeater.count
                height: segments.height
                chosen: control.index.statusFilter === index
                Accessible.name: control.index.statusLabels[index] ?? ""
                onClicked: control.index.chooseStatus(index)

                SoftSurface {
                    anchors.fill: parent
                    radius: 8
                    fill: segment.chosen ? SoftTheme.accent : SoftTheme.withOpacity(SoftTheme.accent, 0)

                    Behavior on fill { ReplaceColorAnimation {} }
                }
                SoftVeil {
                    target: segment
                    radius: 8
                }
                SoftText {
                    anchors.centerIn: parent
                    text: segment.modelData
                    weight: Font.DemiBold
                    design: SoftFont.Rounded
                    color: segment.chosen ? SoftTheme.accentInk : SoftTheme.secondaryInk

                    Behavior on color { ReplaceColorAnimation {} }
                }
                SoftFocusRing {
                    target: segment
                    radius: 8
                }
            }
        }
    }
}
