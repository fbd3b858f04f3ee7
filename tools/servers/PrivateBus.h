#pragma once

#include "ServerProcess.h"

#include <QDBusConnection>
#include <QDir>
#include <QTemporaryDir>

/// A message bus of one's own, for stand-ins of what a desktop and its system offer.
class PrivateBus : public ServerProcess
{
public:
    ~PrivateBus();

    /// Waits until the bus takes connections; false, with a warning, when it does not.
    bool start();
    QString address() const { return "unix:path=" + m_socket; }
    /// Makes it the session's bus for this process and its children; before the first use.
    void useAsSession() const;
    /// A connection of a stand-in, apart from that of the program under test.
    QDBusConnection connection(const QString& name) const;

private:
    QTemporaryDir m_home{QDir::tempPath() + "/bus-XXXXXX"}; // a socket's path must be short
    const QString m_socket = m_home.filePath("bus");
};
