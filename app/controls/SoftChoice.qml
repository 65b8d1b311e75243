import QtQuick
import QtQuick.Templates as T

/// A button of a group in which one is `chosen`. Its owner, whom a press asks, must choose it: until
/// the owner answers, assistive technology is told that it has. The others of the group are its
/// siblings.
T.RadioButton {
    required property bool chosen

    hoverEnabled: true
    checked: chosen
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
}
