#include "widgets/ColorWheel.h"

#include <QConicalGradient>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <cmath>

namespace {

constexpr double kWheelWidthShare = 0.1;
constexpr double kMarkRadius = 5.0;
constexpr int kSquareSteps = 255;
constexpr int kKeyStep = 3; ///< of 255, and degrees
constexpr int kLargeKeyStep = 30;
const QColor kFocus(255, 217, 8);
constexpr double kPi = 3.14; // the angles of this control are measured with this value
constexpr double kSqrt2 = 1.4142135623730951;

void drawMark(QPainter& painter, const QPointF& at, double radius, bool dark)
{
    const QColor ink = dark ? QColor(20, 20, 20) : QColor(255, 255, 255);
    const QColor halo = dark ? QColor(255, 255, 255, 120) : QColor(0, 0, 0, 150);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(halo, 3.5));
    painter.drawEllipse(at, radius, radius);
    painter.setPen(QPen(ink, 2.0));
    painter.drawEllipse(at, radius, radius);
}

} // namespace

ColorWheel::ColorWheel(QWidget* parent)
    : QWidget(parent)
    , m_current(QColor(Qt::red).toHsv())
{
    setFocusPolicy(Qt::StrongFocus);
}

QSize ColorWheel::sizeHint() const
{
    return {height(), height()};
}

QSize ColorWheel::minimumSizeHint() const
{
    return m_initSize;
}

void ColorWheel::setColor(QColor color)
{
    if (!color.isValid())
        return;
    const int oldHue = m_current.hsvHue();
    const int hue = color.hsvHue() < 0 ? oldHue : color.hsvHue();
    m_current.setHsv(hue, color.hsvSaturation(), color.value(), color.alpha());
    if (hue != oldHue)
        drawSquareImage();
    update();
    tellValue(this);
}

QString ColorWheel::spokenValue() const
{
    return m_current.name();
}

void ColorWheel::hueChanged(int hue)
{
    if (hue < 0 || hue >= 360)
        return;
    m_current.setHsv(hue, m_current.hsvSaturation(), m_current.value(), m_current.alpha());
    drawSquareImage();
    if (isVisible())
        repaint();
    tellValue(this);
    emit colorChanged(m_current);
}

void ColorWheel::svChanged(QColor newcolor)
{
    m_current.setHsv(m_current.hsvHue(), newcolor.hsvSaturation(), newcolor.value(), m_current.alpha());
    if (isVisible())
        repaint();
    tellValue(this);
    emit colorChanged(m_current);
}

// --- geometry ---

QPointF ColorWheel::center() const
{
    const double r = qMin(width(), height()) / 2.0;
    return {m_offsetX + r, m_offsetY + r};
}

QRectF ColorWheel::squareRect() const
{
    const double r2 = qMax(0.0, qMin(width(), height()) / 2.0 - m_margin - m_wheelWidth);
    const double half = r2 / kSqrt2; // the corners touch the ring
    return {center() - QPointF(half, half), QSizeF(2 * half, 2 * half)};
}

int ColorWheel::hueAt(const QPoint& pos) const
{
    const QPointF offset = pos - center();
    const double fromVertical = std::atan2(std::abs(offset.x()), std::abs(offset.y())) / kPi * 0.5 * 360;
    const bool right = offset.x() >= 0;
    double hue = 0;
    if (offset.y() <= 0) // the upper half
        hue = right ? 90 - fromVertical : 90 + fromVertical;
    else
        hue = right ? 270 + fromVertical : 270 - fromVertical;
    return qBound(0, static_cast<int>(hue), 359);
}

QColor ColorWheel::svColorAt(const QPoint& pos) const
{
    const QRectF square = squareRect();
    const double saturation = qBound(0.0, (pos.x() - square.left()) / square.width(), 1.0);
    const double value = qBound(0.0, (pos.y() - square.top()) / square.height(), 1.0);
    return QColor::fromHsvF(m_current.hsvHueF(), saturation, value, m_current.alphaF());
}

// --- keyboard ---

void ColorWheel::keyPressEvent(QKeyEvent* event)
{
    const int step = event->modifiers().testFlag(Qt::ControlModifier) ? kLargeKeyStep : kKeyStep;
    const auto moveBy = [this](int saturation, int value) {
        svChanged(QColor::fromHsv(m_current.hsvHue(), qBound(0, m_current.hsvSaturation() + saturation, 255),
                                  qBound(0, m_current.value() + value, 255)));
    };
    switch (event->key()) {
    case Qt::Key_Left: // the square is not mirrored with the language
        return moveBy(-step, 0);
    case Qt::Key_Right:
        return moveBy(step, 0);
    case Qt::Key_Up:
        return moveBy(0, -step);
    case Qt::Key_Down:
        return moveBy(0, step);
    case Qt::Key_PageUp:
        return hueChanged((m_current.hsvHue() + step) % 360);
    case Qt::Key_PageDown:
        return hueChanged((m_current.hsvHue() + 360 - step) % 360);
    default:
        QWidget::keyPressEvent(event);
    }
}

// --- mouse ---

void ColorWheel::mousePressEvent(QMouseEvent* event)
{
    m_lastPos = event->pos();
    if (m_wheelRegion.contains(m_lastPos))
        m_inWheel = true;
    else if (m_squareRegion.contains(m_lastPos))
        m_inSquare = true;
    m_mouseDown = true;
    pickAt(m_lastPos);
}

void ColorWheel::mouseMoveEvent(QMouseEvent* event)
{
    m_lastPos = event->pos();
    if (m_mouseDown)
        pickAt(m_lastPos);
}

void ColorWheel::mouseReleaseEvent(QMouseEvent*)
{
    m_mouseDown = false;
    m_inWheel = false;
    m_inSquare = false;
}

void ColorWheel::pickAt(const QPoint& pos)
{
    // A drag belongs to the part it began in and rests while it is outside.
    if (m_inWheel && m_wheelRegion.contains(pos))
        hueChanged(hueAt(pos));
    else if (m_inSquare && m_squareRegion.contains(pos))
        svChanged(svColorAt(pos));
}

// --- painting ---

void ColorWheel::resizeEvent(QResizeEvent*)
{
    rebuild();
    update();
}

void ColorWheel::paintEvent(QPaintEvent*)
{
    if (m_wheel.isNull() || m_wheel.devicePixelRatio() != devicePixelRatioF())
        rebuild(); // moved to a screen of another density
    composeWheel();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_wheel);
    if (hasFocus())
        drawFocus(painter);
}

void ColorWheel::drawFocus(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kFocus, 2));
    const double radius = qMin(width(), height()) / 2.0 - m_margin / 2.0;
    painter.drawEllipse(center(), radius, radius);
}

void ColorWheel::rebuild()
{
    const int side = qMin(width(), height());
    m_wheelWidth = qRound(side * kWheelWidthShare);
    m_offsetX = (width() - side) / 2;
    m_offsetY = (height() - side) / 2;
    m_wheel = QPixmap(size() * devicePixelRatioF());
    m_wheel.setDevicePixelRatio(devicePixelRatioF());
    m_wheel.fill(Qt::transparent);
    drawWheelImage();
    drawSquareImage();
}

void ColorWheel::drawWheelImage()
{
    m_wheelImage = QImage(size() * devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    m_wheelImage.setDevicePixelRatio(devicePixelRatioF());
    m_wheelImage.fill(Qt::transparent);
    const int side = qMin(width(), height());
    const double outer = qMax(0.0, side / 2.0 - m_margin);
    const double inner = qMax(0.0, outer - m_wheelWidth);

    QConicalGradient hues(0, 0, 0);
    const Qt::GlobalColor stops[] = {Qt::red,  Qt::yellow,  Qt::green, Qt::cyan,
                                     Qt::blue, Qt::magenta, Qt::red};
    for (int i = 0; i < 7; ++i)
        hues.setColorAt(i / 6.0, stops[i]);
    QPainterPath ring;
    ring.setFillRule(Qt::OddEvenFill);
    ring.addEllipse(QPointF(0, 0), outer, outer);
    ring.addEllipse(QPointF(0, 0), inner, inner);

    QPainter painter(&m_wheelImage);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(hues);
    painter.drawPath(ring);

    const auto circle = [this, side](int diameter) {
        const int inset = (side - diameter) / 2;
        return QRegion(m_offsetX + inset, m_offsetY + inset, diameter, diameter, QRegion::Ellipse);
    };
    const int diameter = qMax(0, side - 2 * m_margin);
    m_wheelRegion = circle(diameter) - circle(qMax(0, diameter - 2 * m_wheelWidth));
}

void ColorWheel::drawSquareImage()
{
    QImage square(kSquareSteps, kSquareSteps, QImage::Format_RGB32);
    const int hue = m_current.hsvHue();
    for (int y = 0; y < kSquareSteps; ++y) {
        auto* line = reinterpret_cast<QRgb*>(square.scanLine(y));
        for (int x = 0; x < kSquareSteps; ++x)
            line[x] = QColor::fromHsv(hue, x, y, 255).rgb();
    }
    const QRectF rect = squareRect();
    m_squareRegion = QRegion(rect.toRect());
    const int pixels = qRound(rect.width() * devicePixelRatioF());
    m_squareImage = square.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_squareImage.setDevicePixelRatio(devicePixelRatioF());
}

void ColorWheel::composeWheel()
{
    m_wheel.fill(Qt::transparent);
    QPainter painter(&m_wheel);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawImage(QPointF(0, 0), m_wheelImage);
    // On whole device pixels, or the square's edges would blur.
    const double ratio = devicePixelRatioF();
    const QPointF corner = squareRect().topLeft() * ratio;
    painter.drawImage(QPointF(qRound(corner.x()), qRound(corner.y())) / ratio, m_squareImage);
    drawHueMark(painter);
    drawSvMark(painter);
}

void ColorWheel::drawHueMark(QPainter& painter) const
{
    const double angle = qDegreesToRadians(m_current.hsvHueF() * 360.0);
    const double middle = qMin(width(), height()) / 2.0 - m_margin - m_wheelWidth / 2.0;
    const QPointF at = center() + QPointF(std::cos(angle), -std::sin(angle)) * middle;
    drawMark(painter, at, m_wheelWidth / 2.0, false);
}

void ColorWheel::drawSvMark(QPainter& painter) const
{
    const QRectF square = squareRect();
    const QPointF at = square.topLeft() + QPointF(m_current.hsvSaturationF() * square.width(),
                                                  m_current.valueF() * square.height());
    drawMark(painter, at, kMarkRadius, m_current.hsvSaturation() < 31 && m_current.value() >= 50);
}
