#include "ProductScene.h"

#include "Glow.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace {

const QColor kBody(13, 14, 17);
const QColor kEdge(52, 56, 66);

/// Light schemes; a product has the one that its code's sum picks.
const QVector<QVector<Color>>& palettes()
{
    static const QVector<QVector<Color>> all{
        {{1.0, 0.05, 0.15},
         {1.0, 0.55, 0.0},
         {0.15, 1.0, 0.15},
         {0.0, 0.8, 1.0},
         {0.35, 0.1, 1.0},
         {1.0, 0.0, 0.7}},
        {{0.0, 0.75, 1.0}, {0.2, 0.2, 1.0}, {0.8, 0.0, 1.0}, {1.0, 0.0, 0.5}, {0.5, 0.1, 1.0}},
        {{1.0, 0.45, 0.0}, {1.0, 0.1, 0.1}, {1.0, 0.0, 0.5}, {0.55, 0.0, 1.0}, {1.0, 0.1, 0.35}},
        {{0.0, 1.0, 0.45}, {0.0, 0.8, 0.9}, {0.1, 0.3, 1.0}, {0.0, 0.9, 0.7}},
    };
    return all;
}

QImage darkGround(const QSize& size)
{
    QImage ground(size, QImage::Format_RGB32);
    QPainter painter(&ground);
    QRadialGradient vignette(QPointF(size.width() / 2.0, size.height() * 0.45), size.width() * 0.75);
    vignette.setColorAt(0, QColor(32, 34, 41));
    vignette.setColorAt(1, QColor(17, 18, 22));
    painter.fillRect(ground.rect(), vignette);
    return ground;
}

void drawBody(QPainter& painter, const QRectF& rect, double radius)
{
    QLinearGradient shade(rect.topLeft(), rect.bottomLeft());
    shade.setColorAt(0, kBody.lighter(160));
    shade.setColorAt(1, kBody);
    painter.setPen(QPen(kEdge, std::max(1.0, radius / 5)));
    painter.setBrush(shade);
    painter.drawRoundedRect(rect, radius, radius);
}

void drawStand(QPainter& painter, const QRectF& monitor, double floor)
{
    const double cx = monitor.center().x();
    const double neck = monitor.width() * 0.045;
    QPainterPath stand;
    stand.setFillRule(Qt::WindingFill);
    stand.addRect(QRectF(cx - neck, monitor.bottom(), 2 * neck, floor - monitor.bottom()));
    stand.addRoundedRect(
        QRectF(cx - monitor.width() * 0.17, floor - neck * 0.5, monitor.width() * 0.34, neck * 0.7),
        neck * 0.3, neck * 0.3);
    QLinearGradient shade(QPointF(cx - neck, 0), QPointF(cx + neck, 0));
    shade.setColorAt(0, QColor(58, 62, 73));
    shade.setColorAt(0.5, QColor(36, 38, 46));
    shade.setColorAt(1, QColor(58, 62, 73));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    painter.drawPath(stand);
}

} // namespace

ProductScene::ProductScene(const QString& model, const QVector<QPointF>& leds, double canvasAspect)
    : m_model(model)
    , m_leds(leds)
    , m_canvasAspect(canvasAspect)
{
    int sum = 0;
    for (const QChar& c : model)
        sum += c.unicode();
    m_palette = palettes().at(sum % palettes().size());
}

QImage ProductScene::draw(const QSize& size) const
{
    switch (m_model.at(3).unicode()) {
    case u'N':
        return drawMatrix(size);
    case u'R':
        return drawRing(size);
    case u'S':
        return drawDesk(size);
    default:
        return drawMonitor(size);
    }
}

Color ProductScene::ledColor(int led) const
{
    return cycle(m_palette, double(led) / m_leds.size());
}

/// The canvas as wide as `share` of the picture, centred on the height `middle`.
QRectF ProductScene::canvasRect(const QSize& size, double share, double middle) const
{
    const double width = size.width() * share;
    const double height = width / m_canvasAspect;
    return {(size.width() - width) / 2, size.height() * middle - height / 2, width, height};
}

void ProductScene::lightUp(Glow& glow, const QRectF& canvas, double sigma, double strength) const
{
    // The more LEDs there are to a sigma, the less of the sum is due to each.
    const double each = strength * 100.0 / m_leds.size();
    for (int i = 0; i < m_leds.size(); ++i) {
        const QPointF at(canvas.x() + m_leds.at(i).x() * canvas.width(),
                         canvas.y() + m_leds.at(i).y() * canvas.height());
        glow.add(at, sigma, ledColor(i) * each);
    }
}

/// What is on the screen: the colours at its edges, flowing into each other.
QImage ProductScene::screenContent(const QSize& size) const
{
    QImage content(48, 27, QImage::Format_RGB32);
    for (int y = 0; y < content.height(); ++y) {
        for (int x = 0; x < content.width(); ++x) {
            Color sum;
            double weights = 0;
            for (int i = 0; i < m_leds.size(); ++i) {
                const double dx = (x + 0.5) / content.width() - m_leds.at(i).x();
                const double dy = ((y + 0.5) / content.height() - m_leds.at(i).y()) * 0.6;
                const double weight = 1 / std::pow(dx * dx + dy * dy + 0.02, 2);
                sum = sum + ledColor(i) * weight;
                weights += weight;
            }
            const double wave = 0.62 + 0.3 * std::sin(x * 0.19 + 2.2 * std::sin(y * 0.21) + 0.8);
            content.setPixel(x, y, toRgb(sum * (wave / weights)));
        }
    }
    return content.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// A monitor whose back lights the wall; with a light bar the light comes from above it.
QImage ProductScene::drawMonitor(const QSize& size) const
{
    const bool bar = m_model.at(3) == u'B';
    const double unit = size.width() / 100.0;
    const bool square = size.width() == size.height();
    const QRectF monitor = canvasRect(size, square ? 0.70 : 0.62, bar ? 0.48 : 0.44);
    const double floor = size.height() * (square ? 0.80 : 0.87);
    const QRectF lit = bar ? monitor.translated(0, -3.2 * unit) : monitor.adjusted(-unit, -unit, unit, unit);

    Glow glow(size);
    lightUp(glow, lit, unit * 9, 0.085);
    lightUp(glow, lit, unit * 3, 0.20);
    glow.reflect(floor, 0.35);
    QImage picture = glow.over(darkGround(size));

    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawStand(painter, monitor, floor);
    drawBody(painter, monitor, unit * 1.2);
    const QRectF screen = monitor.adjusted(unit * 1.3, unit * 1.3, -unit * 1.3, -unit * 1.6);
    painter.setOpacity(bar ? 0.45 : 0.9);
    painter.drawImage(screen, screenContent(screen.size().toSize() * 2));
    painter.setOpacity(1);
    if (!bar)
        return picture;
    const QRectF body(monitor.x() + monitor.width() * 0.04, monitor.y() - 4.4 * unit, monitor.width() * 0.92,
                      3 * unit);
    drawBody(painter, body, unit * 1.5);
    QLinearGradient tube(body.topLeft(), body.topRight());
    for (int i = 0; i < m_leds.size(); i += 4)
        tube.setColorAt(double(i) / m_leds.size(), QColor::fromRgb(toRgb(mix(ledColor(i), {1, 1, 1}, 0.35))));
    painter.setPen(Qt::NoPen);
    painter.setBrush(tube);
    painter.drawRoundedRect(body.adjusted(unit, unit * 1.7, -unit, -unit * 0.5), unit * 0.4, unit * 0.4);
    return picture;
}

/// A panel of single dots that shows waves of colour.
QImage ProductScene::drawMatrix(const QSize& size) const
{
    const double unit = size.width() / 100.0;
    const QRectF panel = canvasRect(size, 0.84, 0.47);
    const auto at = [&panel](const QPointF& led) {
        return QPointF(panel.x() + led.x() * panel.width(), panel.y() + led.y() * panel.height());
    };
    const auto colorOf = [this](const QPointF& led) {
        const double wave =
            std::sin(led.x() * 7 + 1.6 * std::sin(led.y() * 5)) + std::sin(led.y() * 6 - led.x() * 3);
        const double shine = 0.12 + 0.88 * smooth(0.5 + 0.42 * wave);
        return cycle(m_palette, led.x() * 0.8 + led.y() * 0.35) * shine;
    };
    Glow glow(size);
    for (const QPointF& led : m_leds)
        glow.add(at(led), unit * 7, colorOf(led) * (7.0 / m_leds.size()));
    QImage picture = glow.over(darkGround(size));
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        drawBody(painter, panel.adjusted(-2.2 * unit, -2.2 * unit, 2.2 * unit, 2.2 * unit), unit * 2.5);
    }
    Glow dots(size);
    const double pitch = panel.width() * std::sqrt(1.0 / (m_leds.size() * m_canvasAspect));
    for (const QPointF& led : m_leds) {
        dots.add(at(led), pitch * 0.20, colorOf(led) * 2.2);
        dots.add(at(led), pitch * 0.55, colorOf(led) * 0.35);
    }
    return dots.over(picture);
}

/// A fan of a computer case with the LEDs in its frame.
QImage ProductScene::drawRing(const QSize& size) const
{
    const double unit = qMin(size.width(), size.height()) / 100.0;
    const QPointF middle(size.width() / 2.0, size.height() / 2.0);
    const double radius = 33 * unit;
    Glow glow(size);
    const auto onRing = [&](double share) {
        return middle + QPointF(std::sin(kTau * share), -std::cos(kTau * share)) * radius;
    };
    for (int i = 0; i < m_leds.size(); ++i) {
        const double share = double(i) / m_leds.size();
        glow.add(onRing(share), unit * 9, ledColor(i) * 0.35);
    }
    QImage picture = glow.over(darkGround(size));

    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kEdge, unit * 0.4));
    painter.setBrush(kBody);
    painter.drawEllipse(middle, radius + 5 * unit, radius + 5 * unit);
    painter.setPen(Qt::NoPen);
    for (int blade = 0; blade < 9; ++blade) {
        painter.save();
        painter.translate(middle);
        painter.rotate(blade * 40);
        QPainterPath shape(QPointF(0, -6 * unit));
        shape.cubicTo(QPointF(4 * unit, -14 * unit), QPointF(2 * unit, -22 * unit),
                      QPointF(-4 * unit, -29 * unit));
        shape.cubicTo(QPointF(4 * unit, -30 * unit), QPointF(10 * unit, -28 * unit),
                      QPointF(13 * unit, -26 * unit));
        shape.cubicTo(QPointF(12 * unit, -16 * unit), QPointF(9 * unit, -9 * unit),
                      QPointF(5 * unit, -4 * unit));
        painter.setBrush(QColor(30, 32, 39));
        painter.drawPath(shape);
        painter.restore();
    }
    painter.setBrush(QColor(40, 43, 51));
    painter.drawEllipse(middle, 9 * unit, 9 * unit);
    painter.setBrush(QColor(24, 26, 31));
    painter.drawEllipse(middle, 6 * unit, 6 * unit);
    painter.end();

    Glow tube(size);
    const int steps = 180;
    for (int i = 0; i < steps; ++i) {
        const Color color = cycle(m_palette, double(i) / steps);
        tube.add(onRing(double(i) / steps), unit * 1.1, color * 1.1);
        tube.add(onRing(double(i) / steps), unit * 4, color * 0.06);
    }
    return tube.over(picture);
}

/// A strip under the front edge of a desk.
QImage ProductScene::drawDesk(const QSize& size) const
{
    const double unit = size.width() / 100.0;
    const double top = size.height() * 0.40;
    const QRectF strip(10 * unit, top + 5 * unit, 80 * unit, 0);
    const double floor = size.height() * 0.90;
    Glow glow(size);
    for (int i = 0; i < m_leds.size(); ++i) {
        const QPointF at(strip.x() + m_leds.at(i).x() * strip.width(), strip.y());
        glow.add(at + QPointF(0, 6 * unit), unit * 9, ledColor(i) * (9.0 / m_leds.size()));
        glow.add(at + QPointF(0, unit), unit * 2.2, ledColor(i) * (16.0 / m_leds.size()));
    }
    glow.reflect(floor, 0.45);
    QImage picture = glow.over(darkGround(size));

    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(38, 41, 49));
    for (const double x : {14.0, 82.0})
        painter.drawRect(QRectF(x * unit, top, 4 * unit, floor - top));
    drawBody(painter, QRectF(7 * unit, top, 86 * unit, 5 * unit), unit);
    // A keyboard and a cup, so that it reads as a desk.
    drawBody(painter, QRectF(34 * unit, top - 2.2 * unit, 30 * unit, 2.2 * unit), unit * 0.8);
    drawBody(painter, QRectF(73 * unit, top - 7 * unit, 6 * unit, 7 * unit), unit);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kEdge, unit * 0.7));
    painter.drawArc(QRectF(77.5 * unit, top - 5.5 * unit, 4 * unit, 4 * unit), -90 * 16, 180 * 16);
    painter.end();

    Glow dots(size);
    for (int i = 0; i < m_leds.size(); i += 2)
        dots.add({strip.x() + m_leds.at(i).x() * strip.width(), strip.y() + 0.7 * unit}, unit * 0.6,
                 ledColor(i) * 2.0);
    return dots.over(picture);
}
