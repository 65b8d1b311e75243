#include "app/platform/FrameAppearance.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QStyleHints>
#include <QWindow>

#include <cstdlib>

#if QT_CONFIG(xcb)
#include <xcb/xcb.h>
#endif

namespace tallyview {

namespace {

/// A template, so that it compiles with a Qt that lacks these members.
template <typename Hints>
void choose([[maybe_unused]] Hints &hints, std::optional<bool> dark) {
    if constexpr (requires { hints.unsetColorScheme(); }) {
        using Scheme = decltype(hints.colorScheme());
        hints.setColorScheme(!dark ? Scheme::Unknown : *dark ? Scheme::Dark : Scheme::Light);
    }
}

#if QT_CONFIG(xcb)
/// Waits for the display server, which answers at once; called once per process.
xcb_atom_t internAtom(xcb_connection_t *connection, const QByteArray &name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name);
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const xcb_atom_t found = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    std::free(reply);
    return found;
}
#endif

} // namespace

void chooseFrames(std::optional<bool> dark) { choose(*QGuiApplication::styleHints(), dark); }

void tellWindowManager([[maybe_unused]] QWindow &window, [[maybe_unused]] bool dark) {
#if QT_CONFIG(xcb)
    // Other plugins may offer the interface too, with nothing behind it.
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        xcb_connection_t *connection =
            qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        static const xcb_atom_t variantAtom = internAtom(connection, "_GTK_THEME_VARIANT");
        static const xcb_atom_t textAtom = internAtom(connection, "UTF8_STRING");
        const QByteArray variant = dark ? "dark" : "light";
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE,
                            static_cast<xcb_window_t>(window.winId()), variantAtom, textAtom, 8,
                            static_cast<uint32_t>(variant.size()), variant.constData());
        xcb_flush(connection);
    }
#endif
}

} // namespace tallyview
