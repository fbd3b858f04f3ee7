#include "effects/screenSync/FrameSteps.h"

#include "effects/screenSync/FrameFilters.h"

#include <algorithm>
#include <mutex>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <utility>

namespace {

cv::Mat carriedOut(const cv::Mat& from, const FrameStep& step)
{
    cv::Mat result;
    switch (step.kind) {
    case FrameStep::Kind::BrightPart:
        FrameFilters::wipeDarkSide(from, result);
        break;
    case FrameStep::Kind::Zoom:
        cv::resize(from(step.part), result, step.size, 0, 0, cv::INTER_LINEAR);
        break;
    case FrameStep::Kind::Blur:
        result = FrameFilters::blur(from, step.strength);
        break;
    case FrameStep::Kind::Mirror:
        cv::flip(from, result, 1);
        break;
    }
    return result;
}

bool isSame(const cv::Mat& a, const cv::Mat& b)
{
    return a.data == b.data && a.size() == b.size() && a.step[0] == b.step[0] && a.type() == b.type();
}

} // namespace

/// A result, with what it was made of: as long as that is held no other picture can have its address.
struct FrameSteps::Made
{
    cv::Mat from;
    FrameStep step;
    cv::Mat frame;
    FrameFilters::Marks marks; ///< where it is blurred
    // The pool's mutex guards these:
    std::vector<std::vector<cv::Rect>> asked;    ///< where that was wanted
    std::vector<std::vector<cv::Rect>> missed{}; ///< and where it was wanted in vain

    bool isAskedAt(const std::vector<cv::Rect>& places) const
    {
        return std::find(asked.begin(), asked.end(), places) != asked.end();
    }
};

/// What effects hold at present. Its mutex is never held while a step is carried out.
struct FrameSteps::Pool
{
    using MadePtr = std::shared_ptr<Made>;

    std::mutex mutex;
    std::vector<std::weak_ptr<Made>> made;

    /// Null where there is none that `isFit`.
    template <typename IsFit>
    MadePtr find(const cv::Mat& from, const FrameStep& step, IsFit isFit)
    {
        const std::lock_guard lock(mutex);
        for (const std::weak_ptr<Made>& each : made) {
            MadePtr known = each.lock();
            if (known && known->step == step && isSame(known->from, from) && isFit(*known))
                return known;
        }
        return nullptr;
    }
    void add(const MadePtr& added)
    {
        const std::lock_guard lock(mutex);
        made.erase(std::remove_if(made.begin(), made.end(), [](const auto& each) { return each.expired(); }),
                   made.end());
        made.push_back(added);
    }
};

FrameSteps::Pool& FrameSteps::pool()
{
    static Pool pool;
    return pool;
}

void FrameSteps::begin(const cv::Mat& picture)
{
    m_picture = picture;
    m_before = std::exchange(m_used, {});
}

void FrameSteps::forget()
{
    begin({});
    m_before.clear();
}

bool FrameSteps::isShared(const cv::Mat& frame) const
{
    return !m_picture.empty() && (isSame(frame, m_picture) ||
                                  std::any_of(m_used.begin(), m_used.end(),
                                              [&](const auto& made) { return isSame(frame, made->frame); }));
}

cv::Mat FrameSteps::use(const std::shared_ptr<Made>& made)
{
    m_used.push_back(made);
    return made->frame;
}

cv::Mat FrameSteps::make(const cv::Mat& from, const FrameStep& step)
{
    if (!isShared(from))
        return carriedOut(from, step);
    if (const auto known = pool().find(from, step, [](const Made&) { return true; }))
        return use(known);
    const auto made = std::make_shared<Made>(Made{from, step, carriedOut(from, step), {}, {}});
    pool().add(made);
    return use(made);
}

cv::Mat FrameSteps::blur(const cv::Mat& from, double strength, const std::vector<cv::Rect>& places)
{
    if (!isShared(from))
        return FrameFilters::blur(from, strength, FrameFilters::Marks(from.size(), places));
    const FrameStep step = FrameStep::blur(strength);
    if (const auto known = pool().find(from, step, [&](const Made& each) { return each.isAskedAt(places); }))
        return use(known);
    const FrameFilters::Marks wanted(from.size(), places);
    FrameFilters::Marks all = wanted;
    // Where others look, too, at this picture or at the one before, and so most likely at this one.
    const auto addAsked = [&](const Made& each) {
        for (const auto* list : {&each.asked, &each.missed}) {
            for (const std::vector<cv::Rect>& others : *list)
                all.add(FrameFilters::Marks(from.size(), others));
        }
    };
    const auto isFit = [&](Made& each) {
        const bool covers = each.marks.covers(wanted);
        if (!covers)
            addAsked(each);
        (covers ? each.asked : each.missed).push_back(places);
        return covers;
    };
    if (const auto known = pool().find(from, step, isFit))
        return use(known);
    for (const std::shared_ptr<Made>& before : m_before) {
        if (before->step == step)
            pool().find(before->from, step, [&](const Made& each) {
                addAsked(each);
                return false;
            });
    }
    const auto made =
        std::make_shared<Made>(Made{from, step, FrameFilters::blur(from, strength, all), all, {places}});
    pool().add(made);
    return use(made);
}
