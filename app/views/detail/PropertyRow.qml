import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// A label and a value that can be selected and copied.
Item {
    id: row

    required property string label
    required property string value
    required property CopyMenu copyMenu
    property bool monospaced: false
    property int maximumLines: 2

    implicitHeight: Math.max(title.implicitHeight, text.implicitHeight)

    SoftText {
        id: title

        width: 74
        text: row.label
        size: 9
        design: SoftFont.Rounded
        color: SoftTheme.secondaryInk
    }
    SoftExcerpt {
        id: excerpt

        text: row.value
        font: text.font
        width: text.width
        lineCount: row.maximumLines
    }
    TextEdit {
        id: text

        anchors.left: title.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        readOnly: true
        selectByMouse: true
        // The menu takes the focus; what it copies stays selected.
        persistentSelection: true
        textFormat: TextEdit.PlainText
        wrapMode: TextEdit.Wrap
        horizontalAlignment: TextEdit.AlignLeft
        text: excerpt.shown
        font: SoftFont.font(row.monospaced ? 9 : 10, Font.Normal, row.monospaced ? SoftFont.Monospaced : SoftFont.Rounded)
        color: SoftTheme.primaryInk
        selectionColor: SoftTheme.accent
        selectedTextColor: SoftTheme.accentInk
        Accessible.role: Accessible.StaticText
        Accessible.name: row.value
        onActiveFocusChanged: {
            if (!activeFocus && !row.copyMenu.visible)
                deselect();
        }
        Keys.onPressed: event => {
            event.accepted = event.matches(StandardKey.Copy);
            if (event.accepted)
                row.copyMenu.copyRequested(excerpt.original(text.selectionStart, text.selectionEnd));
        }

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.RightButton
            cursorShape: Qt.IBeamCursor
            onPressed: {
                text.forceActiveFocus(Qt.MouseFocusReason);
                row.copyMenu.offer(excerpt.original(text.selectionStart, text.selectionEnd));
            }
        }
    }
}
