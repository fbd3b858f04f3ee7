#include "support/net/VersionAnswer.h"

#include "support/net/OnlineAddress.h"
#include "support/net/compareVersion.h"
#include "support/net/plainFileName.h"

#include <QRegularExpression>
#include <QStringList>
#include <QSysInfo>

namespace {

constexpr double kMostBytes = 500.0 * 1024 * 1024;

QString installerEnding()
{
    return VersionAnswer::system() == QLatin1String("windows") ? QStringLiteral("exe")
                                                               : QStringLiteral("deb");
}

/// Nothing, and the reason, when a field is missing or wrong.
std::optional<InstallerInfo> installerFromJson(const QJsonObject& object, const QUrl& service, QString* error)
{
    static const QRegularExpression sha256(QStringLiteral(R"(\A[0-9A-Fa-f]{64}\z)"));
    const double size = object["size"].toDouble();
    const QString hash = object["sha256"].toString();
    const QUrl url = serviceUrl(service, QStringLiteral("/")).resolved(QUrl(object["url"].toString()));
    const QString file = plainFileName(object["file"].toString(), {installerEnding()});
    if (file.isEmpty())
        *error = QStringLiteral("file");
    else if (object["url"].toString().isEmpty() || !isAllowedAddress(url))
        *error = QStringLiteral("url");
    else if (!(size >= 1 && size <= kMostBytes) || size != double(qint64(size)))
        *error = QStringLiteral("size");
    else if (!sha256.match(hash).hasMatch())
        *error = QStringLiteral("sha256");
    else
        return InstallerInfo{file, url, qint64(size), QByteArray::fromHex(hash.toLatin1())};
    return std::nullopt;
}

} // namespace

std::optional<VersionAnswer> VersionAnswer::fromJson(const QJsonObject& object, const QUrl& service,
                                                     QString* error)
{
    if (object["product"].toString() != QLatin1String("Lumivar") || object["system"].toString() != system() ||
        object["arch"].toString() != arch()) {
        *error = QStringLiteral("for another product, system or architecture");
        return std::nullopt;
    }
    VersionAnswer answer{object["version"].toString(), std::nullopt};
    if (compareVersion(QString(), answer.version)) { // every version is later than none
        *error = QStringLiteral("a wrong version");
        return std::nullopt;
    }
    for (const char* field : {"file", "url", "size", "sha256"}) {
        if (answer.installer || !object.contains(QLatin1String(field)))
            continue;
        QString wrong;
        answer.installer = installerFromJson(object, service, &wrong);
        if (!answer.installer) {
            *error = QStringLiteral("a wrong ") + wrong;
            return std::nullopt;
        }
    }
    return answer;
}

QString VersionAnswer::system()
{
    return QSysInfo::kernelType() == QLatin1String("winnt") ? QStringLiteral("windows")
                                                            : QStringLiteral("linux");
}

QString VersionAnswer::arch()
{
    return QSysInfo::buildCpuArchitecture();
}
