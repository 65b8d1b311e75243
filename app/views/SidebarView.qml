import QtQuick
import Orvik.Tallyview.Model
import Orvik.Tallyview.Theme

// Brand and workspace switch, the projects or the focus summary, appearance, and the database's
// state.
FocusScope {
    id: view

    required property DashboardModel model
    required property bool focusMode
    // The stored choice; any text.
    required property string appearanceModeRaw

    // The other workspace mode is wanted.
    signal modeToggled()
    signal appearanceChosen(rawValue: string)

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.raisedSurface
    }
}
