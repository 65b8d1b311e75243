import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A small square button that shows a symbol. The pressed look has no animation
/// of its own.
T.AbstractButton {
    id: button

    required property string symbol
    property real symbolSize: 11
    property int symbolWeight: Font.Normal
    /// Whether a new symbol fades in like replaced content.
    property bool replacesSymbol: false
    /// Turns the symbol round and round, unless motion is reduced.
    property bool spinning: false
    /// Length of the edges.
    property real edge: 30
    /// The tooltip, and the name for assistive technology unless `label` differs.
    required property string helpText
    property string label: helpText
    /// Further description for assistive technology.
    property string hint

    readonly property bool raised: !down

    implicitWidth: edge
    implicitHeight: edge
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    scale: raised ? 1 : 0.97

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.description: hint
    Accessible.onPressAction: clicked()

    background: SoftSurface {
        smooth: !button.raised
        radius: 9
        fill: button.raised ? SoftTheme.raisedSurface : SoftTheme.insetSurface
        outline: SoftTheme.hairline
        darkShadow.color: button.raised ? SoftTheme.softShadowDark : SoftTheme.clear
        darkShadow.blur: 3
        darkShadow.x: 2
        darkShadow.y: 2
        lightShadow.color: button.raised ? SoftTheme.softShadowLight : SoftTheme.clear
        lightShadow.blur: 3
        lightShadow.x: -2
        lightShadow.y: -2
    }

    contentItem: FadingSymbol {
        smooth: !button.raised || rotation !== 0
        name: button.symbol
        size: button.symbolSize
        weight: button.symbolWeight
        replaces: button.replacesSymbol
        color: SoftTheme.secondaryInk
    }

    // Pressed, it has another fill instead.
    SoftVeil {
        target: button
        radius: 9
        level: button.hovered && button.raised ? 0.5 : 0
    }
    SpinAnimation {
        target: button.contentItem
        property: "rotation"
        running: button.spinning && !SoftTheme.still
        onStarted: settle.stop()
        onStopped: settle.start()
    }
    RotationAnimation {
        id: settle

        target: button.contentItem
        property: "rotation"
        to: 0
        direction: RotationAnimation.Shortest
        duration: SoftTheme.replaceDuration
        easing.type: Easing.InOutQuad
        // The shortest way may have ended at a full turn.
        onFinished: button.contentItem.rotation = 0
    }
    SoftFocusRing {
        target: button
        radius: 9
    }
    SoftToolTip {
        about: button
        text: button.helpText
        wanted: (button.hovered || button.visualFocus) && button.raised && text !== ""
    }
}
