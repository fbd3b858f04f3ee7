#include "support/audio/AudioCapManager.h"

#include "support/audio/AnalysisThread.h"
#include "support/audio/AudioBackend.h"
#include "support/audio/NullAudioBackend.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <utility>

namespace {
std::atomic<AudioCapManager*> s_instance{nullptr};

const AudioSource* find(const AudioSources& sources, const QString& id)
{
    const bool isDefault = id == QLatin1String(kDefaultCapturerId);
    const auto it = std::find_if(sources.begin(), sources.end(), [&](const AudioSource& source) {
        return isDefault ? source.isDefault : source.id == id;
    });
    return it == sources.end() ? nullptr : &*it;
}
} // namespace

AudioCapManager* AudioCapManager::instance()
{
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    if (!s_instance) {
        auto* created = new AudioCapManager(createAudioBackend());
        if (QCoreApplication::instance())
            created->moveToThread(QCoreApplication::instance()->thread());
        qAddPostRoutine([] { delete s_instance.load(); });
    }
    return s_instance;
}

void AudioCapManager::reconnect()
{
    if (s_instance)
        s_instance.load()->m_backend->retryNow();
}

AudioCapManager::AudioCapManager(std::unique_ptr<AudioBackend> backend, int lingerMs)
    : m_lingerMs(lingerMs)
    , m_analysis(std::make_unique<AnalysisThread>())
    , m_backend(backend ? std::move(backend) : std::make_unique<NullAudioBackend>())
{
    m_backend->setParent(this); // follows to another thread
    connect(m_backend.get(), &AudioBackend::sourcesChanged, this, &AudioCapManager::onSourcesChanged,
            Qt::QueuedConnection);
    // Of the application alone: who is no widget is not told of another language. Queued, because only its
    // own thread may do it.
    QMetaObject::invokeMethod(
        this, [this] { QCoreApplication::instance()->installEventFilter(this); }, Qt::QueuedConnection);
    m_isServerThere = m_backend->isServerThere();
    m_sources = m_backend->sources(); // last, so that no change slips in between
    AudioCapManager* none = nullptr;
    s_instance.compare_exchange_strong(none, this);
}

AudioCapManager::~AudioCapManager()
{
    AudioCapManager* self = this;
    s_instance.compare_exchange_strong(self, nullptr);
    m_backend.reset();
    m_analysis.reset();
}

QList<QString> AudioCapManager::allCapturers() const
{
    const std::lock_guard lock(m_mutex);
    QList<QString> ids;
    if (find(m_sources, QLatin1String(kDefaultCapturerId)))
        ids += QLatin1String(kDefaultCapturerId);
    for (const AudioSource& source : m_sources)
        ids += source.id;
    return ids;
}

bool AudioCapManager::isServerThere() const
{
    const std::lock_guard lock(m_mutex);
    return m_isServerThere;
}

QString AudioCapManager::defaultCapturer() const
{
    const std::lock_guard lock(m_mutex);
    const QString id = QLatin1String(kDefaultCapturerId);
    return find(m_sources, id) ? id : QString();
}

QSharedPointer<AudioCapturer> AudioCapManager::acquireCapturer(const QString& id)
{
    const std::lock_guard lock(m_mutex);
    if (!find(m_sources, id)) {
        qWarning() << "[AudioCapManager]: There is no capturer" << id;
        return {};
    }
    Shared& shared = m_shared[id];
    if (!shared.capturer) {
        // The last reference may go in any thread.
        shared.capturer = QSharedPointer<AudioCapturer>(new AudioCapturer(id), &QObject::deleteLater);
        shared.capturer->moveToThread(thread());
        m_analysis->add(shared.capturer);
        m_backend->attach(shared.capturer);
    }
    ++shared.users;
    return shared.capturer;
}

void AudioCapManager::releaseCapturer(const QString& id)
{
    const std::lock_guard lock(m_mutex);
    const auto it = m_shared.find(id);
    if (it == m_shared.end() || it->users == 0) {
        qWarning() << "[AudioCapManager]: Nobody holds the capturer" << id;
        return;
    }
    if (--it->users > 0)
        return;
    it->release = ++m_releases;
    const auto end = [this, id, release = it->release] { endUnused(id, release); };
    QMetaObject::invokeMethod(this, [this, end] { QTimer::singleShot(m_lingerMs, this, end); });
}

void AudioCapManager::endUnused(const QString& id, quint64 release)
{
    const std::lock_guard lock(m_mutex);
    const auto it = m_shared.find(id);
    if (it == m_shared.end() || it->users > 0 || it->release != release) // it has been taken up since
        return;
    m_backend->detach(it->capturer);
    m_analysis->remove(it->capturer);
    m_shared.erase(it);
}

QString AudioCapManager::capturerDesc(const QString& id) const
{
    const std::lock_guard lock(m_mutex);
    const AudioSource* source = find(m_sources, id);
    if (!source)
        return QString();
    return id == QLatin1String(kDefaultCapturerId) ? tr("默认输出 (%1)").arg(source->name) : source->name;
}

bool AudioCapManager::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && watched == QCoreApplication::instance())
        emit capturersChanged();
    return QObject::eventFilter(watched, event);
}

void AudioCapManager::onSourcesChanged()
{
    {
        const std::lock_guard lock(m_mutex);
        AudioSources sources = m_backend->sources();
        const bool isThere = m_backend->isServerThere();
        if (sources == m_sources && isThere == m_isServerThere)
            return;
        m_isServerThere = isThere;
        m_sources = std::move(sources);
    }
    emit capturersChanged();
}
