#pragma once

#include "controllers/IDeviceEnumerator.h"
#include "support/SharedLibrary.h"

/// Produces the three virtual devices, one second after it was made. Main thread.
class LUMIVAR_DEVICES_EXPORT VTControllerEnumerator : public IDeviceEnumerator
{
    Q_OBJECT

public:
    explicit VTControllerEnumerator(QObject* parent = nullptr);

private:
    void makeControllers();
};
