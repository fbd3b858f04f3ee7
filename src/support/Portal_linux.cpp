#include "support/Portal_linux.h"

#include "support/AppId.h"

#include <QCoreApplication>
#include <QDBusConnection>
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
    QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, watcher,
                     [](const QString&, const QString& oldOwner) {
                         if (oldOwner.isEmpty() || !watcher)
                             return;
                         watcher->deleteLater();
                         watcher.clear();
                     });
    bus.send(call(QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"))
             << QString::fromLatin1(kAppId) << QVariantMap());
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
