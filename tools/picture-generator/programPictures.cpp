#include "programPictures.h"

#include "support/AppId.h"
#include "windowsIcon.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRadialGradient>

namespace {

constexpr int kIconSide = 256;
constexpr int kLogoSide = 108; // 36 pixels of the title bar on the densest screens
constexpr int kWindowsSides[] = {16, 20, 24, 32, 40, 48, 64, 96, 128, 256};
constexpr int kThemeSides[] = {16, 22, 24, 32, 48, 64, 128, 256, 512};

struct Stop
{
    double at;
    QRgb color;
};

/// The lit wall, brightest behind the monitor.
constexpr Stop kWall[] = {{0.00, 0xfffff6a8}, {0.45, 0xffffdf2e}, {0.72, 0xffffb018}, {1.00, 0xfff26b12}};
constexpr double kWallReach = 11.3;
constexpr QRgb kMonitor = 0xff1c1a22;
constexpr QRgb kLamp = 0xfffffff2;

/// One rounded rectangle of the sign.
struct Part
{
    QRectF place;
    double rounding;
    QRgb color; ///< 0: the wall's light
};

/// A dark monitor before a lit wall, on 16 by 16 units whose lines fall on pixels in the smallest tray.
QVector<Part> signParts()
{
    QVector<Part> parts{{{0, 0, 16, 16}, 3.7, 0},
                        {{3, 4, 10, 7}, 1.1, kMonitor},
                        {{7, 10.5, 2, 2}, 0, kMonitor},
                        {{5, 12, 6, 1}, 0.4, kMonitor}};
    // The lamps of the strip; small sizes show them as light.
    const auto addLamp = [&parts](double x, double y) {
        constexpr double kRadius = 0.34;
        parts.append({{x - kRadius, y - kRadius, 2 * kRadius, 2 * kRadius}, kRadius, kLamp});
    };
    for (int i = 0; i < 6; ++i)
        addLamp(3 + i * 2, 2.75);
    for (int i = 0; i < 3; ++i) {
        addLamp(1.75, 5 + i * 2);
        addLamp(14.25, 5 + i * 2);
    }
    return parts;
}

QImage drawSign(int side)
{
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 16.0, side / 16.0);
    painter.setPen(Qt::NoPen);

    QRadialGradient wall(QPointF(8, 8), kWallReach);
    for (const Stop& stop : kWall)
        wall.setColorAt(stop.at, QColor(stop.color));
    for (const Part& part : signParts()) {
        painter.setBrush(part.color == 0 ? QBrush(wall) : QBrush(QColor(part.color)));
        painter.drawRoundedRect(part.place, part.rounding, part.rounding);
    }
    return picture;
}

QByteArray signAsSvg()
{
    QString stops;
    for (const Stop& stop : kWall)
        stops += QStringLiteral("<stop offset=\"%1\" stop-color=\"%2\"/>")
                     .arg(stop.at)
                     .arg(QColor(stop.color).name());
    QString shapes;
    for (const Part& part : signParts()) {
        shapes +=
            QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"%5\" fill=\"%6\"/>\n")
                .arg(part.place.x())
                .arg(part.place.y())
                .arg(part.place.width())
                .arg(part.place.height())
                .arg(part.rounding)
                .arg(part.color == 0 ? QStringLiteral("url(#wall)") : QColor(part.color).name());
    }
    return QStringLiteral(
               "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 16\">\n"
               "<radialGradient id=\"wall\" gradientUnits=\"userSpaceOnUse\" cx=\"8\" cy=\"8\" r=\"%1\">"
               "%2</radialGradient>\n%3</svg>\n")
        .arg(kWallReach)
        .arg(stops, shapes)
        .toLatin1();
}

/// The folder of a theme for programs' icons of a size, made where it is missing.
QString themeFolder(const QString& theme, const QString& size)
{
    const QString folder = QStringLiteral("%1/%2/apps/").arg(theme, size);
    QDir().mkpath(folder);
    return folder;
}

} // namespace

bool writeProgramPictures(const QString& folder)
{
    return drawSign(kIconSide).save(folder + QLatin1String("/icon.png")) &&
           drawSign(kLogoSide).save(folder + QLatin1String("/logo.png"));
}

bool writeThemeIcons(const QString& theme)
{
    const QString name = QString::fromLatin1(kAppId);
    for (const int side : kThemeSides) {
        const QString folder = themeFolder(theme, QStringLiteral("%1x%1").arg(side));
        if (!drawSign(side).save(folder + name + QLatin1String(".png")))
            return false;
    }
    QFile svg(themeFolder(theme, QStringLiteral("scalable")) + name + QLatin1String(".svg"));
    const QByteArray text = signAsSvg();
    return svg.open(QIODevice::WriteOnly) && svg.write(text) == text.size();
}

bool writeWindowsIcon(const QString& path)
{
    QVector<QImage> pictures;
    for (const int side : kWindowsSides)
        pictures.append(drawSign(side));
    const QByteArray bytes = windowsIcon(pictures);
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
