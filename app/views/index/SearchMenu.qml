import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls

// What can be done with the text of a field.
SoftMenu {
    id: menu

    required property TextInput editor

    leastWidth: 120

    T.Action {
        text: "剪切"
        enabled: menu.editor.selectedText !== ""
        onTriggered: menu.editor.cut()
    }
    T.Action {
        text: "复制"
        enabled: menu.editor.selectedText !== ""
        onTriggered: menu.editor.copy()
    }
    T.Action {
        text: "粘贴"
        onTriggered: menu.editor.paste()
    }
    T.Action {
        text: "全选"
        enabled: menu.editor.length > 0
        onTriggered: menu.editor.selectAll()
    }
}
