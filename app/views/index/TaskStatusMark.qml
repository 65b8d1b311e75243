pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The round mark of a task's state. A finished task keeps the colour of a running one, only
// fainter. Whether it pulses is decided when it comes on screen.
Item {
    id: mark

    required property bool active
    required property string label

    width: 34
    height: 34
    Accessible.role: Accessible.Graphic
    Accessible.name: label
    Component.onCompleted: {
        if (active && !SoftTheme.reducedMotion)
            pulse.createObject(mark);
    }

    SoftDot {
        diameter: mark.width
        fill: SoftTheme.withOpacity(SoftTheme.running, mark.active ? 0.1 : 0.07)
        outline: SoftTheme.withOpacity(SoftTheme.running, 0.2)
    }
    SoftSymbol {
        id: symbol

        anchors.centerIn: parent
        name: mark.active ? "waveform.path.ecg" : "checkmark"
        size: mark.active ? 14 : 13
        weight: mark.active ? Font.DemiBold : Font.Bold
        color: SoftTheme.running
    }
    // Made only when it is wanted, as there are many rows and few pulse.
    Component {
        id: pulse

        SequentialAnimation {
            running: mark.active && !SoftTheme.still
            loops: Animation.Infinite
            onStopped: symbol.opacity = 1

            PulseAnimation { target: symbol; property: "opacity"; from: 1; to: 0.55 }
            PulseAnimation { target: symbol; property: "opacity"; from: 0.55; to: 1 }
        }
    }
}
