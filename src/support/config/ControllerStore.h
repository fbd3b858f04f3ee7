#pragma once

#include "support/config/FlatStore.h"

#include <map>

/// The objects of all devices in one file. Every object has an address for good.
class ControllerStore : public FlatStore
{
public:
    using FlatStore::FlatStore;

    /// The device's object; empty, and not written while it is, for an unknown device.
    QJsonObject& object(const QString& key);
    void reset() override;

protected:
    void collect() override;

private:
    std::map<QString, QJsonObject> m_objects; // those asked for; they count, not their copies in values()
};
