#pragma once

#include "controllers/AbsRGBController.h"
#include "support/SharedLibrary.h"

class QUdpSocket;

/// A device without hardware. The one of model "LV0N03" sends its colours to a local UDP port, three bytes an
/// LED and nothing else; the others only take effects. Main thread.
class LUMIVAR_DEVICES_EXPORT VTController : public AbsRGBController
{
    Q_OBJECT

public:
    VTController(const ControlOptions& options, QObject* parent);

    void writeColors(const QVector<LV_RGB>& colors) override;
    void rebuildHeader() override {}

private:
    QUdpSocket* m_socket = nullptr;
    const quint16 m_port = 65330;
};
