pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Theme

// Light, dark, or what the desktop has.
Item {
    id: picker

    // Raw value of the mode in effect.
    required property string current

    signal chosen(rawValue: string)

    implicitHeight: well.height + 28

    SoftInset {
        id: well

        x: (picker.width - width) / 2
        y: 14
        width: modes.width + 8
        height: modes.height + 8
        radius: 10
    }
    Row {
        id: modes

        anchors.centerIn: well
        spacing: 4

        Repeater {
            model: SoftTheme.appearanceModes

            delegate: T.AbstractButton {
                id: choice

                required property var modelData

                readonly property bool selected: modelData.rawValue === picker.current

                implicitWidth: 42
                implicitHeight: 32
                Accessible.role: Accessible.RadioButton
                Accessible.name: modelData.title
                Accessible.checkable: true
                Accessible.checked: selected
                Accessible.onPressAction: clicked()
                onClicked: picker.chosen(modelData.rawValue)

                SoftSurface {
                    anchors.fill: parent
                    radius: 8
                    continuous: false
                    fill: choice.selected ? SoftTheme.accent : SoftTheme.withOpacity(SoftTheme.accent, 0)

                    Behavior on fill { ReplaceColorAnimation {} }
                }
                SoftSymbol {
                    anchors.centerIn: parent
                    name: choice.modelData.symbol
                    size: 12
                    weight: Font.Medium
                    color: choice.selected ? SoftTheme.accentInk : SoftTheme.secondaryInk

                    Behavior on color { ReplaceColorAnimation {} }
                }
                SoftFocusRing {
                    target: choice
                    radius: 8
                }
                SoftToolTip {
                    text: choice.modelData.title
                    visible: choice.hovered && !choice.down
                }
            }
        }
    }
}
