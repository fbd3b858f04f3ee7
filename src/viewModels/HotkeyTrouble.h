#pragma once

/// Why a key combination does not work.
enum class HotkeyTrouble {
    None,
    Taken,      ///< another program holds it
    NoSuchKey,  ///< the keyboard of the moment has no such key
    NotAllowed, ///< the desktop does not let programs take keys
    NotGranted, ///< the desktop has asked the user, who did not agree
    NoKeysYet,  ///< the desktop has it on its list, and leaves it to the user to give it keys
};
