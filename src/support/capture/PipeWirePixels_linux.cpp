#include "support/capture/PipeWirePixels_linux.h"

#include <algorithm>
#include <array>
#include <spa/buffer/buffer.h>
#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/video/format-utils.h>
#include <sys/stat.h>

namespace {
constexpr uint32_t kMaxPx = 16384;
constexpr int kPixelBytes = 4;

struct ColorOrder
{
    spa_video_format format;
    int red, green, blue; ///< byte in the pixel
};
constexpr std::array kOrders = {
    ColorOrder{SPA_VIDEO_FORMAT_BGRx, 2, 1, 0}, ColorOrder{SPA_VIDEO_FORMAT_BGRA, 2, 1, 0},
    ColorOrder{SPA_VIDEO_FORMAT_RGBx, 0, 1, 2}, ColorOrder{SPA_VIDEO_FORMAT_RGBA, 0, 1, 2},
    ColorOrder{SPA_VIDEO_FORMAT_xRGB, 1, 2, 3}, ColorOrder{SPA_VIDEO_FORMAT_xBGR, 3, 2, 1},
};

/// A copy, as the producer may change it at any time; none where the buffer has no such thing.
template <typename T>
T metaOf(const spa_buffer& buffer, spa_meta_type type)
{
    const auto* meta = static_cast<const T*>(spa_buffer_find_meta_data(&buffer, type, sizeof(T)));
    return meta ? *meta : T{};
}

/// Bytes that can be read from where the buffer's memory begins.
qint64 readableBytes(const spa_data& memory)
{
    if (!memory.data || !memory.chunk)
        return 0;
    if (memory.type == SPA_DATA_MemPtr)
        return memory.maxsize;
    struct stat file = {};
    if (memory.type != SPA_DATA_MemFd || fstat(int(memory.fd), &file) != 0)
        return 0;
    return std::min<qint64>(memory.maxsize, qint64(file.st_size) - memory.mapoffset);
}

/// The part of the pixels that is the picture.
void crop(SourcePixels& pixels, const spa_region& region)
{
    const qint64 left = qMax(0, region.position.x);
    const qint64 top = qMax(0, region.position.y);
    const qint64 right = std::min<qint64>(pixels.size.width(), qint64(region.position.x) + region.size.width);
    const qint64 bottom =
        std::min<qint64>(pixels.size.height(), qint64(region.position.y) + region.size.height);
    if (right <= left || bottom <= top) // none, or nonsense
        return;
    pixels.data += top * pixels.stride + left * kPixelBytes;
    pixels.size = QSize(int(right - left), int(bottom - top));
}

const spa_pod* wantedMeta(spa_pod_builder& builder, spa_meta_type type, size_t bytes)
{
    return static_cast<const spa_pod*>(
        spa_pod_builder_add_object(&builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type,
                                   SPA_POD_Id(type), SPA_PARAM_META_size, SPA_POD_Int(int(bytes))));
}
} // namespace

const spa_pod* readableFormats(spa_pod_builder& builder)
{
    const spa_rectangle size{1920, 1080}, minSize{1, 1}, maxSize{kMaxPx, kMaxPx};
    const spa_fraction rate{0, 1}, maxRate{1000, 1};
    spa_pod_frame object{}, choice{};
    spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
    spa_pod_builder_add(&builder, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
                        SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), 0);
    // Without modifiers nobody hands out memory of a graphics card, which could not be read here.
    spa_pod_builder_prop(&builder, SPA_FORMAT_VIDEO_format, 0);
    spa_pod_builder_push_choice(&builder, &choice, SPA_CHOICE_Enum, 0);
    spa_pod_builder_id(&builder, kOrders.front().format); // the one that is preferred
    for (const ColorOrder& order : kOrders)
        spa_pod_builder_id(&builder, order.format);
    spa_pod_builder_pop(&builder, &choice);
    spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_size,
                        SPA_POD_CHOICE_RANGE_Rectangle(&size, &minSize, &maxSize), SPA_FORMAT_VIDEO_framerate,
                        SPA_POD_CHOICE_RANGE_Fraction(&rate, &rate, &maxRate), 0);
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &object));
}

std::vector<const spa_pod*> wantedBuffers(spa_pod_builder& builder)
{
    // One is kept here, one waits, and the producer needs one to write to.
    const auto* buffers = static_cast<const spa_pod*>(
        spa_pod_builder_add_object(&builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers,
                                   SPA_PARAM_BUFFERS_buffers, SPA_POD_CHOICE_RANGE_Int(4, 2, 16),
                                   SPA_PARAM_BUFFERS_blocks, SPA_POD_Int(1), SPA_PARAM_BUFFERS_dataType,
                                   SPA_POD_CHOICE_FLAGS_Int((1 << SPA_DATA_MemPtr) | (1 << SPA_DATA_MemFd))));
    return {buffers, wantedMeta(builder, SPA_META_Header, sizeof(spa_meta_header)),
            wantedMeta(builder, SPA_META_VideoCrop, sizeof(spa_meta_region)),
            wantedMeta(builder, SPA_META_VideoTransform, sizeof(spa_meta_videotransform))};
}

SourcePixels pixelsOf(const spa_pod* format)
{
    spa_video_info_raw info{};
    uint32_t type = 0, subtype = 0;
    if (spa_format_parse(format, &type, &subtype) < 0 || type != SPA_MEDIA_TYPE_video ||
        subtype != SPA_MEDIA_SUBTYPE_raw || spa_format_video_raw_parse(format, &info) < 0)
        return {};
    const auto order = std::find_if(kOrders.begin(), kOrders.end(), [&info](const ColorOrder& candidate) {
        return candidate.format == info.format;
    });
    if (order == kOrders.end() || info.size.width > kMaxPx || info.size.height > kMaxPx)
        return {};
    SourcePixels pixels;
    pixels.size = QSize(int(info.size.width), int(info.size.height));
    pixels.redByte = order->red;
    pixels.greenByte = order->green;
    pixels.blueByte = order->blue;
    return pixels;
}

SourcePixels pixelsIn(const spa_buffer& buffer, const SourcePixels& format)
{
    const qint64 readable = buffer.n_datas > 0 ? readableBytes(buffer.datas[0]) : 0;
    if (readable <= 0 || format.size.isEmpty())
        return {};
    const spa_chunk chunk = *buffer.datas[0].chunk; // once, as the producer may change it at any time
    if (chunk.size == 0 || (chunk.flags & SPA_CHUNK_FLAG_CORRUPTED) ||
        (metaOf<spa_meta_header>(buffer, SPA_META_Header).flags & SPA_META_HEADER_FLAG_CORRUPTED))
        return {}; // the pointer moved, nothing else
    SourcePixels pixels = format;
    const qint64 rowBytes = qint64(format.size.width()) * kPixelBytes;
    pixels.stride = chunk.stride == 0 ? rowBytes : chunk.stride;
    const qint64 needed = pixels.stride * (format.size.height() - 1) + rowBytes;
    if (pixels.stride < rowBytes || chunk.offset + std::max<qint64>(needed, chunk.size) > readable)
        return {};
    pixels.data = static_cast<const uchar*>(buffer.datas[0].data) + chunk.offset;
    crop(pixels, metaOf<spa_meta_region>(buffer, SPA_META_VideoCrop).region);
    const uint32_t transform = metaOf<spa_meta_videotransform>(buffer, SPA_META_VideoTransform).transform;
    pixels.isFlipped = (transform & SPA_META_TRANSFORMATION_Flipped) != 0;
    pixels.quarterTurns = int(transform & SPA_META_TRANSFORMATION_270);
    return pixels;
}
