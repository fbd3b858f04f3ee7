#include "support/net/ProductSettings.h"

#include "CompiledProductSettings.h"
#include "support/config/DataFile.h"
#include "support/net/OnlineAddress.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int kKeyBytes = 32;

ProductSettings checked(const QString& service, const QString& key, const QString& mail, const QString& site)
{
    ProductSettings settings{QUrl(service), QByteArray::fromBase64(key.toLatin1()), mail, site};
    if (!service.isEmpty() && !isAllowedAddress(settings.service)) {
        qWarning() << "[ProductSettings]: The service has to be reached by https:" << service;
        settings.service.clear();
    }
    if (!settings.serviceKey.isEmpty() && settings.serviceKey.size() != kKeyBytes) {
        qWarning() << "[ProductSettings]: The service's key has not 32 bytes";
        settings.serviceKey.clear();
    }
    return settings;
}

ProductSettings compiled()
{
    return checked(QString::fromUtf8(kCompiledServiceAddress), QString::fromUtf8(kCompiledServiceKey),
                   QString::fromUtf8(kCompiledSupportMail), QString::fromUtf8(kCompiledWebSite));
}

ProductSettings standIn(const QString& path)
{
    QString error;
    const QJsonObject object = QJsonDocument::fromJson(readDataFile(path, &error).value_or("")).object();
    ProductSettings settings = checked(object["service"].toString(), object["serviceKey"].toString(),
                                       object["supportMail"].toString(), object["webSite"].toString());
    QUrl asPlain = settings.service;
    asPlain.setScheme(QStringLiteral("http"));
    if (isAllowedAddress(asPlain)) // on the loopback address
        return settings;
    qWarning() << "[ProductSettings]: No service on the loopback address in" << path << error;
    return compiled();
}

} // namespace

const ProductSettings& productSettings()
{
    static const ProductSettings settings = [] {
        const QString path = qEnvironmentVariable("LUMIVAR_PRODUCT");
        return path.isEmpty() ? compiled() : standIn(path);
    }();
    return settings;
}
