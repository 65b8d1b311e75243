import QtQuick
import Orvik.Tallyview.Theme

/// A vertically scrolling view with the slim scroller: wheel, touchpad, touch, the page keys and
/// dragging the knob. `contentHeight` is the content's to set. Dragging with the mouse is left to
/// the content, for selecting text and pressing buttons.
Flickable {
    id: view

    /// One notch of a wheel, in points.
    readonly property real wheelStep: 96
    readonly property real lowestTop: Math.max(0, contentHeight - height)

    /// Shows the content from `top` on.
    function scrollTo(top: real, animated: bool) {
        glide.stop();
        const target = Math.max(0, Math.min(top, lowestTop));
        if (!animated || SoftTheme.reducedMotion) {
            contentY = target;
        } else {
            glide.to = target;
            glide.start();
        }
    }
    function scrollBy(distance: real, animated: bool) {
        scrollTo((glide.running ? glide.to : contentY) + distance, animated);
    }
    /// Scrolls for a key; false when the key is no scrolling key.
    function scrollForKey(key: int): bool {
        const page = height * 0.9;
        switch (key) {
        case Qt.Key_PageUp:
            scrollBy(-page, true);
            return true;
        case Qt.Key_PageDown:
            scrollBy(page, true);
            return true;
        case Qt.Key_Home:
            scrollTo(0, true);
            return true;
        case Qt.Key_End:
            scrollTo(lowestTop, true);
            return true;
        }
        return false;
    }

    clip: true
    interactive: false
    boundsBehavior: Flickable.StopAtBounds
    contentWidth: width
    onLowestTopChanged: {
        if (!glide.running && contentY > lowestTop)
            contentY = lowestTop;
    }

    HoverAnimation {
        id: glide

        target: view
        property: "contentY"
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            // A touchpad tells pixels, a wheel notches.
            if (event.pixelDelta.y !== 0)
                view.scrollBy(-event.pixelDelta.y, false);
            else
                view.scrollBy(-event.angleDelta.y / 120 * view.wheelStep, event.angleDelta.y % 120 === 0);
        }
    }
    DragHandler {
        property real last: 0

        target: null
        acceptedDevices: PointerDevice.TouchScreen
        xAxis.enabled: false
        onActiveChanged: last = 0
        onTranslationChanged: {
            view.scrollBy(last - translation.y, false);
            last = translation.y;
        }
    }
    SlimScroller {
        flickable: view
    }
}
