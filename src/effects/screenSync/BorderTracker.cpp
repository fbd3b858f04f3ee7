#include "effects/screenSync/BorderTracker.h"

#include <algorithm>
#include <cstdlib>
#include <opencv2/core.hpp>

namespace {

/// 5 % of full light.
constexpr int kDarkLevel = 12;
constexpr double kTakenAfterS = 2.0;
/// A border that grows on one side alone is most likely a dark part of the picture.
constexpr double kTakenAloneAfterS = 10.0;
constexpr double kTakenAgainAfterS = 0.3;
constexpr double kGivenUpAfterS = 0.4;
constexpr double kMemoryS = 24.0;
/// What counts of the time since the frame before: nobody saw what was in a longer gap.
constexpr double kLongestStepS = 0.2;
constexpr double kSmallestPicture = 0.4;
/// Edges waver by a line where scaling mixes it.
constexpr int kSameLines = 1;
/// Parts of a line at its two ends that subtitles do not reach.
constexpr int kCornersOfLine = 8;
/// A mouse pointer or a bad pixel is no light.
constexpr int kStrayPxOfLine = 2;
constexpr int kStrayPx = 8;

constexpr std::size_t kSides = 4;

bool isAcross(std::size_t side)
{
    return side < 2;
}

std::size_t opposite(std::size_t side)
{
    return side ^ 1U;
}

bool isNear(int a, int b)
{
    return std::abs(a - b) <= kSameLines;
}

} // namespace

/// Which pixels of a frame are lit, in a form that counts those of a rectangle at once.
class BorderTracker::LitPixels
{
public:
    explicit LitPixels(const cv::Mat& frame)
        : m_size(frame.size())
        , m_sums(cv::Mat::zeros(frame.rows + 1, frame.cols + 1, CV_32S))
    {
        for (int y = 0; y < frame.rows; ++y) {
            const auto* pixel = frame.ptr<cv::Vec4b>(y);
            const int* above = m_sums.ptr<int>(y);
            int* sum = m_sums.ptr<int>(y + 1);
            for (int x = 0, lit = 0; x < frame.cols; ++x) {
                lit += std::max({pixel[x][0], pixel[x][1], pixel[x][2]}) > kDarkLevel ? 1 : 0;
                sum[x + 1] = above[x + 1] + lit;
            }
        }
    }

    cv::Size size() const { return m_size; }
    int linesOf(std::size_t side) const { return isAcross(side) ? m_size.height : m_size.width; }

    int count(const cv::Rect& part) const
    {
        const int *top = m_sums.ptr<int>(part.y), *bottom = m_sums.ptr<int>(part.y + part.height);
        const int left = part.x, right = part.x + part.width;
        return bottom[right] - bottom[left] - top[right] + top[left];
    }

    /// The `number` lines from `first` on, counted from a side, as far as `within` reaches along them.
    cv::Rect lines(std::size_t side, int first, int number, const cv::Rect& within) const
    {
        const int at = side % 2 == 0 ? first : linesOf(side) - first - number;
        return isAcross(side) ? cv::Rect(within.x, at, within.width, number)
                              : cv::Rect(at, within.y, number, within.height);
    }

    /// Whether the light of a line reaches one of its ends.
    bool reachesCorner(const cv::Rect& line) const
    {
        cv::Rect begin = line;
        int& length = line.height == 1 ? begin.width : begin.height;
        length = std::max(1, length / kCornersOfLine);
        cv::Rect end = begin;
        end.x = line.x + line.width - end.width;
        end.y = line.y + line.height - end.height;
        return 2 * std::max(count(begin), count(end)) >= length;
    }

    bool isMostlyLit(const cv::Rect& line) const { return 2 * count(line) >= line.area(); }

    /// The smallest part that holds all light, but for stray pixels.
    cv::Rect box() const
    {
        const cv::Rect all({}, m_size);
        std::array<int, kSides> dark{};
        for (std::size_t side = 0; side < kSides; ++side) {
            int& depth = dark[side];
            while (depth < linesOf(side) && count(lines(side, depth, 1, all)) <= kStrayPxOfLine)
                ++depth;
        }
        return {dark[2], dark[0], std::max(0, m_size.width - dark[2] - dark[3]),
                std::max(0, m_size.height - dark[0] - dark[1])};
    }

private:
    cv::Size m_size;
    cv::Mat m_sums; ///< of all pixels above and to the left
};

cv::Rect BorderTracker::step(const cv::Mat& frame, double seconds)
{
    if (frame.size() != m_size)
        forget();
    m_size = frame.size();
    m_isSettled = true;
    const double counted = std::min(seconds, kLongestStepS);
    const LitPixels pixels(frame);
    const cv::Rect box = pixels.box();
    for (std::size_t side = 0; side < kSides; ++side) {
        for (Known& known : m_sides[side].known)
            known.age += seconds;
        if (!box.empty())
            giveUpWhereLit(side, pixels, counted);
    }
    // Of a small light in the dark nobody can tell what is picture and what is border.
    if (box.width < kSmallestPicture * m_size.width || box.height < kSmallestPicture * m_size.height)
        return remaining();
    std::array<Edge, kSides> edges;
    for (std::size_t side = 0; side < kSides; ++side) {
        Edge& edge = edges[side];
        const int lines = pixels.linesOf(side);
        for (int line = 0; line < lines && edge.line < 0; ++line)
            edge.line = pixels.reachesCorner(pixels.lines(side, line, 1, box)) ? line : -1;
        if (edge.line < 0)
            continue;
        for (int line = edge.line; line < std::min(edge.line + 2, lines); ++line)
            edge.isSharp = edge.isSharp || pixels.isMostlyLit(pixels.lines(side, line, 1, box));
        edge.isClean = edge.line < 2 || pixels.count(pixels.lines(side, 0, edge.line - 1, box)) <= kStrayPx;
    }
    for (std::size_t side = 0; side < kSides; ++side)
        propose(side, edges, counted);
    for (std::size_t side = 0; side < kSides; ++side)
        takeProposal(side);
    return remaining();
}

void BorderTracker::forget()
{
    m_sides = {};
    m_isSettled = true;
}

void BorderTracker::giveUpWhereLit(std::size_t at, const LitPixels& pixels, double seconds)
{
    Side& side = m_sides[at];
    const cv::Rect picture = remaining();
    bool isLit = false;
    for (int line = 0; line < side.depth - kSameLines && !isLit; ++line)
        isLit = pixels.reachesCorner(pixels.lines(at, line, 1, picture));
    if (!isLit) {
        side.lit.reset();
        return;
    }
    side.lit = side.lit ? *side.lit + seconds : 0.0;
    if (*side.lit >= kGivenUpAfterS) {
        remember(side);
        side.depth = 0;
        side.lit.reset();
    }
    m_isSettled = m_isSettled && !side.lit;
}

void BorderTracker::propose(std::size_t at, const std::array<Edge, 4>& edges, double seconds)
{
    Side& side = m_sides[at];
    const Edge& edge = edges[at];
    const Edge& other = edges[opposite(at)];
    // Subtitles may fill one bar all the time: then the other one speaks for both.
    const bool isPaired = other.isSharp && other.isClean && isNear(edge.line, other.line);
    if (!edge.isSharp || !(edge.isClean || isPaired)) {
        if (edge.line >= 0 && edge.line < side.candidate - kSameLines)
            side.candidate = -1;
        return;
    }
    if (side.candidate >= 0 && isNear(edge.line, side.candidate)) {
        side.agreed += seconds;
    } else {
        side.candidate = edge.line;
        side.agreed = 0.0;
    }
    m_isSettled = m_isSettled && isNear(side.candidate, side.depth);
}

void BorderTracker::takeProposal(std::size_t at)
{
    Side& side = m_sides[at];
    if (side.candidate < 0 || isNear(side.candidate, side.depth))
        return;
    const bool isKnown = std::any_of(side.known.begin(), side.known.end(), [&](const Known& known) {
        return known.age < kMemoryS && isNear(known.depth, side.candidate);
    });
    const bool isAlone =
        side.candidate > side.depth && !isNear(side.candidate, m_sides[opposite(at)].candidate);
    const double needed = isKnown ? kTakenAgainAfterS : isAlone ? kTakenAloneAfterS : kTakenAfterS;
    if (side.agreed < needed)
        return;
    remember(side);
    side.depth = side.candidate;
    side.lit.reset();
}

void BorderTracker::remember(Side& side)
{
    auto& known = side.known;
    known.erase(std::remove_if(
                    known.begin(), known.end(),
                    [&](const Known& old) { return old.age >= kMemoryS || isNear(old.depth, side.depth); }),
                known.end());
    if (side.depth > 0)
        known.push_back({side.depth, 0.0});
}

cv::Rect BorderTracker::remaining() const
{
    cv::Rect picture(m_sides[2].depth, m_sides[0].depth, m_size.width - m_sides[2].depth - m_sides[3].depth,
                     m_size.height - m_sides[0].depth - m_sides[1].depth);
    if (picture.width < kSmallestPicture * m_size.width) {
        picture.x = 0;
        picture.width = m_size.width;
    }
    if (picture.height < kSmallestPicture * m_size.height) {
        picture.y = 0;
        picture.height = m_size.height;
    }
    return picture;
}
