#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <optional>

/// An installer as the maker has signed it.
struct InstallerInfo
{
    QString file; ///< plain name, with an ending that the system installs
    QUrl url;
    qint64 size = 0;   ///< bytes, 500 MB at most
    QByteArray sha256; ///< 32 bytes
};

/// What the service says about the latest version, each field checked.
struct VersionAnswer
{
    QString version;
    std::optional<InstallerInfo> installer; ///< none when there is nothing to download

    /// From the signed object (docs/online.md). Nothing, and the reason, when it is for another product,
    /// system or architecture or when any field is wrong. A relative `url` is one below `service`.
    static std::optional<VersionAnswer> fromJson(const QJsonObject& object, const QUrl& service,
                                                 QString* error);

    /// What to ask for: "linux" or "windows", and the build's own architecture.
    static QString system();
    static QString arch();
};
