#include "LightReceiver.h"

#include <algorithm>

LightReceiver::LightReceiver(QObject* parent)
    : QObject(parent)
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &LightReceiver::readDatagrams);
}

bool LightReceiver::listen()
{
    return m_socket.bind(QHostAddress::LocalHost, kPort);
}

void LightReceiver::readDatagrams()
{
    while (m_socket.hasPendingDatagrams()) {
        QByteArray bytes(static_cast<int>(m_socket.pendingDatagramSize()), '\0');
        if (m_socket.readDatagram(bytes.data(), bytes.size()) < 0)
            return;
        take(bytes);
    }
}

void LightReceiver::take(const QByteArray& bytes)
{
    if (bytes.size() >= 3)
        m_leds = bytes.size() / 3;
    QVector<LV_RGB> colors(m_leds);
    std::copy_n(bytes.constData(), bytes.size() / 3 * 3, reinterpret_cast<char*>(colors.data()));
    emit received(colors);
}
