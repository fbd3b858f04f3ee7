#include "GalleryModels.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPainter>
#include <QPixmap>
#include <cmath>

namespace {

struct Sample
{
    const char* model;
    const char* name;
    bool adjustable;
};

constexpr QSize kCanvas{120, 67};

constexpr Sample kSamples[] = {
    {"LV0127", "LV0127", true},
    {"LV0N03", "Matrix \xF0\x9F\x8E\xB5 \xF0\x9F\x8C\x88", false},
    {"LV0124", "书桌灯带", true},
    {"LV0203", "A very long name that somebody gave to the strip behind the big monitor in the study", true},
    {"LV0S60", "<b>Bold & brave</b>", false},
    {"LV0B40", "شريط المكتب", false},
    {"LV0R24", "Ring", false},
};

} // namespace

QMap<QString, DeviceModel> galleryDevices(int count)
{
    QMap<QString, DeviceModel> devices;
    for (int i = 0; i < count; ++i) {
        const Sample& sample = kSamples[static_cast<std::size_t>(i) % std::size(kSamples)];
        const QString model = QString::fromLatin1(sample.model);
        DeviceModel device;
        device.id = QStringLiteral("%1:%2").arg(model).arg(i, 8, 16, QLatin1Char('0'));
        device.name = QString::fromUtf8(sample.name);
        device.icon = QIcon(QPixmap(QStringLiteral("images/productIcons/%1.jpg").arg(model)));
        device.flag = sample.adjustable;
        devices.insert(device.id, device);
    }
    return devices;
}

QVector<PortFindings> galleryFindings()
{
    using Kind = PortFinding::Kind;
    const PortFinding refused{QStringLiteral("ttyUSB0"), Kind::NotPermitted, QStringLiteral("dialout")};
    return {{refused},
            {refused,
             {QStringLiteral("ttyUSB1"), Kind::Held, {}, {QStringLiteral("ModemManager"), 1234}},
             {QStringLiteral("ttyUSB2"), Kind::Silent},
             {QStringLiteral("ttyUSB3"), Kind::Unknown, QStringLiteral("GRBL 1.1h")},
             {QStringLiteral("ttyUSB4"), Kind::Asked},
             {QStringLiteral("ttyUSB5"), Kind::UnknownModel, QStringLiteral("LV9999")},
             {QStringLiteral("1-1.4"), Kind::NoDriver},
             {QStringLiteral("1-2"), Kind::TakenOff, {}, {QStringLiteral("brltty")}}}};
}

QJsonObject galleryProperties()
{
    const QString longName =
        QStringLiteral("Monitor of Family 17h/19h HD Audio Controller Digital Stereo (IEC958)");
    return {{"animations", QJsonArray{"Rain", "霓虹与极光", "Lagerfeuer"}},
            {"currentAnime", "霓虹与极光"},
            {"currentStrap", 0},
            {"range", 0.6},
            {"strength", 1.0},
            {"captureId", "default"},
            {"capturers", QJsonArray{QJsonObject{{"id", "default"}, {"desc", longName}},
                                     QJsonObject{{"id", "headset"}, {"desc", "书桌耳机"}}}},
            {"captures", QJsonArray{QJsonObject{{"index", "DP-1"}, {"desc", "DP-1 (3840 × 2160, 主屏幕)"}},
                                    QJsonObject{{"index", "HDMI-A-1"}, {"desc", "HDMI-A-1 (1920 × 1080)"}}}},
            {"inputSource", "DP-1"},
            {"blur", 0.25},
            {"saturation", 0.8},
            {"wipeDarkSide", true},
            {"borderMode", "stable"},
            {"smoothing", "responsive"},
            {"saturationGate", 16},
            {"frameInterval", -1},
            {"enbWipeDarkSizeFunc", true},
            {"enbBlurAndSaturationAdjust", true}};
}

QMap<QString, QJsonObject> galleryStates(const QString& optionWidget)
{
    if (optionWidget != QLatin1String("ScreenSyncSOptWidget"))
        return {};
    const QJsonObject bare{
        {"captures", QJsonArray()}, {"enbWipeDarkSizeFunc", false}, {"enbBlurAndSaturationAdjust", false}};
    QMap<QString, QJsonObject> states{{"check-box", bare}, {"sliders", bare}, {"source", bare}};
    states["check-box"]["enbWipeDarkSizeFunc"] = true;
    states["sliders"]["enbBlurAndSaturationAdjust"] = true;
    const QString longName =
        QStringLiteral("A very long name of a television in the living room (7680 × 4320)");
    states["source"]["captures"] =
        QJsonArray{QJsonObject{{"index", "DP-1"}, {"desc", longName}}, QJsonObject{{"index", "DP-2"}}};
    states["source"]["inputSource"] = "DP-1";
    QJsonObject& look = states["look"];
    look = states["sliders"];
    look["smoothing"] = "calm";
    look["saturationGate"] = 64;
    look["frameInterval"] = 60;
    states["border-off"] = look;
    states["border-off"]["enbWipeDarkSizeFunc"] = true;
    states["border-off"]["wipeDarkSide"] = false;
    states["border-off"]["borderMode"] = "classic";
    return states;
}

QJsonObject galleryLayout(int leds)
{
    const QRect edge = QRect(QPoint(), kCanvas).adjusted(2, 2, -3, -3);
    QJsonArray map;
    for (int id = 0; id < leds; ++id) {
        // Up the left side, along the top, down the right side and back along the bottom.
        int way = id * 2 * (edge.width() + edge.height()) / leds;
        QPoint at;
        if (way < edge.height())
            at = edge.bottomLeft() - QPoint(0, way);
        else if ((way -= edge.height()) < edge.width())
            at = edge.topLeft() + QPoint(way, 0);
        else if ((way -= edge.width()) < edge.height())
            at = edge.topRight() + QPoint(0, way);
        else
            at = edge.bottomRight() - QPoint(way - edge.height(), 0);
        map.append(QJsonObject{{"id", id}, {"x", at.x()}, {"y", at.y()}});
    }
    return {{"LEDMap", map}, {"screenSize", QJsonObject{{"w", kCanvas.width()}, {"h", kCanvas.height()}}}};
}

QImage galleryFrame()
{
    QImage frame(kCanvas, QImage::Format_RGBA8888);
    QPainter painter(&frame);
    QLinearGradient sky(0, 0, 0, kCanvas.height());
    sky.setColorAt(0, QColor(30, 60, 120));
    sky.setColorAt(0.6, QColor(240, 140, 60));
    sky.setColorAt(1, QColor(20, 30, 25));
    painter.fillRect(frame.rect(), sky);
    QRadialGradient sun(80, 38, 16);
    sun.setColorAt(0, QColor(255, 240, 190));
    sun.setColorAt(1, QColor(255, 200, 90, 0));
    painter.fillRect(frame.rect(), sun);
    return frame;
}

QJsonObject galleryShippedLayout(const QString& model)
{
    QFile file(QStringLiteral("controler_config/%1.json").arg(model));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

QVector<LV_RGB> galleryLight(const QVector<QPointF>& places)
{
    QVector<LV_RGB> colors;
    for (const QPointF& place : places) {
        const double way = place.x() * 1.3 + place.y() * 0.7;
        const QColor color = QColor::fromHsvF(std::fmod(way, 1.0), 0.85, qBound(0.0, 2 - 2 * place.x(), 1.0));
        colors.append({static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
                       static_cast<std::uint8_t>(color.blue())});
    }
    return colors;
}

QVector<HotkeyModel> galleryHotkeys()
{
    QVector<HotkeyModel> hotkeys;
    const QStringList keys{"F10", "Right", "Left", "Down", "Up"};
    for (int i = 0; i < keys.size(); ++i)
        hotkeys.append({QString::number(i), {keys.at(i), true, true, true}});
    return hotkeys;
}

QMap<QString, QString> galleryHotkeyNames()
{
    return {{"0", "全开全关切换"},
            {"1", "切换到下一个模式"},
            {"2", "切换到上一个模式"},
            {"3", "降低亮度"},
            {"4", "提升亮度"}};
}
