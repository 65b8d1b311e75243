import QtQuick
import QtQuick.Templates as T

/// A button of a group in which one is `chosen`. Pressing it only asks: its owner decides what is
/// chosen.
T.RadioButton {
    id: choice

    required property bool chosen

    hoverEnabled: true
    autoExclusive: false
    checked: chosen
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    // The press has set `checked`, which ends its binding.
    onToggled: checked = Qt.binding(() => choice.chosen)
}
