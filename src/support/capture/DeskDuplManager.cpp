#include "support/capture/DeskDuplManager.h"

#include "support/capture/CaptureBackend.h"
#include "support/capture/DeskCapture.h"
#include "support/capture/DeskCaptureOption.h"
#include "support/capture/NullCaptureBackend.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>

namespace {
QStringList namesOf(const QList<CaptureMode>& modes)
{
    QStringList names;
    for (const CaptureMode& mode : modes)
        names += mode.name;
    return names;
}

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
    , m_option(new DeskCaptureOption(namesOf(modes), this))
{
    createBackend(m_option->curMode());
    m_sources = m_backend->sources();
    connect(m_option, &DeskCaptureOption::curModeChanged, this, &DeskDuplManager::onCurModeChanged);
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
    const int index = indexOf(id);
    if (index < 0) {
        qWarning() << "[DeskDuplManager]: There is no capturer" << id;
        return {};
    }
    Shared& shared = m_shared[id];
    if (!shared.capture) {
        shared.capture = QSharedPointer<DeskCapture>::create(id, m_sources[index].geometry.size());
        m_backend->attach(shared.capture);
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
    m_backend->detach(it->capture);
    m_shared.erase(it);
}

QString DeskDuplManager::capturerDesc(QString id)
{
    const std::lock_guard lock(m_mutex);
    const int index = indexOf(id);
    if (index < 0)
        return QString();
    const CaptureSource& source = m_sources[index];
    const QString text = source.primary ? tr("%1 (%2 × %3, 主屏幕)") : tr("%1 (%2 × %3)");
    return text.arg(source.name).arg(source.geometry.width()).arg(source.geometry.height());
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
    const CaptureSources found = m_backend->sources();
    QStringList before;
    bool changed = false;
    {
        const std::lock_guard lock(m_mutex);
        before = idsOf(m_sources);
        changed = m_sources != found;
        m_sources = found;
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
        for (const Shared& shared : qAsConst(m_shared))
            m_backend->detach(shared.capture);
        createBackend(mode);
        for (const Shared& shared : qAsConst(m_shared))
            m_backend->attach(shared.capture);
    }
    onSourcesChanged();
}

void DeskDuplManager::createBackend(int mode)
{
    m_backend.reset();
    if (mode < m_modes.size())
        m_backend = m_modes[mode].create();
    if (!m_backend)
        m_backend = std::make_unique<NullCaptureBackend>();
    connect(m_backend.get(), &CaptureBackend::sourcesChanged, this, &DeskDuplManager::onSourcesChanged);
}

int DeskDuplManager::indexOf(const QString& id) const
{
    for (int i = 0; i < m_sources.size(); ++i) {
        if (m_sources[i].id == id)
            return i;
    }
    return -1;
}
