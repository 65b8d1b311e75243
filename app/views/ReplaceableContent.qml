import QtQuick

// What ReplacedContent shows. Once it is being replaced it is no longer live: it keeps its state
// and takes no input.
Item {
    property bool live: true

    anchors.fill: parent
}
