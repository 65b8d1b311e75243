import QtQuick
import QtQuick.Templates as T

/// A button of a group of which one is `chosen`. Pressing it only asks: what is chosen is its
/// owner's to say.
T.RadioButton {
    id: choice

    required property bool chosen

    hoverEnabled: true
    autoExclusive: false
    checked: chosen
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    // The press has set it, which ends the binding.
    onToggled: checked = Qt.binding(() => choice.chosen)
}
