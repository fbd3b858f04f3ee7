#pragma once

/// Why a key combination could not be taken.
enum class HotkeyTrouble {
    None,
    Taken,      ///< another program holds it
    NoSuchKey,  ///< the keyboard of the moment has no such key
    NotAllowed, ///< the desktop does not let programs take keys
};
