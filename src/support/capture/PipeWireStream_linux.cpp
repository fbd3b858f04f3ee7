#include "support/capture/PipeWireStream_linux.h"

#include "support/capture/DeskCapture.h"
#include "support/capture/PipeWirePixels_linux.h"

#include <QDebug>
#include <array>
#include <spa/pod/builder.h>
#include <utility>

namespace {
constexpr qint64 kRestUs = 2000000;
constexpr qint64 kNewBuffersUs = 1000000; // what a change of the format may take
constexpr int kKeptWidthPx = 480;
constexpr qint64 kFirstFrameUs = 300000; // longer with each try
constexpr qint64 kSlowFirstFrameUs = 1000000;
constexpr int kStarts = 8; // for a newer picture than the one that there is

/// Memory for what is said to the server.
struct Builder
{
    Builder() { spa_pod_builder_init(&builder, memory.data(), uint32_t(memory.size())); }
    std::array<uint8_t, 2048> memory{};
    spa_pod_builder builder{};
};
} // namespace

PipeWireStream::PipeWireStream(pw_core* core, const ScreenCastStream& place, Listener changed)
    : m_place(place)
    , m_changed(std::move(changed))
    , m_startedUs(DeskCapture::nowUs())
    , m_grabbedUs(m_startedUs)
{
    m_stream = pw_stream_new(core, "screen",
                             pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture",
                                               PW_KEY_MEDIA_ROLE, "Screen", nullptr));
    if (!m_stream) {
        end("there is no memory");
        return;
    }
    pw_stream_add_listener(m_stream, &m_listener, &events(), this);
    Builder formats;
    const spa_pod* format = readableFormats(formats.builder);
    // Frames are looked at on the library's own thread: 60 a second wake nobody else.
    const int flags = PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS |
                      PW_STREAM_FLAG_DONT_RECONNECT;
    if (pw_stream_connect(m_stream, PW_DIRECTION_INPUT, place.node, pw_stream_flags(flags), &format, 1) < 0)
        end("it cannot be connected");
}

PipeWireStream::~PipeWireStream()
{
    if (!m_stream)
        return;
    spa_hook_remove(&m_listener);
    pw_stream_destroy(m_stream);
}

const pw_stream_events& PipeWireStream::events()
{
    static const pw_stream_events table = [] {
        pw_stream_events events{};
        events.version = PW_VERSION_STREAM_EVENTS;
        events.state_changed = [](void* data, pw_stream_state, pw_stream_state state, const char* error) {
            static_cast<PipeWireStream*>(data)->onState(state, error);
        };
        events.param_changed = [](void* data, uint32_t id, const spa_pod* param) {
            if (id == SPA_PARAM_Format)
                static_cast<PipeWireStream*>(data)->onFormat(param);
        };
        events.add_buffer = [](void* data, pw_buffer*) {
            static_cast<PipeWireStream*>(data)->onBufferCame();
        };
        events.remove_buffer = [](void* data, pw_buffer* buffer) {
            static_cast<PipeWireStream*>(data)->onBufferGone(buffer);
        };
        events.process = [](void* data) { static_cast<PipeWireStream*>(data)->onFrames(); };
        return events;
    }();
    return table;
}

QSize PipeWireStream::size() const
{
    const bool isLost = m_lostUs && m_isActive && DeskCapture::nowUs() - m_lostUs > kNewBuffersUs;
    return m_isOver || isLost ? QSize() : m_size;
}

void PipeWireStream::end(const char* reason)
{
    if (m_isOver)
        return;
    m_isOver = true;
    m_hasChanged = true;
    qWarning().noquote() << "[DeskDuplManager]: The stream of" << m_place.name << "ends:" << reason;
}

bool PipeWireStream::takeChanged()
{
    return std::exchange(m_hasChanged, false);
}

void PipeWireStream::setSize(QSize size)
{
    m_hasChanged = m_hasChanged || size != m_size;
    m_size = size;
}

void PipeWireStream::onState(pw_stream_state state, const char* error)
{
    if (state == PW_STREAM_STATE_ERROR)
        end(error ? error : "an error");
    else if (state == PW_STREAM_STATE_UNCONNECTED)
        end("it is disconnected");
}

void PipeWireStream::onFormat(const spa_pod* param)
{
    const SourcePixels format = param ? pixelsOf(param) : SourcePixels();
    {
        const std::lock_guard lock(m_mutex);
        m_format = format;
    }
    if (format.size.isEmpty())
        return;
    setSize(format.size);
    Builder buffers;
    std::vector<const spa_pod*> params = wantedBuffers(buffers.builder);
    pw_stream_update_params(m_stream, params.data(), uint32_t(params.size()));
}

void PipeWireStream::onFrames()
{
    const std::lock_guard lock(m_mutex);
    while (pw_buffer* buffer = pw_stream_dequeue_buffer(m_stream)) {
        Picture picture{buffer, pixelsIn(*buffer->buffer, m_format)};
        if (picture.pixels.data)
            std::swap(picture, m_newest);
        if (picture.buffer)
            pw_stream_queue_buffer(m_stream, picture.buffer);
    }
    if (m_newest.buffer && std::exchange(m_isAwaited, false))
        m_changed();
}

bool PipeWireStream::tellsOfChange()
{
    const std::lock_guard lock(m_mutex);
    m_isAwaited = m_isActive && m_isFresh && !m_isOver && !m_newest.buffer;
    return m_isAwaited;
}

void PipeWireStream::onBufferCame()
{
    if (m_buffers++ > 0)
        return;
    m_hasChanged = m_hasChanged || m_lostUs;
    m_lostUs = 0;
    begin();
}

void PipeWireStream::onBufferGone(pw_buffer* buffer)
{
    if (--m_buffers == 0)
        m_lostUs = DeskCapture::nowUs();
    Picture gone;
    {
        const std::lock_guard lock(m_mutex);
        if (m_newest.buffer == buffer)
            gone = std::exchange(m_newest, {});
    }
    if (gone.buffer)
        m_held = {}; // older
    else if (m_held.buffer == buffer)
        gone = std::exchange(m_held, {});
    if (gone.buffer)
        keep(gone.pixels);
}

void PipeWireStream::keep(const SourcePixels& pixels)
{
    const QSize size = pixels.uprightSize();
    const QSize kept = size.scaled(qMin(kKeptWidthPx, size.width()), size.height(), Qt::KeepAspectRatio);
    m_kept = scaleFrame(pixels, kept.expandedTo(QSize(1, 1)));
}

bool PipeWireStream::takeNewest()
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_newest.buffer)
            return false;
        if (m_held.buffer)
            pw_stream_queue_buffer(m_stream, m_held.buffer);
        m_held = std::exchange(m_newest, {});
    }
    m_kept.release();
    m_isFresh = true;
    setSize(m_held.pixels.uprightSize());
    return true;
}

ScreenGrabber::Result PipeWireStream::grab(QSize outputSize, bool force, cv::Mat& frame)
{
    m_grabbedUs = DeskCapture::nowUs();
    setActive(true);
    const bool isNew = takeNewest();
    if (!isNew)
        startAgain();
    if (!isNew && !force)
        return ScreenGrabber::Result::Unchanged;
    SourcePixels pixels = m_held.pixels;
    if (!pixels.data && !m_kept.empty())
        pixels = {m_kept.data, qint64(m_kept.step), QSize(m_kept.cols, m_kept.rows), 0, 1, 2, false, 0};
    frame = scaleFrame(pixels, outputSize);
    return frame.empty() ? ScreenGrabber::Result::Failed : ScreenGrabber::Result::Frame;
}

void PipeWireStream::rest()
{
    if (DeskCapture::nowUs() - m_grabbedUs > kRestUs)
        setActive(false);
}

void PipeWireStream::setActive(bool active)
{
    if (m_isActive == active || m_isOver)
        return;
    m_isActive = active;
    begin();
    m_lostUs = m_lostUs ? m_startedUs : 0;
    pw_stream_set_active(m_stream, active);
}

void PipeWireStream::begin()
{
    m_isFresh = false;
    m_starts = 1;
    m_startedUs = DeskCapture::nowUs();
}

void PipeWireStream::startAgain()
{
    const bool hasAny = m_held.buffer || !m_kept.empty();
    const qint64 now = DeskCapture::nowUs();
    if (m_isFresh || m_isOver || (hasAny && m_starts >= kStarts) ||
        now - m_startedUs < qMin(m_starts * kFirstFrameUs, kSlowFirstFrameUs))
        return;
    ++m_starts;
    m_startedUs = now;
    pw_stream_set_active(m_stream, false);
    pw_stream_set_active(m_stream, true);
}
