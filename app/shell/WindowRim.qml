import QtQuick
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The rim of a window that draws its own frame: a hairline, and edges and corners that resize it.
Item {
    id: rim

    readonly property real edge: SoftTheme.windowRim
    readonly property real corner: 14

    component Grip: MouseArea {
        required property int edges

        onPressed: Window.window.startSystemResize(edges)
    }

    SoftDivider {
        width: parent.width
    }
    SoftDivider {
        anchors.bottom: parent.bottom
        width: parent.width
    }
    SoftDivider {
        axis: Qt.Vertical
        height: parent.height
    }
    SoftDivider {
        anchors.right: parent.right
        axis: Qt.Vertical
        height: parent.height
    }

    Grip {
        width: parent.width
        height: rim.edge
        cursorShape: Qt.SizeVerCursor
        edges: Qt.TopEdge
    }
    Grip {
        anchors.bottom: parent.bottom
        width: parent.width
        height: rim.edge
        cursorShape: Qt.SizeVerCursor
        edges: Qt.BottomEdge
    }
    Grip {
        width: rim.edge
        height: parent.height
        cursorShape: Qt.SizeHorCursor
        edges: Qt.LeftEdge
    }
    Grip {
        anchors.right: parent.right
        width: rim.edge
        height: parent.height
        cursorShape: Qt.SizeHorCursor
        edges: Qt.RightEdge
    }
    // No deeper than the edge: the title bar's buttons are near.
    Grip {
        width: rim.corner
        height: rim.edge
        cursorShape: Qt.SizeFDiagCursor
        edges: Qt.TopEdge | Qt.LeftEdge
    }
    Grip {
        anchors.right: parent.right
        width: rim.corner
        height: rim.edge
        cursorShape: Qt.SizeBDiagCursor
        edges: Qt.TopEdge | Qt.RightEdge
    }
    Grip {
        anchors.bottom: parent.bottom
        width: rim.corner
        height: rim.corner
        cursorShape: Qt.SizeBDiagCursor
        edges: Qt.BottomEdge | Qt.LeftEdge
    }
    Grip {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        width: rim.corner
        height: rim.corner
        cursorShape: Qt.SizeFDiagCursor
        edges: Qt.BottomEdge | Qt.RightEdge
    }
}
