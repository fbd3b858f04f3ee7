#include "support/capture/FrameScaler.h"

#include <opencv2/core.hpp>
#include <opencv2/core/hal/intrin.hpp>
#include <vector>

namespace {
constexpr int kChannels = 4;
// Reading a picture that another process has just written is nearly all the time of a frame, and it costs by
// the row: memory is fetched ahead, so that parts of rows cost nearly what whole ones do. Of many rows some
// are read.
constexpr int kEnoughRows = 8;  // of one output row, where it has twice as many at least
constexpr int kMaxWeight = 128; // of this many rows of white, sums of 16 bits are half full
constexpr int kMaxWeightShift = 7;

/// The rows that one output row averages.
struct RowPlan
{
    std::vector<int> full; ///< whole rows
    int top = 0;           ///< cut by the area's border, as is bottom
    int bottom = 0;
    int topWeight = 0;
    int bottomWeight = 0;
    int totalWeight = 0;
};

/// The columns that one output column averages: `first` and `last` count in part, those from `whole` on up to
/// `last` as a whole.
struct ColumnPlan
{
    int first = 0;
    int whole = 0;
    int last = 0;
    float firstWeight = 0;
    float lastWeight = 0;
    float totalWeight = 0;
};

/// What is read for a size, and where it is summed up. Kept from frame to frame.
struct ScalePlan
{
    QSize from;
    QSize to;
    int shift = 0; ///< a whole row weighs 1 << shift
    std::vector<RowPlan> rows;
    std::vector<ColumnPlan> columns;
    std::vector<ushort> sums; ///< of one output row
};

/// Some rows of the area, one out of each group of neighbours, at a place in it that differs from group to
/// group, so that no regular pattern gets more than its share for long. They stay the same: a picture that
/// stands still does, too.
RowPlan planSomeRows(int sourceRows, int index, int count)
{
    constexpr unsigned kNextPlace = 57409; // of 65536: about 7/8, so that an output row has all places
    const auto firstOf = [=](int group) {
        return int(qint64(sourceRows) * group / (qint64(count) * kEnoughRows));
    };
    RowPlan plan;
    plan.totalWeight = kEnoughRows;
    for (int group = index * kEnoughRows; group < (index + 1) * kEnoughRows; ++group) {
        const int begin = firstOf(group);
        const unsigned place = (unsigned(group) * kNextPlace) & 0xFFFFU;
        plan.full.push_back(begin + int(unsigned(firstOf(group + 1) - begin) * place >> 16));
    }
    return plan;
}

RowPlan planRows(int sourceRows, int index, int count, int shift)
{
    const int fullWeight = 1 << shift;
    const qint64 height = qint64(sourceRows) * fullWeight;
    const int begin = int((height * index + count / 2) / count);
    const int end = int((height * (index + 1) + count / 2) / count);
    const auto row = [sourceRows](int y) { return qMin(y, sourceRows - 1); };

    RowPlan plan;
    const int firstFull = (begin + fullWeight - 1) / fullWeight;
    const int endFull = end / fullWeight;
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
    return plan;
}

/// How finely rows can be weighed without an overflow.
int weightShift(int height, int count)
{
    const int rows = height / count + 2;
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
        plan.whole = plan.first + 1;
        if (plan.firstWeight == 1.0F && plan.first < plan.last) {
            plan.whole = plan.first;
            plan.firstWeight = 0;
        }
    }
    return plans;
}

void planFor(QSize from, QSize to, ScalePlan& plan)
{
    if (plan.from == from && plan.to == to)
        return;
    plan.from = from;
    plan.to = to;
    plan.rows.clear();
    const int rows = from.height();
    const bool readsAll = rows < 2 * kEnoughRows * qint64(to.height());
    plan.shift = readsAll ? weightShift(rows, to.height()) : 0;
    for (int y = 0; y < to.height(); ++y)
        plan.rows.push_back(readsAll ? planRows(rows, y, to.height(), plan.shift)
                                     : planSomeRows(rows, y, to.height()));
    plan.columns = planColumns(from.width(), to.width());
    plan.sums.resize(size_t(from.width()) * kChannels);
}

/// Sums whole rows byte by byte, all of them at once: memory answers several askers faster than one.
void sumRows(const SourcePixels& source, const RowPlan& plan, int shift, std::vector<ushort>& sums)
{
    using namespace cv;
    const uchar* rows[2 * kEnoughRows + 1];
    const int count = int(plan.full.size());
    CV_DbgAssert(count <= 2 * kEnoughRows + 1);
    for (int i = 0; i < count; ++i)
        rows[i] = source.data + plan.full[size_t(i)] * source.stride;
    const int bytes = int(sums.size());
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
        for (int i = 0; i < 4; ++i)
            v_store(sums.data() + x + 8 * i, sum[i] << shift);
    }
    for (; x < bytes; ++x) {
        int sum = 0;
        for (int row = 0; row < count; ++row)
            sum += rows[row][x];
        sums[size_t(x)] = ushort(sum << shift);
    }
}

/// One row more, which counts less than a whole one.
void addRow(const SourcePixels& source, int row, int weight, std::vector<ushort>& sums)
{
    const uchar* from = source.data + row * source.stride;
    for (size_t x = 0; weight && x < sums.size(); ++x)
        sums[x] = ushort(sums[x] + from[x] * weight);
}

void averageColumns(const SourcePixels& source, const ushort* sums, int rowWeight,
                    const std::vector<ColumnPlan>& columns, uchar* out)
{
    using namespace cv;
    const auto pixel = [sums](int x) { return v_load_expand(sums + x * kChannels); };
    for (const ColumnPlan& column : columns) {
        v_uint32x4 whole = v_setzero_u32(), low, high;
        int x = column.whole;
        for (; x + 4 <= column.last; x += 4) {
            const ushort* pixels = sums + x * kChannels;
            v_expand(v_load(pixels) + v_load(pixels + 2 * kChannels), low, high);
            whole = whole + low + high;
        }
        for (; x < column.last; ++x)
            whole = whole + pixel(x);
        v_float32x4 mean = v_cvt_f32(v_reinterpret_as_s32(whole));
        const auto addPart = [&](int at, float weight) {
            if (weight > 0)
                mean = mean + v_cvt_f32(v_reinterpret_as_s32(pixel(at))) * v_setall_f32(weight);
        };
        addPart(column.first, column.firstWeight);
        addPart(column.last, column.lastWeight);
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
    static thread_local ScalePlan kept;
    ScalePlan& plan = kept; // found once, not for each row
    planFor(source.size, outputSize, plan);
    cv::Mat frame(outputSize.height(), outputSize.width(), CV_8UC4);
    for (int y = 0; y < outputSize.height(); ++y) {
        const RowPlan& rows = plan.rows[size_t(y)];
        sumRows(source, rows, plan.shift, plan.sums);
        addRow(source, rows.top, rows.topWeight, plan.sums);
        addRow(source, rows.bottom, rows.bottomWeight, plan.sums);
        averageColumns(source, plan.sums.data(), rows.totalWeight, plan.columns, frame.ptr(y));
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
