#include "GlowPicture.h"

#include "TerminalCanvas.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double kLeastWeight = 0.002; // below it a full channel adds less than one step
constexpr double kGain = 1.2;          // a little overexposed, as lights are

/// How much of a LED's light falls at a distance: a bright core in a wide, faint halo.
double weightAt(double distance, double reach)
{
    const double core = distance * distance / (2 * reach * reach);
    return 0.8 * std::exp(-core) + 0.2 * std::exp(-core / 6);
}
} // namespace

GlowPicture::GlowPicture(int width, int height, const QVector<QPointF>& leds, double reach,
                         const QRectF& shade)
{
    double brightest = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const QPointF here(x + 0.5, y + 0.5);
            if (shade.contains(here))
                continue;
            Pixel pixel{x, y, {}};
            double sum = 0;
            for (int i = 0; i < leds.size(); ++i) {
                const double distance = std::hypot(leds[i].x() - here.x(), leds[i].y() - here.y());
                const double weight = weightAt(distance, reach);
                if (weight < kLeastWeight)
                    continue;
                pixel.lights.append({i, static_cast<float>(weight)});
                sum += weight;
            }
            brightest = std::max(brightest, sum);
            if (!pixel.lights.isEmpty())
                m_pixels.append(pixel);
        }
    }
    // A strip of one colour shows that colour where its light is strongest.
    for (Pixel& pixel : m_pixels) {
        for (Light& light : pixel.lights)
            light.weight *= static_cast<float>(kGain / brightest);
    }
}

void GlowPicture::paint(const QVector<LV_RGB>& colors, LV_RGB ground, TerminalCanvas& canvas) const
{
    for (const Pixel& pixel : m_pixels) {
        float red = ground.red;
        float green = ground.green;
        float blue = ground.blue;
        for (const Light& light : pixel.lights) {
            if (light.led >= colors.size())
                continue;
            const LV_RGB& color = colors[light.led];
            red += light.weight * color.red;
            green += light.weight * color.green;
            blue += light.weight * color.blue;
        }
        const auto byte = [](float value) {
            return static_cast<std::uint8_t>(std::min(value + 0.5F, 255.F));
        };
        canvas.setPixel(pixel.x, pixel.y, {byte(red), byte(green), byte(blue)});
    }
}
