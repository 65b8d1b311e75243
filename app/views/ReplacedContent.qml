pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Theme

// Shows `content` anew whenever `identity` changes: the new content fades and grows in, the one it
// replaces fades out as it was. The first content stands there at once.
Item {
    id: replaced

    required property string identity
    // Makes a ReplaceableContent.
    required property Component content

    property int generation: 0

    function dropAfter(generation: int) {
        for (let i = 0; i < generations.count; ++i) {
            if (generations.get(i).number === generation) {
                generations.remove(i);
                return;
            }
        }
    }

    onIdentityChanged: {
        if (generations.count > 0)
            generations.append({ number: ++generation });
    }
    Component.onCompleted: generations.append({ number: generation })

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

            function leave() {
                if (SoftTheme.reducedMotion)
                    Qt.callLater(replaced.dropAfter, number);
                else
                    leaving.start();
            }

            anchors.fill: parent
            enabled: live
            // Fades as one picture, not piece by piece.
            layer.enabled: entering.running || leaving.running

            onLiveChanged: {
                if (!live)
                    leave();
            }
            Component.onCompleted: {
                shown = replaced.content.createObject(holder) as ReplaceableContent;
                if (!isFirst && !SoftTheme.reducedMotion)
                    entering.start();
            }

            Binding {
                target: holder.shown
                property: "live"
                value: holder.live
            }
            ParallelAnimation {
                id: entering

                ReplaceAnimation { target: holder; property: "opacity"; from: 0; to: 1 }
                ReplaceAnimation { target: holder; property: "scale"; from: 0.985; to: 1 }
            }
            ReplaceAnimation {
                id: leaving

                target: holder
                property: "opacity"
                to: 0
                onFinished: replaced.dropAfter(holder.number)
            }
            Connections {
                function onReducedMotionChanged() {
                    entering.complete();
                    leaving.complete();
                }

                target: SoftTheme
            }
        }
    }
}
