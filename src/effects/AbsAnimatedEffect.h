#pragma once

#include "effects/IEffectWorker.h"
#include "support/SharedLibrary.h"

#include <QElapsedTimer>
#include <QTimer>

/// A worker with a clock: `update` runs at a fixed interval with the time since the step before.
class LUMIVAR_EFFECTS_EXPORT AbsAnimatedEffect : public IEffectWorker
{
    Q_OBJECT

public:
    /// Period of 33 ms, not started; the subclass sets m_effectOptions and calls start().
    explicit AbsAnimatedEffect(QObject* parent);
    /// Period from the configuration. With autoStart `update` is called before `load`.
    AbsAnimatedEffect(const EffectWorkerOptions& options, QObject* parent, bool autoStart);
    ~AbsAnimatedEffect() override;

    EffectWorkerOptions options() override;

    void start();
    /// Only while started.
    void stop();

public slots:
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;
    /// No steps meanwhile; the first one afterwards knows nothing of the pause.
    void onCtlDarkChanged(bool dark) override;

protected:
    virtual void update(double seconds) = 0;

    int updateInterval() const { return m_updateInterval; }
    /// Milliseconds, from the next step on. Ends a rest.
    void setUpdateInterval(int ms);
    /// From the next start() on steps fall together with those of all others that keep step at the same
    /// interval, as well as the line allows: what they share is then done once.
    void keepStep(bool keep) { m_keepsStep = keep; }
    /// Between steps, with rest and all.
    int period() const { return m_restMs > 0 ? m_restMs : m_updateInterval; }
    /// Until the next step.
    int nextStepMs() const;

    /// From now on a step comes every `ms` only.
    void rest(int ms);
    bool isResting() const { return m_restMs > 0; }
    /// The rest is over: the next step comes after the usual interval, or now.
    void endRest();
    void stepNow();
    /// The next step does not come before `ms` have passed, but at most one interval late.
    void delayStep(int ms);

    EffectWorkerOptions m_effectOptions;

private:
    void run(int ms);
    void tick();
    /// How long after the common step this time is, in ms.
    int lateness(int msFromNow) const;
    /// Brings the next step a little nearer to the common one.
    void comeInStep();

    QTimer* m_timer = nullptr;
    int m_updateInterval = 33;
    int m_restMs = 0; ///< the period while it rests, else 0
    bool m_isDark = false;
    bool m_keepsStep = false;
    bool m_comesInStep = false; ///< the next step is moved for that alone
    QElapsedTimer m_frameClock;
};
