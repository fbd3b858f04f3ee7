#include "controllers/ColorCorrection.h"

#include "support/config/StoredNumber.h"

#include <QDebug>
#include <optional>

namespace {

constexpr char kClassic[] = "classic";
constexpr char kLinear[] = "linear";

std::optional<ColorCorrection::Pipeline> pipelineOf(const QJsonValue& stored, const QString& name)
{
    if (stored.isUndefined() || stored == QLatin1String(kClassic))
        return ColorCorrection::Pipeline::Classic;
    if (stored == QLatin1String(kLinear))
        return ColorCorrection::Pipeline::Linear;
    qWarning().noquote() << "[Configuration]: The stored" << name << "does not count, it must be" << kClassic
                         << "or" << kLinear << "and is" << stored;
    return std::nullopt;
}

} // namespace

ColorCorrection ColorCorrection::fromJson(const QJsonObject& object, const QString& owner,
                                          QSet<QString>& unusable)
{
    using namespace ConfigKeys;
    const ColorCorrection defaults;
    ColorCorrection read;
    const auto number = [&](const auto& setting) {
        const QLatin1String key(setting.key);
        const auto stored = storedNumber(object.value(key), setting, owner);
        if (!stored)
            unusable.insert(key);
        return stored.value_or(setting.fallback);
    };
    const QLatin1String pipelineKey(kColorPipeline.key);
    const auto pipeline = pipelineOf(object.value(pipelineKey), pipelineKey + QLatin1Char(' ') + owner);
    if (!pipeline)
        unusable.insert(pipelineKey);
    read.pipeline = pipeline.value_or(defaults.pipeline);
    read.whiteRed = number(kWhiteRed);
    read.whiteGreen = number(kWhiteGreen);
    read.whiteBlue = number(kWhiteBlue);
    read.minLight = number(kMinLight);
    read.powerLimitMa = number(kPowerLimitMa);
    read.ledMilliAmps = number(kLedMilliAmps);
    return read;
}

QJsonObject ColorCorrection::toJson() const
{
    using namespace ConfigKeys;
    return {
        {QLatin1String(kColorPipeline.key), QLatin1String(pipeline == Pipeline::Linear ? kLinear : kClassic)},
        {QLatin1String(kWhiteRed.key), whiteRed},
        {QLatin1String(kWhiteGreen.key), whiteGreen},
        {QLatin1String(kWhiteBlue.key), whiteBlue},
        {QLatin1String(kMinLight.key), minLight},
        {QLatin1String(kPowerLimitMa.key), powerLimitMa},
        {QLatin1String(kLedMilliAmps.key), ledMilliAmps}};
}

ColorCorrection::Pipeline ColorCorrection::pipelineOfNewDevices()
{
    const QLatin1String key(ConfigKeys::kNewColorPipeline.key);
    const QJsonValue stored = ConfigurationManager::instance()->appConfig(key);
    return stored.isNull() ? Pipeline::Classic : pipelineOf(stored, key).value_or(Pipeline::Classic);
}
