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
    if (!service.isEmpty() && (!isAllowedAddress(settings.service) || settings.service.hasQuery() ||
                               settings.service.hasFragment())) {
        qWarning() << "[ProductSettings]: The service has to be a plain https address, and is"
                   << settings.service.toDisplayString();
        settings.service.clear();
    }
    if (!key.isEmpty() && settings.serviceKey.size() != kKeyBytes) {
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
    if (isLoopback(settings.service))
        return settings;
    qWarning() << "[ProductSettings]: No service on the loopback address in" << path << error;
    return compiled();
}

} // namespace

ProductSettings productSettings(const QString& standInFile)
{
    return standInFile.isEmpty() ? compiled() : standIn(standInFile);
}

const ProductSettings& productSettings()
{
    static const ProductSettings settings = productSettings(qEnvironmentVariable("LUMIVAR_PRODUCT"));
    return settings;
}
