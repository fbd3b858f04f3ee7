#pragma once

#include "effects/AbsAnimatedEffect.h"

#include <QColor>

/// The whole strip swells and fades in one colour. Lives in a thread of its own.
/// Properties: "color", text such as "#ff8800"; "period", seconds from dark to dark, 0.5 to 60.
class Breathing : public AbsAnimatedEffect
{
    Q_OBJECT

public:
    Q_INVOKABLE Breathing(const EffectWorkerOptions& options, QObject* parent);

    int load(const ControlOptions& ctlOptions) override;
    QJsonValue effectProperty(const QString& key) override;
    void setEffectProperty(const QString& key, const QJsonValue& val) override;
    void unload() override;

    /// The colour at a point of the breath: 0.0 and 1.0 dark, 0.5 full.
    static LV_RGB colorAt(const QColor& color, double phase);

protected:
    void update(double seconds) override;

private:
    void applyColor(const QJsonValue& val);
    void applyPeriod(const QJsonValue& val);
    void store(const char* key, const QJsonValue& val);

    QString m_controllerId;
    int m_nbLeds = 0;
    QColor m_color = QColor(0xff, 0x88, 0x00);
    double m_period = 4.0; // seconds
    double m_phase = 0.0;
};
