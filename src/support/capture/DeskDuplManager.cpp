#include "support/capture/DeskDuplManager.h"

#include "support/capture/CaptureThread.h"
#include "support/capture/DeskCapture.h"
#include "support/capture/DeskCaptureOption.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>

namespace {
QStringList idsOf(const CaptureSources& sources)
{
    QStringList ids;
    for (const CaptureSource& source : sources)
        ids += source.id;
    return ids;
}
} // namespace

DeskDuplManager::DeskDuplManager(QObject* parent)
    : DeskDuplManager(captureModes(), parent)
{
}

DeskDuplManager::DeskDuplManager(const QList<CaptureMode>& modes, QObject* parent)
    : IDeskDuplManager(parent)
    , m_modes(modes)
{
    const DeskCaptureOption* option = DeskCaptureOption::current();
    if (!option)
        option = new DeskCaptureOption(modes, this);
    startThread(option->curMode());
    m_sources = currentSources();
    m_trouble = currentTrouble();
    connect(option, &DeskCaptureOption::curModeChanged, this, &DeskDuplManager::onCurModeChanged);
    if (qApp)
        qApp->installEventFilter(this);
}

DeskDuplManager::~DeskDuplManager() = default;

QList<QString> DeskDuplManager::allCapturer()
{
    const std::lock_guard lock(m_mutex);
    return idsOf(m_sources);
}

QString DeskDuplManager::defaultCapturer()
{
    const std::lock_guard lock(m_mutex);
    return m_sources.isEmpty() ? QString() : m_sources.first().id;
}

QSharedPointer<IDeskCapture> DeskDuplManager::acquireCapturer(QString id)
{
    const std::lock_guard lock(m_mutex);
    const CaptureSource* source = findSource(m_sources, id);
    if (!source) {
        qWarning() << "[DeskDuplManager]: There is no capturer" << id;
        return {};
    }
    Shared& shared = m_shared[id];
    if (!shared.capture) {
        shared.capture = QSharedPointer<DeskCapture>::create(id, source->geometry.size());
        if (m_thread)
            m_thread->attach(shared.capture);
    }
    ++shared.users;
    return shared.capture;
}

void DeskDuplManager::releaseCapturer(QString id)
{
    const std::lock_guard lock(m_mutex);
    const auto it = m_shared.find(id);
    if (it == m_shared.end()) {
        qWarning() << "[DeskDuplManager]: Nobody holds the capturer" << id;
        return;
    }
    if (--it->users > 0)
        return;
    if (m_thread)
        m_thread->detach(it->capture);
    m_shared.erase(it);
}

QString DeskDuplManager::capturerDesc(QString id)
{
    const std::lock_guard lock(m_mutex);
    const CaptureSource* source = findSource(m_sources, id);
    if (!source)
        return QString();
    const QString text = source->primary ? tr("%1 (%2 × %3, 主屏幕)") : tr("%1 (%2 × %3)");
    return text.arg(source->name).arg(source->geometry.width()).arg(source->geometry.height());
}

void DeskDuplManager::requestSources(SourceRequest request)
{
    QMetaObject::invokeMethod(this, [this, request] {
        if (m_thread)
            m_thread->request(request);
    });
}

SourceTrouble DeskDuplManager::sourceTrouble()
{
    const std::lock_guard lock(m_mutex);
    return m_trouble;
}

bool DeskDuplManager::isOfPresentMode(const QString& id)
{
    const std::lock_guard lock(m_mutex);
    QString prefix;
    for (const CaptureMode& mode : m_modes) {
        if (id.startsWith(mode.idPrefix) && mode.idPrefix.size() > prefix.size())
            prefix = mode.idPrefix;
    }
    return prefix == m_idPrefix;
}

bool DeskDuplManager::eventFilter(QObject* watched, QEvent* event)
{
    // The application itself hears of a new language first, when the texts are there already.
    if (watched == qApp && event->type() == QEvent::LanguageChange)
        emit capturersChanged();
    return IDeskDuplManager::eventFilter(watched, event);
}

void DeskDuplManager::onSourcesChanged()
{
    const CaptureSources found = currentSources();
    const SourceTrouble trouble = currentTrouble();
    QStringList before;
    bool changed = false;
    {
        const std::lock_guard lock(m_mutex);
        before = idsOf(m_sources);
        changed = m_sources != found || m_trouble != trouble;
        m_sources = found;
        m_trouble = trouble;
    }
    const QStringList after = idsOf(found);
    // The list is new before anybody hears of it: who lost a source asks for the default at once.
    for (const QString& id : before) {
        if (!after.contains(id))
            emit capturerFailed(id);
    }
    for (const QString& id : after) {
        if (!before.contains(id))
            emit capturerReady(id);
    }
    if (changed)
        emit capturersChanged();
}

void DeskDuplManager::onCurModeChanged(int mode)
{
    {
        const std::lock_guard lock(m_mutex);
        startThread(mode);
        for (const Shared& shared : qAsConst(m_shared)) {
            if (m_thread)
                m_thread->attach(shared.capture);
        }
    }
    onSourcesChanged();
    emit modeChanged();
}

void DeskDuplManager::startThread(int mode)
{
    m_thread.reset();
    const CaptureMode present = m_modes.value(mode);
    m_idPrefix = present.idPrefix;
    const std::shared_ptr<ScreenGrabber> grabber = present.create ? present.create() : nullptr;
    if (!grabber) {
        qWarning() << "[DeskDuplManager]: There is no display to capture from";
        return;
    }
    m_thread = std::make_unique<CaptureThread>(grabber);
    connect(m_thread.get(), &CaptureThread::sourcesChanged, this, &DeskDuplManager::onSourcesChanged,
            Qt::QueuedConnection);
    m_thread->begin();
}

CaptureSources DeskDuplManager::currentSources() const
{
    return m_thread ? m_thread->sources() : CaptureSources();
}

SourceTrouble DeskDuplManager::currentTrouble() const
{
    return m_thread ? m_thread->trouble() : SourceTrouble::NoDisplay;
}
