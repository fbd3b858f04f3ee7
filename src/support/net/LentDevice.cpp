#include "support/net/LentDevice.h"

LentDevice::LentDevice(QIODevice& device)
    : m_device(&device)
{
    open(ReadOnly | Unbuffered);
    m_device->seek(0);
}

bool LentDevice::seek(qint64 pos)
{
    return pos == this->pos();
}

qint64 LentDevice::size() const
{
    return m_device ? m_device->size() : 0;
}

qint64 LentDevice::readData(char* data, qint64 most)
{
    return m_device ? m_device->read(data, most) : -1;
}

qint64 LentDevice::writeData(const char*, qint64)
{
    return -1;
}
