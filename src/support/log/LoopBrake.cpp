#include "support/log/LoopBrake.h"

#include <chrono>
#include <cmath>

namespace {

constexpr int kLinesOfNews = 3;
constexpr qint64 kQuietMs = 5 * 60 * 1000;
constexpr int kLinesOfHour = 20;
constexpr qint64 kHourMs = 60 * 60 * 1000;

} // namespace

qint64 LoopBrake::steadyMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

bool LoopBrake::isDue(double figure, const QString& text, qint64 nowMs)
{
    const bool isNews = m_lines == 0 || text != m_text || std::abs(figure - m_figure) > m_figure / 4;
    if (isNews) {
        m_figure = figure;
        m_text = text;
        m_lines = 0;
    }
    if (nowMs - m_hourMs >= kHourMs) {
        m_hourMs = nowMs;
        m_linesOfHour = 0;
    }
    if ((m_lines >= kLinesOfNews || m_linesOfHour >= kLinesOfHour) && nowMs - m_lastMs < kQuietMs)
        return false;
    ++m_lines;
    ++m_linesOfHour;
    m_lastMs = nowMs;
    return true;
}
