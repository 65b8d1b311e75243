pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// Shows `content` anew whenever `identity` changes: the new content fades in and comes to its
// place and size, the one it replaces fades out as it was. The first content stands there at once.
Item {
    id: replaced

    required property string identity
    // Makes a ReplaceableContent.
    required property Component content
    property int duration: SoftTheme.replaceDuration

    // The content that is not being replaced.
    property ReplaceableContent current: null

    property int generation: 0

    function dropAfter(generation: int) {
        for (let i = 0; i < generations.count; ++i) {
            if (generations.get(i).number === generation) {
                generations.remove(i);
                return;
            }
        }
    }

    function dropReplacedIfStill() {
        if (SoftTheme.still && generations.count > 1)
            generations.remove(0, generations.count - 1);
    }

    // The item of the content that has the keyboard's focus.
    function focusedItem(): Item {
        for (let item = Window.activeFocusItem; item; item = item.parent) {
            if (item === current)
                return Window.activeFocusItem;
        }
        return null;
    }

    onIdentityChanged: {
        if (generations.count === 0)
            return;
        const focused = focusedItem();
        const isRinged = (focused as T.Control)?.visualFocus ?? false;
        generations.append({ number: ++generation });
        // What is replaced takes no input any more; the keyboard goes on in what replaces it.
        if (focused)
            current.nextItemInFocusChain().forceActiveFocus(isRinged ? Qt.TabFocusReason : Qt.OtherFocusReason);
        dropReplacedIfStill();
    }
    Component.onCompleted: generations.append({ number: generation })

    Connections {
        function onMotionChanged() {
            replaced.dropReplacedIfStill();
        }

        target: SoftTheme
    }
    ListModel {
        id: generations
    }

    Repeater {
        model: generations

        delegate: Item {
            id: holder

            required property int number
            readonly property bool live: number === replaced.generation
            readonly property bool isFirst: number === 0
            property ReplaceableContent shown: null

            anchors.fill: parent
            enabled: live
            transform: Translate { id: place }
            // Fades as one picture, not piece by piece.
            layer.enabled: entering.running || leaving.running
            layer.smooth: true

            onLiveChanged: {
                if (live || SoftTheme.still)
                    return;
                entering.stop();
                leaving.start();
            }
            Component.onCompleted: {
                shown = replaced.content.createObject(holder, { identity: replaced.identity }) as ReplaceableContent;
                replaced.current = shown;
                if (!isFirst && !SoftTheme.still)
                    entering.start();
            }

            Binding {
                target: holder.shown
                property: "live"
                value: holder.live
            }
            ParallelAnimation {
                id: entering

                ReplaceAnimation { target: holder; property: "opacity"; from: 0; to: 1; duration: replaced.duration }
                ReplaceAnimation { target: holder; property: "scale"; from: holder.shown?.enterScale ?? 1; to: 1; duration: replaced.duration }
                ReplaceAnimation { target: place; property: "x"; from: holder.shown?.enterOffset ?? 0; to: 0; duration: replaced.duration }
            }
            ParallelAnimation {
                id: leaving

                onFinished: replaced.dropAfter(holder.number)

                ReplaceAnimation { target: holder; property: "opacity"; to: 0; duration: replaced.duration }
                ReplaceAnimation { target: holder; property: "scale"; to: holder.shown?.leaveScale ?? 1; duration: replaced.duration }
            }
            Connections {
                function onMotionChanged() {
                    if (SoftTheme.still)
                        entering.complete();
                }

                target: SoftTheme
            }
        }
    }
}
