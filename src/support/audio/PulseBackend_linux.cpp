#include "support/audio/PulseBackend_linux.h"

#include "support/audio/AudioCapturer.h"
#include "support/audio/PulseRecorder_linux.h"
#include "support/crash/CrashStack.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <algorithm>
#include <csignal>
#include <pulse/context.h>
#include <pulse/def.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/subscribe.h>
#include <pulse/thread-mainloop.h>
#include <utility>

namespace {
constexpr int kFirstLookMs = 1000;

constexpr auto kNewsMask = pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);

pa_context* createContext(pa_threaded_mainloop* loop)
{
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, "Lumivar");
    pa_context* context =
        pa_context_new_with_proplist(pa_threaded_mainloop_get_api(loop), nullptr, properties);
    pa_proplist_free(properties);
    return context;
}

/// For a crash in it. The library blocks all signals there, that of its own end for lack of memory as well.
void prepareThread()
{
    installCrashStackForThread();
    sigset_t own;
    sigemptyset(&own);
    sigaddset(&own, SIGQUIT);
    pthread_sigmask(SIG_UNBLOCK, &own, nullptr);
}

/// Started and forgotten; the answer comes by callback. Null after a failure, which ends the connection.
void forget(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}
} // namespace

/// Keeps the library's thread out.
class PulseBackend::Lock
{
public:
    explicit Lock(const PulseBackend& backend)
        : m_loop(backend.m_loop)
    {
        pa_threaded_mainloop_lock(m_loop);
    }
    ~Lock() { pa_threaded_mainloop_unlock(m_loop); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    pa_threaded_mainloop* const m_loop;
};

std::unique_ptr<PulseBackend> PulseBackend::create()
{
    pa_threaded_mainloop* loop = pa_threaded_mainloop_new();
    return loop ? std::unique_ptr<PulseBackend>(new PulseBackend(loop)) : nullptr;
}

PulseBackend::PulseBackend(pa_threaded_mainloop* loop)
    : m_retry(this)
    , m_loop(loop)
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &PulseBackend::onRetry);
    // Out of the callback that tells of it nothing can be torn down.
    connect(this, &PulseBackend::failed, this, &PulseBackend::onFailed, Qt::QueuedConnection);
    pa_threaded_mainloop_set_name(m_loop, "audio capture");
    pa_mainloop_api_once(
        pa_threaded_mainloop_get_api(m_loop), [](pa_mainloop_api*, void*) { prepareThread(); }, nullptr);
    connectToServer();
    startLoop();
    if (m_isRunning)
        m_firstLook.tryAcquire(1, kFirstLookMs);
}

void PulseBackend::startLoop()
{
    m_isRunning = pa_threaded_mainloop_start(m_loop) == 0;
    if (!m_isRunning)
        qWarning() << "[AudioCapManager]: The system has no thread to spare for the sound";
}

PulseBackend::~PulseBackend()
{
    {
        const Lock lock(*this);
        dropConnection();
        m_recorders.clear();
    }
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

AudioSources PulseBackend::sources() const
{
    const Lock lock(*this);
    return m_sources;
}

bool PulseBackend::isServerThere() const
{
    const Lock lock(*this);
    return m_isThere;
}

void PulseBackend::attach(const QSharedPointer<AudioCapturer>& capturer)
{
    if (!m_isRunning) // there may be a thread for it by now
        startLoop();
    const Lock lock(*this);
    auto& recorder = m_recorders[capturer.data()];
    recorder = std::make_unique<PulseRecorder>(capturer, [this] { emit failed(); });
    retarget(*recorder);
}

void PulseBackend::detach(const QSharedPointer<AudioCapturer>& capturer)
{
    const Lock lock(*this);
    m_recorders.erase(capturer.data());
}

void PulseBackend::retryNow()
{
    {
        const Lock lock(*this);
        m_pause.reset();
    }
    if (m_retry.isActive())
        m_retry.start(0);
}

void PulseBackend::onFailed()
{
    bool listChanged = false;
    int waitMs = 0;
    {
        const Lock lock(*this);
        // A server that has left a question unanswered for half a minute may answer the next one never or
        // carry out the old one after all: it is hung up on.
        if (!m_context || !PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context)) ||
            pa_context_errno(m_context) == PA_ERR_TIMEOUT) {
            dropConnection();
            if (!std::exchange(m_saidAbsent, true)) {
                qWarning() << (m_wasConnected
                                   ? "[AudioCapManager]: The connection to the sound server is lost"
                                   : "[AudioCapManager]: There is no sound server, waiting for one");
            }
            listChanged = std::exchange(m_isThere, false) || !m_sources.isEmpty();
            m_sources.clear();
        }
        waitMs = m_pause.next(QDeadlineTimer::current().deadline());
    }
    if (listChanged)
        emit sourcesChanged();
    if (!m_retry.isActive())
        m_retry.start(waitMs);
}

void PulseBackend::onRetry()
{
    const Lock lock(*this);
    if (!m_context) {
        connectToServer();
    } else if (isConnected()) {
        for (const auto& recorder : m_recorders)
            recorder.second->dropFailed();
        list(); // and what failed is tried again if its source is still there
    }
}

void PulseBackend::connectToServer()
{
    m_context = createContext(m_loop);
    if (!m_context) {
        emit failed();
        return;
    }
    pa_context_set_state_callback(m_context, &PulseBackend::onContextState, this);
    pa_context_set_subscribe_callback(
        m_context,
        [](pa_context*, pa_subscription_event_type_t, uint32_t, void* backend) {
            static_cast<PulseBackend*>(backend)->list();
        },
        this);
    // A failure comes through the state callback as well. No server is started: that is the desktop's affair.
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
}

void PulseBackend::dropConnection()
{
    for (const auto& recorder : m_recorders)
        recorder.second->stop();
    m_listing = Listing();
    if (!m_context)
        return;
    pa_context_set_state_callback(m_context, nullptr, nullptr);
    pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
    pa_context_disconnect(m_context);
    pa_context_unref(m_context);
    m_context = nullptr;
}

bool PulseBackend::isConnected() const
{
    return m_context && pa_context_get_state(m_context) == PA_CONTEXT_READY;
}

void PulseBackend::list()
{
    m_listing.isOutdated = true;
    if (m_listing.isUnderWay)
        return;
    m_listing = Listing();
    m_listing.isUnderWay = true;
    forget(pa_context_get_server_info(m_context, &PulseBackend::onServerInfo, this));
}

void PulseBackend::finishListing()
{
    m_listing.isUnderWay = false;
    if (m_listing.isOutdated) { // several things change at once
        list();
        return;
    }
    // The default first, the others in the server's order. When the default loudspeaker goes, the server may
    // know for a moment of none.
    AudioSources& found = m_listing.sources;
    const auto preferred = std::find_if(found.cbegin(), found.cend(),
                                        [](const AudioSource& source) { return source.isDefault; });
    const int first = preferred == found.cend() ? m_listing.firstMonitor : int(preferred - found.cbegin());
    if (first >= 0) {
        found[first].isDefault = true;
        found.move(first, 0);
    }
    const bool changed = m_listing.sources != m_sources;
    if (changed)
        m_pause.reset();
    m_sources = m_listing.sources;
    m_rates = m_listing.rates;
    for (const auto& recorder : m_recorders)
        retarget(*recorder.second);
    const bool isNew = !std::exchange(m_isThere, true);
    m_firstLook.release();
    if (changed || isNew)
        emit sourcesChanged();
}

void PulseBackend::failListing()
{
    m_listing = Listing();
    emit failed();
}

void PulseBackend::retarget(PulseRecorder& recorder)
{
    const QString& id = recorder.capturer().id();
    const bool followsDefault = id == QLatin1String(kDefaultCapturerId);
    const auto it = std::find_if(m_sources.cbegin(), m_sources.cend(), [&](const AudioSource& source) {
        return followsDefault ? source.isDefault : source.id == id;
    });
    if (isConnected() && it != m_sources.cend())
        recorder.record(m_context, it->id.toUtf8(), m_rates.value(it->id));
    else
        recorder.stop();
}

void PulseBackend::onContextState(pa_context* context, void* backend)
{
    auto* self = static_cast<PulseBackend*>(backend);
    const pa_context_state_t state = pa_context_get_state(context);
    if (state == PA_CONTEXT_READY) {
        qInfo() << "[AudioCapManager]: Connected to the sound server";
        self->m_wasConnected = true;
        self->m_saidAbsent = false;
        forget(pa_context_subscribe(context, kNewsMask, nullptr, nullptr));
        self->list();
    } else if (!PA_CONTEXT_IS_GOOD(state)) {
        self->m_firstLook.release();
        emit self->failed();
    }
}

void PulseBackend::onServerInfo(pa_context* context, const pa_server_info* info, void* backend)
{
    auto* self = static_cast<PulseBackend*>(backend);
    if (!info) {
        self->failListing();
        return;
    }
    self->m_listing.defaultSink = info->default_sink_name;
    forget(pa_context_get_source_info_list(context, &PulseBackend::onSourceInfo, self));
}

void PulseBackend::onSourceInfo(pa_context*, const pa_source_info* info, int end, void* backend)
{
    auto* self = static_cast<PulseBackend*>(backend);
    if (end < 0) {
        self->failListing();
        return;
    }
    if (end > 0) {
        self->finishListing();
        return;
    }
    AudioSource source;
    source.id = QString::fromUtf8(info->name);
    source.name = QString::fromUtf8(info->description);
    source.isDefault =
        info->monitor_of_sink_name && self->m_listing.defaultSink == info->monitor_of_sink_name;
    if (info->monitor_of_sink_name && self->m_listing.firstMonitor < 0)
        self->m_listing.firstMonitor = self->m_listing.sources.size();
    self->m_listing.rates[source.id] = int(info->sample_spec.rate);
    self->m_listing.sources += source;
}
