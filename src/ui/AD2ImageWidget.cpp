#include "ui/AD2ImageWidget.h"

#include <QDebug>

AD2ImageWidget::AD2ImageWidget(QWidget* parent)
    : ImageWidget(parent)
{
}

void AD2ImageWidget::setImg(QImage img)
{
    if (img.isNull()) {
        qWarning() << "[AD2ImageWidget]: The imge is empty";
        return;
    }
    ImageWidget::setImg(img);
}

QRect AD2ImageWidget::targetRect() const
{
    const double targetWidth =
        qMin(image().width() / (double(image().height()) / height()), double(QWIDGETSIZE_MAX));
    return QRect(int(width() / 2.0 - targetWidth / 2), 0, int(targetWidth), height());
}
