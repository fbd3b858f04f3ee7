#pragma once

#include "ServerProcess.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

/// A message bus of the test's own, for fakes of what a desktop and its system offer.
class PrivateBus : public ServerProcess
{
public:
    ~PrivateBus() { stop(); }

    /// Waits until the bus takes connections; false, with a warning, when it does not.
    bool start()
    {
        QFile::remove(m_socket);
        m_server.setProcessChannelMode(QProcess::MergedChannels);
        m_server.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--address=" + address()});
        for (QDeadlineTimer patience(kStartMs); !patience.hasExpired(); QThread::msleep(5)) {
            if (m_server.state() == QProcess::NotRunning)
                break;
            if (QFile::exists(m_socket))
                return true;
            m_server.waitForFinished(0);
        }
        qWarning() << "dbus-daemon does not start:" << m_server.errorString() << m_server.readAll();
        return false;
    }
    QString address() const { return "unix:path=" + m_socket; }
    /// Makes it the session's bus, the system's or both for this process and its children; before the first
    /// use.
    void useAsSession() const { qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8()); }
    void useAsSystem() const { qputenv("DBUS_SYSTEM_BUS_ADDRESS", address().toUtf8()); }
    /// A connection of a fake, apart from that of the code under test.
    QDBusConnection connection(const QString& name) const
    {
        return QDBusConnection::connectToBus(address(), name);
    }

private:
    QTemporaryDir m_home;
    const QString m_socket = m_home.filePath("bus");
};
