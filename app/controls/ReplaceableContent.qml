import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// What ReplacedContent shows. Once it is being replaced it is no longer live: it keeps its state
// and takes no input.
Item {
    id: shown

    property bool live: true
    // What it was made for; never changes.
    property string identity
    property ContentReplacer replacer
    // Whether it replaces other content.
    property bool replaces: false
    readonly property int duration: replacer?.duration ?? 0

    // It comes from this far to the right and at this scale, and goes at this one.
    property real enterOffset: 0
    property real enterScale: 0.985
    property real leaveScale: 1

    // Room for the shadows, rims and focus rings that are drawn outside the content.
    readonly property real room: 16
    readonly property bool still: SoftTheme.still
    default property alias pieces: inside.data

    anchors.fill: parent
    anchors.margins: -room
    enabled: live
    transform: Translate { id: place }
    // Fades as one picture, not piece by piece.
    layer.enabled: entering.running || leaving.running
    layer.smooth: true
    // From Qt 6.8 on, complete() does not signal that an animation has finished.
    onStillChanged: {
        entering.complete();
        if (!live)
            replacer.drop(shown);
    }

    Item {
        id: inside

        anchors.fill: parent
        anchors.margins: shown.room
    }
    ParallelAnimation {
        id: entering

        running: shown.replaces && shown.live

        ReplaceAnimation { target: shown; property: "opacity"; from: 0; to: 1; duration: shown.duration }
        ReplaceAnimation { target: shown; property: "scale"; from: shown.enterScale; to: 1; duration: shown.duration }
        ReplaceAnimation { target: place; property: "x"; from: shown.enterOffset; to: 0; duration: shown.duration }
    }
    ParallelAnimation {
        id: leaving

        running: !shown.live
        onFinished: shown.replacer.drop(shown)

        ReplaceAnimation { target: shown; property: "opacity"; to: 0; duration: shown.duration }
        ReplaceAnimation { target: shown; property: "scale"; to: shown.leaveScale; duration: shown.duration }
    }
}
