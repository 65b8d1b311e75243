import QtQuick
import QtQuick.Window

/// The application's icon in a square with edges of `size` points.
Image {
    property real size: 36

    /// The tile that the icon draws: from the square's edges, and its corners.
    readonly property real tileInset: size * 32 / 512
    readonly property real tileRadius: size * 104 / 512

    readonly property int pixels: Math.ceil(size * Screen.devicePixelRatio)

    width: size
    height: size
    // Scaled down once, when it is loaded: crisper than any scaling by the renderer.
    sourceSize.width: pixels
    sourceSize.height: pixels
    source: "qrc:/qt/qml/Orvik/Tallyview/Theme/OrvikIcon.png"
    smooth: true
    mipmap: true
    Accessible.ignored: true
}
