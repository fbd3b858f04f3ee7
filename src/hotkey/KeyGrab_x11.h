#pragma once

#include "hotkey/KeyboardMap_x11.h"

struct xcb_connection_t;

/// A combination as the X server hands it out: these keys with exactly these modifiers, whatever locks are
/// on.
struct KeyGrab
{
    KeyboardMap::Keys keys;
    quint16 modifiers = 0;
    quint16 locks = 0; ///< the bits of Caps lock and its like

    bool operator==(const KeyGrab& other) const
    {
        return keys == other.keys && modifiers == other.modifiers && locks == other.locks;
    }
    /// Whether a key event with this state is one of the combination.
    bool matches(KeyboardMap::KeyCode key, quint16 state) const
    {
        constexpr quint16 kModifiersOfX11 = 0xff; // above them: the mouse's buttons, the layout
        return keys.contains(key) && (state & kModifiersOfX11 & ~locks) == modifiers;
    }
    bool overlaps(const KeyGrab& other) const;
};

enum class GrabResult {
    Granted,
    Taken, ///< another program has part of it
    Gone,  ///< the server does not answer
};

/// Takes the combination from every window, all or nothing, in one round trip.
GrabResult takeKeys(xcb_connection_t* connection, quint32 rootWindow, const KeyGrab& grab);
/// Gives it back, without waiting for the server.
void releaseKeys(xcb_connection_t* connection, quint32 rootWindow, const KeyGrab& grab);
