#include "support/audio/WasapiBackend.h"

#include "support/audio/AudioCapturer.h"
#include "support/audio/RetryPause.h"
#include "support/audio/WasapiStream.h"
#include "support/crash/CrashStack.h"

#include <QDebug>
#include <algorithm>
#include <system_error>

namespace {
constexpr int kFirstLookMs = 1000;
constexpr DWORD kPollMs = 10;
constexpr DWORD kQuietPollMs = 40; // a fifth of what the system keeps for us
constexpr DWORD kNoServiceMs = 2400;

qint64 nowMs()
{
    return qint64(GetTickCount64());
}

bool isFor(const AudioCapturer& capturer, const AudioSource& source)
{
    return capturer.id() == QLatin1String(kDefaultCapturerId) ? source.isDefault : source.id == capturer.id();
}
} // namespace

WasapiBackend::WasapiBackend(QObject* parent)
    : AudioBackend(parent)
    , m_wakeEvent(CreateEventW(nullptr, FALSE, FALSE, nullptr))
{
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error& error) {
        qWarning() << "[AudioCapManager]: The system has no thread to spare for the sound:" << error.what();
        return;
    }
    m_firstLook.tryAcquire(1, kFirstLookMs);
}

WasapiBackend::~WasapiBackend()
{
    m_stop = true;
    wake();
    if (m_thread.joinable())
        m_thread.join();
    CloseHandle(m_wakeEvent);
}

AudioSources WasapiBackend::sources() const
{
    const std::lock_guard lock(m_mutex);
    return m_sources;
}

void WasapiBackend::attach(const QSharedPointer<AudioCapturer>& capturer)
{
    {
        const std::lock_guard lock(m_mutex);
        m_capturers += capturer;
    }
    wake();
}

void WasapiBackend::detach(const QSharedPointer<AudioCapturer>& capturer)
{
    {
        const std::lock_guard lock(m_mutex);
        m_capturers.removeAll(capturer);
    }
    wake();
}

void WasapiBackend::retryNow()
{
    m_isHurried = true;
    wake();
}

void WasapiBackend::wake()
{
    SetEvent(m_wakeEvent);
}

void WasapiBackend::run()
{
    installCrashStackForThread();
    const bool hasApartment = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
    work();
    if (hasApartment)
        CoUninitialize();
}

void WasapiBackend::work()
{
    WasapiEndpoints endpoints([this] {
        m_isOutdated = true;
        wake();
    });
    Known known;
    Streams streams;
    RetryPause pause;
    qint64 retryMs = 0; // when to try again what could not be opened or has ended; 0 for no need
    while (!m_stop) {
        if (!endpoints.isOpen() && !endpoints.open()) {
            if (m_isThere.exchange(false)) {
                qWarning() << "[AudioCapManager]: There is no sound system to listen to";
                emit sourcesChanged();
            }
            m_firstLook.release();
            WaitForSingleObject(m_wakeEvent, kNoServiceMs);
            continue;
        }
        if (!m_isThere.exchange(true))
            emit sourcesChanged();
        if (m_isHurried.exchange(false)) {
            pause.reset();
            retryMs = retryMs > 0 ? nowMs() : 0;
        }
        bool isDue = retryMs > 0 && nowMs() >= retryMs;
        if (m_isOutdated.exchange(false) || isDue) { // what cannot be opened may be gone
            known = endpoints.list();
            if (publish(known)) {
                pause.reset();
                isDue = true;
            }
        }
        if (matchStreams(streams) || isDue) // whoever is new does not wait for the others
            retryMs = steer(streams, known) ? 0 : nowMs() + pause.next(nowMs());
        if (known.isEmpty()) {
            // No devices, or no sound service: one that has been stopped does not call back when it is back.
            endpoints.close();
            m_isOutdated = true;
            WaitForSingleObject(m_wakeEvent, kNoServiceMs);
            continue;
        }
        bool isRecording = false, isHeard = false;
        for (const auto& stream : streams) {
            if (stream->isOpen() && !stream->takeSamples() && retryMs == 0)
                retryMs = nowMs() + pause.next(nowMs());
            isRecording = isRecording || stream->isOpen();
            isHeard = isHeard || (stream->isOpen() && !stream->isQuiet());
        }
        const DWORD untilRetryMs = retryMs > 0 ? DWORD(std::max<qint64>(retryMs - nowMs(), 0)) : INFINITE;
        const DWORD pollMs = isHeard ? kPollMs : kQuietPollMs;
        WaitForSingleObject(m_wakeEvent, isRecording ? pollMs : untilRetryMs);
    }
}

bool WasapiBackend::publish(const Known& known)
{
    AudioSources sources;
    for (const WasapiEndpoints::Endpoint& endpoint : known)
        sources += endpoint.source;
    bool isChanged = false;
    {
        const std::lock_guard lock(m_mutex);
        isChanged = sources != m_sources;
        m_sources = sources;
    }
    m_firstLook.release();
    if (isChanged)
        emit sourcesChanged();
    return isChanged;
}

bool WasapiBackend::matchStreams(Streams& streams) const
{
    bool anyNew = false;
    const std::lock_guard lock(m_mutex);
    const auto isGone = [this](const std::unique_ptr<WasapiStream>& stream) {
        return std::none_of(m_capturers.begin(), m_capturers.end(),
                            [&](const auto& capturer) { return capturer.data() == &stream->capturer(); });
    };
    streams.erase(std::remove_if(streams.begin(), streams.end(), isGone), streams.end());
    for (const QSharedPointer<AudioCapturer>& capturer : m_capturers) {
        const bool isKnown = std::any_of(streams.begin(), streams.end(), [&](const auto& stream) {
            return &stream->capturer() == capturer.data();
        });
        if (!isKnown)
            streams.push_back(std::make_unique<WasapiStream>(capturer));
        anyNew = anyNew || !isKnown;
    }
    return anyNew;
}

bool WasapiBackend::steer(const Streams& streams, const Known& known)
{
    bool good = true;
    for (const std::unique_ptr<WasapiStream>& stream : streams) {
        const auto wanted = std::find_if(known.begin(), known.end(), [&](const auto& endpoint) {
            return isFor(stream->capturer(), endpoint.source);
        });
        if (wanted == known.end())
            stream->close();
        else if (stream->endpoint() != wanted->source.id)
            good = stream->open(wanted->device.Get(), wanted->source.id, wanted->isLoudspeaker) && good;
    }
    return good;
}
