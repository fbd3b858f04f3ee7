#pragma once

#include "effects/EffectProperties.h"
#include "effects/IEffectWorker.h"

#include <QTimer>

/// A full rainbow that runs along the strip by a fixed amount each timer period. Main thread.
/// Property "speed": slider value, 1 to 200.
class FlowingEffect : public WithProperties<IEffectWorker>
{
    Q_OBJECT

public:
    Q_INVOKABLE FlowingEffect(const EffectWorkerOptions& options, QObject* parent);

    int load(const ControlOptions& ctlOptions) override;
    EffectWorkerOptions options() override;
    void unload() override;

public slots:
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;
    void onCtlDarkChanged(bool dark) override;

    /// Takes the slider's value and stores the phase a step that it stands for.
    void setSpeed(int speed);

private slots:
    void update();

private:
    double m_phase = 0.0; ///< hue before the first LED, 0.0 to 1.0
    QTimer m_timer{this};
    uint32_t m_nbLeds = 0;
    int m_ledPerUnit = 1;
    QString m_controllerId;
    double m_speed = 0.01; ///< phase a step
    EffectWorkerOptions m_effectOptions;
};
