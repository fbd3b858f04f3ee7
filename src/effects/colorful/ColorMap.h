#pragma once

#include "effects/AbsAnimatedEffect.h"
#include "effects/EffectProperties.h"

#include <QImage>
#include <memory>

/// Plays a picture on the strip: its width lies along the strip, its height is time. The picture is
/// effects/colorful/<last part of the effect id>.png beside the program. Runs at 33 ms. Main thread.
/// Property "speed": slider value, 1 to 200.
class ColorMap : public WithProperties<AbsAnimatedEffect>
{
    Q_OBJECT

public:
    Q_INVOKABLE ColorMap(const EffectWorkerOptions& options, QObject* parent);

    int load(const ControlOptions& ctlOptions) override;
    void unload() override;

protected:
    void update(double seconds) override;

private:
    void advance(double seconds);
    void setSpeed(int speed);
    void storeSpeed();

    ControlOptions m_ctlOptions;
    std::shared_ptr<const QImage> m_colorMap; ///< null before load()
    int m_speed = 100;
    double m_row = 0.0; ///< place in the picture, 0.0 to below 1.0
};
