#pragma once

#include <QByteArray>
#include <QMap>

/// One request as it arrived.
struct ServerRequest
{
    QByteArray method;
    QByteArray path;                      ///< with its query
    QMap<QByteArray, QByteArray> headers; ///< names in lower case
    QByteArray body;
};
