#pragma once

#include "controllers/LV_RGB.h"

#include <QObject>
#include <QUdpSocket>

/// Receives the virtual device's datagrams: three bytes a LED and nothing else.
class LightReceiver : public QObject
{
    Q_OBJECT

public:
    /// The port that the virtual device sends to.
    static constexpr quint16 kPort = 65330;

    explicit LightReceiver(QObject* parent = nullptr);

    /// False when something else listens there; errorString() then says more.
    bool listen();
    QString errorString() const { return m_socket.errorString(); }
    /// One datagram, be it of anybody.
    void take(const QByteArray& bytes);

signals:
    /// One frame. It keeps the length of the frame before when it comes empty, as from a device that is off.
    void received(const QVector<LV_RGB>& colors);

private:
    void readDatagrams();

    QUdpSocket m_socket;
    int m_leds = 0;
};
