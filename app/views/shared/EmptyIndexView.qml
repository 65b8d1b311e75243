import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Says why there is nothing to show.
Item {
    id: view

    required property string symbol
    required property string title
    required property string message
    required property bool isError
    // Of the message.
    property real longestLine: 300

    SoftRaised {
        anchors.centerIn: parent
        width: texts.width + 56
        height: texts.height + 56
        radius: 16
        strength: 0.7

        Column {
            id: texts

            anchors.centerIn: parent
            spacing: 14

            SoftSymbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: view.symbol
                size: 30
                weight: Font.Light
                color: view.isError ? SoftTheme.warning : SoftTheme.accent
            }
            SoftText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: view.title
                size: 18
                weight: Font.Bold
            }
            SoftText {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, view.longestLine)
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: view.message
                color: SoftTheme.secondaryInk
            }
        }
    }
}
