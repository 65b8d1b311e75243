import QtQuick

// What ReplacedContent shows. Once it is being replaced it is no longer live: it keeps its state
// and takes no input.
Item {
    property bool live: true
    // What it was made for; never changes.
    property string identity

    // How it comes, from this far to the right and at this size, and at what size it goes.
    property real enterOffset: 0
    property real enterScale: 0.985
    property real leaveScale: 1

    anchors.fill: parent
}
