#include "support/capture/FrameScaler.h"

#include <algorithm>
#include <opencv2/core.hpp>
#include <opencv2/core/hal/intrin.hpp>
#include <vector>

namespace {
constexpr int kChannels = 4;
constexpr int kMaxRows = 240;   // whole rows in one sum
constexpr int kMaxWeight = 257; // of this many rows of white, sums of 16 bits are full
constexpr int kMaxWeightShift = 7;
constexpr int kRowsAtOnce = 16; // more rows push each other out of the cache

/// The rows that one output row averages.
struct RowPlan
{
    int shift = 0;                  ///< a whole row weighs 1 << shift
    std::vector<const uchar*> full; ///< whole rows
    const uchar* top = nullptr;     ///< cut by the area's border, as is bottom
    const uchar* bottom = nullptr;
    int topWeight = 0;
    int bottomWeight = 0;
    int totalWeight = 0;
};

/// The columns that one output column averages: `first` and `last` count in part.
struct ColumnPlan
{
    int first = 0;
    int last = 0;
    float firstWeight = 0;
    float lastWeight = 0;
    float totalWeight = 0;
};

/// Rows spread over [from, to) with a spacing that no regular pattern shares for long.
void planSampledRows(const SourcePixels& source, int from, int to, RowPlan& plan)
{
    constexpr unsigned kGoldenFraction = 40503; // of 65536
    const int rows = to - from;
    for (int i = 0; i < kMaxRows; ++i) {
        const int begin = from + i * rows / kMaxRows;
        const int end = from + (i + 1) * rows / kMaxRows;
        const unsigned fraction = (unsigned(i + from) * kGoldenFraction) & 0xFFFFu;
        const int row = begin + int(unsigned(end - begin) * fraction >> 16);
        plan.full.push_back(source.data + row * source.stride);
    }
    plan.totalWeight = kMaxRows << plan.shift;
}

void planRows(const SourcePixels& source, int index, int count, RowPlan& plan)
{
    plan.full.clear();
    plan.topWeight = plan.bottomWeight = 0;
    const int fullWeight = 1 << plan.shift;
    const qint64 height = qint64(source.size.height()) * fullWeight;
    const int begin = int((height * index + count / 2) / count);
    const int end = int((height * (index + 1) + count / 2) / count);
    const auto row = [&source](int y) {
        return source.data + qMin(y, source.size.height() - 1) * source.stride;
    };

    const int firstFull = (begin + fullWeight - 1) / fullWeight;
    const int endFull = end / fullWeight;
    if (endFull - firstFull > kMaxRows) {
        planSampledRows(source, firstFull, endFull, plan);
        return;
    }
    plan.totalWeight = end - begin;
    if (end <= begin) { // an area thinner than the weights can tell
        plan.full.push_back(row(begin / fullWeight));
        plan.totalWeight = fullWeight;
    } else if (endFull < firstFull) { // within one row
        plan.top = row(endFull);
        plan.topWeight = plan.totalWeight;
    } else {
        for (int y = firstFull; y < endFull; ++y)
            plan.full.push_back(row(y));
        plan.top = row(qMax(0, firstFull - 1));
        plan.topWeight = firstFull * fullWeight - begin;
        plan.bottom = row(endFull);
        plan.bottomWeight = end - endFull * fullWeight;
    }
}

/// How finely rows can be weighed without an overflow.
int weightShift(int height, int count)
{
    const int rows = qMin(height / count + 2, kMaxRows + 1);
    int shift = 0;
    while (shift < kMaxWeightShift && rows << (shift + 1) <= kMaxWeight)
        ++shift;
    return shift;
}

std::vector<ColumnPlan> planColumns(int width, int count)
{
    std::vector<ColumnPlan> plans(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double begin = double(width) * i / count;
        const double end = double(width) * (i + 1) / count;
        ColumnPlan& plan = plans[size_t(i)];
        plan.first = qMin(int(begin), width - 1);
        plan.last = qMin(int(end), width - 1);
        plan.totalWeight = float(end - begin);
        if (plan.first == plan.last) {
            plan.firstWeight = plan.totalWeight;
        } else {
            plan.firstWeight = float(plan.first + 1 - begin);
            plan.lastWeight = float(end - plan.last);
        }
    }
    return plans;
}

/// Sums up to kRowsAtOnce rows byte by byte, times `weight`, onto the sums so far.
void addRows(const uchar* const* rows, int count, int weight, int bytes, ushort* sums)
{
    using namespace cv;
    const v_uint16x8 weights = v_setall_u16(ushort(weight));
    int x = 0;
    for (; x + 32 <= bytes; x += 32) {
        v_uint16x8 sum[4] = {v_setzero_u16(), v_setzero_u16(), v_setzero_u16(), v_setzero_u16()};
        for (int row = 0; row < count; ++row) {
            v_uint16x8 part[4];
            v_expand(v_load(rows[row] + x), part[0], part[1]);
            v_expand(v_load(rows[row] + x + 16), part[2], part[3]);
            for (int i = 0; i < 4; ++i)
                sum[i] = v_add_wrap(sum[i], part[i]);
        }
        for (int i = 0; i < 4; ++i) {
            ushort* to = sums + x + 8 * i;
            v_store(to, v_add_wrap(v_load(to), v_mul_wrap(sum[i], weights)));
        }
    }
    for (; x < bytes; ++x) {
        int sum = 0;
        for (int row = 0; row < count; ++row)
            sum += rows[row][x];
        sums[x] = ushort(sums[x] + sum * weight);
    }
}

void sumRows(const RowPlan& plan, int bytes, std::vector<ushort>& sums)
{
    std::fill(sums.begin(), sums.end(), ushort(0));
    const int count = int(plan.full.size());
    for (int row = 0; row < count; row += kRowsAtOnce)
        addRows(&plan.full[size_t(row)], std::min(kRowsAtOnce, count - row), 1 << plan.shift, bytes,
                sums.data());
    if (plan.topWeight)
        addRows(&plan.top, 1, plan.topWeight, bytes, sums.data());
    if (plan.bottomWeight)
        addRows(&plan.bottom, 1, plan.bottomWeight, bytes, sums.data());
}

void averageColumns(const SourcePixels& source, const ushort* sums, int rowWeight,
                    const std::vector<ColumnPlan>& columns, uchar* out)
{
    using namespace cv;
    const auto pixel = [sums](int x) { return v_load_expand(sums + x * kChannels); };
    for (const ColumnPlan& column : columns) {
        v_uint32x4 whole = v_setzero_u32();
        for (int x = column.first + 1; x < column.last; ++x)
            whole = whole + pixel(x);
        const auto weighted = [&pixel](int x, float weight) {
            return v_cvt_f32(v_reinterpret_as_s32(pixel(x))) * v_setall_f32(weight);
        };
        v_float32x4 mean = v_cvt_f32(v_reinterpret_as_s32(whole));
        mean = mean + weighted(column.first, column.firstWeight) + weighted(column.last, column.lastWeight);
        mean = mean * v_setall_f32(1.0F / (column.totalWeight * float(rowWeight)));
        int bytes[kChannels];
        v_store(bytes, v_round(mean));
        out[0] = saturate_cast<uchar>(bytes[source.redByte]);
        out[1] = saturate_cast<uchar>(bytes[source.greenByte]);
        out[2] = saturate_cast<uchar>(bytes[source.blueByte]);
        out[3] = 255;
        out += kChannels;
    }
}

cv::Mat averageAreas(const SourcePixels& source, QSize outputSize)
{
    cv::Mat frame(outputSize.height(), outputSize.width(), CV_8UC4);
    const std::vector<ColumnPlan> columns = planColumns(source.size.width(), outputSize.width());
    const int bytes = source.size.width() * kChannels;
    std::vector<ushort> sums(static_cast<size_t>(bytes));
    RowPlan rows;
    rows.shift = weightShift(source.size.height(), outputSize.height());
    for (int y = 0; y < outputSize.height(); ++y) {
        planRows(source, y, outputSize.height(), rows);
        sumRows(rows, bytes, sums);
        averageColumns(source, sums.data(), rows.totalWeight, columns, frame.ptr(y));
    }
    return frame;
}
} // namespace

cv::Mat scaleFrame(const SourcePixels& source, QSize outputSize)
{
    if (!source.data || source.size.isEmpty() || outputSize.isEmpty())
        return {};
    // The small frame is cheaper to turn.
    cv::Mat frame = averageAreas(source, source.quarterTurns % 2 ? outputSize.transposed() : outputSize);
    constexpr int kBack[] = {cv::ROTATE_90_CLOCKWISE, cv::ROTATE_180, cv::ROTATE_90_COUNTERCLOCKWISE};
    cv::Mat upright = frame;
    if (source.quarterTurns > 0)
        cv::rotate(frame, upright, kBack[source.quarterTurns - 1]);
    if (source.isFlipped)
        cv::flip(upright, upright, 1);
    return upright;
}
