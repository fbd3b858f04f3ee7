#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

/// What the maker of a build has filled in (cmake/ProductSettings.cmake); any of it may be empty.
struct ProductSettings
{
    QUrl service;          ///< base address; empty: nothing is ever sent
    QByteArray serviceKey; ///< Ed25519 public key, 32 bytes; empty: no version is looked for
    QString supportMail;
    QString webSite; ///< without http://
};

/// Those of this build. The environment variable LUMIVAR_PRODUCT may name a JSON file with the members
/// `service`, `serviceKey` (base64), `supportMail` and `webSite` that stands in for them; it counts only when
/// its service is on the loopback address, so that no environment leads a user's data to another host. A
/// service that is not allowed by isAllowedAddress() or has a query, or a key of another length, is told of
/// in the log and counts as empty.
const ProductSettings& productSettings();

/// The same with that file, or none, instead of the one that the environment names.
ProductSettings productSettings(const QString& standInFile);
