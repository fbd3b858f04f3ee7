#include "controllers/VTController.h"

#include <QDataStream>
#include <QUdpSocket>

namespace {
constexpr char kSendingModel[] = "LV0N03";
}

VTController::VTController(const ControlOptions& options, QObject* parent)
    : AbsRGBController(parent)
{
    describe(options);
    if (m_options.model == QLatin1String(kSendingModel))
        m_socket = new QUdpSocket(this);
}

void VTController::writeColors(const QVector<LV_RGB>& colors)
{
    if (m_socket == nullptr)
        return;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const LV_RGB& color : colors)
        stream << color.red << color.green << color.blue;
    m_socket->writeDatagram(bytes, QHostAddress::LocalHost, m_port); // nobody may listen, and that is fine
}
