#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

/// 64-bit FNV-1a of a key's UTF-8 bytes, extended as signed chars: lets a text key select a `case`.
constexpr std::uint64_t hashPropertyKey(const char* key, std::size_t size)
{
    std::uint64_t hash = 14695981039346656037ULL;
    for (std::size_t i = 0; i < size; ++i) {
        hash ^= static_cast<std::uint64_t>(static_cast<std::int64_t>(static_cast<signed char>(key[i])));
        hash *= 1099511628211ULL;
    }
    return hash;
}

constexpr std::uint64_t hashPropertyKey(const char* key)
{
    std::size_t size = 0;
    while (key[size] != '\0')
        ++size;
    return hashPropertyKey(key, size);
}

inline std::uint64_t hashPropertyKey(const QString& key)
{
    const QByteArray utf8 = key.toUtf8();
    return hashPropertyKey(utf8.constData(), static_cast<std::size_t>(utf8.size()));
}
