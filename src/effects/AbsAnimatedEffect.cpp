#include "effects/AbsAnimatedEffect.h"

#include "support/config/StoredNumber.h"

#include <QDebug>

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
    if (!m_isResting)
        m_timer->start();
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
    if (m_timer)
        m_timer->setInterval(ms);
}

void AbsAnimatedEffect::tick()
{
    update(m_frameClock.restart() / 1000.0);
}

void AbsAnimatedEffect::onCtlDarkChanged(bool dark)
{
    m_isResting = dark;
    if (!m_timer)
        return;
    if (dark)
        return m_timer->stop();
    m_frameClock.restart();
    m_timer->start();
}

void AbsAnimatedEffect::onCtlDirChanged(uint32_t) {}
void AbsAnimatedEffect::onCtlBrightnessChanged(float) {}
void AbsAnimatedEffect::onCtlKindNameChanged(QString) {}
void AbsAnimatedEffect::onCtlEnableChanged(bool) {}
