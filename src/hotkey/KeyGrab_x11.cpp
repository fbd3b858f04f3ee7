#include "hotkey/KeyGrab_x11.h"

#include <algorithm>
#include <cstdlib>
#include <vector>
#include <xcb/xcb.h>

namespace {

/// Calls with every key and the modifiers with every choice of the locks.
template <typename Function>
void forEachVariant(const KeyGrab& grab, Function function)
{
    for (const KeyboardMap::KeyCode key : grab.keys) {
        unsigned locks = grab.locks;
        function(key, grab.modifiers);
        for (; locks != 0; locks = (locks - 1) & grab.locks)
            function(key, quint16(grab.modifiers | locks));
    }
}

} // namespace

bool KeyGrab::overlaps(const KeyGrab& other) const
{
    return modifiers == other.modifiers &&
           std::any_of(keys.begin(), keys.end(), [&other](auto key) { return other.keys.contains(key); });
}

GrabResult takeKeys(xcb_connection_t* connection, quint32 rootWindow, const KeyGrab& grab)
{
    // The focused window, be it one of ours, is to know nothing of the key.
    constexpr uint8_t kOwnerEvents = 0;
    std::vector<xcb_void_cookie_t> requests;
    forEachVariant(grab, [&](KeyboardMap::KeyCode key, quint16 modifiers) {
        requests.push_back(xcb_grab_key_checked(connection, kOwnerEvents, rootWindow, modifiers, key,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    });
    bool isTaken = false;
    for (const xcb_void_cookie_t request : requests) {
        if (xcb_generic_error_t* refusal = xcb_request_check(connection, request)) {
            isTaken = true;
            free(refusal);
        }
    }
    if (xcb_connection_has_error(connection))
        return GrabResult::Gone;
    if (!isTaken)
        return GrabResult::Granted;
    releaseKeys(connection, rootWindow, grab);
    return GrabResult::Taken;
}

void releaseKeys(xcb_connection_t* connection, quint32 rootWindow, const KeyGrab& grab)
{
    forEachVariant(grab, [&](KeyboardMap::KeyCode key, quint16 modifiers) {
        xcb_ungrab_key(connection, key, rootWindow, modifiers);
    });
    xcb_flush(connection);
}
