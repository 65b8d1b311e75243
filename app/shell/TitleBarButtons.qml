pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Controls

// The buttons at one end of the title bar.
Row {
    id: row

    required property WindowChrome chrome
    property alias names: buttons.model

    spacing: 8

    Repeater {
        id: buttons

        delegate: SoftIconButton {
            required property string modelData

            edge: 26
            symbolSize: 11
            symbol: row.chrome.symbol(modelData, row.chrome.maximized)
            helpText: row.chrome.title(modelData, row.chrome.maximized)
            onClicked: row.chrome.perform(modelData)
        }
    }
}
