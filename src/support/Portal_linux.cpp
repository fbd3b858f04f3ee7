#include "support/Portal_linux.h"

#include "support/AppId.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QPointer>
#include <QRandomGenerator>
#include <QVariantMap>

void Portal::introduce()
{
    static QPointer<QDBusServiceWatcher> watcher; // there while the portal knows us
    if (watcher)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    watcher = new QDBusServiceWatcher(kService, bus, QDBusServiceWatcher::WatchForOwnerChange,
                                      QCoreApplication::instance());
    const auto forget = [] {
        if (watcher)
            watcher->deleteLater();
        watcher.clear();
    };
    QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, watcher,
                     [forget](const QString&, const QString& oldOwner) {
                         if (!oldOwner.isEmpty())
                             forget();
                     });
    const auto registered =
        bus.asyncCall(call(QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"))
                      << QString::fromLatin1(kAppId) << QVariantMap());
    auto* reply = new QDBusPendingCallWatcher(registered, watcher);
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, watcher, [reply, forget] {
        if (reply->error().type() == QDBusError::ServiceUnknown)
            forget(); // nobody has heard it
        reply->deleteLater();
    });
}

QDBusMessage Portal::call(const QString& interface, const QString& method)
{
    return QDBusMessage::createMethodCall(kService, kPath, interface, method);
}

void Portal::close(const QString& interface, const QString& handle)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(kService, handle, interface, QStringLiteral("Close"));
    message.setAutoStartService(false);
    QDBusConnection::sessionBus().send(message);
}

QString Portal::newToken()
{
    return QStringLiteral("lumivar_%1").arg(QRandomGenerator::system()->generate64(), 0, 16);
}

QString Portal::handleOf(const QString& kind, const QString& token)
{
    QString sender = QDBusConnection::sessionBus().baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("%1/%2/%3/%4").arg(kPath, kind, sender, token);
}
