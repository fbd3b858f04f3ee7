#include "Glow.h"

Glow::Glow(const QSize& size)
    : m_size(size)
    , m_light(size.width() * size.height())
{
}

void Glow::add(const QPointF& at, double sigma, const Color& color)
{
    const int reach = static_cast<int>(sigma * 3) + 1;
    const int left = std::max(0, static_cast<int>(at.x()) - reach);
    const int right = std::min(m_size.width() - 1, static_cast<int>(at.x()) + reach);
    const int top = std::max(0, static_cast<int>(at.y()) - reach);
    const int bottom = std::min(m_size.height() - 1, static_cast<int>(at.y()) + reach);
    const auto bell = [sigma](double distance) {
        return std::exp(-0.5 * distance * distance / (sigma * sigma));
    };
    QVector<double> across;
    for (int x = left; x <= right; ++x)
        across.append(bell(x + 0.5 - at.x()));
    for (int y = top; y <= bottom; ++y) {
        const Color line = color * bell(y + 0.5 - at.y());
        Color* pixel = m_light.data() + y * m_size.width() + left;
        for (const double share : across) {
            *pixel = *pixel + line * share;
            ++pixel;
        }
    }
}

void Glow::reflect(double y, double strength)
{
    const int line = static_cast<int>(y);
    for (int below = line; below < m_size.height(); ++below) {
        const int above = 2 * line - below - 1;
        const double fade = strength * (1.0 - double(below - line) / (m_size.height() - line));
        for (int x = 0; x < m_size.width(); ++x) {
            const Color mirrored = above < 0 ? Color() : m_light[above * m_size.width() + x];
            m_light[below * m_size.width() + x] = mirrored * fade;
        }
    }
}

QImage Glow::over(const QImage& ground) const
{
    // Dark slopes of light would show their steps: spread them in a fixed 4 by 4 pattern.
    static constexpr int kPattern[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    QImage result = ground.convertToFormat(QImage::Format_RGB32);
    const auto expose = [](double below, double light) { return 1 - (1 - below) * std::exp(-light); };
    for (int y = 0; y < m_size.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < m_size.width(); ++x) {
            const QRgb was = line[x];
            const Color& light = m_light[y * m_size.width() + x];
            const double spread = (kPattern[y % 4][x % 4] - 7.5) / 16 / 255;
            line[x] = toRgb(Color{expose(qRed(was) / 255.0, light.r), expose(qGreen(was) / 255.0, light.g),
                                  expose(qBlue(was) / 255.0, light.b)} +
                            Color{spread, spread, spread});
        }
    }
    return result;
}
