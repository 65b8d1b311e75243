import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls

// Offers to copy a text, where the pointer is.
SoftMenu {
    id: menu

    property string text

    signal copyRequested(text: string)

    function offer(text: string) {
        menu.text = text;
        popup();
    }

    leastWidth: 120

    T.Action {
        text: "复制"
        onTriggered: menu.copyRequested(menu.text)
    }
}
