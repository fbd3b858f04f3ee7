#pragma once

#include "LoginManager.h"
#include "PipeWireServer.h"
#include "PrivateBus.h"
#include "ScreenPortal.h"

#include <QVector>

#include <memory>

class PipeWireSource;
class QImage;
class QProcessEnvironment;

/// What a Wayland desktop hands out of its screens, without the desktop: a bus, a media server with a stream
/// for each screen, the portal that leads there, and who tells of sleep and lock. Bus and server are real
/// ones. Needs the event loop of its thread.
class WaylandStage
{
public:
    static constexpr QSize kScreen{640, 360}; ///< of each, side by side

    explicit WaylandStage(int screens = 1);
    ~WaylandStage();

    /// Black screens and a portal; false, with a warning, where something does not start.
    bool start();
    /// Has programs find the stage: its bus in place of the session's and the system's, and a session that is
    /// Wayland's.
    void addTo(QProcessEnvironment& environment) const;

    LoginManager& logins() { return *m_logins; }
    const LoginManager& logins() const { return *m_logins; }
    const PrivateBus& bus() const { return m_bus; }
    ScreenPortal& portal() { return m_portal; }
    const ScreenPortal& portal() const { return m_portal; }

    /// From now on it shows this, stretched.
    void show(int screen, const QImage& picture);
    /// Whether somebody reads that screen.
    bool isRead(int screen) const;
    /// The user ends the sharing. The next one has streams of its own, as with compositors.
    bool endSharing();
    /// The media server and its session manager, as a crash would.
    void killServer() { m_server.stop(); }
    bool hasServer() const { return m_server.isRunning(); }
    /// In place of the one that was killed.
    bool startServer();

private:
    bool publish();

    const int m_screens;
    PrivateBus m_bus;
    PipeWireServer m_server;
    ScreenPortal m_portal{m_bus};
    std::unique_ptr<LoginManager> m_logins;
    QVector<QImage> m_pictures;
    std::vector<std::unique_ptr<PipeWireSource>> m_sources;
};
