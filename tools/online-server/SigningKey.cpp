#include "SigningKey.h"

#include <sodium.h>

namespace {

unsigned char* data(QByteArray& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

const unsigned char* data(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

QByteArray newSeed()
{
    if (sodium_init() < 0)
        qFatal("No random numbers for a key");
    QByteArray seed(SigningKey::kSeedBytes, '\0');
    randombytes_buf(seed.data(), SigningKey::kSeedBytes);
    return seed;
}

} // namespace

SigningKey::SigningKey()
    : SigningKey(newSeed())
{
}

SigningKey::SigningKey(const QByteArray& seed)
    : m_public(crypto_sign_PUBLICKEYBYTES, '\0')
    , m_secret(crypto_sign_SECRETKEYBYTES, '\0')
{
    Q_ASSERT(seed.size() == kSeedBytes);
    crypto_sign_seed_keypair(data(m_public), data(m_secret), data(seed));
}

QByteArray SigningKey::seed() const
{
    QByteArray seed(kSeedBytes, '\0');
    crypto_sign_ed25519_sk_to_seed(data(seed), data(m_secret));
    return seed;
}

QByteArray SigningKey::signature(const QByteArray& bytes) const
{
    QByteArray signature(crypto_sign_BYTES, '\0');
    crypto_sign_detached(data(signature), nullptr, data(bytes), static_cast<unsigned long long>(bytes.size()),
                         data(m_secret));
    return signature;
}
