#include "effects/AbsAnimatedEffect.h"

#include "support/config/StoredNumber.h"

#include <QDebug>

#include <algorithm>

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
    const bool isDelayed = m_timer && m_timer->interval() != m_updateInterval;
    if (m_timer && !isDelayed && ms > m_timer->remainingTime())
        run(std::min(ms, m_timer->remainingTime() + m_updateInterval));
}

void AbsAnimatedEffect::tick()
{
    if (m_timer->interval() != period()) // it was hurried or delayed
        run(period());
    update(m_frameClock.restart() / 1000.0);
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
