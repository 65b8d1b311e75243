import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls

// What can be done with the text of a field.
SoftMenu {
    id: menu

    required property TextInput field

    leastWidth: 120

    T.Action {
        text: "剪切"
        enabled: menu.field.selectedText !== ""
        onTriggered: menu.field.cut()
    }
    T.Action {
        text: "复制"
        enabled: menu.field.selectedText !== ""
        onTriggered: menu.field.copy()
    }
    T.Action {
        text: "粘贴"
        onTriggered: menu.field.paste()
    }
    T.Action {
        text: "全选"
        enabled: menu.field.length > 0
        onTriggered: menu.field.selectAll()
    }
}
