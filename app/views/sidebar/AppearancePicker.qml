pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
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

            delegate: SoftChoice {
                id: choice

                required property var modelData

                implicitWidth: 42
                implicitHeight: 32
                chosen: modelData.rawValue === picker.current
                text: modelData.title
                onClicked: picker.chosen(modelData.rawValue)

                SoftSurface {
                    anchors.fill: parent
                    radius: 8
                    continuous: false
                    fill: choice.chosen ? SoftTheme.accent : SoftTheme.withOpacity(SoftTheme.accent, 0)

                    Behavior on fill { ReplaceColorAnimation {} }
                }
                SoftVeil {
                    target: choice
                    radius: 8
                    continuous: false
                }
                SoftSymbol {
                    anchors.centerIn: parent
                    name: choice.modelData.symbol
                    size: 12
                    weight: Font.Medium
                    color: choice.chosen ? SoftTheme.accentInk : SoftTheme.secondaryInk

                    Behavior on color { ReplaceColorAnimation {} }
                }
                SoftFocusRing {
                    target: choice
                    radius: 8
                }
                SoftToolTip {
                    about: choice
                    text: choice.text
                    wanted: (choice.hovered || choice.visualFocus) && !choice.down
                }
            }
        }
    }
}
