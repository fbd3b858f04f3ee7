#include "support/capture/FrameScaler.h"

#include <opencv2/core/hal/intrin.hpp>
#include <vector>

namespace {
constexpr int kChannels = 4;
// Row weights count eighths of a row: sums of 16 bits then hold 32 rows of white.
constexpr int kWeightShift = 3;
constexpr int kFullWeight = 1 << kWeightShift;
constexpr int kMaxRows = 16; // a mean over more rows gains too little for its time

/// The rows that one output row averages.
struct RowPlan
{
    std::vector<const uchar*> full;
    const uchar* top = nullptr; ///< cut by the area's border, as is bottom
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
    plan.totalWeight = kMaxRows * kFullWeight;
}

void planRows(const SourcePixels& source, int index, int count, RowPlan& plan)
{
    plan.full.clear();
    plan.topWeight = plan.bottomWeight = 0;
    const qint64 height = qint64(source.size.height()) * kFullWeight;
    const int begin = int((height * index + count / 2) / count);
    const int end = int((height * (index + 1) + count / 2) / count);
    const auto row = [&source](int y) {
        return source.data + qMin(y, source.size.height() - 1) * source.stride;
    };

    const int firstFull = (begin + kFullWeight - 1) / kFullWeight;
    const int endFull = end / kFullWeight;
    if (endFull - firstFull > kMaxRows) {
        planSampledRows(source, firstFull, endFull, plan);
        return;
    }
    plan.totalWeight = end - begin;
    if (end <= begin) { // an area thinner than the weights can tell
        plan.full.push_back(row(begin / kFullWeight));
        plan.totalWeight = kFullWeight;
    } else if (endFull < firstFull) { // within one row
        plan.top = row(endFull);
        plan.topWeight = plan.totalWeight;
    } else {
        for (int y = firstFull; y < endFull; ++y)
            plan.full.push_back(row(y));
        plan.top = row(qMax(0, firstFull - 1));
        plan.topWeight = firstFull * kFullWeight - begin;
        plan.bottom = row(endFull);
        plan.bottomWeight = end - endFull * kFullWeight;
    }
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

/// Adds the plan's rows up, byte by byte.
void sumRows(const RowPlan& plan, int bytes, ushort* sums)
{
    using namespace cv;
    int x = 0;
    for (; x + 32 <= bytes; x += 32) {
        v_uint16x8 sum[4] = {v_setzero_u16(), v_setzero_u16(), v_setzero_u16(), v_setzero_u16()};
        v_uint16x8 part[4];
        const auto load = [&part, x](const uchar* row) {
            v_expand(v_load(row + x), part[0], part[1]);
            v_expand(v_load(row + x + 16), part[2], part[3]);
        };
        for (const uchar* row : plan.full) {
            load(row);
            for (int i = 0; i < 4; ++i)
                sum[i] = v_add_wrap(sum[i], part[i]);
        }
        for (v_uint16x8& s : sum)
            s = v_shl<kWeightShift>(s);
        const auto addWeighted = [&](const uchar* row, int weight) {
            if (weight == 0)
                return;
            load(row);
            for (int i = 0; i < 4; ++i)
                sum[i] = v_add_wrap(sum[i], v_mul_wrap(part[i], v_setall_u16(ushort(weight))));
        };
        addWeighted(plan.top, plan.topWeight);
        addWeighted(plan.bottom, plan.bottomWeight);
        for (int i = 0; i < 4; ++i)
            v_store(sums + x + 8 * i, sum[i]);
    }
    for (; x < bytes; ++x) {
        int sum = 0;
        for (const uchar* row : plan.full)
            sum += row[x] << kWeightShift;
        sum += plan.topWeight ? plan.top[x] * plan.topWeight : 0;
        sum += plan.bottomWeight ? plan.bottom[x] * plan.bottomWeight : 0;
        sums[x] = ushort(sum);
    }
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
} // namespace

cv::Mat scaleFrame(const SourcePixels& source, QSize outputSize)
{
    if (!source.data || source.size.isEmpty() || outputSize.isEmpty())
        return {};
    cv::Mat frame(outputSize.height(), outputSize.width(), CV_8UC4);
    const std::vector<ColumnPlan> columns = planColumns(source.size.width(), outputSize.width());
    const int bytes = source.size.width() * kChannels;
    std::vector<ushort> sums(static_cast<size_t>(bytes));
    RowPlan rows;
    for (int y = 0; y < outputSize.height(); ++y) {
        planRows(source, y, outputSize.height(), rows);
        sumRows(rows, bytes, sums.data());
        averageColumns(source, sums.data(), rows.totalWeight, columns, frame.ptr(y));
    }
    return frame;
}
