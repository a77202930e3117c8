#include "core/platform.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace core::platform {

// Extended Window Manager Hints: a user time of 0 asks for no focus.
void wantNoKeyboard(quintptr window)
{
    constexpr std::string_view name = "_NET_WM_USER_TIME";
    constexpr quint32 never = 0;
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t *connection = x11 != nullptr ? x11->connection() : nullptr;
    if (connection == nullptr) { // as on a platform that answers to the interface without a display
        return;
    }
    const xcb_intern_atom_cookie_t asked = xcb_intern_atom(connection, 0, name.size(), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection, asked, nullptr), &std::free);
    if (atom != nullptr) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, xcb_window_t(window), atom->atom,
                            XCB_ATOM_CARDINAL, 32, 1, &never);
    }
}

} // namespace core::platform
