import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The search field. What an input method is still composing is not part of the query. A bare input:
// a text that is longer than the room between glass and hint is cut there, not at the field's edges.
FocusScope {
    id: view

    required property ThreadIndexState index

    /// Enough to see what one types. The hint goes before the field gets any narrower.
    readonly property real leastWidth: 150

    height: 42

    SearchRequest {
        enabled: view.index.live && !field.activeFocus
        onPosted: {
            field.forceActiveFocus(Qt.ShortcutFocusReason);
            field.selectAll();
        }
    }
    SoftInset {
        anchors.fill: parent
        radius: 10
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        cursorShape: Qt.IBeamCursor
        onPressed: mouse => {
            field.forceActiveFocus(Qt.MouseFocusReason);
            if (mouse.button === Qt.RightButton)
                menu.popup();
        }
    }
    SoftSymbol {
        id: glass

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        size: 12
        weight: Font.Medium
        color: SoftTheme.mutedInk
    }
    TextInput {
        id: field

        anchors.left: glass.right
        anchors.leftMargin: 9
        anchors.right: hint.visible ? hint.left : parent.right
        anchors.rightMargin: hint.visible ? 9 : 12
        anchors.verticalCenter: parent.verticalCenter
        clip: true
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        persistentSelection: menu.visible
        font: SoftFont.font(11, Font.Normal, SoftFont.Rounded)
        color: SoftTheme.primaryInk
        selectionColor: SoftTheme.accent
        selectedTextColor: SoftTheme.accentInk
        text: view.index.query
        Accessible.role: Accessible.EditableText
        Accessible.name: placeholder.text
        onTextEdited: view.index.query = text
        Keys.onUpPressed: cursorPosition = 0
        Keys.onDownPressed: cursorPosition = length
        Keys.onEscapePressed: {
            if (text !== "")
                view.index.query = "";
            else
                nextItemInFocusChain().forceActiveFocus(Qt.OtherFocusReason);
        }
    }
    SearchMenu {
        id: menu

        editor: field
    }
    Shortcut {
        sequences: ["Menu", "Shift+F10"]
        enabled: field.activeFocus
        onActivated: menu.popup(field, field.cursorRectangle.x, field.height)
    }
    SoftText {
        id: placeholder

        anchors.fill: field
        verticalAlignment: Text.AlignVCenter
        visible: field.text.length === 0 && field.preeditText.length === 0
        text: "搜索任务标题、项目或工作目录…"
        design: SoftFont.Rounded
        color: SoftTheme.mutedInk
    }
    SoftText {
        id: hint

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: view.width > view.leastWidth
        text: "⌘ K"
        size: 8
        weight: Font.Medium
        design: SoftFont.Monospaced
        color: SoftTheme.mutedInk
    }
    SoftSurface {
        anchors.fill: parent
        radius: 10
        fill: SoftTheme.clear
        outline: field.activeFocus || menu.visible ? SoftTheme.accent : SoftTheme.highContrast ? SoftTheme.hairline : SoftTheme.clear
        outlineWidth: 2
    }
}
