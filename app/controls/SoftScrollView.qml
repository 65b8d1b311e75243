import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

/// A view that scrolls by wheel, touchpad, touch, page keys and the knobs of slim scrollers. The
/// content sets `contentHeight`, and `contentWidth` if it is not the view's. Dragging with the mouse
/// is left to the content. A control that the keyboard's focus reaches comes into view.
Flickable {
    id: view

    /// Kept free around a control that comes into view; its focus ring needs some.
    property alias revealMargin: motion.revealMargin
    /// Whether the scrollers show all the time.
    property bool scrollersStay: false
    /// Whether it gets the page keys of the window that nothing around the focus takes.
    property bool takesWindowKeys: false
    /// A view begins where the last one of this name was left.
    property string placeName

    /// Shows the content from `top` on.
    function scrollTo(top: real, animated: bool) {
        motion.scrollTo(top, animated);
    }

    clip: true
    interactive: motion.touched
    pixelAligned: true
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.AutoFlickIfNeeded
    contentWidth: width
    Keys.enabled: enabled
    Keys.onPressed: event => event.accepted = motion.scrollForKey(event.key)
    onMovementStarted: motion.stop()
    onEnabledChanged: ScrollPlaces.keep(placeName, contentY)
    Component.onCompleted: {
        motion.beginAt(ScrollPlaces.top(placeName));
        if (takesWindowKeys)
            PageKeys.offer(view);
    }

    T.ScrollBar.vertical: SlimScroller {
        place: view.contentY
        lasting: view.scrollersStay
        onTurned: pages => motion.turnPages(pages)
    }
    T.ScrollBar.horizontal: SlimScroller {
        place: view.contentX
        lasting: view.scrollersStay
        onTurned: pages => motion.turnPagesAcross(pages)
    }
    ScrollMotion {
        id: motion

        view: view
        duration: SoftTheme.hoverDuration
        revealMargin: 4
        focusedItem: view.Window.activeFocusItem
        popups: view.T.Overlay.overlay
    }
}
