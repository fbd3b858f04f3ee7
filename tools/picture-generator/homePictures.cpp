#include "homePictures.h"

#include "Glow.h"
#include "furniture.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr QSize kSize(960, 540);
constexpr QRectF kMonitor(250, 92, 460, 264);
constexpr Color kRoomLight{0.045, 0.046, 0.06};
constexpr double kDeskTop = 432;
constexpr double kShelfTop = 398;

/// What the monitor shows: a lake in the evening.
QImage lake(const QSize& size)
{
    QImage content(size, QImage::Format_RGB32);
    const QVector<Color> sky{
        {0.10, 0.06, 0.42}, {0.42, 0.08, 0.62}, {0.92, 0.12, 0.48}, {1.0, 0.45, 0.18}, {1.0, 0.80, 0.30}};
    const auto skyAt = [&sky](double x, double y) {
        const double lift = 0.05 * std::sin(5 * x + 1) + 0.03 * std::sin(11 * x + 6 * y);
        // It is brightest over the sun; far from it the evening is already violet.
        const double away = smooth(std::abs(x - 0.62) / 0.62);
        const Color base = gradient(sky, (y + lift) * (1 - 0.40 * away));
        return mix(base, {0.0, 0.45, 0.95}, 0.75 * smooth((0.42 - x) / 0.5) * (1 - y * 0.85));
    };
    constexpr double kShore = 0.62;
    for (int row = 0; row < size.height(); ++row) {
        for (int column = 0; column < size.width(); ++column) {
            const double x = (column + 0.5) / size.width();
            const double y = (row + 0.5) / size.height();
            const double sun = std::exp(-(std::pow((x - 0.62) / 0.16, 2) + std::pow((y - kShore) / 0.22, 2)));
            Color color = skyAt(x, std::min(y, 2 * kShore - y) / kShore);
            color = color + Color{0.9, 0.5, 0.15} * (sun * (y < kShore ? 0.9 : 0.6));
            if (y > kShore) {
                const double depth = (y - kShore) / (1 - kShore);
                const double ripple =
                    std::sin(34 * std::sqrt(depth + 0.02) * 2.2 + 1.3 * std::sin(7 * x + 9 * depth));
                const double path =
                    std::exp(-std::pow((x - 0.62) / (0.06 + 0.12 * depth), 2)) * (1 - 0.7 * depth);
                color = color * (0.55 + 0.05 * ripple) + Color{0.8, 0.42, 0.12} * (path * smooth(ripple));
            }
            content.setPixel(column, row, toRgb(color));
        }
    }
    QPainter painter(&content);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width(), size.height());
    drawRidge(painter,
              {{-0.1, kShore}, {0.05, 0.50}, {0.14, 0.42}, {0.22, 0.50}, {0.30, 0.46}, {0.47, kShore}},
              QColor(58, 24, 92));
    drawRidge(painter, {{0.70, kShore}, {0.82, 0.53}, {0.90, 0.44}, {1.1, 0.58}, {1.1, kShore}},
              QColor(74, 22, 78));
    drawRidge(painter, {{-0.1, kShore}, {-0.1, 0.55}, {0.10, 0.57}, {0.24, kShore}}, QColor(26, 12, 48));
    return content;
}

/// The strip on the monitor's back takes its colours from the edge of the screen.
void lightFromEdges(Glow& glow, const QImage& content)
{
    const QImage small = content.scaled(24, 14, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const auto lightUp = [&glow, &small](int x, int y) {
        const QRgb pixel = small.pixel(x, y);
        const Color color{qRed(pixel) / 255.0, qGreen(pixel) / 255.0, qBlue(pixel) / 255.0};
        const QPointF at(kMonitor.x() + kMonitor.width() * (x + 0.5) / small.width(),
                         kMonitor.y() + kMonitor.height() * (y + 0.5) / small.height());
        glow.add(at, 95, color * 0.080);
        glow.add(at, 42, color * 0.14);
        glow.add(at, 17, color * 0.22);
    };
    for (int x = 0; x < small.width(); ++x) {
        lightUp(x, 0);
        lightUp(x, small.height() - 1);
    }
    for (int y = 1; y < small.height() - 1; ++y) {
        lightUp(0, y);
        lightUp(small.width() - 1, y);
    }
}

QImage drawDeskScene()
{
    const QImage content = lake({440, 244});
    Glow glow(kSize);
    glow.add({480, 230}, 300, kRoomLight);
    lightFromEdges(glow, content);
    glow.reflect(kDeskTop, 0.55);
    QImage picture = glow.over(roomGround(kSize, kDeskTop));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawPlant(painter, {168, kDeskTop + 8}, 1.0);
    drawSpeaker(painter, {770, kDeskTop + 8}, 1.0);
    drawMonitorBody(painter, kMonitor, kDeskTop + 10);
    painter.drawImage(kMonitor.adjusted(8, 8, -8, -10), content);
    drawKeyboard(painter, QRectF(352, 474, 256, 30));
    drawMouse(painter, {666, 489});
    return picture;
}

/// The level of column x of the matrix, of 11.
double levelAt(int x)
{
    return 5.8 + 2.4 * std::sin(x * 0.55 + 0.4) + 1.9 * std::sin(x * 1.45 + 2.0);
}

QImage drawShelfScene()
{
    constexpr int kColumns = 23;
    constexpr int kRows = 11;
    constexpr double kPitch = 19;
    const QRectF panel(480 - kColumns * kPitch / 2, 92, kColumns * kPitch, kRows * kPitch);
    const QVector<Color> tones{
        {0.0, 0.55, 1.0}, {0.35, 0.2, 1.0}, {1.0, 0.05, 0.55}, {1.0, 0.28, 0.05}, {1.0, 0.60, 0.02}};
    const auto colorOf = [&tones](int x, int y) {
        const bool lit = kRows - y <= levelAt(x);
        const Color tone = gradient(tones, (x + 0.5) / kColumns * 0.55 + (kRows - y - 0.5) / kRows * 0.45);
        return tone * (lit ? 1.0 : 0.05);
    };
    const auto at = [&panel](int x, int y) {
        return QPointF(panel.x() + (x + 0.5) * kPitch, panel.y() + (y + 0.5) * kPitch);
    };
    Glow wall(kSize);
    wall.add({480, 230}, 300, kRoomLight);
    for (int x = 0; x < kColumns; ++x) {
        for (int y = 0; y < kRows; ++y)
            wall.add(at(x, y), 80, colorOf(x, y) * 0.011);
        const Color under = gradient(tones, (x + 0.5) / kColumns);
        for (const double side : {0.0, 1.0})
            wall.add(QPointF(150 + (x + side * 0.5) * 660 / kColumns, kShelfTop + 26), 34, under * 0.12);
        wall.add(QPointF(150 + (x + 0.5) * 660 / kColumns, kShelfTop + 60), 80, under * 0.05);
    }
    QImage picture = wall.over(roomGround(kSize, 0));
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        drawPanel(painter, panel.adjusted(-13, -13, 13, 13));
        drawPlant(painter, {196, kShelfTop}, 0.8);
        drawBooks(painter, {700, kShelfTop});
        drawShelf(painter, QRectF(120, kShelfTop, 720, 20));
    }
    Glow dots(kSize);
    for (int x = 0; x < kColumns; ++x) {
        for (int y = 0; y < kRows; ++y) {
            dots.add(at(x, y), kPitch * 0.21, colorOf(x, y) * 2.6);
            dots.add(at(x, y), kPitch * 0.6, colorOf(x, y) * 0.30);
        }
    }
    for (int i = 0; i < 66; ++i)
        dots.add(QPointF(150 + (i + 0.5) * 10, kShelfTop + 22), 3, gradient(tones, (i + 0.5) / 66) * 1.6);
    return dots.over(picture);
}

} // namespace

bool writeHomePictures(const QString& folder)
{
    return drawDeskScene().save(folder + QLatin1String("/product00_h.png")) &&
           drawShelfScene().save(folder + QLatin1String("/product01_h.png"));
}
