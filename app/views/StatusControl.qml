pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Model
import Orvik.Tallyview.Theme

// One segment per status; the three share the width equally.
SoftRaised {
    id: control

    required property ThreadIndexState index

    width: 310
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

            delegate: T.AbstractButton {
                id: segment

                required property int index
                required property string modelData

                readonly property bool selected: control.index.statusFilter === index

                width: (segments.width - (repeater.count - 1) * segments.spacing) / repeater.count
                height: segments.height
                Accessible.role: Accessible.RadioButton
                Accessible.name: control.index.statusLabels[index]
                Accessible.checkable: true
                Accessible.checked: selected
                Accessible.onPressAction: clicked()
                onClicked: control.index.chooseStatus(index)

                SoftSurface {
                    anchors.fill: parent
                    radius: 8
                    fill: segment.selected ? SoftTheme.accent : SoftTheme.withOpacity(SoftTheme.accent, 0)

                    Behavior on fill { ReplaceColorAnimation {} }
                }
                SoftText {
                    anchors.centerIn: parent
                    text: segment.modelData
                    size: 11
                    weight: Font.DemiBold
                    design: SoftFont.Rounded
                    color: segment.selected ? SoftTheme.accentInk : SoftTheme.secondaryInk

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
