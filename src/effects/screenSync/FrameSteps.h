#pragma once

#include <cstdint>
#include <memory>
#include <opencv2/core/mat.hpp>
#include <vector>

/// One step from a captured frame to the one that LEDs are read from: a value that says all that its result
/// depends on but the frame itself.
struct FrameStep
{
    enum class Kind : std::uint8_t {
        BrightPart, ///< FrameFilters::wipeDarkSide
        Zoom,       ///< `part` scaled to `size`
        Blur,       ///< by `strength`
        Mirror
    };

    static FrameStep brightPart() { return {Kind::BrightPart, {}, {}, 0}; }
    static FrameStep zoom(const cv::Rect& part, const cv::Size& size) { return {Kind::Zoom, part, size, 0}; }
    static FrameStep blur(double strength) { return {Kind::Blur, {}, {}, strength}; }
    static FrameStep mirror() { return {Kind::Mirror, {}, {}, 0}; }

    bool operator==(const FrameStep& other) const
    {
        return kind == other.kind && part == other.part && size == other.size && strength == other.strength;
    }

    Kind kind;
    cv::Rect part;
    cv::Size size;
    double strength;
};

/// The steps of one screen effect. What several of them make of the same picture in the same way is made
/// once, by the first of them, and given to all: so nobody may write into what comes from here. Results are
/// held by those who used them for their latest picture and by nobody else. Each object belongs to one
/// thread; they may be on several. What OpenCV refuses comes back as a cv::Exception, to everyone.
class FrameSteps
{
public:
    /// The steps that follow begin with this picture, which others may have, too, and nobody writes into.
    /// Steps on other frames, and all of them before the first call, are carried out for this effect alone.
    void begin(const cv::Mat& picture);
    /// Lets go of everything.
    void forget();

    cv::Mat make(const cv::Mat& from, const FrameStep& step);
    /// What is blurred at `places` at least, at all of the frame where there is none.
    cv::Mat blur(const cv::Mat& from, double strength, const std::vector<cv::Rect>& places);

private:
    struct Made;
    struct Pool;

    static Pool& pool();
    bool isShared(const cv::Mat& frame) const;
    cv::Mat use(const std::shared_ptr<Made>& made);

    cv::Mat m_picture;
    std::vector<std::shared_ptr<Made>> m_used;   ///< for the present picture
    std::vector<std::shared_ptr<Made>> m_before; ///< for the one before: the same again is there already
};
