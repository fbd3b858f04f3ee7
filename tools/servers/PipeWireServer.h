#pragma once

#include "ServerProcess.h"

#include <QDir>
#include <QTemporaryDir>

/// A media server of one's own (pipewire), and the session manager (wireplumber) that links the streams in
/// it. Both end with this object.
class PipeWireServer : public ServerProcess
{
public:
    ~PipeWireServer();

    /// Waits until the server takes connections; false, with a warning, when it does not. Once stopped it
    /// comes back in the same place.
    bool start();
    /// Kills both, as a crash would.
    void stop();
    bool startManager();
    void stopManager();
    QString socket() const { return m_socket; }
    /// A new connection to the server, as a portal hands it out; -1 when there is none. The caller closes it.
    int connection() const;

private:
    QTemporaryDir m_home{QDir::tempPath() + "/pw-XXXXXX"}; // a socket's path must be short
    const QString m_socket = m_home.filePath("pipewire-0");
    MortalProcess m_manager;
};
