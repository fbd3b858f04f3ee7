#include "ServerFault.h"

namespace {

/// In the order of the values.
const QStringList kNames{
    QStringLiteral("none"),         QStringLiteral("silent"),      QStringLiteral("slow"),
    QStringLiteral("endless"),      QStringLiteral("unannounced"), QStringLiteral("wrong-length"),
    QStringLiteral("cut"),          QStringLiteral("broken-gzip"), QStringLiteral("html"),
    QStringLiteral("server-error"), QStringLiteral("redirect"),    QStringLiteral("chunked"),
};

} // namespace

std::optional<ServerFault> serverFault(const QString& name)
{
    const int index = kNames.indexOf(name);
    return index < 0 ? std::nullopt : std::optional(static_cast<ServerFault>(index));
}

QStringList serverFaultNames()
{
    return kNames;
}
