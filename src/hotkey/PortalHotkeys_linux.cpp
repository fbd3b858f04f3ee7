#include "hotkey/PortalHotkeys_linux.h"

#include "hotkey/KeySymbols_x11.h"
#include "hotkey/PortalTrigger_linux.h"
#include "support/Portal_linux.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>

namespace {

using PortalShortcut = QPair<QString, QVariantMap>; ///< id and properties, as they go over the bus

constexpr int kAnswerMs = 10000;
constexpr int kRetryMs = 30000;
const QString kInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString kShortcuts = QStringLiteral("shortcuts");
const QString kTrigger = QStringLiteral("trigger_description");

/// None where the portal has sent something else.
QVector<PortalShortcut> shortcutsOf(const QVariant& value)
{
    if (!value.canConvert<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String("a(sa{sv})")
               ? qdbus_cast<QVector<PortalShortcut>>(argument)
               : QVector<PortalShortcut>();
}

QSet<QString> idsOf(const QVector<PortalShortcut>& shortcuts)
{
    QSet<QString> ids;
    for (const PortalShortcut& each : shortcuts)
        ids.insert(each.first);
    return ids;
}

QSet<QString> idsOf(const QMap<QString, QHotkey::NativeShortcut>& shortcuts)
{
    return {shortcuts.keyBegin(), shortcuts.keyEnd()};
}

} // namespace

PortalHotkeys::PortalHotkeys()
    : m_portal(Portal::kService, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange)
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QVector<PortalShortcut>>();
    m_update.setSingleShot(true);
    m_retry.setSingleShot(true);
    m_retry.setInterval(kRetryMs);
    connect(&m_update, &QTimer::timeout, this, &PortalHotkeys::update);
    connect(&m_retry, &QTimer::timeout, this, &PortalHotkeys::open);
    connect(
        &m_portal, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString& before, const QString& now) { onOwnerChanged(before, now); });
    // Their sessions have names that nobody else can guess.
    QDBusConnection bus = QDBusConnection::sessionBus();
    for (const char* signal : {"Activated", "Deactivated", "ShortcutsChanged"})
        bus.connect({}, Portal::kPath, kInterface, QLatin1String(signal), this, SLOT(onSignal(QDBusMessage)));
    bus.connect({}, {}, Portal::kSession, QStringLiteral("Closed"), this, SLOT(onSignal(QDBusMessage)));
}

void PortalHotkeys::allowQuestions()
{
    m_mayAsk = true;
    if (m_hasToWait)
        bind();
    else if (!m_obstacle.isEmpty())
        open();
}

quint32 PortalHotkeys::nativeKeycode(Qt::Key keycode, bool& ok)
{
    const xkb_keysym_t symbol = symbolOfKey(keycode);
    ok = symbol != XKB_KEY_NoSymbol;
    return symbol;
}

quint32 PortalHotkeys::nativeKeypadKeycode(Qt::Key keycode, bool& ok)
{
    const xkb_keysym_t symbol = symbolOfKey(keycode | static_cast<int>(Qt::KeypadModifier));
    ok = symbol != XKB_KEY_NoSymbol;
    return symbol;
}

quint32 PortalHotkeys::nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok)
{
    ok = !(modifiers & ~(Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    return static_cast<quint32>(modifiers);
}

bool PortalHotkeys::registerShortcut(QHotkey::NativeShortcut)
{
    error = m_obstacle;
    trouble = HotkeyTrouble::NotAllowed;
    m_update.start();
    return m_obstacle.isEmpty();
}

bool PortalHotkeys::unregisterShortcut(QHotkey::NativeShortcut)
{
    m_update.start();
    return true;
}

bool PortalHotkeys::canRegister(QHotkey::NativeShortcut shortcut)
{
    trouble = m_obstacle.isEmpty() ? HotkeyTrouble::NotGranted : HotkeyTrouble::NotAllowed;
    return m_obstacle.isEmpty() && !m_refused.contains(shortcut);
}

bool PortalHotkeys::nativeEventFilter(const QByteArray&, void*, long*)
{
    return false;
}

/// `taker` gets the outcome and what came with it; a request that was awaited before is given up.
template <typename Taker>
void PortalHotkeys::ask(const QString& method, const QVariantList& arguments, bool isForUser, Taker taker)
{
    if (m_request) {
        m_request->disconnect(this);
        m_request->deleteLater();
    }
    QVariantMap options;
    if (method == QLatin1String("CreateSession"))
        options.insert(QStringLiteral("session_handle_token"), Portal::newToken());
    m_request = new PortalRequest(kInterface, method, arguments, options, {kAnswerMs, isForUser}, this);
    connect(m_request, &PortalRequest::finished, this, taker);
}

/// Brings the session to what is registered now.
void PortalHotkeys::update()
{
    if (!m_obstacle.isEmpty() || m_isOpening)
        return;
    const auto registered = [this] {
        Shortcuts shortcuts;
        for (const Action& each : actions())
            shortcuts.insert(each.id, each.shortcut);
        return shortcuts;
    };
    Shortcuts wanted = registered();
    if (wanted == m_asked && !wanted.isEmpty())
        return;
    const bool isReopened = !m_session.isEmpty() && m_asked.isEmpty();
    if (!wanted.isEmpty() && !m_refused.isEmpty() && !isReopened) {
        // The user wants one now, so he may want all.
        m_refused.clear();
        emit servesAgain();
        wanted = registered();
    }
    m_isChange = !wanted.isEmpty() && (m_isChange || !m_asked.isEmpty());
    if (m_isSpent || wanted.isEmpty())
        endSession();
    if (wanted.isEmpty())
        return;
    if (m_session.isEmpty())
        return open();
    m_asked = wanted;
    m_isChange ? bind() : list();
}

void PortalHotkeys::open()
{
    if (m_isOpening)
        return;
    m_isOpening = true;
    m_retry.stop();
    ask(QStringLiteral("CreateSession"), {}, false, [this](Outcome outcome, const QVariantMap& results) {
        m_isOpening = false;
        const QVariant handle = results.value(QStringLiteral("session_handle"));
        m_session =
            handle.canConvert<QDBusObjectPath>() ? handle.value<QDBusObjectPath>().path() : handle.toString();
        if (outcome != Outcome::Granted || m_session.isEmpty())
            return fail(outcome);
        if (!m_obstacle.isEmpty()) {
            m_obstacle.clear();
            emit servesAgain();
        }
        update();
    });
}

void PortalHotkeys::list()
{
    ask(QStringLiteral("ListShortcuts"), {QVariant::fromValue(QDBusObjectPath(m_session))}, false,
        [this](Outcome outcome, const QVariantMap& results) {
            outcome == Outcome::Granted ? onListed(results.value(kShortcuts)) : fail(outcome);
        });
}

void PortalHotkeys::onListed(const QVariant& listed)
{
    take(listed);
    const QSet<QString> asked = idsOf(m_asked);
    const QSet<QString> known = idsOf(shortcutsOf(listed)) & asked;
    if (!known.isEmpty()) {
        refuse(asked - known); // the user has left them out
        emit userDecided(true);
    } else if (m_mayAsk) {
        bind();
    } else {
        m_hasToWait = true;
    }
}

void PortalHotkeys::bind()
{
    m_hasToWait = false;
    m_isSpent = true;
    QVector<PortalShortcut> shortcuts;
    for (const Action& each : actions()) {
        const QString text =
            QCoreApplication::translate("HotkeyDescription", each.description.toUtf8().constData());
        shortcuts.append({each.id,
                          {{QStringLiteral("description"), text},
                           {QStringLiteral("preferred_trigger"), portalTrigger(each.shortcut)}}});
    }
    const QString noWindow;
    ask(QStringLiteral("BindShortcuts"),
        {QVariant::fromValue(QDBusObjectPath(m_session)), QVariant::fromValue(shortcuts), noWindow}, true,
        [this](Outcome outcome, const QVariantMap& results) { onBound(outcome, results.value(kShortcuts)); });
}

void PortalHotkeys::onBound(Outcome outcome, const QVariant& bound)
{
    if (outcome == Outcome::Gone || outcome == Outcome::Missing)
        return fail(outcome);
    m_isChange = false;
    QSet<QString> granted;
    if (outcome == Outcome::Granted) {
        take(bound);
        granted = idsOf(shortcutsOf(bound));
    }
    refuse(idsOf(m_asked) - granted);
    if (outcome != Outcome::Failed)
        emit userDecided(!m_asked.isEmpty());
}

void PortalHotkeys::take(const QVariant& shortcuts)
{
    for (const PortalShortcut& each : shortcutsOf(shortcuts)) {
        const auto asked = m_asked.constFind(each.first);
        if (asked == m_asked.constEnd())
            continue;
        const QString keys = each.second.value(kTrigger).toString();
        const bool hasNone = keys.isEmpty() && each.second.contains(kTrigger);
        setDesktopKeys(*asked, meansSameKeys(keys, *asked) ? QString() : keys,
                       hasNone ? HotkeyTrouble::NoKeysYet : HotkeyTrouble::None);
    }
}

/// Another request might ask the user the same again, so there is none unless he changes a shortcut.
void PortalHotkeys::refuse(const QSet<QString>& ids)
{
    trouble = HotkeyTrouble::NotGranted;
    for (const QString& id : ids) {
        const QHotkey::NativeShortcut shortcut = m_asked.take(id);
        m_refused.insert(shortcut);
        loseShortcut(shortcut);
    }
    if (m_asked.isEmpty())
        endSession();
}

/// Takes all shortcuts away until the portal serves again.
void PortalHotkeys::fail(Outcome outcome)
{
    const QString reason = outcome == Outcome::Missing
                               ? QStringLiteral("the desktop has no portal for shortcuts")
                               : QStringLiteral("the desktop's portal for shortcuts does not serve");
    if (m_obstacle != reason)
        qCWarning(logHotkey).noquote() << "No shortcut can be taken:" << reason;
    m_obstacle = reason;
    m_isChange = false;
    endSession();
    if (outcome != Outcome::Missing) // which may come to the bus, or with the user's look
        m_retry.start();
    trouble = HotkeyTrouble::NotAllowed;
    for (const Action& each : actions())
        loseShortcut(each.shortcut);
}

void PortalHotkeys::endSession()
{
    if (m_request) {
        m_request->disconnect(this);
        m_request->deleteLater();
    }
    m_request.clear();
    if (!m_session.isEmpty())
        Portal::close(Portal::kSession, m_session);
    m_session.clear();
    m_asked.clear();
    m_isOpening = m_isSpent = m_hasToWait = false;
}

void PortalHotkeys::onOwnerChanged(const QString& oldOwner, const QString& newOwner)
{
    if (!oldOwner.isEmpty() && (m_isOpening || !m_session.isEmpty()))
        fail(Outcome::Gone);
    if (!newOwner.isEmpty() && !m_obstacle.isEmpty())
        open();
}

void PortalHotkeys::onSignal(const QDBusMessage& message)
{
    const QString what = message.member();
    const QVariantList arguments = message.arguments();
    if (what == QLatin1String("Closed")) {
        if (message.path() == m_session) {
            m_mayAsk = false; // the user may have withdrawn them, and is asked when he looks again
            fail(Outcome::Gone);
        }
        return;
    }
    if (arguments.size() < 2 || m_session.isEmpty() ||
        arguments.at(0).value<QDBusObjectPath>().path() != m_session)
        return; // the news of a session that has ended
    if (what == QLatin1String("ShortcutsChanged"))
        return take(arguments.at(1));
    const auto shortcut = m_asked.constFind(arguments.at(1).toString());
    if (shortcut == m_asked.constEnd())
        return;
    what == QLatin1String("Activated") ? activateShortcut(*shortcut) : releaseShortcut(*shortcut);
}
