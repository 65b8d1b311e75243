import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Theme

/// A vertically scrolling view with the slim scroller: wheel, touchpad, touch, the page keys and
/// dragging the knob. `contentHeight` is the content's to set. Dragging with the mouse is left to
/// the content, for selecting text and pressing buttons. A control that the keyboard's focus reaches
/// comes into view.
Flickable {
    id: view

    /// One notch of a wheel, in points.
    readonly property real wheelStep: 96
    readonly property real lowestTop: Math.max(0, contentHeight - height)
    /// Kept free above and below a control that comes into view; its focus ring needs some.
    property real revealMargin: 4

    readonly property Item focusedItem: Window.activeFocusItem

    /// Shows the content from `top` on.
    function scrollTo(top: real, animated: bool) {
        glide.stop();
        const target = Math.max(0, Math.min(top, lowestTop));
        if (!animated || SoftTheme.still) {
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

    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y;
        if (top - revealMargin < contentY)
            scrollTo(top - revealMargin, true);
        else if (top + item.height + revealMargin > contentY + height)
            scrollTo(top + item.height + revealMargin - height, true);
    }

    clip: true
    interactive: false
    boundsBehavior: Flickable.StopAtBounds
    contentWidth: width
    onFocusedItemChanged: {
        const control = focusedItem as T.Control;
        if (!control || !control.visualFocus)
            return;
        for (let item = control.parent; item; item = item.parent) {
            if (item === contentItem)
                reveal(control);
        }
    }
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
