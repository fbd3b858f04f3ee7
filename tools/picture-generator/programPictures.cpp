#include "programPictures.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

namespace {

constexpr int kIconSide = 256;
constexpr int kLogoSide = 108; // 36 pixels of the title bar on the densest screens

/// A dark monitor before a lit wall, on 16 by 16 units whose lines fall on pixels in the smallest tray.
QImage drawSign(int side)
{
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 16.0, side / 16.0);
    painter.setPen(Qt::NoPen);

    QLinearGradient wall(QPointF(0, 1), QPointF(16, 15));
    wall.setColorAt(0.00, QColor(0xff, 0xe0, 0x1a));
    wall.setColorAt(0.30, QColor(0xff, 0xb0, 0x1f));
    wall.setColorAt(0.55, QColor(0xff, 0x5f, 0x3c));
    wall.setColorAt(0.80, QColor(0xf0, 0x2c, 0x86));
    wall.setColorAt(1.00, QColor(0x8f, 0x2b, 0xe0));
    painter.setBrush(wall);
    painter.drawRoundedRect(QRectF(0, 0, 16, 16), 3.7, 3.7);

    painter.setBrush(QColor(0x1c, 0x1a, 0x22));
    painter.drawRoundedRect(QRectF(3, 4, 10, 7), 1.1, 1.1);
    painter.drawRect(QRectF(7, 10.5, 2, 2));
    painter.drawRoundedRect(QRectF(5, 12, 6, 1), 0.4, 0.4);
    return picture;
}

} // namespace

bool writeProgramPictures(const QString& folder)
{
    return drawSign(kIconSide).save(folder + QLatin1String("/icon.png")) &&
           drawSign(kLogoSide).save(folder + QLatin1String("/logo.png"));
}
