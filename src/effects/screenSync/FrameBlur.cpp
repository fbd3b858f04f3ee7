#include "effects/screenSync/FrameFilters.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <opencv2/core.hpp>
#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/imgproc.hpp>

namespace {

constexpr double kKernelAtFullBlurPx = 75.0;
/// Ten times the strongest blur that the controls offer: a stored value beyond it must not stall the worker.
constexpr double kKernelLimitPx = 750.0;
/// cv::GaussianBlur rounds its weights for 8-bit pixels to multiples of 1/256.
constexpr int kKernelBits = 8;
constexpr double kKernelSum = 1 << kKernelBits;
/// A frame may be a part of a larger picture, of which the rest is nothing to it.
constexpr int kBorder = cv::BORDER_DEFAULT | cv::BORDER_ISOLATED;

/// The weights of cv::GaussianBlur times 256, seen by blurring a single bright pixel of one row. Empty when
/// they are others than its own arithmetic needs.
cv::Mat integerKernel(int size)
{
    static thread_local std::map<int, cv::Mat> kept;
    const auto known = kept.find(size);
    if (known != kept.end())
        return known->second;
    cv::Mat impulse = cv::Mat::zeros(1, 2 * size + 1, CV_8UC1);
    impulse.at<uchar>(0, size) = 255;
    cv::GaussianBlur(impulse, impulse, cv::Size(size, 1), 0, 0, cv::BORDER_DEFAULT);
    cv::Mat kernel;
    impulse.colRange(size - size / 2, size + size / 2 + 1).convertTo(kernel, CV_32F);
    if (cv::sum(kernel)[0] != kKernelSum)
        kernel.release();
    return kept[size] = kernel;
}

/// The result of cv::GaussianBlur to the bit in a quarter of its time, which is nearly all the time of a
/// frame. All sums are integers below 2^24, so that float arithmetic makes no error; what remains is to round
/// half up.
void blurExactly(const cv::Mat& src, cv::Mat& dst, const cv::Mat& kernel)
{
    constexpr int kBits = 2 * kKernelBits;
    // Kept, because the heap may give a block of this size (0.13 MB) back to the system after every frame.
    static thread_local cv::Mat sums;
    cv::sepFilter2D(src, sums, CV_32F, kernel, kernel, cv::Point(-1, -1), 1 << (kBits - 1), kBorder);
    dst.create(src.size(), src.type());
    const int rowBytes = src.cols * src.channels();
    for (int y = 0; y < src.rows; ++y) {
        const auto* from = sums.ptr<float>(y);
        auto* to = dst.ptr<uchar>(y);
        for (int x = 0; x < rowBytes; ++x)
            to[x] = static_cast<uchar>(static_cast<int>(from[x]) >> kBits);
    }
}

/// The same at some pixels of a frame of four bytes a pixel. For each row of them the rows around it are
/// summed where they count, which fits 16 bits, and then the columns of that.
class PlaceBlur
{
public:
    PlaceBlur(const cv::Mat& src, const cv::Mat& kernel)
        : m_src(src)
        , m_radius(kernel.cols / 2)
        , m_weights(kernel.begin<float>() + m_radius, kernel.end<float>())
        , m_line(size_t((src.cols + 2 * m_radius) * kChannels))
    {
        const auto mirrored = [](int at, int count) {
            return cv::borderInterpolate(at, count, cv::BORDER_DEFAULT);
        };
        for (int y = -m_radius; y < src.rows + m_radius; ++y)
            m_rows.push_back(src.ptr(mirrored(y, src.rows)));
        for (int distance = 1; distance <= m_radius; ++distance) {
            m_leftOf.push_back(mirrored(-distance, src.cols));
            m_rightOf.push_back(mirrored(src.cols - 1 + distance, src.cols));
        }
    }

    /// Blurs the pixels of a row that `wanted` marks.
    void blurRow(int y, const uchar* wanted, uchar* to)
    {
        for (int x = 0; x < m_src.cols;) { // one stretch of columns after the other
            if (!wanted[x]) {
                ++x;
                continue;
            }
            const int begin = m_radius < m_src.cols ? std::max(0, x - m_radius) : 0;
            int last = x;
            for (int next = x + 1; next < m_src.cols && next <= last + 2 * m_radius; ++next)
                last = wanted[next] ? next : last;
            const int end = m_radius < m_src.cols ? std::min(m_src.cols, last + m_radius + 1) : m_src.cols;
            sumRows(y, begin * kChannels, end * kChannels);
            reflect();
            for (; x <= last; ++x) {
                if (wanted[x])
                    sumColumns(x, to + x * kChannels);
            }
        }
    }

private:
    static constexpr int kChannels = 4;

    void sumRows(int y, int begin, int end)
    {
        using namespace cv;
        const uchar* const* rows = m_rows.data() + y + m_radius;
        const uchar* centre = rows[0];
        const ushort* weights = m_shortWeights.data();
        float* line = m_line.data() + m_radius * kChannels;
        const int radius = m_radius;
        int x = begin;
        for (; x + 8 <= end; x += 8) {
            v_uint16x8 sum = v_mul_wrap(v_load_expand(centre + x), v_setall_u16(weights[0]));
            for (int i = 1; i <= radius; ++i) {
                const v_uint16x8 both = v_add_wrap(v_load_expand(rows[-i] + x), v_load_expand(rows[i] + x));
                sum = v_add_wrap(sum, v_mul_wrap(both, v_setall_u16(weights[i])));
            }
            v_uint32x4 low, high;
            v_expand(sum, low, high);
            v_store(line + x, v_cvt_f32(v_reinterpret_as_s32(low)));
            v_store(line + x + 4, v_cvt_f32(v_reinterpret_as_s32(high)));
        }
        for (; x < end; ++x) {
            int sum = centre[x] * weights[0];
            for (int i = 1; i <= radius; ++i)
                sum += (rows[-i][x] + rows[i][x]) * weights[i];
            line[x] = float(sum);
        }
    }

    /// Continues the line beyond both ends.
    void reflect()
    {
        const auto pixel = [this](int x) { return m_line.data() + (m_radius + x) * kChannels; };
        for (int distance = 1; distance <= m_radius; ++distance) {
            std::copy_n(pixel(m_leftOf[size_t(distance - 1)]), kChannels, pixel(-distance));
            std::copy_n(pixel(m_rightOf[size_t(distance - 1)]), kChannels, pixel(m_src.cols - 1 + distance));
        }
    }

    void sumColumns(int x, uchar* to) const
    {
        using namespace cv;
        constexpr int kBits = 2 * kKernelBits;
        const float* centre = m_line.data() + (m_radius + x) * kChannels;
        v_float32x4 sum = v_load(centre) * v_setall_f32(m_weights[0]) + v_setall_f32(1 << (kBits - 1));
        const float* weights = m_weights.data();
        const int radius = m_radius;
        for (int distance = 1; distance <= radius; ++distance) {
            const v_float32x4 both =
                v_load(centre - distance * kChannels) + v_load(centre + distance * kChannels);
            sum = sum + both * v_setall_f32(weights[distance]);
        }
        int sums[kChannels];
        v_store(sums, v_trunc(sum));
        for (int channel = 0; channel < kChannels; ++channel)
            to[channel] = static_cast<uchar>(sums[channel] >> kBits);
    }

    const cv::Mat& m_src;
    const int m_radius;
    const std::vector<float> m_weights; ///< from the centre outwards
    const std::vector<ushort> m_shortWeights{m_weights.begin(), m_weights.end()};
    std::vector<float> m_line;        ///< the sums of the columns, with `m_radius` pixels more at both ends
    std::vector<const uchar*> m_rows; ///< mirrored ones, too: `m_radius` more at both ends
    std::vector<int> m_leftOf;        ///< what stands in for the pixels left of the frame
    std::vector<int> m_rightOf;
};

} // namespace

namespace FrameFilters {

int blurKernelSize(double strength)
{
    const double wanted = strength * kKernelAtFullBlurPx;
    // Written so that not-a-number means no blur.
    const int size = wanted > 0.0 ? static_cast<int>(std::min(wanted, kKernelLimitPx)) : 0;
    return size % 2 == 0 ? size + 1 : size;
}

cv::Mat blur(const cv::Mat& src, double strength)
{
    const int size = blurKernelSize(strength);
    const cv::Mat kernel = size == 1 ? cv::Mat() : integerKernel(size);
    cv::Mat dst;
    if (kernel.empty() || src.depth() != CV_8U)
        cv::GaussianBlur(src, dst, cv::Size(size, size), 0, 0, kBorder);
    else
        blurExactly(src, dst, kernel);
    return dst;
}

Marks::Marks(const cv::Size& frame, const std::vector<cv::Rect>& places)
    : m_isAll(places.empty())
    , m_columns(frame.width)
{
    if (m_isAll)
        return;
    m_marked.resize(std::size_t(frame.area()));
    for (const cv::Rect& place : places) {
        const cv::Rect inside = place & cv::Rect(cv::Point(), frame);
        for (int y = inside.y; y < inside.br().y; ++y)
            std::fill_n(m_marked.begin() + y * m_columns + inside.x, inside.width, std::uint8_t(1));
    }
}

int Marks::count() const
{
    return static_cast<int>(std::count(m_marked.begin(), m_marked.end(), 1));
}

bool Marks::covers(const Marks& other) const
{
    if (m_isAll || other.m_isAll)
        return m_isAll;
    return other.m_marked.size() <= m_marked.size() &&
           std::equal(other.m_marked.begin(), other.m_marked.end(), m_marked.begin(), std::less_equal<>());
}

void Marks::add(const Marks& other)
{
    m_isAll = m_isAll || other.m_isAll;
    if (m_isAll)
        return;
    m_columns = std::max(m_columns, other.m_columns);
    m_marked.resize(std::max(m_marked.size(), other.m_marked.size()));
    std::transform(other.m_marked.begin(), other.m_marked.end(), m_marked.begin(), m_marked.begin(),
                   std::bit_or<>());
}

cv::Mat blur(const cv::Mat& src, double strength, const Marks& marks)
{
    constexpr int kWorthwhile = 4; // of so many pixels, one at most
    const int size = blurKernelSize(strength);
    const cv::Mat kernel = size == 1 ? cv::Mat() : integerKernel(size);
    if (marks.isAll() || kernel.empty() || src.type() != CV_8UC4 ||
        marks.count() * kWorthwhile > src.rows * src.cols)
        return blur(src, strength);
    cv::Mat dst = src.clone();
    PlaceBlur blur(src, kernel);
    for (int y = 0; y < src.rows; ++y)
        blur.blurRow(y, marks.row(y), dst.ptr(y));
    return dst;
}

cv::UMat blur(const cv::UMat& src, double strength)
{
    cv::UMat dst;
    blur(src.getMat(cv::ACCESS_READ), strength).copyTo(dst);
    return dst;
}

cv::Rect readBy(const cv::Rect& place, const cv::Size& scaled, const cv::Rect& source)
{
    if (place.empty() || scaled.empty())
        return source;
    if (scaled == source.size())
        return place + source.tl();
    // The two neighbours of each centre; where rounding makes it others, those weigh nothing.
    const auto range = [](int first, int count, int scaledTo, int begin, int length) {
        const double ratio = static_cast<double>(length) / scaledTo;
        const double low = std::floor((first + 0.5) * ratio - 0.5);
        const double high = std::floor((first + count - 0.5) * ratio - 0.5) + 1;
        return cv::Range(begin + static_cast<int>(std::max(low, 0.0)),
                         begin + static_cast<int>(std::min(high + 1, static_cast<double>(length))));
    };
    const cv::Range x = range(place.x, place.width, scaled.width, source.x, source.width);
    const cv::Range y = range(place.y, place.height, scaled.height, source.y, source.height);
    return {x.start, y.start, x.size(), y.size()};
}

} // namespace FrameFilters
