#pragma once

#include "effects/AbsAnimatedEffect.h"
#include "effects/EffectProperties.h"
#include "effects/IColorStrapManager.h"

#include <QPointer>

/// Scrolls a gradient of the shared list along the strip. Main thread.
/// Properties "currentStrap", the index in the list; "speed", 1.0 is the strip's length a second; "range", at
/// 1.0 one cycle of the gradient is twice as long as the strip; "colorStrapManager", to be read only: the
/// decimal address of the list's manager, by which the option widget finds it.
class MoodShadow : public WithProperties<AbsAnimatedEffect>
{
    Q_OBJECT

public:
    Q_INVOKABLE MoodShadow(const EffectWorkerOptions& options, QObject* parent);

    /// Without a manager the effect sends nothing.
    Q_INVOKABLE void DIColorStrapManager(IColorStrapManager* mgr);

    int load(const ControlOptions& ctlOptions) override;
    void unload() override;

    /// 0.0 to 1.0; others are refused. What is new is stored.
    void setSpeed(double s);
    void setRange(double r);

signals:
    void speedChanged(double s);
    void rangeChanged(double r);

public slots:
    /// Takes and stores the index; one that is not in the list is refused.
    void setCurrentStrap(int id);
    void onCtlDirChanged(uint32_t dir) override;

protected:
    void update(double seconds) override;

private slots:
    void onStrapRemoved(int i);
    void onStrapChanged(int i);

private:
    void listProperties();
    bool isInList(int strap) const;
    void takeStrap(const ColorStrap& strap);
    void resetCurrStrap();
    void leaveBrokenStrap();
    int cycleWidth() const;
    void advance(double seconds);
    void store(const char* key, const QJsonValue& value);
    void storeStrapConfigs();

    QPointer<IColorStrapManager> m_colorStrapManager;
    int m_currentStrapIndex = 0;
    ColorStrap m_currentStrap; ///< a copy; the manager tells of changes
    QVector<LV_RGB> m_cycle;   ///< the strap drawn over one cycle; drawn anew when empty or of another width
    int m_brokenStrapIndex = -1; ///< told of and left, until a good one shows
    double m_speed = 1.0;
    double m_range = 1.0;
    bool m_isLoaded = false;
    ControlOptions m_ctlOptions;
    double m_position = 0.0; ///< in cycles
};
