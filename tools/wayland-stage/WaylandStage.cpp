#include "WaylandStage.h"

#include "PipeWireSource.h"

#include <QProcessEnvironment>

#include <algorithm>

namespace {
constexpr int kPublishMs = 30000;
} // namespace

WaylandStage::WaylandStage(int screens)
    : m_screens(screens)
    , m_pictures(screens, QImage(1, 1, QImage::Format_RGB32))
{
    for (QImage& picture : m_pictures)
        picture.fill(Qt::black);
}

WaylandStage::~WaylandStage() = default;

bool WaylandStage::start()
{
    m_portal.socket = m_server.socket();
    if (!m_bus.start() || !startServer())
        return false;
    m_logins = std::make_unique<LoginManager>(m_bus);
    return m_portal.come();
}

void WaylandStage::addTo(QProcessEnvironment& environment) const
{
    for (const char* bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
        environment.insert(bus, m_bus.address());
    environment.insert("XDG_SESSION_TYPE", "wayland");
}

void WaylandStage::show(int screen, const QImage& picture)
{
    m_pictures[screen] = picture;
    m_sources[size_t(screen)]->show(picture);
}

bool WaylandStage::isRead(int screen) const
{
    return m_sources[size_t(screen)]->isRead();
}

bool WaylandStage::endSharing()
{
    m_portal.endSession();
    return !hasServer() || publish();
}

bool WaylandStage::startServer()
{
    m_sources.clear(); // they hold on to the one before
    return m_server.start() && publish();
}

bool WaylandStage::publish()
{
    m_sources.clear();
    m_portal.streams.clear();
    for (int i = 0; i < m_screens; ++i) {
        PipeWireSource::Kind kind;
        kind.size = kScreen;
        m_sources.push_back(std::make_unique<PipeWireSource>(m_server.connection(), kind));
        m_sources.back()->show(m_pictures[i]);
        if (!m_sources.back()->waitForNode(kPublishMs))
            return false;
        m_portal.streams += {m_sources.back()->node(),
                             {{"id", QString("screen-%1").arg(i + 1)},
                              {"position", QPoint(i * kScreen.width(), 0)},
                              {"size", kScreen}}};
    }
    return true;
}
