#pragma once

#include <array>
#include <opencv2/core/mat.hpp>
#include <optional>
#include <vector>

/// Finds the black borders of a film and keeps to them: subtitles, fades, flashes and dark scenes do not move
/// them. One source; no locks.
class BorderTracker
{
public:
    /// The part of the frame within its borders, `seconds` after the frame before. The frame is 8-bit with
    /// four channels; at least two fifths of each of its sides remain. One of another size is taken for
    /// another source.
    cv::Rect step(const cv::Mat& frame, double seconds);
    /// Another source: nothing is known of its borders.
    void forget();
    /// The same frame again would change nothing, so that no step is needed until another comes.
    bool isSettled() const { return m_isSettled; }

private:
    class LitPixels;
    /// Lines count from the side of the frame inwards.
    struct Edge
    {
        int line = -1;        ///< the first whose light reaches a corner of the picture; -1: none
        bool isSharp = false; ///< light begins over most of its length
        bool isClean = false; ///< the lines before it are dark, without subtitles
    };
    struct Known
    {
        int depth = 0;
        double age = 0.0; ///< s since it was given up
    };
    struct Side
    {
        int depth = 0;             ///< lines cut off
        int candidate = -1;        ///< lines that frames show to be dark at present; -1: unknown
        double agreed = 0.0;       ///< s for which they have done so
        std::optional<double> lit; ///< s for which there has been light in what is cut off
        std::vector<Known> known;  ///< given up lately
    };

    void giveUpWhereLit(std::size_t side, const LitPixels& pixels, double seconds);
    void propose(std::size_t side, const std::array<Edge, 4>& edges, double seconds);
    void takeProposal(std::size_t side);
    static void remember(Side& side);
    cv::Rect remaining() const;

    cv::Size m_size;
    std::array<Side, 4> m_sides; ///< top, bottom, left, right: opposite ones differ in the lowest bit
    bool m_isSettled = true;
};
