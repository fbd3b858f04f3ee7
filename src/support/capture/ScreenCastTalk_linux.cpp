#include "support/capture/ScreenCastTalk_linux.h"

#include "support/Portal_linux.h"
#include "support/capture/ScreenCastStreams_linux.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QDebug>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {
const QString kScreenCast = QStringLiteral("org.freedesktop.portal.ScreenCast");
constexpr uint kMonitors = 1;
constexpr uint kHiddenCursor = 1;
constexpr uint kUntilRevoked = 2;
} // namespace

ScreenCastTalk::ScreenCastTalk(const QString& token, int answerMs, QObject* parent)
    : QObject(parent)
    , m_token(token)
    , m_answerMs(answerMs)
{
    greet();
}

ScreenCastTalk::~ScreenCastTalk()
{
    if (!m_session.isEmpty())
        Portal::close(Portal::kSession, m_session);
}

void ScreenCastTalk::greet()
{
    Portal::introduce();
    const QDBusMessage message =
        Portal::call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"))
        << kScreenCast;
    auto* reply =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message, m_answerMs), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, &ScreenCastTalk::onGreeted);
}

void ScreenCastTalk::onGreeted(QDBusPendingCallWatcher* reply)
{
    const QDBusPendingReply<QVariantMap> properties = *reply;
    reply->deleteLater();
    if (properties.isError()) {
        qWarning().noquote() << "[ScreenCastSession]: No answer of a portal:" << properties.error().message();
        fail(PortalRequest::outcomeOf(properties.error()));
        return;
    }
    const QVariantMap values = properties.value();
    if ((values.value(QStringLiteral("AvailableSourceTypes")).toUInt() & kMonitors) == 0) {
        qWarning() << "[ScreenCastSession]: The portal offers no monitors";
        fail(Outcome::Missing);
        return;
    }
    m_hidesCursor = (values.value(QStringLiteral("AvailableCursorModes")).toUInt() & kHiddenCursor) != 0;
    create();
}

void ScreenCastTalk::create()
{
    m_step = Step::Creating;
    const QString token = Portal::newToken();
    useSession(Portal::handleOf(QStringLiteral("session"), token));
    ask(QStringLiteral("CreateSession"), {}, {{QStringLiteral("session_handle_token"), token}},
        [this](const QVariantMap& results) {
            // A text, where one would expect a path.
            const QVariant told = results.value(QStringLiteral("session_handle"));
            const QString handle = told.userType() == qMetaTypeId<QDBusObjectPath>()
                                       ? told.value<QDBusObjectPath>().path()
                                       : told.toString();
            if (!handle.isEmpty() && handle != m_session)
                useSession(handle);
            select();
        });
}

void ScreenCastTalk::select()
{
    m_step = Step::Selecting;
    QVariantMap options{{QStringLiteral("types"), kMonitors},
                        {QStringLiteral("multiple"), true},
                        {QStringLiteral("persist_mode"), kUntilRevoked}};
    if (m_hidesCursor)
        options.insert(QStringLiteral("cursor_mode"), kHiddenCursor);
    if (!m_token.isEmpty())
        options.insert(QStringLiteral("restore_token"), m_token);
    ask(QStringLiteral("SelectSources"), {QVariant::fromValue(QDBusObjectPath(m_session))}, options,
        [this](const QVariantMap&) { start(); });
}

void ScreenCastTalk::start()
{
    m_step = Step::Starting;
    const QString noWindow = QStringLiteral("");
    ask(QStringLiteral("Start"), {QVariant::fromValue(QDBusObjectPath(m_session)), noWindow}, {},
        [this](const QVariantMap& results) {
            m_step = Step::Opening;
            emit tokenGiven(results.value(QStringLiteral("restore_token")).toString());
            m_streams = screenCastStreams(results.value(QStringLiteral("streams")));
            if (!m_streams.isEmpty()) {
                open();
                return;
            }
            qWarning() << "[ScreenCastSession]: The portal granted no stream";
            fail(Outcome::Failed);
        });
    emit starting();
}

void ScreenCastTalk::open()
{
    const QDBusMessage message = Portal::call(kScreenCast, QStringLiteral("OpenPipeWireRemote"))
                                 << QVariant::fromValue(QDBusObjectPath(m_session)) << QVariantMap();
    auto* reply =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message, m_answerMs), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, &ScreenCastTalk::onOpened);
}

void ScreenCastTalk::onOpened(QDBusPendingCallWatcher* reply)
{
    const QDBusPendingReply<QDBusUnixFileDescriptor> opened = *reply;
    reply->deleteLater();
    const int remote = opened.isValid() ? fcntl(opened.value().fileDescriptor(), F_DUPFD_CLOEXEC, 0) : -1;
    if (remote < 0) {
        qWarning().noquote() << "[ScreenCastSession]: No connection to the streams:"
                             << opened.error().message();
        fail(PortalRequest::outcomeOf(opened.error()));
    } else if (m_isOver) {
        ::close(remote);
    } else {
        m_step = Step::Done;
        emit granted(remote, m_streams);
    }
}

/// The path is known to the portal alone, so that whoever sends from there counts.
void ScreenCastTalk::useSession(const QString& handle)
{
    m_session = handle;
    QDBusConnection::sessionBus().connect({}, handle, Portal::kSession, QStringLiteral("Closed"), this,
                                          SLOT(onClosed()));
}

void ScreenCastTalk::onClosed()
{
    if (m_step < Step::Opening)
        fail(Outcome::Failed);
    else if (!std::exchange(m_isOver, true))
        emit closed();
}

void ScreenCastTalk::ask(const QString& method, const QVariantList& arguments, const QVariantMap& options,
                         const Next& next)
{
    const PortalRequest::Patience patience{m_answerMs, m_step == Step::Starting};
    auto* request = new PortalRequest(kScreenCast, method, arguments, options, patience, this);
    connect(request, &PortalRequest::finished, this,
            [this, request, next](Outcome outcome, const QVariantMap& results) {
                request->deleteLater();
                if (outcome != Outcome::Granted)
                    fail(outcome);
                else if (!m_isOver)
                    next(results);
            });
}

void ScreenCastTalk::fail(Outcome outcome)
{
    if (!std::exchange(m_isOver, true))
        emit failed(outcome, m_step);
}
