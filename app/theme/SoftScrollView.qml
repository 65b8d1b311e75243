import QtQuick
import Orvik.Tallyview.Theme

/// A vertical scroll view with the slim scroller. The wheel, the touchpad and a
/// finger scroll it; dragging with the mouse does not, so that texts in it can
/// be selected.
Flickable {
    id: view

    /// Points per notch of a mouse wheel.
    readonly property real notch: 60

    /// Brings the content's `top` to the upper edge, as far as there is content.
    function scrollTo(top: real, animated: bool) {
        scrolling.stop();
        const place = bounded(top);
        if (animated && SoftTheme.hoverDuration > 0) {
            scrolling.to = place;
            scrolling.start();
        } else {
            contentY = place;
        }
    }

    function bounded(top: real): real {
        return Math.round(Math.max(0, Math.min(contentHeight - height, top)));
    }

    contentWidth: width
    interactive: false
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    onHeightChanged: contentY = bounded(contentY)
    onContentHeightChanged: contentY = bounded(contentY)

    HoverAnimation {
        id: scrolling

        target: view
        property: "contentY"
    }
    WheelHandler {
        target: null
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            const pixels = event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 120 * view.notch;
            view.scrollTo(view.contentY - pixels, false);
        }
    }
    DragHandler {
        property real start: 0

        target: null
        acceptedDevices: PointerDevice.TouchScreen
        xAxis.enabled: false
        onActiveChanged: start = view.contentY
        onActiveTranslationChanged: {
            if (active)
                view.scrollTo(start - activeTranslation.y, false);
        }
    }
    SlimScroller {
        flickable: view
    }
}
