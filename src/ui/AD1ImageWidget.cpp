#include "ui/AD1ImageWidget.h"

#include <QDebug>

AD1ImageWidget::AD1ImageWidget(QWidget* parent)
    : ImageWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void AD1ImageWidget::setImg(QImage img)
{
    if (img.isNull()) {
        qWarning() << "[AD1ImageWidget]: The imge is empty";
        return;
    }
    ImageWidget::setImg(img);
    updateGeometry();
}

int AD1ImageWidget::heightForWidth(int width) const
{
    if (image().isNull())
        return width * 9 / 16;
    return int(qMin(double(image().height()) * width / image().width(), double(width)));
}

QRect AD1ImageWidget::targetRect() const
{
    const double height = image().height() / (double(image().width()) / width());
    return QRect(0, 0, width(), int(qMin(height, double(QWIDGETSIZE_MAX))));
}
