#include "programPictures.h"

#include <QImage>
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

    QRadialGradient wall(QPointF(8, 8), 11.3);
    wall.setColorAt(0.00, QColor(0xff, 0xf6, 0xa8));
    wall.setColorAt(0.45, QColor(0xff, 0xdf, 0x2e));
    wall.setColorAt(0.72, QColor(0xff, 0xb0, 0x18));
    wall.setColorAt(1.00, QColor(0xf2, 0x6b, 0x12));
    painter.setBrush(wall);
    painter.drawRoundedRect(QRectF(0, 0, 16, 16), 3.7, 3.7);

    painter.setBrush(QColor(0x1c, 0x1a, 0x22));
    painter.drawRoundedRect(QRectF(3, 4, 10, 7), 1.1, 1.1);
    painter.drawRect(QRectF(7, 10.5, 2, 2));
    painter.drawRoundedRect(QRectF(5, 12, 6, 1), 0.4, 0.4);
    // The lamps of the strip; small sizes show them as light.
    painter.setBrush(QColor(0xff, 0xff, 0xf2));
    for (int i = 0; i < 6; ++i)
        painter.drawEllipse(QPointF(3 + i * 2, 2.75), 0.34, 0.34);
    for (int i = 0; i < 3; ++i) {
        painter.drawEllipse(QPointF(1.75, 5 + i * 2), 0.34, 0.34);
        painter.drawEllipse(QPointF(14.25, 5 + i * 2), 0.34, 0.34);
    }
    return picture;
}

} // namespace

bool writeProgramPictures(const QString& folder)
{
    return drawSign(kIconSide).save(folder + QLatin1String("/icon.png")) &&
           drawSign(kLogoSide).save(folder + QLatin1String("/logo.png"));
}
