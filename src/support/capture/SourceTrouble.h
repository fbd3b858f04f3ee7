#pragma once

#include <QMetaType>

/// Why there is no picture source.
enum class SourceTrouble {
    None,      ///< there are some, or they come in a moment
    NoDisplay, ///< nothing to capture from
    NotAsked,  ///< the desktop lets nobody see the screen without the user's consent, which nobody has asked
               ///< for
    Asking,    ///< the desktop's dialog is open
    Refused,   ///< the user said no
    Withdrawn, ///< the user has ended the sharing
    NoPortal,  ///< the desktop has nothing that could be asked
    Lost       ///< what hands the pictures out is gone; it is tried again
};
Q_DECLARE_METATYPE(SourceTrouble)

/// Who wants sources that the user may have to be asked for. Consent given once needs no dialog, whoever
/// wants.
enum class SourceRequest {
    Needed,  ///< an effect came up; never a dialog in a run that the system started
    Shown,   ///< the user sees the page of an effect that needs them; asks unless he has answered in this run
    Wanted,  ///< the user wants to be asked
    Pausing, ///< an effect has a pause: the screen may be locked, for which desktops end what shares it
    Again    ///< it goes on; what was lost or ended meanwhile need not wait for its turn, nothing is asked
};
Q_DECLARE_METATYPE(SourceRequest)
