#pragma once

#include <QDebug>
#include <exception>

/// Runs a call into code that may come from a plug-in. An exception ends here, logged with the name of what
/// was called.
template <typename Call>
void guardedCall(const char* what, Call&& call)
{
    try {
        call();
    } catch (const std::exception& error) {
        qCritical("[Plugin]: An exception left %s: %s", what, error.what());
    } catch (...) {
        qCritical("[Plugin]: An unknown exception left %s", what);
    }
}
