#include "ui/TrayHost.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QSystemTrayIcon>
#include <QTimer>
#include <cstdlib>
#include <functional>
#include <xcb/xcb.h>

namespace {

constexpr int kFirstAnswerMs = 1000; ///< what the start of the program waits for
constexpr int kBusDefaultMs = -1;
constexpr int kAgainMs = 1000;
constexpr xcb_window_t kNoWindow = XCB_WINDOW_NONE;
const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kWatcherPath = QStringLiteral("/StatusNotifierWatcher");

template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
Reply<T> owned(T* reply)
{
    return {reply, &std::free};
}

/// A tray that windows are embedded in: the owner of a selection. Whatever happens to it, or a new one's
/// announcement, comes as an event on a connection of our own.
class EmbeddingTray : public QObject
{
public:
    explicit EmbeddingTray(std::function<void()> changed)
        : m_connection(xcb_connect(nullptr, &m_screen), &xcb_disconnect)
        , m_notifier(xcb_get_file_descriptor(connection()), QSocketNotifier::Read)
        , m_changed(std::move(changed))
    {
        const QByteArray name = "_NET_SYSTEM_TRAY_S" + QByteArray::number(m_screen);
        const auto atom = owned(xcb_intern_atom_reply(
            connection(),
            xcb_intern_atom(connection(), 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr));
        if (!atom) {
            m_notifier.setEnabled(false);
            return;
        }
        m_selection = atom->atom;
        auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection()));
        for (int i = 0; i < m_screen; ++i)
            xcb_screen_next(&screen);
        hear(screen.data->root);
        connect(&m_notifier, &QSocketNotifier::activated, this, &EmbeddingTray::onEvents);
        onEvents();
    }

    bool isThere() const { return m_owner != kNoWindow; }

private:
    xcb_connection_t* connection() const { return m_connection.get(); }

    void hear(xcb_window_t window)
    {
        const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection(), window, XCB_CW_EVENT_MASK, &mask);
    }

    void onEvents()
    {
        bool hasMore = true;
        while (hasMore) {
            const auto owner = owned(xcb_get_selection_owner_reply(
                connection(), xcb_get_selection_owner(connection(), m_selection), nullptr));
            const xcb_window_t now = owner ? owner->owner : kNoWindow;
            if (now != m_owner && now != kNoWindow)
                hear(now);
            const bool changes = (now == kNoWindow) != (m_owner == kNoWindow);
            m_owner = now;
            if (changes)
                m_changed();
            // What came with the answer wakes no notifier any more.
            hasMore = false;
            while (owned(xcb_poll_for_event(connection())))
                hasMore = true;
        }
        if (xcb_connection_has_error(connection()) != 0)
            m_notifier.setEnabled(false);
    }

    int m_screen = 0;
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    QSocketNotifier m_notifier;
    std::function<void()> m_changed;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_window_t m_owner = kNoWindow;
};

/// A tray that is told of icons over the bus: a watcher with a host that shows them. `changed` is called with
/// every answer.
class NotifierTray : public QObject
{
    Q_OBJECT

public:
    explicit NotifierTray(std::function<void()> changed)
        : m_bus(QDBusConnection::sessionBus())
        , m_service(kWatcher, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
        , m_changed(std::move(changed))
    {
        if (!m_bus.isConnected())
            return;
        connect(&m_service, &QDBusServiceWatcher::serviceOwnerChanged, this, &NotifierTray::ask);
        for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            m_bus.connect({}, kWatcherPath, kWatcher, QLatin1String(signal), this, SLOT(ask()));
        ask();
        m_answerMs = kBusDefaultMs;  // nothing waits for the later ones
        m_answer->waitForFinished(); // and taken
    }

    bool isThere() const { return m_isThere; }
    /// While somebody has the name and says nothing.
    bool isUncertain() const { return m_isUncertain; }

private slots:
    void ask()
    {
        QDBusMessage question = QDBusMessage::createMethodCall(
            kWatcher, kWatcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        question << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
        question.setAutoStartService(false);
        m_isUncertain = true;
        // A newer question makes the older answer void.
        m_answer = std::make_unique<QDBusPendingCallWatcher>(m_bus.asyncCall(question, m_answerMs));
        connect(m_answer.get(), &QDBusPendingCallWatcher::finished, this, &NotifierTray::take);
    }

private:
    void take()
    {
        const QDBusPendingReply<QDBusVariant> reply = *m_answer;
        m_isThere = reply.isValid() && reply.value().variant().toBool();
        // A panel that is busy with its own start tells nothing when it gets round to it.
        m_isUncertain = reply.isError() && reply.error().type() == QDBusError::NoReply;
        if (m_isUncertain)
            QTimer::singleShot(kAgainMs, this, &NotifierTray::ask);
        m_changed();
    }

    QDBusConnection m_bus;
    QDBusServiceWatcher m_service;
    std::function<void()> m_changed;
    std::unique_ptr<QDBusPendingCallWatcher> m_answer;
    int m_answerMs = kFirstAnswerMs;
    bool m_isThere = false;
    bool m_isUncertain = false;
};

/// Both kinds, until the toolkit has to be asked: then the one that it has chosen.
class TrayWatch : public QObject
{
public:
    explicit TrayWatch(std::function<void(bool)> report)
        : m_report(std::move(report))
    {
        const auto look = [this] { update(); };
        m_notifier = std::make_unique<NotifierTray>(look);
        if (QGuiApplication::platformName() == QLatin1String("xcb"))
            m_embedding = std::make_unique<EmbeddingTray>(look);
        update();
    }

private:
    enum class Kind { Undecided, Notifier, Embedding };

    void update()
    {
        const bool isNotified = m_notifier && m_notifier->isThere();
        const bool isEmbedding = m_embedding && m_embedding->isThere();
        // The toolkit asks the notifiers as well, and stands still until they answer.
        const bool canAsk = m_notifier && !m_notifier->isUncertain();
        if (m_kind == Kind::Undecided && canAsk && (isNotified || isEmbedding) &&
            QSystemTrayIcon::isSystemTrayAvailable())
            m_kind = isNotified ? Kind::Notifier : Kind::Embedding;
        m_report((m_kind == Kind::Notifier && isNotified) || (m_kind == Kind::Embedding && isEmbedding));
    }

    std::function<void(bool)> m_report;
    std::unique_ptr<NotifierTray> m_notifier;
    std::unique_ptr<EmbeddingTray> m_embedding;
    Kind m_kind = Kind::Undecided;
};

} // namespace

std::unique_ptr<QObject> TrayHost::makeWatch()
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return nullptr;
    return std::make_unique<TrayWatch>([this](bool isAvailable) { setAvailable(isAvailable); });
}

#include "TrayHost_linux.moc"
