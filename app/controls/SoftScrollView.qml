import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

/// A scrolling view with slim scrollers: wheel, touchpad, touch, the page keys and dragging a knob.
/// `contentHeight` is the content's to set, and so is `contentWidth` where it is not the view's.
/// Dragging with the mouse is left to the content, for selecting text and pressing buttons. A control
/// that the keyboard's focus reaches comes into view.
Flickable {
    id: view

    /// One notch of a wheel, in points.
    readonly property real wheelStep: 96
    readonly property real lowestTop: Math.max(0, contentHeight - height)
    readonly property real farthestLeft: Math.max(0, contentWidth - width)
    /// Kept free around a control that comes into view; its focus ring needs some.
    property real revealMargin: 4
    /// Whether the scrollers show all the time.
    property bool scrollersStay: false
    /// Whether it gets the page keys of the window that nothing around the focus takes.
    property bool takesWindowKeys: false

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
    /// Shows the content from `left` on, at once.
    function scrollAcrossTo(left: real) {
        contentX = Math.round(Math.max(0, Math.min(left, farthestLeft)));
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
        const place = item.mapToItem(contentItem, 0, 0);
        if (place.x - revealMargin < contentX)
            scrollAcrossTo(place.x - revealMargin);
        else if (place.x + item.width + revealMargin > contentX + width)
            scrollAcrossTo(place.x + item.width + revealMargin - width);
        if (place.y - revealMargin < contentY)
            scrollTo(place.y - revealMargin, true);
        else if (place.y + item.height + revealMargin > contentY + height)
            scrollTo(place.y + item.height + revealMargin - height, true);
    }

    /// Whether the keyboard has brought the focus to `item`. What is no control does not tell; as tall
    /// as the view it would jump about under the mouse.
    function isReached(item: Item): bool {
        if (item instanceof T.Control)
            return (item as T.Control).visualFocus;
        return item.activeFocusOnTab && item.height < height;
    }

    clip: true
    interactive: false
    boundsBehavior: Flickable.StopAtBounds
    contentWidth: width
    // What cannot scroll leaves the keys to the view around it.
    Keys.enabled: enabled && lowestTop > 0
    Keys.onPressed: event => event.accepted = scrollForKey(event.key)
    Component.onCompleted: {
        if (takesWindowKeys)
            PageKeys.offer(view);
    }
    onFocusedItemChanged: {
        for (let item = focusedItem; item; item = item.parent) {
            if (item.parent === contentItem && isReached(focusedItem))
                reveal(focusedItem);
        }
    }
    onLowestTopChanged: {
        if (!glide.running && contentY > lowestTop)
            contentY = lowestTop;
    }
    onFarthestLeftChanged: scrollAcrossTo(contentX)

    HoverAnimation {
        id: glide

        target: view
        property: "contentY"
    }
    WheelHandler {
        // What cannot scroll leaves the wheel to the view around it.
        enabled: view.lowestTop > 0
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            // A touchpad tells pixels, a wheel notches.
            if (event.pixelDelta.y !== 0)
                view.scrollBy(-event.pixelDelta.y, false);
            else
                view.scrollBy(-event.angleDelta.y / 120 * view.wheelStep, event.angleDelta.y % 120 === 0);
        }
    }
    WheelHandler {
        enabled: view.farthestLeft > 0
        orientation: Qt.Horizontal
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            const distance = event.pixelDelta.x !== 0 ? event.pixelDelta.x : event.angleDelta.x / 120 * view.wheelStep;
            view.scrollAcrossTo(view.contentX - distance);
        }
    }
    DragHandler {
        property real lastY: 0
        property real startX: 0

        target: null
        acceptedDevices: PointerDevice.TouchScreen
        xAxis.enabled: view.farthestLeft > 0
        yAxis.enabled: view.lowestTop > 0
        onActiveChanged: {
            lastY = 0;
            startX = view.contentX;
        }
        onTranslationChanged: {
            view.scrollAcrossTo(startX - translation.x);
            view.scrollBy(lastY - translation.y, false);
            lastY = translation.y;
        }
    }
    SlimScroller {
        flickable: view
        lasting: view.scrollersStay
    }
    SlimScroller {
        flickable: view
        lasting: view.scrollersStay
        orientation: Qt.Horizontal
    }
}
