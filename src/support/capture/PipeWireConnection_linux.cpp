#include "support/capture/PipeWireConnection_linux.h"

#include <QDebug>
#include <algorithm>
#include <cerrno>
#include <mutex>
#include <unistd.h>

PipeWireConnection::PipeWireConnection(const ScreenCastFeed::Offer& offer,
                                       const PipeWireStream::Listener& changed)
{
    static std::once_flag once; // and for good: others in the process may use the library
    std::call_once(once, [] { pw_init(nullptr, nullptr); });
    if (!connectTo(offer.remote)) {
        m_isBroken = true;
        qWarning().noquote() << "[DeskDuplManager]: Cannot connect to the media server:" << qt_error_string();
        return;
    }
    for (const ScreenCastStream& stream : offer.streams)
        m_streams.push_back(std::make_unique<PipeWireStream>(m_core, stream, changed));
}

PipeWireConnection::~PipeWireConnection()
{
    m_streams.clear();
    if (m_registry) {
        spa_hook_remove(&m_registryListener);
        pw_proxy_destroy(reinterpret_cast<pw_proxy*>(m_registry));
    }
    if (m_core) {
        spa_hook_remove(&m_coreListener);
        pw_core_disconnect(m_core);
    }
    if (m_context)
        pw_context_destroy(m_context);
    if (m_loop) {
        pw_loop_leave(m_loop);
        pw_loop_destroy(m_loop);
    }
}

bool PipeWireConnection::connectTo(int remote)
{
    m_loop = pw_loop_new(nullptr);
    if (m_loop) {
        pw_loop_enter(m_loop);
        m_context = pw_context_new(m_loop, nullptr, 0);
    }
    if (!m_context) {
        close(remote);
        return false;
    }
    m_core = pw_context_connect_fd(m_context, remote, nullptr, 0); // which closes it
    if (!m_core)
        return false;
    static const pw_core_events coreEvents = [] {
        pw_core_events events{};
        events.version = PW_VERSION_CORE_EVENTS;
        events.error = [](void* data, uint32_t id, int, int result, const char* message) {
            static_cast<PipeWireConnection*>(data)->onError(id, result, message);
        };
        return events;
    }();
    pw_core_add_listener(m_core, &m_coreListener, &coreEvents, this);
    m_registry = pw_core_get_registry(m_core, PW_VERSION_REGISTRY, 0);
    if (!m_registry)
        return false;
    static const pw_registry_events registryEvents = [] {
        pw_registry_events events{};
        events.version = PW_VERSION_REGISTRY_EVENTS;
        events.global_remove = [](void* data, uint32_t id) {
            static_cast<PipeWireConnection*>(data)->onNodeGone(id);
        };
        return events;
    }();
    pw_registry_add_listener(m_registry, &m_registryListener, &registryEvents, this);
    return true;
}

bool PipeWireConnection::isAlive() const
{
    return !m_isBroken && std::any_of(m_streams.begin(), m_streams.end(),
                                      [](const auto& stream) { return !stream->isOver(); });
}

int PipeWireConnection::file() const
{
    return m_isBroken ? -1 : pw_loop_get_fd(m_loop);
}

void PipeWireConnection::dispatch()
{
    pw_loop_iterate(m_loop, 0);
}

bool PipeWireConnection::takeChanged()
{
    bool hasChanged = false;
    for (const auto& stream : m_streams) {
        stream->rest();
        hasChanged = stream->takeChanged() || hasChanged;
    }
    const auto over = std::remove_if(m_streams.begin(), m_streams.end(),
                                     [](const auto& stream) { return stream->isOver(); });
    m_streams.erase(over, m_streams.end());
    return hasChanged;
}

void PipeWireConnection::onError(uint32_t id, int result, const char* message)
{
    // What a stream has lost it says itself; to a stream that ended the server knows no answer.
    if (id != PW_ID_CORE || result == -ENOENT)
        return;
    m_isBroken = true;
    qWarning().noquote() << "[DeskDuplManager]: The media server is lost:" << message;
}

void PipeWireConnection::onNodeGone(uint32_t node)
{
    for (const auto& stream : m_streams) {
        if (stream->place().node == node)
            stream->end("its source is gone");
    }
}
