#pragma once

#include <QIODevice>
#include <QPointer>

/// Lends a device to a network reply, which may still read it for a while after it was aborted: takeBack()
/// leaves nothing to read, and the device may go. Can be read once only: the toolkit would send a request
/// again, up to three times, when its connection is closed without an answer.
class LentDevice : public QIODevice
{
    Q_OBJECT

public:
    explicit LentDevice(QIODevice& device);
    void takeBack() { m_device = nullptr; }

    bool seek(qint64 pos) override;
    qint64 size() const override;

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char* data, qint64 most) override;

private:
    QPointer<QIODevice> m_device;
};
