#include "PrivateBus.h"

#include <QFile>

PrivateBus::~PrivateBus()
{
    stop(); // before its folder goes
}

bool PrivateBus::start()
{
    QFile::remove(m_socket); // a killed bus leaves it
    m_server.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--address=" + address()});
    return comesUp([this] { return QFile::exists(m_socket); });
}

void PrivateBus::useAsSession() const
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8());
}

QDBusConnection PrivateBus::connection(const QString& name) const
{
    return QDBusConnection::connectToBus(address(), name);
}
