#pragma once

#include <QObject>
#include <memory>

/// Ends an object that may be the sender of what is being handled: it says no more, and goes a little later.
template <typename T>
void discard(std::unique_ptr<T>& object)
{
    if (!object)
        return;
    object->disconnect();
    object.release()->deleteLater();
}
