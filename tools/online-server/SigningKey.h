#pragma once

#include <QByteArray>

/// A pair of Ed25519 keys.
class SigningKey
{
public:
    static constexpr int kSeedBytes = 32;

    SigningKey(); ///< a new one
    /// The one that grows from these 32 bytes, which are the secret.
    explicit SigningKey(const QByteArray& seed);

    QByteArray seed() const;
    QByteArray publicKey() const { return m_public; }
    QByteArray signature(const QByteArray& bytes) const;

private:
    QByteArray m_public;
    QByteArray m_secret;
};
