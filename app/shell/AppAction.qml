import QtQuick
import QtQuick.Templates as T

// A command of the menu bar: its title, its keys and how the keys are written beside it.
T.Action {
    property string keysText: shortcut
}
