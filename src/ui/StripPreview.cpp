#include "ui/StripPreview.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWindow>
#include <QtMath>
#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr double kBandPx = 30;         ///< from the frame of light to the picture inside it
constexpr double kPixelsOfLight = 8e4; ///< all glows together: what they cost
constexpr double kMinGlowPx = 7;       ///< radius
constexpr double kMaxGlowPx = 19;
constexpr double kMinRingPx = 1.4;
constexpr double kMaxRingPx = 5;
constexpr double kCornerPx = 8;
constexpr double kPictureOpacity = 0.6;
constexpr int kPixelBytes = 4;
constexpr double kScreenGamma = 2.2;
const QColor kRoom(0x14, 0x15, 0x1a); ///< dark, so that light is seen
const QColor kRing(0x2c, 0x2e, 0x36);
const QColor kSocket(0x1a, 0x1c, 0x22);

/// As a screen is told to show this much light: channel by channel, or pale colours would look deep.
QRgb seen(LV_RGB led)
{
    static const auto levels = [] {
        std::array<uchar, 256> values{};
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = static_cast<uchar>(qRound(255 * std::pow(double(i) / 255, 1 / kScreenGamma)));
        return values;
    }();
    return qRgb(levels[led.red], levels[led.green], levels[led.blue]);
}

bool isInTheMiddle(const QPointF& place)
{
    return QRectF(0.15, 0.15, 0.7, 0.7).contains(place);
}

QRectF fitted(double aspect, const QRectF& area)
{
    const double width = std::min(area.width(), area.height() * aspect);
    QRectF result(0, 0, width, width / aspect);
    result.moveCenter(area.center());
    return result;
}

/// In what way the strip goes on, in the unit of the points; the half of all ways are shorter.
double usualStep(const QVector<QPointF>& points)
{
    QVector<double> steps;
    for (int i = 1; i < points.size(); ++i)
        steps.append(std::hypot(points[i].x() - points[i - 1].x(), points[i].y() - points[i - 1].y()));
    if (steps.isEmpty())
        return kMaxGlowPx * 2;
    std::nth_element(steps.begin(), steps.begin() + steps.size() / 2, steps.end());
    return steps[steps.size() / 2];
}

/// Saturating, so that glows may overlap. In a form that the compiler makes vectors of.
void addRow(uchar* __restrict to, const uchar* __restrict mask, const uchar* __restrict color, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        const auto light = static_cast<uchar>(static_cast<quint16>(mask[i] * color[i]) >> 8);
        const auto sum = static_cast<uchar>(to[i] + light);
        to[i] = static_cast<uchar>(sum | -(sum < light));
    }
}

} // namespace

StripPreview::StripPreview(QWidget* parent)
    : ImageWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void StripPreview::setImg(QImage img)
{
    forget();
    ImageWidget::setImg(img);
}

void StripPreview::setPlaces(const QVector<QPointF>& places, double aspect)
{
    if (places == m_places && qFuzzyCompare(aspect, m_aspect))
        return;
    m_places = places;
    m_aspect = aspect;
    m_isFilled = std::any_of(places.begin(), places.end(), isInTheMiddle);
    forget();
    update();
}

void StripPreview::setColors(const QVector<LV_RGB>& colors)
{
    if (colors == m_colors)
        return;
    m_colors = colors;
    if (m_canvas.isNull())
        return update();
    light();
    update(m_litHere);
}

bool StripPreview::isSeen() const
{
    const QWindow* handle = window()->windowHandle();
    return isVisible() && !window()->isMinimized() && handle && handle->isExposed() &&
           !visibleRegion().isEmpty();
}

bool StripPreview::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        window()->installEventFilter(this);
        if (QWindow* handle = window()->windowHandle())
            handle->installEventFilter(this);
        emit appeared();
        break;
    case QEvent::Hide:
    case QEvent::StyleChange:
        forget();
        break;
    default:
        break;
    }
    return ImageWidget::event(event);
}

bool StripPreview::eventFilter(QObject* watched, QEvent* event)
{
    if ((event->type() == QEvent::WindowStateChange || event->type() == QEvent::Expose) && isSeen())
        emit appeared();
    return ImageWidget::eventFilter(watched, event);
}

void StripPreview::forget()
{
    m_canvas = QImage();
    m_unlit.clear();
}

/// Whole pixels of the screen that the widget touches.
QSize StripPreview::pixelSize() const
{
    return {qCeil(width() * devicePixelRatioF()), qCeil(height() * devicePixelRatioF())};
}

/// The LEDs' (0, 0) to (1, 1).
QRectF StripPreview::frame() const
{
    const bool hasPicture = !image().isNull() && !m_isFilled;
    const double band = hasPicture ? kBandPx : 0;
    const double aspect = hasPicture ? double(image().width()) / image().height() : m_aspect;
    const double margin = kMaxGlowPx;
    const QRectF area = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    return fitted(aspect, area.adjusted(band, band, -band, -band)).adjusted(-band, -band, band, band);
}

QRect StripPreview::targetRect() const
{
    if (m_places.isEmpty())
        return ImageWidget::targetRect();
    return frame().adjusted(kBandPx, kBandPx, -kBandPx, -kBandPx).toRect();
}

void StripPreview::build()
{
    const double ratio = devicePixelRatioF();
    m_canvas = QImage(pixelSize(), QImage::Format_RGB32);
    m_canvas.setDevicePixelRatio(ratio);
    const QRectF frame = this->frame();
    QVector<QPointF> centres;
    for (const QPointF& place : qAsConst(m_places))
        centres.append((frame.topLeft() + QPointF(qBound(0.0, place.x(), 1.0) * frame.width(),
                                                  qBound(0.0, place.y(), 1.0) * frame.height())) *
                       ratio);
    buildGlow(usualStep(centres) / ratio, ratio);

    m_corners.clear();
    m_lit = QRegion();
    const QPoint half(m_glow.side / 2, m_glow.side / 2);
    const QSize room = m_canvas.size() - QSize(m_glow.side, m_glow.side);
    if (room.isValid()) { // else there is no room for any light
        for (const QPointF& centre : qAsConst(centres)) {
            const QPoint corner = centre.toPoint() - half;
            m_corners.append({qBound(0, corner.x(), room.width()), qBound(0, corner.y(), room.height())});
        }
    }
    // In tiles, so that a line of light is one rectangle.
    constexpr int kTile = 4;
    for (const QPoint& corner : qAsConst(m_corners)) {
        const QPoint end = corner + QPoint(m_glow.side - 1, m_glow.side - 1);
        const QPoint from(corner.x() / kTile * kTile, corner.y() / kTile * kTile);
        m_lit += QRect(from, QPoint(end.x() | (kTile - 1), end.y() | (kTile - 1)));
    }
    m_lit &= m_canvas.rect();
    m_litHere = QRegion();
    for (const QRect& rect : m_lit)
        m_litHere += QRectF(QPointF(rect.topLeft()) / ratio, QSizeF(rect.size()) / ratio).toAlignedRect();
    drawUnlit();
    m_canvas.setDevicePixelRatio(1); // drawn pixel by pixel
    m_unlit.clear();
    for (const QRect& rect : m_lit) {
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            m_unlit.append(reinterpret_cast<const char*>(m_canvas.constScanLine(y)) +
                               rect.left() * kPixelBytes,
                           rect.width() * kPixelBytes);
    }
    light();
}

/// A bright core in a soft halo. Where glows overlap along a strip they come to its colour, not to white.
void StripPreview::buildGlow(double spacing, double ratio)
{
    const double budget = std::sqrt(kPixelsOfLight / std::max(m_places.size(), 1)) / 2;
    // Along a strip it becomes one band of light; the cells of a matrix stay apart.
    const double wanted = m_isFilled ? std::min(0.75 * spacing, budget) : budget;
    const double radius = ratio * qBound(kMinGlowPx, wanted, kMaxGlowPx);
    m_ringRadius = qBound(kMinRingPx, 0.3 * spacing, kMaxRingPx);
    const double core = 1.2 * m_ringRadius * ratio;
    const double halo = 0.7 * std::min(1.0, spacing * ratio / radius);
    m_glow.side = qCeil(2 * radius + 1);
    m_glow.mask.fill(0, m_glow.side * m_glow.side * kPixelBytes);
    const int middle = m_glow.side / 2;
    for (int y = 0; y < m_glow.side; ++y) {
        for (int x = 0; x < m_glow.side; ++x) {
            const double distance = std::hypot(x - middle, y - middle);
            const double far = std::max(1 - distance * distance / (radius * radius), 0.0);
            const double near = 0.3 * std::exp(-distance * distance / (core * core));
            const auto value = static_cast<uchar>(qRound(255 * std::min(halo * far * far + near, 1.0)));
            std::fill_n(m_glow.mask.begin() + (y * m_glow.side + x) * kPixelBytes, kPixelBytes, value);
        }
    }
}

/// The canvas without light.
void StripPreview::drawUnlit()
{
    m_canvas.fill(palette().color(QPalette::Window));
    QPainter painter(&m_canvas);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!m_places.isEmpty()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(kRoom);
        painter.drawRoundedRect(frame().adjusted(-kMaxGlowPx, -kMaxGlowPx, kMaxGlowPx, kMaxGlowPx), kCornerPx,
                                kCornerPx);
    }
    if (!m_isFilled) {
        painter.setOpacity(m_places.isEmpty() ? 1 : kPictureOpacity); // the light of the strip counts
        drawPicture(painter);
        painter.setOpacity(1);
    }
    painter.scale(1 / m_canvas.devicePixelRatio(), 1 / m_canvas.devicePixelRatio());
    painter.setPen(QPen(kRing, m_canvas.devicePixelRatio()));
    painter.setBrush(kSocket);
    const double radius = m_ringRadius * m_canvas.devicePixelRatio();
    const int half = m_glow.side / 2;
    for (const QPoint& corner : qAsConst(m_corners))
        painter.drawEllipse(QPointF(corner + QPoint(half, half)) + QPointF(0.5, 0.5), radius, radius);
}

/// Puts the light of all LEDs where none is.
void StripPreview::light()
{
    const char* unlit = m_unlit.constData();
    for (const QRect& rect : m_lit) {
        const int bytes = rect.width() * kPixelBytes;
        for (int y = rect.top(); y <= rect.bottom(); ++y, unlit += bytes)
            std::memcpy(m_canvas.scanLine(y) + rect.left() * kPixelBytes, unlit,
                        static_cast<std::size_t>(bytes));
    }
    const int stride = m_canvas.bytesPerLine();
    uchar* const pixels = m_canvas.bits();
    const int rowBytes = m_glow.side * kPixelBytes;
    QVector<QRgb> row(m_glow.side);
    const int count = std::min(m_corners.size(), m_colors.size());
    for (int i = 0; i < count; ++i) {
        const LV_RGB led = m_colors[i];
        if (led == LV_RGB{})
            continue;
        row.fill(seen(led));
        uchar* to = pixels + m_corners[i].y() * stride + m_corners[i].x() * kPixelBytes;
        for (int y = 0; y < m_glow.side; ++y, to += stride)
            addRow(to, m_glow.mask.constData() + y * rowBytes,
                   reinterpret_cast<const uchar*>(row.constData()), rowBytes);
    }
}

void StripPreview::paintEvent(QPaintEvent* event)
{
    if (m_canvas.size() != pixelSize())
        build();
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio); // pixel by pixel, which at other scales than one is much faster
    for (const QRect& rect : event->region()) {
        const QRectF pixels(QPointF(rect.topLeft()) * ratio, QSizeF(rect.size()) * ratio);
        painter.setClipRect(pixels.toAlignedRect()); // one at a time, which is faster as well
        painter.drawImage(QPointF(), m_canvas);
    }
    emit appeared();
}
