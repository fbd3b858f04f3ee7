#include "support/net/OnlineAddress.h"

#include <QHostAddress>

bool isLoopback(const QUrl& address)
{
    const QString host = address.host();
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

bool isAllowedAddress(const QUrl& address)
{
    if (!address.isValid() || address.host().isEmpty() || !address.userInfo().isEmpty())
        return false;
    return address.scheme() == QLatin1String("https") ||
           (address.scheme() == QLatin1String("http") && isLoopback(address));
}

bool isAllowedRedirect(const QUrl& from, const QUrl& to)
{
    if (!isAllowedAddress(to))
        return false;
    return to.scheme() == QLatin1String("https") || from.scheme() == QLatin1String("http");
}

QUrl serviceUrl(const QUrl& service, const QString& path)
{
    QUrl address = service;
    QString base = service.path();
    while (base.endsWith(u'/'))
        base.chop(1);
    address.setPath(base + u'/' + (path.startsWith(u'/') ? path.mid(1) : path));
    return address;
}
