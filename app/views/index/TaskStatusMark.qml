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
    property bool pulses: false

    width: 34
    height: 34
    Accessible.role: Accessible.Graphic
    Accessible.name: label
    Component.onCompleted: pulses = active && !SoftTheme.reducedMotion

    SoftPulse {
        id: pulse

        running: mark.pulses && mark.active && !SoftTheme.still
    }

    SoftDot {
        diameter: mark.width
        fill: SoftTheme.withOpacity(SoftTheme.running, mark.active ? 0.1 : 0.07)
        outline: SoftTheme.withOpacity(SoftTheme.running, 0.2)
    }
    SoftSymbol {
        anchors.centerIn: parent
        opacity: pulse.level
        name: mark.active ? "waveform.path.ecg" : "checkmark"
        size: mark.active ? 14 : 13
        weight: mark.active ? Font.DemiBold : Font.Bold
        color: SoftTheme.running
    }
}
