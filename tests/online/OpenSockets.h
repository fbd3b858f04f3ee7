#pragma once

#include <QDir>
#include <QFileInfo>

/// The sockets that this process holds.
inline QStringList openSockets()
{
    QStringList sockets;
    const QDir descriptors("/proc/self/fd");
    for (const QString& name : descriptors.entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot)) {
        const QString target = QFile::symLinkTarget(descriptors.filePath(name));
        if (target.contains("socket:["))
            sockets += target;
    }
    return sockets;
}
