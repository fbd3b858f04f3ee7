#include "support/net/SignedAnswer.h"

#include <QJsonDocument>
#include <sodium.h>

namespace {

std::optional<QJsonObject> refuse(QString* error, const char* reason)
{
    *error = QLatin1String(reason);
    return std::nullopt;
}

} // namespace

std::optional<QJsonObject> signedAnswer(const QByteArray& answer, const QByteArray& key, QString* error)
{
    const QJsonDocument envelope = QJsonDocument::fromJson(answer);
    if (!envelope.object()["signed"].isString() || !envelope.object()["signature"].isString())
        return refuse(error, "not a signed answer");
    const QByteArray text = envelope.object()["signed"].toString().toUtf8();
    const QByteArray signature = QByteArray::fromBase64(envelope.object()["signature"].toString().toLatin1());
    const auto bytes = [](const QByteArray& array) {
        return reinterpret_cast<const unsigned char*>(array.constData());
    };
    if (key.size() != int(crypto_sign_PUBLICKEYBYTES) || signature.size() != int(crypto_sign_BYTES) ||
        sodium_init() < 0 ||
        crypto_sign_verify_detached(bytes(signature), bytes(text),
                                    static_cast<unsigned long long>(text.size()), bytes(key)) != 0)
        return refuse(error, "the signature is not the maker's");
    const QJsonDocument inner = QJsonDocument::fromJson(text);
    if (!inner.isObject())
        return refuse(error, "what is signed is no JSON object");
    return inner.object();
}
