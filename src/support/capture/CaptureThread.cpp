#include "support/capture/CaptureThread.h"

#include "support/ThreadStart.h"
#include "support/capture/DeskCapture.h"
#include "support/capture/ScreenGrabber.h"
#include "support/crash/CrashStack.h"

#include <QDebug>
#include <exception>
#include <utility>

namespace {
constexpr qint64 kLookUs = 2000000; // between two tries to open, and between two looks at the sources
constexpr qint64 kNearUs = 200;     // not worth a wait of its own
constexpr int kFirstLookMs = 1000;
constexpr unsigned long kEndMs = 500;

void tell(DeskCapture& capture, const CaptureSources& sources)
{
    if (const CaptureSource* source = findSource(sources, capture.id()))
        capture.setSource(source->geometry.size());
    else
        capture.setLost();
}
} // namespace

CaptureThread::CaptureThread(std::shared_ptr<ScreenGrabber> grabber)
    : m_grabber(std::move(grabber))
{
    setObjectName(QStringLiteral("capture"));
}

CaptureThread::~CaptureThread()
{
    for (const QSharedPointer<DeskCapture>& capture : captures())
        detach(capture);
    m_stop = true;
    m_grabber->wake();
    end();
    if (!m_ended)
        qWarning() << "[DeskDuplManager]: The capture thread did not end by itself";
}

void CaptureThread::end()
{
    if (wait(kEndMs))
        return;
    m_grabber->abort();
    if (wait(kEndMs))
        return;
    // Even a system that answers nothing at all must not hold the program's exit up.
    terminate();
    wait();
}

void CaptureThread::begin()
{
    m_ended = !startThread(*this);
    if (!m_ended)
        m_firstLook.tryAcquire(1, kFirstLookMs);
}

CaptureSources CaptureThread::sources() const
{
    const std::lock_guard lock(m_mutex);
    return m_sources;
}

SourceTrouble CaptureThread::trouble() const
{
    const std::lock_guard lock(m_mutex);
    return m_trouble;
}

void CaptureThread::request(SourceRequest request)
{
    m_grabber->request(request);
    m_isWanted = true;
    if (m_ended) // there may be a thread for it by now
        begin();
    m_grabber->wake();
}

void CaptureThread::attach(const QSharedPointer<DeskCapture>& capture)
{
    capture->setGrabber(m_grabber);
    if (m_ended) // there may be a thread for it by now
        begin();
    {
        const std::lock_guard lock(m_mutex);
        m_captures += capture;
        tell(*capture, m_sources);
    }
    m_grabber->wake();
}

void CaptureThread::detach(const QSharedPointer<DeskCapture>& capture)
{
    const std::lock_guard lock(m_mutex);
    m_captures.removeAll(capture);
    capture->setGrabber(nullptr);
    capture->setLost();
}

void CaptureThread::run()
{
    installCrashStackForThread();
    qint64 nextLookUs = 0;
    while (!m_stop) {
        const qint64 now = DeskCapture::nowUs();
        const bool shouldLook =
            m_grabber->takeSourcesChanged() || m_isWanted.exchange(false) || now >= nextLookUs;
        if (now >= nextLookUs)
            nextLookUs = now + kLookUs;
        if (shouldLook && (m_grabber->isOpen() || openGrabber()))
            look();
        else if (shouldLook)
            setSources({}); // the reason may be another
        if (m_firstLook.available() == 0)
            m_firstLook.release();

        qint64 wakeUs = nextLookUs;
        if (m_grabber->isOpen()) {
            const qint64 due = grabWhatIsDue();
            wakeUs = due < 0 ? wakeUs : qMin(wakeUs, due);
        }
        if (!m_grabber->isOpen() && !sources().isEmpty()) {
            qWarning() << "[DeskDuplManager]: The connection to the display is lost";
            m_grabber->close();
            setSources({});
        }
        const qint64 waitUs = wakeUs - DeskCapture::nowUs();
        if (waitUs > 0 && !m_stop)
            m_grabber->wait(std::chrono::microseconds(waitUs));
    }
    m_grabber->close();
    m_ended = true;
}

QList<QSharedPointer<DeskCapture>> CaptureThread::captures() const
{
    const std::lock_guard lock(m_mutex);
    return m_captures;
}

bool CaptureThread::openGrabber()
{
    m_grabber->close();
    if (!m_grabber->open())
        return false;
    qInfo() << "[DeskDuplManager]: Connected to the display";
    return true;
}

void CaptureThread::look()
{
    const CaptureSources found = m_grabber->sources();
    if (m_grabber->isOpen())
        setSources(found);
}

void CaptureThread::setSources(const CaptureSources& sources)
{
    const SourceTrouble trouble = sources.isEmpty() ? m_grabber->trouble() : SourceTrouble::None;
    {
        const std::lock_guard lock(m_mutex);
        if (sources == m_sources && trouble == m_trouble)
            return;
        m_sources = sources;
        m_trouble = trouble;
        for (const QSharedPointer<DeskCapture>& capture : qAsConst(m_captures))
            tell(*capture, sources);
    }
    emit sourcesChanged();
}

qint64 CaptureThread::grabWhatIsDue()
{
    qint64 earliest = -1;
    for (const QSharedPointer<DeskCapture>& capture : captures()) {
        qint64 due = nextGrabUs(*capture);
        if (due >= 0 && due <= DeskCapture::nowUs() + kNearUs) {
            grab(*capture, due);
            due = nextGrabUs(*capture);
        }
        if (due >= 0)
            earliest = earliest < 0 ? due : qMin(earliest, due);
    }
    return earliest;
}

qint64 CaptureThread::nextGrabUs(DeskCapture& capture)
{
    bool tellsOfChange = false;
    if (capture.isAwaited()) {
        const CaptureSources all = sources();
        const CaptureSource* source = findSource(all, capture.id());
        tellsOfChange = source && m_grabber->tellsOfChange(*source);
    }
    return capture.nextGrabUs(tellsOfChange);
}

void CaptureThread::grab(DeskCapture& capture, qint64 dueUs)
{
    cv::Mat frame;
    const CaptureSources all = sources();
    if (const CaptureSource* source = findSource(all, capture.id())) {
        try {
            m_grabber->grab(*source, capture.outputSize(), capture.needsNewFrame(), frame);
            m_grabFails = false;
        } catch (const std::exception& error) { // no memory perhaps, and later there is some
            if (!std::exchange(m_grabFails, true))
                qWarning() << "[DeskDuplManager]: The screen cannot be grabbed:" << error.what();
        }
    }
    capture.finishGrab(frame, dueUs);
}
