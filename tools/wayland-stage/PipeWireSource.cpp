#include "PipeWireSource.h"

#include <QDeadlineTimer>
#include <QPainter>
#include <QThread>

#include <array>

#include <spa/debug/types.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr size_t kParameterBytes = 1024;

template <typename T>
T* metaOf(pw_buffer* buffer, spa_meta_type type)
{
    return static_cast<T*>(spa_buffer_find_meta(buffer->buffer, type)->data);
}

} // namespace

PipeWireSource::PipeWireSource(int remote, const Kind& kind)
    : m_kind(kind)
    , m_stride(kind.stride ? kind.stride : kind.size.width() * 4)
{
    pw_init(nullptr, nullptr);
    m_loop = pw_thread_loop_new("source", nullptr);
    m_context = pw_context_new(pw_thread_loop_get_loop(m_loop), nullptr, 0);
    m_timer = pw_loop_add_timer(pw_thread_loop_get_loop(m_loop), &onTimer, this);
    pw_core* core = pw_context_connect_fd(m_context, remote, nullptr, 0);
    pw_properties* properties =
        pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source", PW_KEY_NODE_NAME, "picture", nullptr);
    m_stream = pw_stream_new(core, "picture", properties);
    pw_stream_add_listener(m_stream, &m_listener, &events(), this);
    connectStream();
    pw_thread_loop_start(m_loop);
}

PipeWireSource::~PipeWireSource()
{
    pw_thread_loop_stop(m_loop);
    pw_stream_destroy(m_stream);
    pw_context_destroy(m_context);
    pw_thread_loop_destroy(m_loop);
}

bool PipeWireSource::waitForNode(int patienceMs) const
{
    for (QDeadlineTimer patience(patienceMs); node() == PW_ID_ANY; QThread::msleep(5)) {
        if (patience.hasExpired())
            return false;
    }
    return true;
}

uint32_t PipeWireSource::node() const
{
    const auto lock = locked();
    return pw_stream_get_node_id(m_stream);
}

bool PipeWireSource::isRead() const
{
    const auto lock = locked();
    return pw_stream_get_state(m_stream, nullptr) == PW_STREAM_STATE_STREAMING;
}

void PipeWireSource::show(const QImage& picture, const Spoil& spoil)
{
    const auto lock = locked();
    const int turns = int(m_kind.transform & 3);
    const QImage turned =
        picture.mirrored((m_kind.transform & 4) != 0, false).transformed(QTransform().rotate(-90 * turns));
    const QRect whole(QPoint(), m_kind.size);
    m_picture = QImage(m_kind.size, QImage::Format_RGB32);
    m_picture.fill(Qt::magenta);
    QPainter(&m_picture).drawImage(m_kind.crop.isEmpty() ? whole : m_kind.crop & whole, turned);
    ++m_pictureNumber;
    send(spoil);
}

void PipeWireSource::setRate(int framesPerSecond)
{
    const auto lock = locked();
    timespec interval{0, framesPerSecond ? 1000000000 / framesPerSecond : 0};
    pw_loop_update_timer(pw_thread_loop_get_loop(m_loop), m_timer, &interval, &interval, false);
}

int PipeWireSource::sent() const
{
    const auto lock = locked();
    return m_sent;
}

/// As one that decides on the pace itself, and brings the memory of its pictures.
void PipeWireSource::connectStream()
{
    std::array<uint8_t, kParameterBytes> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), uint32_t(memory.size()));
    spa_rectangle size{uint32_t(m_kind.size.width()), uint32_t(m_kind.size.height())};
    spa_fraction rate{0, 1};
    const spa_pod* format = static_cast<spa_pod*>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType,
        SPA_POD_Id(SPA_MEDIA_TYPE_video), SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw),
        SPA_FORMAT_VIDEO_format, SPA_POD_Id(m_kind.format), SPA_FORMAT_VIDEO_size, SPA_POD_Rectangle(&size),
        SPA_FORMAT_VIDEO_framerate, SPA_POD_Fraction(&rate)));
    const auto flags = pw_stream_flags(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_ALLOC_BUFFERS);
    pw_stream_connect(m_stream, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, &format, 1);
}

void PipeWireSource::onTimer(void* data, uint64_t /*expirations*/)
{
    self(data).send({});
}

void PipeWireSource::onState(void* data, pw_stream_state /*old*/, pw_stream_state /*state*/,
                             const char* /*error*/)
{
    if (self(data).m_kind.sendsAtStart)
        self(data).send({});
}

void PipeWireSource::onFormat(void* data, uint32_t id, const spa_pod* param)
{
    if (!param || id != SPA_PARAM_Format)
        return;
    const PipeWireSource& source = self(data);
    std::array<uint8_t, kParameterBytes> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), uint32_t(memory.size()));
    const auto meta = [&builder](spa_meta_type type, size_t size) {
        return static_cast<const spa_pod*>(spa_pod_builder_add_object(
            &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(type),
            SPA_PARAM_META_size, SPA_POD_Int(int(size))));
    };
    const spa_pod* params[] = {
        static_cast<const spa_pod*>(spa_pod_builder_add_object(
            &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
            SPA_POD_CHOICE_RANGE_Int(4, 2, 8), SPA_PARAM_BUFFERS_blocks, SPA_POD_Int(1),
            SPA_PARAM_BUFFERS_size, SPA_POD_Int(source.bytes()), SPA_PARAM_BUFFERS_stride,
            SPA_POD_Int(source.m_stride), SPA_PARAM_BUFFERS_dataType,
            SPA_POD_CHOICE_FLAGS_Int(1 << SPA_DATA_MemFd))),
        meta(SPA_META_Header, sizeof(spa_meta_header)), meta(SPA_META_VideoCrop, sizeof(spa_meta_region)),
        meta(SPA_META_VideoTransform, sizeof(spa_meta_videotransform))};
    pw_stream_update_params(source.m_stream, params, 4);
}

void PipeWireSource::onAddBuffer(void* data, pw_buffer* buffer)
{
    spa_data& plane = buffer->buffer->datas[0];
    const size_t bytes = size_t(self(data).bytes());
    const int file = ::memfd_create("picture", MFD_CLOEXEC);
    if (file < 0 || ::ftruncate(file, off_t(bytes)) != 0)
        qFatal("no memory for pictures");
    void* memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    plane = {SPA_DATA_MemFd, SPA_DATA_FLAG_READWRITE, file, 0, uint32_t(bytes), memory, plane.chunk};
    buffer->user_data = nullptr;
}

void PipeWireSource::onRemoveBuffer(void* data, pw_buffer* buffer)
{
    const spa_data& plane = buffer->buffer->datas[0];
    ::munmap(plane.data, size_t(self(data).bytes()));
    ::close(int(plane.fd));
}

const pw_stream_events& PipeWireSource::events()
{
    static constexpr pw_stream_events kEvents = [] {
        pw_stream_events events{};
        events.version = PW_VERSION_STREAM_EVENTS;
        events.state_changed = &onState;
        events.param_changed = &onFormat;
        events.add_buffer = &onAddBuffer;
        events.remove_buffer = &onRemoveBuffer;
        return events;
    }();
    return kEvents;
}

void PipeWireSource::send(const Spoil& spoil)
{
    if (m_picture.isNull() || pw_stream_get_state(m_stream, nullptr) != PW_STREAM_STATE_STREAMING)
        return;
    pw_buffer* buffer = pw_stream_dequeue_buffer(m_stream);
    if (!buffer)
        return;
    spa_data& plane = buffer->buffer->datas[0];
    if (buffer->user_data != reinterpret_cast<void*>(m_pictureNumber))
        paint(static_cast<uchar*>(plane.data));
    buffer->user_data = reinterpret_cast<void*>(m_pictureNumber);
    *plane.chunk = {0, uint32_t(bytes()), m_kind.tellsStride ? m_stride : 0, 0};
    const spa_region place{{m_kind.crop.x(), m_kind.crop.y()},
                           {uint32_t(m_kind.crop.width()), uint32_t(m_kind.crop.height())}};
    *metaOf<spa_region>(buffer, SPA_META_VideoCrop) = place;
    *metaOf<uint32_t>(buffer, SPA_META_VideoTransform) = m_kind.transform;
    if (spoil)
        spoil(plane);
    pw_stream_queue_buffer(m_stream, buffer);
    ++m_sent;
}

void PipeWireSource::paint(uchar* to) const
{
    // The format's name tells the bytes in their order.
    const QByteArray bytes(spa_debug_type_find_short_name(spa_type_video_format, m_kind.format));
    const int red = bytes.indexOf('R'), green = bytes.indexOf('G'), blue = bytes.indexOf('B');
    for (int y = 0; y < m_kind.size.height(); ++y, to += m_stride) {
        const auto* row = reinterpret_cast<const QRgb*>(m_picture.constScanLine(y));
        for (int x = 0; x < m_kind.size.width(); ++x) {
            to[x * 4 + red] = uchar(qRed(row[x]));
            to[x * 4 + green] = uchar(qGreen(row[x]));
            to[x * 4 + blue] = uchar(qBlue(row[x]));
        }
    }
}
