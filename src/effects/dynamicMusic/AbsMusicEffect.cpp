#include "effects/dynamicMusic/AbsMusicEffect.h"

#include "effects/EffectNotice.h"
#include "support/audio/AudioCapManager.h"
#include "support/config/StoredNumber.h"

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <utility>

namespace {

constexpr char kCaptureId[] = "captureId";
constexpr char kCapturers[] = "capturers";
constexpr char kNoSource[] =
    QT_TRANSLATE_NOOP("EffectNotice", "没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。");
constexpr char kNoServer[] = QT_TRANSLATE_NOOP(
    "EffectNotice", "无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。");
constexpr char kOnlySilence[] =
    QT_TRANSLATE_NOOP("EffectNotice", "已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。");
constexpr int kDarkAfterMs = 400; // a source that plays is heard sooner

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
    : WithProperties(parent)
{
    m_properties.add({
        {kCapturers, [] { return capturerList(); }, {}, EffectProperty::Place},
        {kCaptureId, [this] { return m_capturerId; },
         [this](const QJsonValue& val) { setCapturerId(val.toString()); }, EffectProperty::Place},
        {EffectNotice::kKey, [this] { return notice(); }, {}, EffectProperty::Apart},
    });
    qRegisterMetaType<QVector<SoundChannel>>("QVector<SoundChannel>");
    m_darkTimer.setSingleShot(true);
    m_darkTimer.setInterval(kDarkAfterMs);
    connect(&m_darkTimer, &QTimer::timeout, this, [this] { goDark(); });
    m_silenceTimer.setSingleShot(true);
    connect(&m_silenceTimer, &QTimer::timeout, this, &AbsMusicEffect::onSilence);
}

AbsMusicEffect::~AbsMusicEffect() = default;

int AbsMusicEffect::load(const ControlOptions& ctlOptions)
{
    m_ctlOptions = ctlOptions;
    m_quietLevel = applicationNumber(ConfigKeys::kMusicQuietLevel);
    connect(AudioCapManager::instance(), &AudioCapManager::capturersChanged, this,
            &AbsMusicEffect::onCapturersChanged);
    const QString id = ConfigurationManager::instance()
                           ->effectJsonValue(effectId(), controllerId(), ConfigKeys::kAudioSource.key)
                           .toString();
    if (id.isEmpty())
        qInfo() << "[AbsMusicEffect]: Not found the last used capturer, default capturer is being used.";
    m_darkTimer.start();
    want(id);
    if (m_capturer)
        return 0;
    if (id.isEmpty())
        qWarning().noquote() << "[AbsMusicEffect]: Not connected to any capturer, controller:"
                             << controllerId();
    tellNotice();
    return 0;
}

void AbsMusicEffect::unload()
{
    // A capturer that turns up before the worker is deleted must not be acquired: nobody would release it.
    AudioCapManager::instance()->disconnect(this);
    m_life = Life::Ended;
    if (m_capturer)
        releaseCapturer();
    m_darkTimer.stop();
    m_silenceTimer.stop();
    storeWantedId();
}

const char* AbsMusicEffect::sourceTrouble()
{
    const AudioCapManager* manager = AudioCapManager::instance();
    if (!manager->defaultCapturer().isEmpty())
        return nullptr;
    return manager->isServerThere() ? kNoSource : kNoServer;
}

QString AbsMusicEffect::notice() const
{
    if (m_capturer)
        return m_isSilent ? QString::fromUtf8(kOnlySilence) : QString();
    if (m_life != Life::Playing)
        return {};
    return QString::fromUtf8(AudioCapManager::instance()->isServerThere() ? kNoSource : kNoServer);
}

void AbsMusicEffect::tellNotice()
{
    const QString text = notice();
    if (std::exchange(m_toldNotice, text) != text)
        announce(EffectNotice::kKey);
}

void AbsMusicEffect::noteLoudness(const QVector<QVector<QString>>& peaks)
{
    const bool isSound = std::any_of(peaks.begin(), peaks.end(), [](const QVector<QString>& channel) {
        return !channel.isEmpty() && channel.first().toFloat() > 0.0F;
    });
    if (!isSound)
        return;
    m_soundClock.restart();
    if (m_isSilent)
        setSilent(false);
}

void AbsMusicEffect::onSilence()
{
    const qint64 leftMs = m_silenceMs - m_soundClock.elapsed();
    if (leftMs <= 0)
        setSilent(true);
    else
        m_silenceTimer.start(int(leftMs));
}

void AbsMusicEffect::setSilent(bool isSilent)
{
    m_isSilent = isSilent;
    m_soundClock.restart();
    if (isSilent)
        m_silenceTimer.stop();
    else
        m_silenceTimer.start(m_silenceMs);
    tellNotice();
}

void AbsMusicEffect::goDark()
{
    emit updateColors(QVector<LV_RGB>(nbLeds()));
}

void AbsMusicEffect::setCapturerId(QString newCapturerId)
{
    if (newCapturerId.isEmpty()) {
        qCritical() << "[AbsMusicEffect]: The newCapturerId is empty.";
        return;
    }
    want(newCapturerId);
    storeWantedId();
    announce(kCaptureId); // a stand-in perhaps; and what is on its way to the form may be older
}

void AbsMusicEffect::want(const QString& id)
{
    m_wantedId = id;
    const bool isMissing = !id.isEmpty() && !AudioCapManager::instance()->allCapturers().contains(id);
    if (isMissing)
        qWarning().noquote() << "[AbsMusicEffect]: Not found this audio capturer:" << id;
    bindBestCapturer();
    if (isMissing && m_capturer)
        qInfo() << "[AbsMusicEffect]: Using default audio capturer";
    else if (isMissing)
        qCritical() << "The list of audio capturer is empty! ";
}

void AbsMusicEffect::bindBestCapturer()
{
    if (m_life != Life::Playing)
        return;
    AudioCapManager* manager = AudioCapManager::instance();
    const bool isWantedThere = manager->allCapturers().contains(m_wantedId);
    // Without a loudspeaker there is no default, and nobody is to be heard by a microphone unasked.
    const QString best = isWantedThere ? m_wantedId : manager->defaultCapturer();
    if (best == m_capturerId)
        return;
    const bool wasBound = !m_capturer.isNull();
    if (wasBound)
        releaseCapturer();
    m_darkTimer.start(); // until the new source is heard, if there is one
    if (!best.isEmpty())
        m_capturer = manager->acquireCapturer(best);
    if (m_capturer)
        connectCapturer(best);
    if (m_capturer)
        setSilent(false);
    else
        m_silenceTimer.stop();
    tellNotice();
}

void AbsMusicEffect::connectCapturer(const QString& id)
{
    m_capturerId = id;
    // What a source said last may arrive when another one is bound: disconnecting takes back nothing.
    const auto isHeard = [this, from = m_capturer.data()] {
        if (m_capturer != from)
            return false;
        m_darkTimer.stop();
        return true;
    };
    connect(
        m_capturer.data(), &AudioCapturer::spectrumsChanged, this,
        [this, isHeard](const QVector<SoundChannel>& channels) {
            if (isHeard())
                spectrumUpdate(channels);
        },
        Qt::QueuedConnection);
    connect(
        m_capturer.data(), &AudioCapturer::channelsPeakValuesChanged, this,
        [this, isHeard](const QVector<QVector<QString>>& peaks) {
            if (!isHeard())
                return;
            noteLoudness(peaks);
            peakValuesChanged(peaks);
        },
        Qt::QueuedConnection);
    qInfo().noquote() << "[AbsMusicEffect]:" << effectId() << "is connected to the" << m_capturerId;
    onCapturerBound();
}

void AbsMusicEffect::releaseCapturer()
{
    m_capturer->disconnect(this);
    qInfo().noquote() << "[AbsMusicEffect]:" << effectId() << "is disconnected from the" << m_capturerId;
    m_capturer.reset();
    AudioCapManager::instance()->releaseCapturer(m_capturerId);
    m_capturerId.clear();
}

void AbsMusicEffect::storeWantedId()
{
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectJsonValue(effectId(), controllerId(), ConfigKeys::kAudioSource.key, m_wantedId);
    config->saveEffectJsonObj(effectId());
}

void AbsMusicEffect::onCapturersChanged()
{
    bindBestCapturer();
    announce(kCapturers);
    announce(kCaptureId);
    tellNotice();
}

void AbsMusicEffect::announce(const char* key)
{
    emit effectPropertyChanged(key, effectProperty(key));
}

void AbsMusicEffect::onCtlDarkChanged(bool dark)
{
    if (m_life == Life::Ended) // it was on its way when the effect was changed
        return;
    m_life = dark ? Life::Resting : Life::Playing;
    if (!dark) {
        m_darkTimer.start();
        return onCapturersChanged();
    }
    m_darkTimer.stop();
    m_silenceTimer.stop();
    if (m_capturer)
        releaseCapturer();
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
