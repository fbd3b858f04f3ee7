#pragma once

#include "support/capture/FrameScaler.h"
#include "support/capture/ScreenCastFeed_linux.h"
#include "support/capture/ScreenGrabber.h"

#include <functional>
#include <mutex>
#include <pipewire/pipewire.h>

/// One picture stream of a media server. Frames arrive on the server library's thread, where only the newest
/// is kept and none is copied; everything else happens on the thread that runs the connection's loop.
class PipeWireStream
{
public:
    using Listener = std::function<void()>;

    /// `changed` is called from any thread, under a lock, and does next to nothing. Begins to read, so that
    /// the first picture is there when it is asked for.
    PipeWireStream(pw_core* core, const ScreenCastStream& place, Listener changed);
    ~PipeWireStream();
    Q_DISABLE_COPY(PipeWireStream)

    const ScreenCastStream& place() const { return m_place; }
    /// Of the upright picture; empty while there is nothing to read.
    QSize size() const;
    /// It will not come back.
    bool isOver() const { return m_isOver; }
    void end(const char* reason);
    /// Whether size() or isOver() is another since the last call.
    bool takeChanged();
    /// The latest grab's picture is the newest; `changed` is called when that ends.
    bool tellsOfChange();
    ScreenGrabber::Result grab(QSize outputSize, bool force, cv::Mat& frame);
    /// Pauses when nobody has grabbed for a while.
    void rest();

private:
    struct Picture
    {
        pw_buffer* buffer = nullptr;
        SourcePixels pixels;
    };

    static const pw_stream_events& events();
    void onState(pw_stream_state state, const char* error);
    void onFormat(const spa_pod* format);
    void onBufferCame();
    void onBufferGone(pw_buffer* buffer);
    void onFrames();
    /// Keeps what is left of a picture whose memory goes.
    void keep(const SourcePixels& pixels);
    bool takeNewest();
    void setActive(bool active);
    void begin();
    /// The picture that a source sends when somebody begins to read is lost if the reader is not quite linked
    /// yet, and a still screen sends no other: begins once more where none comes.
    void startAgain();
    void setSize(QSize size);

    const ScreenCastStream m_place;
    const Listener m_changed;
    pw_stream* m_stream = nullptr;
    spa_hook m_listener{};
    Picture m_held; ///< the latest that was grabbed
    cv::Mat m_kept; ///< a small one, while nothing is held
    QSize m_size;
    bool m_isOver = false;
    bool m_hasChanged = false;
    bool m_isActive = true;
    qint64 m_startedUs;
    int m_starts = 1;
    bool m_isFresh = false; ///< a picture has come since
    qint64 m_grabbedUs;
    int m_buffers = 0;
    qint64 m_lostUs = 0;   ///< since when there have been none any more although it is read; 0 for not
    std::mutex m_mutex;    // guards what follows, and which buffers are given back
    SourcePixels m_format; ///< only size and places of the colours
    Picture m_newest;      ///< since the latest grab
    bool m_isAwaited = false;
};
