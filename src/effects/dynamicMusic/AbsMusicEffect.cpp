#include "effects/dynamicMusic/AbsMusicEffect.h"

#include "support/audio/AudioCapManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/hashPropertyKey.h"

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>

namespace {

constexpr char kCaptureId[] = "captureId";
constexpr char kCapturers[] = "capturers";

QJsonArray capturerList()
{
    const AudioCapManager* manager = AudioCapManager::instance();
    QJsonArray list;
    const QList<QString> ids = manager->allCapturers();
    for (const QString& id : ids)
        list.append(QJsonObject{{"desc", manager->capturerDesc(id)}, {"id", id}});
    return list;
}

} // namespace

AbsMusicEffect::AbsMusicEffect(QObject* parent)
    : IEffectWorker(parent)
{
    qRegisterMetaType<QVector<SoundChannel>>("QVector<SoundChannel>");
}

AbsMusicEffect::~AbsMusicEffect() = default;

int AbsMusicEffect::load(const ControlOptions& ctlOptions)
{
    m_ctlOptions = ctlOptions;
    const AudioCapManager* manager = AudioCapManager::instance();
    connect(manager, &AudioCapManager::capturerReady, this, &AbsMusicEffect::onCapturerReady);
    connect(manager, &AudioCapManager::capturerFailed, this, &AbsMusicEffect::onCapturerFailed);
    connect(manager, &AudioCapManager::capturersChanged, this, &AbsMusicEffect::onCapturersChanged);

    QString id = ConfigurationManager::instance()
                     ->effectJsonValue(effectId(), controllerId(), ConfigKeys::kAudioSource.key)
                     .toString();
    if (id.isEmpty()) {
        id = manager->defaultCapturer();
        qInfo() << "[AbsMusicEffect]: Not found the last used capturer, default capturer is being used.";
    }
    if (!id.isEmpty()) {
        setCapturerId(id);
        return 0;
    }
    const QList<QString> capturers = manager->allCapturers();
    if (capturers.isEmpty()) {
        qWarning().noquote() << "[AbsMusicEffect]: Not connected to any capturer, controller:"
                             << controllerId();
        return 0;
    }
    qWarning().noquote()
        << "[AbsMusicEffect]: Not found default capture, will connect to first capturer, controller:"
        << controllerId();
    setCapturerId(capturers.first());
    return 0;
}

void AbsMusicEffect::unload()
{
    // A capturer that turns up before the worker is deleted must not be acquired: nobody would release it.
    AudioCapManager::instance()->disconnect(this);
    if (m_capturer) {
        m_capturer->disconnect(this);
        releaseCapturer();
    }
    storeCapturerId();
}

void AbsMusicEffect::setCapturerId(QString newCapturerId)
{
    if (newCapturerId.isEmpty()) {
        qCritical() << "[AbsMusicEffect]: The newCapturerId is empty.";
        return;
    }
    m_chosenId = newCapturerId;
    if (newCapturerId == m_capturerId)
        return;
    bindCapturer(newCapturerId);
    if (m_capturerId != newCapturerId)
        emit effectPropertyChanged(kCaptureId, m_capturerId);
}

void AbsMusicEffect::bindCapturer(const QString& id)
{
    if (m_capturer) {
        m_capturer->disconnect(this);
        qInfo().noquote() << "[AbsMusicEffect]:" << effectId() << "is disconnected from the" << m_capturerId;
        releaseCapturer();
        m_capturerId.clear();
    }
    AudioCapManager* manager = AudioCapManager::instance();
    m_capturerId = id;
    m_capturer = manager->acquireCapturer(m_capturerId);
    if (!m_capturer) {
        qWarning().noquote() << "[AbsMusicEffect]: Not found this audio capturer:" << m_capturerId;
        m_capturerId = manager->defaultCapturer();
        if (!m_capturerId.isEmpty())
            m_capturer = manager->acquireCapturer(m_capturerId);
        if (!m_capturer) {
            m_capturerId.clear();
            qCritical() << "The list of audio capturer is empty! ";
            return;
        }
        qInfo() << "[AbsMusicEffect]: Using default audio capturer";
    }
    connect(m_capturer.data(), &AudioCapturer::spectrumsChanged, this,
            QOverload<QVector<SoundChannel>>::of(&AbsMusicEffect::spectrumUpdate), Qt::QueuedConnection);
    connect(m_capturer.data(), &AudioCapturer::channelsPeakValuesChanged, this,
            &AbsMusicEffect::peakValuesChanged, Qt::QueuedConnection);
    qInfo().noquote() << "[AbsMusicEffect]:" << effectId() << "is connected to the" << m_capturerId;
    onCapturerBound();
    storeCapturerId();
}

void AbsMusicEffect::releaseCapturer()
{
    m_capturer.reset();
    AudioCapManager::instance()->releaseCapturer(m_capturerId);
}

void AbsMusicEffect::storeCapturerId()
{
    // Without any capturer so far the one of the last time is still the one to look for.
    const QString id = m_capturerId.isEmpty() ? m_chosenId : m_capturerId;
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectJsonValue(effectId(), controllerId(), ConfigKeys::kAudioSource.key, id);
    config->saveEffectJsonObj(effectId());
}

void AbsMusicEffect::onCapturerReady(const QString& id)
{
    const AudioCapManager* manager = AudioCapManager::instance();
    const QList<QString> capturers = manager->allCapturers();
    const bool heard = m_capturer && capturers.contains(m_capturerId);
    if (heard && (id != m_chosenId || id == m_capturerId))
        return;
    // When the sound server comes back several are announced, one by one: the chosen one goes first.
    QString best = capturers.contains(m_chosenId) ? m_chosenId : manager->defaultCapturer();
    if (best.isEmpty())
        best = id;
    bindCapturer(best);
    emit effectPropertyChanged(kCaptureId, m_capturerId);
}

void AbsMusicEffect::onCapturerFailed(const QString& id)
{
    if (!m_capturer || id != m_capturerId)
        return;
    const QString other = AudioCapManager::instance()->defaultCapturer();
    if (other.isEmpty() || other == id) {
        qInfo().noquote() << "[AbsMusicEffect]:" << effectId() << "waits for the" << id;
        return; // the capturer goes on by itself when its source is back
    }
    bindCapturer(other);
    emit effectPropertyChanged(kCaptureId, m_capturerId);
}

void AbsMusicEffect::onCapturersChanged()
{
    emit effectPropertyChanged(kCapturers, capturerList());
    emit effectPropertyChanged(kCaptureId, m_capturerId);
}

QJsonValue AbsMusicEffect::effectProperty(const QString& key)
{
    switch (hashPropertyKey(key)) {
    case hashPropertyKey(kCaptureId):
        return m_capturerId;
    case hashPropertyKey(kCapturers):
        return capturerList();
    case hashPropertyKey(""):
        return QJsonObject{{kCaptureId, m_capturerId}, {kCapturers, capturerList()}};
    default:
        return QJsonValue::Null;
    }
}

void AbsMusicEffect::setEffectProperty(const QString& key, const QJsonValue& val)
{
    switch (hashPropertyKey(key)) {
    case hashPropertyKey(kCaptureId):
        setCapturerId(val.toString());
        break;
    case hashPropertyKey(""): {
        const QJsonValue id = val.toObject().value(QLatin1String(kCaptureId));
        if (!id.isUndefined())
            setEffectProperty(kCaptureId, id);
        break;
    }
    default:
        break;
    }
}

void AbsMusicEffect::onCtlDirChanged(uint32_t dir)
{
    m_ctlOptions.installDirection = dir;
}

void AbsMusicEffect::spectrumUpdate(QVector<Spectrum>) {}
void AbsMusicEffect::spectrumUpdate(QVector<SoundChannel>) {}
void AbsMusicEffect::peakValuesChanged(QVector<QVector<QString>>) {}
void AbsMusicEffect::onCtlBrightnessChanged(float) {}
void AbsMusicEffect::onCtlKindNameChanged(QString) {}
void AbsMusicEffect::onCtlEnableChanged(bool) {}
