#pragma once

#include "effects/EffectProperties.h"
#include "effects/IEffectWorker.h"

#include <QColor>
#include <QTimer>
#include <QVector>

/// Paints the whole strip with one colour and sends that picture every 500 ms. Main thread.
/// Property "color": [red, green, blue]; a change reaches the LEDs with the next tick.
class SingleColor : public WithProperties<IEffectWorker>
{
    Q_OBJECT

public:
    Q_INVOKABLE SingleColor(const EffectWorkerOptions& options, QObject* parent);

    int load(const ControlOptions& ctlOptions) override;
    EffectWorkerOptions options() override;
    void unload() override;

public slots:
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;

    /// Shows the colour at once and stores it.
    void setColor(QColor color);

private:
    void storeColor();

    EffectWorkerOptions m_effectOptions;
    QVector<LV_RGB> m_colors;
    QColor m_color;
    QTimer m_refreshTimer;
    ControlOptions m_ctlOptions;
};
