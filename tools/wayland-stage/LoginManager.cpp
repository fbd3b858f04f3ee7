#include "LoginManager.h"

#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QSocketNotifier>

#include <unistd.h>

namespace {

const QString kService = QStringLiteral("org.freedesktop.login1");
const QString kPath = QStringLiteral("/org/freedesktop/login1");
const QString kSession = kPath + QStringLiteral("/session/_37");
const QString kSaver = QStringLiteral("org.freedesktop.ScreenSaver");

QVariant ofProperty(bool value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

LoginManager::LoginManager(const PrivateBus& bus)
    : m_connection(bus.connection("logind"))
{
    m_connection.registerVirtualObject("/org/freedesktop", this, QDBusConnection::SubPath);
    m_connection.registerService(kSaver);
    come();
}

LoginManager::~LoginManager()
{
    QDBusConnection::disconnectFromBus("logind");
}

void LoginManager::come()
{
    m_connection.registerService(kService);
}

void LoginManager::leave()
{
    m_connection.unregisterService(kService);
}

void LoginManager::prepareFor(const QString& what, bool begins)
{
    isPreparing = begins;
    tell(kPath, kService + ".Manager", "PrepareFor" + what, {begins});
}

void LoginManager::setLocked(bool locked)
{
    isLocked = locked;
    tell(kSession, "org.freedesktop.DBus.Properties", "PropertiesChanged",
         {kService + ".Session", QVariantMap{{"LockedHint", locked}}, QStringList()});
}

void LoginManager::setSaverActive(bool active)
{
    isSaverActive = active;
    tell("/org/freedesktop/ScreenSaver", kSaver, "ActiveChanged", {active});
}

QString LoginManager::introspect(const QString& /*path*/) const
{
    return {};
}

bool LoginManager::handleMessage(const QDBusMessage& call, const QDBusConnection& connection)
{
    if (call.member() == "Inhibit" && refuses)
        return connection.send(call.createErrorReply(QDBusError::AccessDenied, "no"));
    return connection.send(call.createReply(answerTo(call)));
}

QVariant LoginManager::answerTo(const QDBusMessage& call)
{
    if (call.member() == "Inhibit")
        return delay();
    if (call.member() == "GetSession")
        return QVariant::fromValue(QDBusObjectPath(kSession));
    const QString wanted = call.arguments().value(1).toString(); // of the properties
    if (wanted == "PreparingForSleep") {
        ++asked;
        return ofProperty(isPreparing);
    }
    return wanted == "LockedHint" ? ofProperty(isLocked) : QVariant(isSaverActive);
}

/// A pipe's end: who asked for the delay closes his copy to give it up.
QVariant LoginManager::delay()
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        qFatal("no pipe");
    ++held;
    auto* end = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(end, &QSocketNotifier::activated, this, [this, end] { // nobody has the other end any more
        end->setEnabled(false);
        ::close(int(end->socket()));
        if (--held == 0)
            emit released();
    });
    QDBusUnixFileDescriptor given;
    given.giveFileDescriptor(ends[1]);
    return QVariant::fromValue(given);
}

void LoginManager::tell(const QString& path, const QString& interface, const QString& name,
                        const QVariantList& values)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
    signal.setArguments(values);
    m_connection.send(signal);
}
