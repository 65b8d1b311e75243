import QtQuick
import QtQuick.Window
import Orvik.Tallyview.Theme

/// The application's icon in a square with edges of `size` points.
Image {
    property real size: 36

    width: size
    height: size
    // Scaled down once, when it is loaded: crisper than any scaling by the renderer.
    sourceSize: Qt.size(Math.ceil(size * Screen.devicePixelRatio), Math.ceil(size * Screen.devicePixelRatio))
    source: "OrvikIcon.png"
    smooth: true
    mipmap: true
    Accessible.ignored: true
}
