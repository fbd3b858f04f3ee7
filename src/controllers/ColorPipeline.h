#pragma once

#include "controllers/ColorCorrection.h"
#include "controllers/LV_RGB.h"

#include <QVector>
#include <array>
#include <cstdint>

/// From an effect's colours to those that the LEDs get: brightness and gamma, white balance, least light, the
/// power supply's limit. The first two steps depend on nothing but the byte and the channel, so they stand in
/// a table a channel, in 256ths of a level, that is built when a setting changes.
class ColorPipeline
{
public:
    /// Brings the tables up to date; cheap while nothing changes.
    void prepare(float brightness, float gama, const ColorCorrection& correction);
    /// The picture as it goes out. The strip has `nbLeds`, and those beyond the picture draw current, too.
    QVector<LV_RGB> apply(const QVector<LV_RGB>& picture, int nbLeds);
    /// The last picture was held back by the power limit.
    bool isLimited() const { return m_isLimited; }

    /// What an LED draws while it is dark.
    static constexpr int kIdleMilliAmps = 1;

private:
    using Levels = std::array<std::uint32_t, 3>; ///< of one LED, in 256ths

    Levels levelsOf(const LV_RGB& raw) const;
    void raise(Levels& levels) const;
    /// Sum of the bytes that the power supply allows a strip.
    qint64 byteBudget(int nbLeds) const;

    std::array<std::array<std::uint16_t, 256>, 3> m_tables{};
    std::array<double, 3> m_tint{}; ///< the white balance, its strongest channel 1
    std::uint32_t m_least = 0;      ///< 256ths of a level
    ColorCorrection m_correction;
    float m_brightness = 0.0F;
    float m_gama = 0.0F;
    bool m_isReady = false;
    bool m_isLimited = false;
};
