#pragma once

#include "effects/dynamicMusic/Mode3/MusicMode3.h"

/// Every LED is a fragment with a narrow band of its own: from 40 Hz at both ends of the strip to 1640 Hz in
/// its middle, the left half on the left channel. The gain grows towards the middle.
class MusicMode4 : public MusicMode3
{
    Q_OBJECT

public:
    Q_INVOKABLE MusicMode4(const EffectWorkerOptions& options, QObject* parent);

    /// Of what is stored only the strength counts: the fragments follow from the number of LEDs.
    int load(const ControlOptions& ctlOptions) override;

protected:
    QVector<LV_RGB> fragmentColors(const QString& name, const Fragment& fragment, double level) override;

private:
    void addFragments();
};
