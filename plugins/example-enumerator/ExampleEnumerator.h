#pragma once

#include "controllers/IDeviceEnumerator.h"

/// Offers one ExampleStrip as soon as the event loop runs.
class ExampleEnumerator : public IDeviceEnumerator
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IDeviceEnumerator_iid FILE "example-enumerator.json")
    Q_INTERFACES(IDeviceEnumerator)

public:
    explicit ExampleEnumerator(QObject* parent = nullptr);

private:
    void offerStrip();
};
