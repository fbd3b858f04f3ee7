#pragma once

#include <QJsonObject>
#include <QSet>
#include <QString>

/// What one device makes of its colours beside brightness and gamma: how it dims, the wall's colour, the
/// power supply's limit. A value; with the defaults colours go through as if there were none.
struct ColorCorrection
{
    enum class Pipeline {
        Classic, ///< brightness, then gamma
        Linear,  ///< gamma, then brightness in light: dim colours keep their levels
    };
    /// Exponent of the linear pipeline, times the gamma of the settings.
    static constexpr double kLinearGamma = 2.2;

    Pipeline pipeline = Pipeline::Classic;
    double whiteRed = 1.0; ///< share of the light that each channel keeps, 0.0 to 1.0
    double whiteGreen = 1.0;
    double whiteBlue = 1.0;
    int minLight = 0;      ///< levels, 0 to 20: no LED of a lit strip is darker
    int powerLimitMa = 0;  ///< of the whole strip; 0: none
    int ledMilliAmps = 55; ///< one LED at full white

    /// What the members of a device's stored object say; what is missing or makes no sense has its default.
    /// The keys of the latter, which are logged, are added to `unusable`. `owner` is for the log.
    static ColorCorrection fromJson(const QJsonObject& object, const QString& owner, QSet<QString>& unusable);
    /// All members under their keys.
    QJsonObject toJson() const;
    /// What the settings say of devices that were never seen before.
    static Pipeline pipelineOfNewDevices();

    bool operator==(const ColorCorrection& o) const
    {
        return pipeline == o.pipeline && whiteRed == o.whiteRed && whiteGreen == o.whiteGreen &&
               whiteBlue == o.whiteBlue && minLight == o.minLight && powerLimitMa == o.powerLimitMa &&
               ledMilliAmps == o.ledMilliAmps;
    }
    bool operator!=(const ColorCorrection& o) const { return !(*this == o); }
};
