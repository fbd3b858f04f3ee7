#include "system/ScreenSavers_linux.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace {

struct ScreenSaver
{
    const char* interface; ///< and the service's name
    const char* path;
};

constexpr ScreenSaver kScreenSavers[] = {
    {"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver"},
    {"org.freedesktop.ScreenSaver", "/ScreenSaver"},
    {"org.gnome.ScreenSaver", "/org/gnome/ScreenSaver"},
    {"org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver"},
    {"org.mate.ScreenSaver", "/org/mate/ScreenSaver"},
    {"org.xfce.ScreenSaver", "/org/xfce/ScreenSaver"},
};

} // namespace

ScreenSavers::ScreenSavers(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
{
    m_gone.setConnection(m_bus);
    m_gone.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_gone, &QDBusServiceWatcher::serviceUnregistered, this,
            [this](const QString& sender) { setActive(sender, false); });
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SLOT(onBusGone()));
    // From whoever says it: who owns a name need not be asked for then, and on the user's own bus all are the
    // user's.
    for (const ScreenSaver& saver : kScreenSavers)
        m_bus.connect(QString(), QLatin1String(saver.path), QLatin1String(saver.interface),
                      QStringLiteral("ActiveChanged"), this, SLOT(onActiveChanged(bool)));
    ask();
}

void ScreenSavers::ask()
{
    for (const ScreenSaver& saver : kScreenSavers) {
        QDBusMessage question =
            QDBusMessage::createMethodCall(QLatin1String(saver.interface), QLatin1String(saver.path),
                                           QLatin1String(saver.interface), QStringLiteral("GetActive"));
        question.setAutoStartService(false);
        auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
            watcher->deleteLater();
            const QDBusMessage answer = watcher->reply();
            if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
                setActive(answer.service(), answer.arguments().constFirst().toBool());
        });
    }
}

void ScreenSavers::onActiveChanged(bool active)
{
    setActive(message().service(), active);
}

void ScreenSavers::onBusGone()
{
    const QSet<QString> active = m_active; // nobody would tell of their end
    for (const QString& sender : active)
        setActive(sender, false);
}

void ScreenSavers::setActive(const QString& sender, bool active)
{
    const bool was = isActive();
    if (active) {
        m_active.insert(sender);
        m_gone.addWatchedService(sender);
    } else if (m_active.remove(sender)) {
        m_gone.removeWatchedService(sender);
    }
    if (isActive() != was)
        emit activeChanged();
}
