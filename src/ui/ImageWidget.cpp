#include "ui/ImageWidget.h"

#include <QPainter>
#include <QtMath>

ImageWidget::ImageWidget(QWidget* parent)
    : QWidget(parent)
{
}

void ImageWidget::setImg(QImage img)
{
    m_image = img;
    m_scaled = QPixmap();
    update();
}

QRect ImageWidget::targetRect() const
{
    const double aspect = double(m_image.width()) / m_image.height();
    double targetWidth = width();
    double targetHeight = targetWidth / aspect;
    if (targetHeight > height()) {
        targetHeight = height();
        targetWidth = targetHeight * aspect;
    }
    return QRect(int((width() - targetWidth) / 2), int((height() - targetHeight) / 2), int(targetWidth),
                 int(targetHeight));
}

void ImageWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawPicture(painter);
}

void ImageWidget::drawPicture(QPainter& painter)
{
    if (m_image.isNull())
        return;
    const QRect target = targetRect();
    const QRect shown = target & rect();
    if (shown.isEmpty())
        return;
    const bool fresh = !m_scaled.isNull() && m_scaledTarget == target && m_scaledSize == size() &&
                       qFuzzyCompare(m_scaled.devicePixelRatioF(), devicePixelRatioF());
    if (!fresh) {
        scalePicture(target, shown);
        m_scaledTarget = target;
        m_scaledSize = size();
    }
    painter.drawPixmap(shown.topLeft(), m_scaled);
}

/// Shrinking averages areas, which a painter does not, and never makes more than the picture has; enlarging
/// is left to the painter, who makes only what is shown: a very long picture would fill the memory otherwise.
void ImageWidget::scalePicture(const QRect& target, const QRect& shown)
{
    const qreal ratio = devicePixelRatioF();
    const QSize wanted(qCeil(target.width() * ratio), qCeil(target.height() * ratio));
    const QImage small =
        m_image.scaled(wanted.boundedTo(m_image.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_scaled = QPixmap(qCeil(shown.width() * ratio), qCeil(shown.height() * ratio));
    m_scaled.fill(Qt::transparent);
    QPainter painter(&m_scaled);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(QPointF(target.topLeft() - shown.topLeft()) * ratio, QSizeF(wanted)), small,
                      QRectF(small.rect()));
    painter.end();
    m_scaled.setDevicePixelRatio(ratio);
}
