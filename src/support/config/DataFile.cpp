#include "support/config/DataFile.h"

#include <QFile>
#include <QFileInfo>

std::optional<QByteArray> readDataFile(const QString& path, QString* error, bool* isUnknown)
{
    const auto refused = [&](const QFile& file) {
        *error = file.errorString();
        if (isUnknown)
            *isUnknown = true;
        return std::nullopt;
    };
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        *error = QStringLiteral("not a regular file");
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(file);
    if (file.size() > kMaxDataFileBytes) {
        *error = QStringLiteral("larger than %1 bytes").arg(kMaxDataFileBytes);
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError)
        return refused(file);
    return bytes;
}
