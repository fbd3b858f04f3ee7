#include "ui/AD2ImageWidget.h"

#include <QDebug>
#include <QtMath>

AD2ImageWidget::AD2ImageWidget(QWidget* parent)
    : ImageWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void AD2ImageWidget::setImg(QImage img)
{
    if (img.isNull()) {
        qWarning() << "[AD2ImageWidget]: The imge is empty";
        return;
    }
    ImageWidget::setImg(img);
    updateGeometry();
}

int AD2ImageWidget::heightForWidth(int width) const
{
    const double whole = image().isNull() ? width : double(image().height()) * width / image().width();
    return qCeil(qMin(whole, width * 1.5)); // a pixel less would leave a gap at the side
}

QRect AD2ImageWidget::targetRect() const
{
    const double targetWidth =
        qMin(image().width() / (double(image().height()) / height()), double(QWIDGETSIZE_MAX));
    return QRect(int(width() / 2.0 - targetWidth / 2), 0, int(targetWidth), height());
}
