#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <optional>

/// What the service, or the state file, says of the picture, each field checked.
struct Advertisement
{
    QUrl imageUrl;
    QString fileName; ///< plain name of a picture
    QString href;     ///< http or https address, or empty

    /// Nothing, and the reason, when a field is wrong. Whether `imageUrl` may be asked is not checked.
    static std::optional<Advertisement> fromJson(const QJsonObject& object, QString* error);
};

/// Why these bytes are no picture to show; empty when they are one. Judges its size, 4096 by 4096 pixels at
/// most, before it is decoded.
QString pictureFault(QByteArray bytes);
