#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <optional>

/// The object inside of {"signed": "<JSON text>", "signature": "<base64>"} when the signature over that text
/// is the key's (Ed25519, 32 bytes); else nothing, and `error` tells why.
std::optional<QJsonObject> signedAnswer(const QByteArray& answer, const QByteArray& key, QString* error);
