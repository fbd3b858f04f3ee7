#include "effects/dynamicMusic/Mode1/Fragment.h"

#include "support/config/ConfigKeys.h"

#include <QDebug>

namespace {

constexpr double kMinBandHz = 10.0;
constexpr qint64 kMaxLeds = 0xFFFF; // what the devices' frames can state

/// False for a value of another type, or one that is no whole number.
bool read(const QJsonObject& json, const ConfigKeys::Setting<int>& setting, int& out)
{
    const QJsonValue value = json.value(QLatin1String(setting.key));
    out = value.toInt(setting.fallback);
    return value.isUndefined() || value.toInt(0) == value.toInt(1);
}

bool read(const QJsonObject& json, const ConfigKeys::Setting<double>& setting, double& out)
{
    const QJsonValue value = json.value(QLatin1String(setting.key));
    out = value.toDouble(setting.fallback);
    return value.isUndefined() || value.isDouble();
}

std::optional<Fragment> rejected(const QString& name, const char* reason)
{
    qWarning().noquote() << "The configuration" << name << QString::fromUtf8(reason);
    return std::nullopt;
}

} // namespace

QJsonObject Fragment::toJson() const
{
    return {{ConfigKeys::kBeginIndex.key, beginIndex},     {ConfigKeys::kEndIndex.key, endIndex},
            {ConfigKeys::kDbEnhance.key, dbEnhance},       {ConfigKeys::kMinFrequency.key, minFrequency},
            {ConfigKeys::kMaxFrequency.key, maxFrequency}, {ConfigKeys::kSoundChannel.key, soundChannel},
            {ConfigKeys::kFragmentDir.key, dir},           {ConfigKeys::kMulEnhance.key, mulEnhance}};
}

std::optional<Fragment> Fragment::fromJson(const QString& name, const QJsonValue& value)
{
    const QJsonObject json = value.toObject();
    Fragment fragment;
    const bool whole = value.isObject() && read(json, ConfigKeys::kBeginIndex, fragment.beginIndex) &&
                       read(json, ConfigKeys::kEndIndex, fragment.endIndex) &&
                       read(json, ConfigKeys::kDbEnhance, fragment.dbEnhance) &&
                       read(json, ConfigKeys::kMulEnhance, fragment.mulEnhance) &&
                       read(json, ConfigKeys::kMinFrequency, fragment.minFrequency) &&
                       read(json, ConfigKeys::kMaxFrequency, fragment.maxFrequency) &&
                       read(json, ConfigKeys::kSoundChannel, fragment.soundChannel) &&
                       read(json, ConfigKeys::kFragmentDir, fragment.dir);
    if (!whole)
        return rejected(name, "is illegal, because a value in it is not a number of the right kind");
    const qint64 count = qint64(fragment.endIndex) - fragment.beginIndex;
    if (count <= 0)
        return rejected(
            name, "is illegal, because endIndex and beginIndex are separated by at least one lamp bead");
    if (count > kMaxLeds)
        return rejected(name, "is illegal, because no strip has that many lamp beads");
    if (fragment.maxFrequency - fragment.minFrequency <= kMinBandHz)
        return rejected(name,
                        "is illegal，The interval between minFrequency and maxFreqnency is at least 10Hz");
    return fragment;
}
