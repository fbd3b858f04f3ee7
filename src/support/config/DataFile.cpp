#include "support/config/DataFile.h"

#include <QFile>
#include <QFileInfo>

std::optional<QByteArray> readDataFile(const QString& path, QString* error)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        *error = QStringLiteral("not a regular file");
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return std::nullopt;
    }
    if (file.size() > kMaxDataFileBytes) {
        *error = QStringLiteral("larger than %1 bytes").arg(kMaxDataFileBytes);
        return std::nullopt;
    }
    return file.readAll();
}
