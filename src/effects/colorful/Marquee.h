#pragma once

#include "effects/AbsAnimatedEffect.h"
#include "effects/EffectProperties.h"

/// One red unit that moves along a black strip, paced by the time that passed. Main thread.
/// Property "speed": slider value, 1 to 200.
class Marquee : public WithProperties<AbsAnimatedEffect>
{
    Q_OBJECT

public:
    Q_INVOKABLE Marquee(const EffectWorkerOptions& options, QObject* parent);

    int load(const ControlOptions& ctlOptions) override;
    void unload() override;

public slots:
    void onCtlDirChanged(uint32_t dir) override;

protected:
    void update(double seconds) override;

private:
    void setSpeed(int speed);
    void storeSpeed();

    int m_speed = 45;
    double m_position = 0.0; ///< steps since the start, never wrapped
    ControlOptions m_ctlOptions;
};
