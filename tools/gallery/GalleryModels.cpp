#include "GalleryModels.h"

#include <QJsonArray>
#include <QPixmap>

namespace {

struct Sample
{
    const char* model;
    const char* name;
    bool adjustable;
};

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

QJsonObject galleryProperties()
{
    const QString longName =
        QStringLiteral("Monitor of Family 17h/19h HD Audio Controller Digital Stereo (IEC958)");
    return {{"animations", QJsonArray{"Rain", "霓虹与极光", "Lagerfeuer"}},
            {"currentAnime", "霓虹与极光"},
            {"captureId", "default"},
            {"capturers", QJsonArray{QJsonObject{{"id", "default"}, {"desc", longName}},
                                     QJsonObject{{"id", "headset"}, {"desc", "书桌耳机"}}}}};
}
