import QtQuick
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Whether the agent's database could be read.
Item {
    id: footer

    required property DashboardModel model

    height: 52

    DatabaseState {
        id: database

        model: footer.model
    }
    SoftSymbol {
        id: symbol

        x: 18
        anchors.verticalCenter: parent.verticalCenter
        name: "cylinder"
        size: 13
        color: SoftTheme.secondaryInk
    }
    Column {
        anchors.left: symbol.right
        anchors.leftMargin: 9
        anchors.right: parent.right
        anchors.rightMargin: 18
        anchors.verticalCenter: parent.verticalCenter

        Row {
            spacing: 8

            SoftDot {
                anchors.verticalCenter: parent.verticalCenter
                diameter: 7
                fill: database.readFailed ? SoftTheme.warning : SoftTheme.running
            }
            SoftText {
                anchors.verticalCenter: parent.verticalCenter
                text: database.label
                size: 9
                weight: Font.DemiBold
            }
        }
        SoftText {
            text: "不会回写 Orvik"
            size: 8
            color: SoftTheme.mutedInk
        }
    }
}
