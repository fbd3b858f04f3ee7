#include "support/log/LoopBrake.h"

#include <chrono>
#include <cmath>

namespace {

constexpr int kLinesOfNews = 3;
constexpr qint64 kQuietMs = 5 * 60 * 1000;

} // namespace

qint64 LoopBrake::steadyMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

bool LoopBrake::isDue(double figure, const QString& text, qint64 nowMs)
{
    if (m_lines == 0 || text != m_text || std::abs(figure - m_figure) > m_figure / 4) {
        m_figure = figure;
        m_text = text;
        m_lines = 0;
    } else if (m_lines >= kLinesOfNews && nowMs - m_lastMs < kQuietMs) {
        return false;
    }
    ++m_lines;
    m_lastMs = nowMs;
    return true;
}
