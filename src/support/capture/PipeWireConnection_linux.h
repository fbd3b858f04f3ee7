#pragma once

#include "support/capture/PipeWireStream_linux.h"

#include <memory>
#include <vector>

/// A connection to a media server with the streams of one offer. Never waits for the server. Belongs to the
/// thread that made it.
class PipeWireConnection
{
public:
    /// Takes the offer's remote over; `changed` is for its streams.
    PipeWireConnection(const ScreenCastFeed::Offer& offer, const PipeWireStream::Listener& changed);
    ~PipeWireConnection();
    Q_DISABLE_COPY(PipeWireConnection)

    /// False once the server is gone, or all streams are over.
    bool isAlive() const;
    /// Readable when there is something for dispatch() to do.
    int file() const;
    void dispatch();
    const std::vector<std::unique_ptr<PipeWireStream>>& streams() const { return m_streams; }
    /// Whether a stream has another size or is over since the last call; this forgets those that are over.
    bool takeChanged();

private:
    bool connectTo(int remote);
    void onError(uint32_t id, int result, const char* message);
    void onNodeGone(uint32_t node);

    pw_loop* m_loop = nullptr;
    pw_context* m_context = nullptr;
    pw_core* m_core = nullptr;
    pw_registry* m_registry = nullptr;
    spa_hook m_coreListener{};
    spa_hook m_registryListener{};
    std::vector<std::unique_ptr<PipeWireStream>> m_streams;
    bool m_isBroken = false;
};
