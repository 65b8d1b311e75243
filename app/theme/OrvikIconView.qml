import QtQuick
import QtQuick.Window

/// The application's icon in a square with edges of `size` points.
Image {
    property real size: 36

    width: size
    height: size
    // Scaled down once, when it is loaded: crisper than any scaling by the renderer.
    sourceSize.width: Math.ceil(size * Screen.devicePixelRatio)
    sourceSize.height: sourceSize.width
    source: "OrvikIcon.png"
    smooth: true
    mipmap: true
    Accessible.ignored: true
}
