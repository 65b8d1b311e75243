import QtQuick
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The search field. What an input method is still composing is not part of the query.
FocusScope {
    id: view

    required property ThreadIndexState index

    readonly property bool searchFocused: field.activeFocus

    function focusSearch() {
        if (searchFocused)
            return;
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
    }

    height: 42

    SoftInset {
        anchors.fill: parent
        radius: 10
    }
    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.IBeamCursor
        onClicked: field.forceActiveFocus(Qt.MouseFocusReason)
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
        anchors.right: hint.left
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        clip: true
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        font: SoftFont.font(11, Font.Normal, SoftFont.Rounded)
        color: SoftTheme.primaryInk
        selectionColor: SoftTheme.accent
        selectedTextColor: SoftTheme.accentInk
        text: view.index.query
        Accessible.role: Accessible.EditableText
        Accessible.name: placeholder.text
        onTextEdited: view.index.query = text
        Keys.onEscapePressed: field.nextItemInFocusChain().forceActiveFocus(Qt.OtherFocusReason)

        Connections {
            function onChanged() {
                if (field.text !== view.index.query)
                    field.text = view.index.query;
            }

            target: view.index
        }
    }
    SoftText {
        id: placeholder

        anchors.fill: field
        verticalAlignment: Text.AlignVCenter
        visible: field.text.length === 0 && field.preeditText.length === 0
        text: "搜索任务标题、项目或工作目录…"
        size: 11
        design: SoftFont.Rounded
        color: SoftTheme.mutedInk
    }
    SoftText {
        id: hint

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
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
        outline: field.activeFocus ? SoftTheme.accent : SoftTheme.clear
        outlineWidth: 2
    }
}
