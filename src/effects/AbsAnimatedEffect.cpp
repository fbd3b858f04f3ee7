#include "effects/AbsAnimatedEffect.h"

#include "support/config/StoredNumber.h"

#include <QDeadlineTimer>
#include <QDebug>

#include <algorithm>

namespace {

constexpr int kInStepMs = 2; ///< frames that are pulled nearer together are one
constexpr int kLittleMs = 8; ///< so late it hurries up, later it waits for the next common step
// At every other step:
constexpr int kHurryMs = 1;     ///< the line has no more margin
constexpr int kDelayShare = 16; ///< of the interval

} // namespace

AbsAnimatedEffect::AbsAnimatedEffect(QObject* parent)
    : IEffectWorker(parent)
{
}

AbsAnimatedEffect::AbsAnimatedEffect(const EffectWorkerOptions& options, QObject* parent, bool autoStart)
    : IEffectWorker(parent)
    , m_effectOptions(options)
    , m_updateInterval(applicationNumber(ConfigKeys::kDevUpdateIntervalMs))
{
    m_frameClock.start();
    if (autoStart)
        start();
}

AbsAnimatedEffect::~AbsAnimatedEffect()
{
    if (m_timer)
        stop();
}

EffectWorkerOptions AbsAnimatedEffect::options()
{
    return m_effectOptions;
}

void AbsAnimatedEffect::start()
{
    if (m_timer)
        stop();
    m_frameClock.restart();
    m_timer = new QTimer(this);
    m_timer->setInterval(m_updateInterval);
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &AbsAnimatedEffect::tick);
    endRest();
    if (m_keepsStep) { // and what it asks for on the way here has some time to come
        const int least = m_updateInterval / 2;
        run(least + (m_updateInterval - lateness(least)) % m_updateInterval);
        m_comesInStep = true;
    }
    qDebug() << "[AbsAnimatedEffect]: The effect timer has been started, id:" << m_timer->timerId();
}

void AbsAnimatedEffect::stop()
{
    qDebug() << "[AbsAnimatedEffect]: The effect timer has been stopped, id:" << m_timer->timerId();
    m_timer->stop();
    m_timer->deleteLater();
    m_timer = nullptr;
}

void AbsAnimatedEffect::setUpdateInterval(int ms)
{
    if (ms == m_updateInterval)
        return;
    m_updateInterval = ms;
    m_restMs = 0;
    if (m_timer)
        m_timer->setInterval(ms);
}

int AbsAnimatedEffect::nextStepMs() const
{
    const int left = m_timer ? m_timer->remainingTime() : -1;
    return left > 0 ? left : period();
}

void AbsAnimatedEffect::run(int ms)
{
    m_comesInStep = false;
    if (m_timer && !m_isDark)
        m_timer->start(ms);
}

void AbsAnimatedEffect::rest(int ms)
{
    m_restMs = ms;
    run(ms);
}

void AbsAnimatedEffect::endRest()
{
    m_restMs = 0;
    run(m_updateInterval);
}

void AbsAnimatedEffect::stepNow()
{
    m_restMs = 0;
    run(0);
}

void AbsAnimatedEffect::delayStep(int ms)
{
    const bool isDelayed = m_timer && m_timer->interval() != m_updateInterval && !m_comesInStep;
    if (m_timer && !isDelayed && ms > m_timer->remainingTime())
        run(std::min(ms, m_timer->remainingTime() + m_updateInterval));
}

void AbsAnimatedEffect::tick()
{
    m_comesInStep = false;
    if (m_timer->interval() != period()) // it was hurried or delayed
        run(period());
    else if (m_keepsStep && !isResting())
        comeInStep();
    update(m_frameClock.restart() / 1000.0);
}

int AbsAnimatedEffect::lateness(int msFromNow) const
{
    const qint64 now = QDeadlineTimer::current(Qt::PreciseTimer).deadline();
    return static_cast<int>((now + msFromNow) % std::max(m_updateInterval, 1));
}

void AbsAnimatedEffect::comeInStep()
{
    // By the timer's plan: that a busy machine comes late now and then is not to be followed.
    const int next = nextStepMs();
    const int late = lateness(next);
    if (late <= kInStepMs)
        return;
    const int delay = std::min(m_updateInterval / kDelayShare + 1, m_updateInterval - late);
    run(late <= kLittleMs ? std::max(next - kHurryMs, 0) : next + delay);
    m_comesInStep = true;
}

void AbsAnimatedEffect::onCtlDarkChanged(bool dark)
{
    m_isDark = dark;
    if (!m_timer)
        return;
    if (dark)
        return m_timer->stop();
    m_frameClock.restart();
    endRest();
}

void AbsAnimatedEffect::onCtlDirChanged(uint32_t) {}
void AbsAnimatedEffect::onCtlBrightnessChanged(float) {}
void AbsAnimatedEffect::onCtlKindNameChanged(QString) {}
void AbsAnimatedEffect::onCtlEnableChanged(bool) {}
