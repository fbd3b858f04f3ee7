#pragma once

#include <QImage>
#include <QRect>
#include <QScopeGuard>
#include <QSize>

#include <functional>

#include <pipewire/pipewire.h>
#include <spa/param/video/format-utils.h>

/// A picture stream as a compositor publishes it into a media server; its picture is sent when somebody
/// begins to read, when it is shown, and at a rate where one is set. Ends with this object. All operations
/// may be called from any thread.
class PipeWireSource
{
public:
    struct Kind
    {
        uint32_t format = SPA_VIDEO_FORMAT_BGRx;
        QSize size{640, 480}; ///< of the buffers
        int stride = 0;       ///< bytes from row to row; 0 for no gap
        bool tellsStride = true;
        QRect crop;             ///< where in the buffers the picture is; the whole where empty
        uint32_t transform = 0; ///< what a picture goes through on its way into them, spa_meta_videotransform
        bool sendsAtStart = true;
    };
    /// Alters a frame that goes out.
    using Spoil = std::function<void(spa_data&)>;

    /// Takes `remote`, a connection to the server, over.
    PipeWireSource(int remote, const Kind& kind);
    ~PipeWireSource();
    Q_DISABLE_COPY(PipeWireSource)

    /// Waits until the server knows the stream; false when it does not come to that in `patienceMs`.
    bool waitForNode(int patienceMs) const;
    /// The stream's number in the server; PW_ID_ANY until it has one.
    uint32_t node() const;
    /// Whether somebody reads.
    bool isRead() const;
    /// The picture as the user sees it, cropped and upright; it is stretched to its size.
    void show(const QImage& picture, const Spoil& spoil = {});
    /// Sends the picture again and again; 0 to cease.
    void setRate(int framesPerSecond);
    /// Frames that went out.
    int sent() const;

private:
    static PipeWireSource& self(void* data) { return *static_cast<PipeWireSource*>(data); }
    static void onTimer(void* data, uint64_t expirations);
    static void onState(void* data, pw_stream_state old, pw_stream_state state, const char* error);
    static void onFormat(void* data, uint32_t id, const spa_pod* param);
    static void onAddBuffer(void* data, pw_buffer* buffer);
    static void onRemoveBuffer(void* data, pw_buffer* buffer);
    static const pw_stream_events& events();

    auto locked() const
    {
        pw_thread_loop_lock(m_loop);
        return qScopeGuard([this] { pw_thread_loop_unlock(m_loop); });
    }
    void connectStream();
    int bytes() const { return m_stride * m_kind.size.height(); }
    void send(const Spoil& spoil);
    void paint(uchar* to) const;

    const Kind m_kind;
    const int m_stride;
    pw_thread_loop* m_loop = nullptr;
    pw_context* m_context = nullptr;
    pw_stream* m_stream = nullptr;
    spa_source* m_timer = nullptr;
    spa_hook m_listener{};
    QImage m_picture; ///< as it stands in a buffer
    uintptr_t m_pictureNumber = 0;
    int m_sent = 0;
};
