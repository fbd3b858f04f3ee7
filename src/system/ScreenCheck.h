#pragma once

#include <QObject>
#include <functional>

/// The way on which screen effects get their pictures in this session.
enum class ScreenWay {
    Direct,       ///< read from the system
    Portal,       ///< handed over by the desktop, with the user's consent
    PortalSilent, ///< its portal does not answer
    NoPortal,     ///< a Wayland desktop without one
    NoDisplay
};

/// Looks without a window, a dialog or a request. `then` is called once, from the event loop, within some
/// seconds; not when `context` has gone.
void checkScreen(QObject* context, const std::function<void(ScreenWay)>& then);
