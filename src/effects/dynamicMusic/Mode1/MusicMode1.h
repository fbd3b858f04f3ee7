#pragma once

#include "effects/dynamicMusic/AbsMusicEffect.h"
#include "effects/dynamicMusic/Mode1/Fragment.h"

/// Level meters: each fragment of the strip listens to one band and lights the more LEDs the louder it is.
/// Property "strength": the common gain of all fragments.
class MusicMode1 : public AbsMusicEffect
{
    Q_OBJECT

public:
    Q_INVOKABLE MusicMode1(const EffectWorkerOptions& options, QObject* parent);

    int load(const ControlOptions& ctlOptions) override;
    EffectWorkerOptions options() override;
    void unload() override;

    /// Replaces the gain of every fragment; stored at once.
    void setStrength(double value);

public slots:
    void spectrumUpdate(QVector<Spectrum> spectrum) override;
    /// Emits one picture, unless there is no channel at all.
    void spectrumUpdate(QVector<SoundChannel> channels) override;
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;

protected:
    /// A new source starts from a dark strip.
    void onCapturerBound() override;
    /// One colour per LED of the fragment; a result of another length is left out. Level 0 to 80.
    virtual QVector<LV_RGB> fragmentColors(const QString& name, const Fragment& fragment, double level);
    /// The stored fragments, else those of the device's model, else two halves. Halves that were stored for
    /// another number of LEDs are made anew and keep their gain.
    void loadLEDFragmentsFromConfig(const ControlOptions& options);

    EffectWorkerOptions m_options;
    Fragments m_fragments;
    double m_strength = 1.0;
    int m_direction = 0; ///< 1: the strip runs mirrored
};
